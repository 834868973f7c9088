"""Pages and sheets as a whole, to be compared."""

# The pages, by their titles.
WELCOME = "Welcome"
LICENCE = "Licence Agreement"
SETTINGS = "Your User Library"
INSTALLATION = "Installing Morvella"
FINISH = "Morvella Is Installed"
# Before the first page.
INITIAL = "Getting Ready"

CRITICAL, WARNING = 2, 0
STEPS = ["Welcome", "Licence", "User Library", "Installation", "Finish"]


def whole_page(state):
    """All that a page shows, but the pixels and what its sheets show."""
    return {
        "window": state.title,
        "sidebar": state.sidebar,
        "texts": state.texts,
        "controls": [whole_control(control) for control in state.controls],
        "indicators": [whole_indicator(indicator) for indicator in state.indicators],
        "sheets": [sheet.message for sheet in state.sheets],
    }


def page(step, texts, controls, *, indicators=(), sheets=()):
    """What `whole_page` tells of such a page."""
    return {
        "window": "Morvella Installer",
        "sidebar": sidebar(step),
        "texts": list(texts),
        "controls": list(controls),
        "indicators": list(indicators),
        "sheets": list(sheets),
    }


def sidebar(current):
    """A step that is done has a picture instead of its number."""
    shown = ["", "Morvella", "Installer", ""]
    for number, name in enumerate(STEPS, 1):
        shown += ["" if number < current else str(number), name]
    return shown


def whole_control(control):
    return {
        "title": control.title,
        "key": control.key,
        "enabled": control.enabled,
        "hidden": control.hidden,
        "focused": control.focused,
        "ticked": control.state if control.ticks else None,
    }


def button(title, *, key="\r", enabled=True, focused=False):
    return {
        "title": title,
        "key": key,
        "enabled": enabled,
        "hidden": False,
        "focused": focused,
        "ticked": None,
    }


def box(title, ticked, *, enabled=True, hidden=False, focused=False):
    whole = button(title, key="", enabled=enabled, focused=focused)
    return {**whole, "hidden": hidden, "ticked": ticked}


def whole_indicator(indicator):
    return {
        "size": indicator.frame[2:],
        "turns": indicator.running,
        "hidden": indicator.hidden,
        "spinning": indicator.spinning and indicator.indeterminate,
    }


def indicator(size, turns):
    """One that is hidden when it stands still."""
    return {"size": [size, size], "turns": turns, "hidden": not turns, "spinning": True}


def whole_sheet(sheet):
    """What was asked for, and all that the sheet shows of it."""
    return {
        "style": sheet.style,
        "message": sheet.message,
        "informative": sheet.informative,
        "texts": sheet.shown.texts,
        "buttons": [whole_control(button) for button in sheet.buttons],
        "box": sheet.box and whole_control(sheet.box),
        "help": sheet.help,
        "controls": len(sheet.shown.controls),
        "accessory": sheet.accessory
        and [whole_indicator(indicator) for indicator in sheet.accessory.indicators],
        "indicators": [whole_indicator(indicator) for indicator in sheet.shown.indicators],
    }


def sheet(style, message, buttons, *, informative="", tick=None, help=False, accessory=None):
    """What `whole_sheet` tells of such a sheet. `accessory` is an indicator."""
    controls = len(buttons) + (tick is not None) + help
    return {
        "style": style,
        "message": message,
        "informative": informative,
        "texts": [text for text in (message, informative) if text],
        "buttons": list(buttons),
        "box": tick,
        "help": help,
        "controls": controls,
        "accessory": accessory and [accessory],
        "indicators": [accessory] if accessory else [],
    }


def critical_sheet(message):
    return sheet(CRITICAL, message, [button("Quit", focused=True)])
