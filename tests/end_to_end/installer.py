"""The installer in its real window. The inspector reads what it shows; buttons are pressed as
VoiceOver presses them, or by the real mouse and keyboard."""

import time

from application import Application
from display import Rectangle
from inspector import Inspector
from pages import FINISH, INSTALLATION, PAGES
from waiting import PATIENCE, TimedOut

# A press counts this many seconds after the last press and the last change of page or sheet; a
# little longer than the installer requires.
DELIBERATE = 0.6
# How often a picture must repeat before it counts as still.
STILL_PICTURES = 4
# The size of the window's content.
SIZE = [720, 480]


class Installer(Application):
    def __init__(self, display, bundle, stage, arguments=None, *, build=None, gate=None, **options):
        """`build` is the folder in which the bundle was built, if it is elsewhere now."""
        super().__init__(display, bundle, stage, arguments, **options)
        self.gate, self._inspector = gate, Inspector(build or self.bundle.parent, gate)
        self._placed, self._shown, self._since = None, None, 0.0

    def __enter__(self):
        self.environment.update(self._inspector.__enter__().environment)
        return super().__enter__()

    def __exit__(self, *failure):
        super().__exit__(*failure)
        self._inspector.__exit__(*failure)

    # What it shows

    def state(self, seconds=PATIENCE):
        """What the window shows, as soon as the main thread waits; None once it has ended."""
        try:
            state = self._inspector.state(seconds)
        except TimeoutError:
            raise TimedOut(f"it did not answer in {seconds:g} seconds\n{self.output}") from None
        shown = state and (state.visible, state.page, len(state.sheets))
        if shown != self._shown:
            self._shown, self._since = shown, time.monotonic()
        return state

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

    def wait_for(self, place, seconds=PATIENCE):
        """Waits until it is idle at a place: a page without a sheet, or a sheet by its message."""
        return self.wait_for_state(
            lambda state: is_idle(state) and state.place == place, place, seconds
        )

    def wait_for_button(self, title):
        """Waits until it is idle and the uppermost sheet, or else the page, has such a button."""

        def has_button(state):
            titles = [control.title for control in state.view.controls if control.enabled]
            return is_idle(state) and title in titles

        return self.wait_for_state(has_button, f"a button {title!r} to press")

    @property
    def content(self):
        """Where the window's content lies on the screen, below the menu in the window."""
        if not self._placed or self.display.area(self._placed[0]) != self._placed[1]:
            self._placed = self._settled_window()
        _, area, (_, _, width, height) = self._placed
        width, height = round(width), round(height)
        return Rectangle(area.x, area.y + area.height - height, width, height)

    def _settled_window(self):
        """The window, its rectangle on the screen and its content's rectangle in it.

        GNUstep adds the menu when the window becomes active, which resizes and moves the window.
        """
        last, seen = None, 0

        def settled(state):
            nonlocal last, seen
            area = self.display.area(state.window)
            complete = state.size[3] < state.height == area.height
            seen = seen + 1 if complete and (state.window, area, state.size) == last else 0
            last = state.window, area, state.size
            # GNUstep sometimes makes the page shorter by the menu's height, permanently.
            return seen >= (STILL_PICTURES if state.size[2:] == SIZE else 10 * STILL_PICTURES)

        self.wait_until_active()
        self.wait_for_state(settled, "the window to have its menu")
        return last

    def wait_until_active(self):
        """Waits until its window has the keyboard focus."""
        return self.wait_for_state(
            lambda state: state.key and self.display.active_window() == state.window,
            "the window to be active",
        )

    def picture(self):
        """The window's content once it no longer changes, except for progress indicators."""
        content, state = self.content, self.state()
        views = [state.page_view, *(sheet["shown"] for sheet in state.sheets)]
        moving = [area_of(indicator) for view in views for indicator in view.indicators]
        last, seen = None, 0

        def still_picture():
            nonlocal last, seen
            now = self.display.picture(content)
            blanked = now.copy()
            for area in moving:
                blanked.paste("white", area.box)
            last, seen = blanked, seen + 1 if blanked == last else 0
            return now if seen >= STILL_PICTURES else None

        return self.wait(still_picture, "a still picture")

    # Presses as VoiceOver makes them, which have no event and so always count

    def perform(self, title, at=None):
        """Presses the button or box with this title as soon as it can be pressed."""
        if at:
            self.wait_for(at)
        self.wait_for_button(title)
        assert self._inspector.ask(title, PATIENCE) == {"done": True}, title

    def make_indicators_raise(self):
        """From now on starting a progress indicator raises an Objective-C exception."""
        assert self._inspector.ask("make indicators raise", PATIENCE) == {"done": True}

    def go_to(self, title):
        """Walks from the first page to this one, whatever sheet it shows then."""
        self._leave_pages_before(title)
        return self.wait_for_state(lambda state: is_idle(state) and state.page == title, title)

    def begin_installation(self):
        """Walks from the first page to the installation; does not wait for its outcome."""
        self._leave_pages_before(INSTALLATION)

    def _leave_pages_before(self, title):
        for page in PAGES[: [page.title for page in PAGES].index(title)]:
            if page.button:
                self.perform(page.button, at=page.title)

    def finish(self):
        """Leaves the last page; waits for the end."""
        self.perform(PAGES[-1].button, at=FINISH)
        self.expect_end()

    def walk_to_the_end(self, before=None, seconds=PATIENCE):
        """Presses the default button of every page and sheet until the installer has ended.

        `before` maps places to actions to take there before the button is pressed."""
        place = None
        while state := self._next_choice(place, seconds):
            place = state.place
            if before and place in before:
                before[place]()
                state = self.wait_for_state(
                    lambda state: state.place == place and state.view.default, "a button"
                )
            self.perform(state.view.default.title)
        self.expect_end()

    def _next_choice(self, place, seconds):
        """Waits for a default button at another place; returns None if the installer ended."""

        def choice():
            if self.process.poll() is not None:
                return [None]
            state = self.state(seconds)
            is_choice = state and is_idle(state) and state.place != place and state.view.default
            return [state] if is_choice else []

        (found,) = self.wait(choice, f"what comes after {place}", seconds)
        return found

    def expect_end(self):
        status = self.wait_for_end()
        assert status == 0, f"the installer ended with {status}\n{self.output}"

    # Presses of the real mouse and the real keyboard

    def wait_to_press(self):
        """Waits until a press would start a new series and so count."""
        self.wait_for_state(is_idle, "it to be idle")
        self.content  # Waits for the menu, which moves everything.
        state = self.wait_until_active()
        counts = max(self._since, self.display.last_press) + DELIBERATE
        time.sleep(max(0.0, counts - time.monotonic()))
        return state

    def place_of(self, control):
        content, area = self.content, area_of(control)
        return content.x + area.x + area.width // 2, content.y + area.y + area.height // 2

    def click(self, title):
        """Clicks a button or box in the uppermost sheet or else on the page."""
        self.wait_for_button(title)
        state = self.wait_to_press()
        self.display.click(*self.place_of(state.view.control(title)))

    def hold_down(self, title):
        """Presses the mouse on a button and waits until it looks pressed."""
        state = self.wait_to_press()
        self.display.press_mouse(*self.place_of(state.view.control(title)))
        self.wait_for_state(lambda state: state.view.control(title).pressed, f"a pressed {title!r}")

    def key(self, *names):
        for name in names:
            self.wait_to_press()
            self.display.key(name)


def is_idle(state):
    """Whether the window is visible and the main thread waits for nothing but events."""
    return state.visible and not state.working


def area_of(part):
    """Measured from the upper left corner of the window's content."""
    return Rectangle(*map(round, part.frame))
