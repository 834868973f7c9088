"""The installer in its real window: what it shows is read, what is pressed is really pressed."""

from application import STILL_PICTURES, Application
from descriptions import FINISH
from inspector import Inspector
from picture import Rectangle
from waiting import PATIENCE, TimedOut

# Of the window's content.
SIZE = [720, 480]


class Installer(Application):
    def __init__(self, display, bundle, *arguments, built=None, **options):
        """`built` is where the build has put the bundle, if this one is a copy of it."""
        super().__init__(display, bundle, *arguments, **options)
        self._built = built or self.bundle
        self._placed = None

    def __enter__(self):
        self._inspector = Inspector(self._built, for_everybody=self._user is not None)
        self._environment = self._inspector.__enter__().preload(self._environment)
        self._clicks = 0
        return super().__enter__()

    def __exit__(self, *failure):
        super().__exit__(*failure)
        self._inspector.__exit__()

    # What it shows

    def state(self, seconds=PATIENCE):
        """What the window shows, as soon as the installer waits; None once it has ended."""
        try:
            return self._inspector.state(seconds)
        except TimeoutError:
            raise TimedOut(f"it did not answer in {seconds:g} seconds\n{self.output}") from None

    def wait_for_state(self, accepts, what, seconds=PATIENCE):
        """Returns the first state that `accepts` accepts."""
        last = None

        def accepted():
            nonlocal last
            state = self.state(seconds)
            last = state or last
            return state if state and accepts(state) else None

        try:
            return self.wait(accepted, what, seconds)
        except TimedOut as late:
            raise TimedOut(f"{late}\nit shows {last and last.place}") from None

    def wait_for_page(self, title, seconds=PATIENCE):
        """Waits until a page can be used, with no sheet over it."""
        return self.wait_for_state(
            lambda state: state.visible and state.page == title and not state.sheets,
            f"the page {title!r}",
            seconds,
        )

    def wait_for_sheet(self, message):
        """Waits until a sheet with this message is the uppermost; returns it."""
        state = self.wait_for_state(
            lambda state: state.sheet and state.sheet.message == message, f"the sheet {message!r}"
        )
        return state.sheet

    def wait_until_active(self):
        """Until the window manager gives it the keys."""
        return self.wait_for_state(
            lambda state: state.key and self.display.active_window() == state.window,
            "the window to be active",
        )

    @property
    def content(self):
        """Where the window's content lies on the screen, below the menu in the window."""
        if not self._placed or self.display.area(self._placed[0]) != self._placed[1]:
            self._placed = self._settled_window()
        _, area, (_, _, width, height) = self._placed
        width, height = round(width), round(height)
        return Rectangle(area.x, area.y + area.height - height, width, height)

    def _settled_window(self):
        """The window, where it lies, and its content's rectangle in it.

        The menu comes into an active window, which grows then and finds its place again.
        """
        last, seen = None, 0

        def settled(state):
            nonlocal last, seen
            area = self.display.area(state.window)
            complete = state.size[3] < state.height == area.height
            seen = seen + 1 if complete and (state.window, area, state.size) == last else 0
            last = state.window, area, state.size
            # GNUstep now and then takes the menu's height from the page, and leaves it so.
            return seen >= (STILL_PICTURES if state.size[2:] == SIZE else 10 * STILL_PICTURES)

        self.wait_until_active()
        self.wait_for_state(settled, "the window to have its menu")
        return last

    def wait_until_placed(self):
        """Until the window and what is in it have found their places."""
        return self.content

    def picture(self):
        """Of the window's content when it stands still, whatever turns in it."""
        content, state = self.content, self.state()
        indicators = state.indicators
        for sheet in state.sheets:
            indicators += sheet.shown.indicators
        last, still = None, 0

        def stands_still():
            nonlocal last, still
            now = self.display.picture(content)
            blanked = now.without([indicator.area for indicator in indicators])
            last, still = blanked, still + 1 if blanked == last else 0
            return now if still >= STILL_PICTURES else None

        return self.wait(stands_still, "a still picture")

    # What a person does

    def click(self, part):
        """Presses and releases the mouse on a control, a little aside from where it did last.

        Two clicks on one place, short after one another, are a double click.
        """
        self.press_mouse_on(part)
        self.display.release_mouse()

    def press_mouse_on(self, part):
        self.display.press_mouse(*self._next_place_on(part))

    def click_quickly(self, part, times):
        """A multiple click."""
        place = self._next_place_on(part)
        for _ in range(times):
            self.display.press_mouse(*place)
            self.display.release_mouse()

    def _next_place_on(self, part):
        area, content, self._clicks = part.area, self.content, self._clicks + 1
        aside = area.width * (1 + self._clicks % 4) // 6
        return content.x + area.x + aside, content.y + area.center[1]

    def press(self, title):
        """Clicks the button or box with this title, in the uppermost sheet or else on the page."""
        state = self._wait_until_pressable()
        self.click((state.sheet.shown if state.sheet else state).control(title))

    def _wait_until_pressable(self):
        """In a window without the keys a click only gives it the keys."""
        self.wait_until_placed()
        return self.wait_until_active()

    def hold_down(self, title):
        """Presses the mouse on a button of the page and waits until it shows that."""
        self.press_mouse_on(self._wait_until_pressable().control(title))
        self.wait_for_state(lambda state: state.control(title).pressed, f"{title!r} to be pressed")

    def key(self, *names):
        self.wait_until_active()
        self.display.key(*names)

    def wait_for_tick(self, title, ticked):
        def as_wanted(state):
            view = state.sheet.shown if state.sheet else state
            return view.control(title).state == ticked

        return self.wait_for_state(as_wanted, f"{title!r} to be {'on' if ticked else 'off'}")

    def wait_for_choice(self, place):
        """Waits until something can be pressed at this place, as `State.place` names it."""
        self.wait_until_placed()
        return self.wait_for_state(
            lambda state: state.place == place and state.pressable, f"a button at {place}"
        )

    def finish(self, seconds=PATIENCE):
        """Waits for the last page and presses its button."""
        self.wait_for_page(FINISH, seconds)
        self.press("Finish")
        status = self.wait_for_end()
        assert status == 0, f"the installer ended with {status}"
