"""The installer's pages, in order, and the texts of its sheets."""

from typing import NamedTuple


class Page(NamedTuple):
    title: str
    button: str  # leads to the next page; empty if the page advances by itself
    picture: str  # its name in docs/images


PAGES = (
    Page(WELCOME := "Welcome", "Next", "welcome"),
    Page(LICENCE := "Licence Agreement", "Accept", "licence"),
    Page(SETTINGS := "Your User Library", "Next", "settings"),
    Page(INSTALLATION := "Installing Morvella", "", "installation"),
    Page(FINISH := "Morvella Is Installed", "Finish", "post-installation"),
)
# Shown before the first page.
INITIAL = "Getting Ready"

# Critical sheets, after which the installer quits.
BUNDLE_CORRUPT = "Installer bundle corrupt, please dowload the installer again or contact support."
UNKNOWN_STATE = (
    "The installer reached an unkown state, please try restarting the installer.\n"
    "If the problem persists, please contact support."
)
NO_LIVE_SET = "Installer can be run only through the provided Live Set"
NO_USER_LIBRARY = "Couldn't get user library path."
NO_BACKUP = (
    "Couldn't make automatic backup of the current installation.\n\n"
    "Please backup and delete Morvella folder from the user library and run the installer again."
)
NOT_TRASHED = "Couldn't move Morvella folder to trash."
STILL_THERE = "Old Morvella folder still presists, aborting."
NO_APPLICATIONS = "Could not access /Applications folder, aborting."
NO_UTILITIES = "Could not install utilities, aborting."
NO_USER_FILES = "Could not install user files, aborting."
NOT_INSTALLED = "Install failed"
NOT_VERIFIED = "Install failed to verify, aborting."

# Sheets after which the installer continues.
PREVIOUS_INSTALLATION = "Previous installation of Morvella must be deleted."
MAKE_BACKUP = (
    "Make a zip backup of the current Morvella folder.\n"
    "Backups are located in the user library folder."
)
NOT_AVAILABLE = "User Library is currently not available"

OPEN_DEMO = "Open the demo Live Set in Live now"
