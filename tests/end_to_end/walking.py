"""Through everything that comes up, to the end of the installer, by what Return would press."""

from descriptions import CRITICAL, INSTALLATION
from expectations import HIDING
from processes import children
from waiting import PATIENCE, wait_until

ENDED = object()


def walk(installer, actions=(), seconds=PATIENCE):
    """Clicks the default button of every page and sheet until the installer has ended.

    `actions` are called before the first clicks, one before each. No step may take more `seconds`.
    Returns the exit status.
    """
    actions = iter(actions)
    state = await_choice(installer, None)
    while state:
        next(actions, lambda: None)()
        state = go_on(installer, state, seconds)
    return installer.wait_for_end()


def go_on(installer, state, seconds=PATIENCE):
    """Clicks the default button; the state that offers the next one, None at the end."""
    installer.click(installer.wait_for_choice(state.place).pressable)
    return await_choice(installer, state.place, seconds)


def await_choice(installer, before, seconds=PATIENCE):
    """Waits until there is something to press elsewhere than at `before`; None if it ended."""
    last = None

    def choice():
        nonlocal last
        state = installer.state(seconds)
        if not state:
            return ENDED if installer.process.poll() is not None else None
        works = children(installer.process.pid) or not state.visible or installs(installer, state)
        last, same = (state.page, state.place), last == (state.page, state.place)
        return state if same and not works and state.place != before and state.pressable else None

    found = wait_until(choice, f"what comes after {before}", seconds)
    return None if found is ENDED else found


def installs(installer, state):
    """Whether the installation goes on behind a critical sheet, or is about to begin there."""
    critical = state.sheet and state.sheet.style == CRITICAL
    return state.page == INSTALLATION and critical and HIDING not in installer.log


def nothing():
    """An action where none is wanted."""
