import os
import stat
from pathlib import Path
from typing import NamedTuple

import pytest

import pages
import snapshot
import stage as stages
from expectations import expect_opened, installed
from folders import ordinary_user, temporary_folder
from scenario import Scenario, lost

UNREADABLE, UNWRITABLE, USUAL = 0o000, 0o555, 0o755

HOME = "Users/musician"
KIT = f"{HOME}/Downloads/Morvella Kit"
LIBRARY = f"{HOME}/Music/Ableton/User Library"
LIVE = "Applications/Live 11 Suite.app"
PREFERENCES = f"{HOME}/Library/Preferences"
SUITE = f"{LIBRARY}/Morvella"
TRASH = f"{HOME}/.local/share/Trash"

OLD_UTILITY = "Applications/Morvella/Tressimo.app/Contents/MacOS/Tressimo"
OLD_DEVICE = f"{SUITE}/Sources/Vellicor.amxd"


class Run(NamedTuple):
    """The outcome of a run; the defaults are those of an undisturbed run."""

    criticals: tuple = ()
    # What is installed afterwards; the shaders count only if they go to Documents.
    installed: tuple = ("fonts", "suite", "utility")
    # The old installation's files that were overwritten and are lost.
    replaced: tuple = ()
    # Whether Live is asked to open the demo Live Set, if there is no critical sheet.
    demo: bool = True


OLD_SUITE_STAYS = (pages.NOT_TRASHED, pages.STILL_THERE)
NOT_INSTALLED = (pages.NOT_INSTALLED,)

UNDISTURBED = Run()
NO_DEMO = Run(demo=False)
NO_USER_LIBRARY = Run((pages.NO_USER_LIBRARY,), installed=())
NO_BACKUP = Run((pages.NO_BACKUP,))
NO_TRASH = Run(OLD_SUITE_STAYS + NOT_INSTALLED, ("fonts", "utility"), (OLD_UTILITY,))
NO_FONT = Run(installed=("suite", "utility"))
NO_SUITE = Run(NOT_INSTALLED, ("fonts", "utility"))
OLD_SUITE_LOCKED = Run((pages.NO_BACKUP, *OLD_SUITE_STAYS, *NOT_INSTALLED), ("fonts", "utility"))
OLD_SUITE_HALF_REPLACED = Run(OLD_SUITE_STAYS + NOT_INSTALLED, ("fonts", "utility"))
OLD_SUITE_REPLACED = Run((pages.NO_BACKUP, *OLD_SUITE_STAYS), replaced=(OLD_DEVICE,))
OLD_UTILITY_REPLACED = Run(replaced=(OLD_UTILITY,))
NO_UTILITY = Run((pages.NO_UTILITIES,), ("fonts", "suite"))
SHADERS_TO_DOCUMENTS = Run(installed=("fonts", "suite", "utility", "shaders"))

# The installer exits: it cannot verify that the home folder is inside the stage.
REFUSED = None
# The outcomes of a run if a folder is unreadable, and if it is read-only. For all other folders
# neither makes a difference.
RUNS = {
    # The stub Live application records here what it was asked to open.
    ".": (REFUSED, NO_DEMO),
    "Applications": (NO_USER_LIBRARY, OLD_UTILITY_REPLACED),
    LIVE: (NO_USER_LIBRARY, UNDISTURBED),
    f"{LIVE}/Contents": (NO_USER_LIBRARY, UNDISTURBED),
    f"{LIVE}/Contents/MacOS": (NO_DEMO, UNDISTURBED),
    "Applications/Morvella": (NO_UTILITY, OLD_UTILITY_REPLACED),
    "Users": (REFUSED, UNDISTURBED),
    "Users/Shared": (SHADERS_TO_DOCUMENTS, UNDISTURBED),
    HOME: (NO_USER_LIBRARY, UNDISTURBED),
    f"{HOME}/.local": (NO_TRASH, UNDISTURBED),
    f"{HOME}/.local/share": (NO_TRASH, UNDISTURBED),
    TRASH: (NO_TRASH, UNDISTURBED),
    f"{TRASH}/files": (NO_TRASH, NO_TRASH),
    f"{TRASH}/info": (NO_TRASH, NO_TRASH),
    f"{HOME}/Downloads": (NO_DEMO, UNDISTURBED),
    KIT: (NO_DEMO, UNDISTURBED),
    f"{KIT}/Morvella Basic Demo Project": (NO_DEMO, UNDISTURBED),
    f"{HOME}/Library": (NO_USER_LIBRARY, UNDISTURBED),
    f"{HOME}/Library/Fonts": (NO_FONT, NO_FONT),
    PREFERENCES: (NO_USER_LIBRARY, UNDISTURBED),
    f"{PREFERENCES}/Ableton": (NO_USER_LIBRARY, UNDISTURBED),
    f"{PREFERENCES}/Ableton/Live 11.3.4": (NO_USER_LIBRARY, UNDISTURBED),
    LIBRARY: (NO_SUITE, OLD_SUITE_REPLACED),
    SUITE: (OLD_SUITE_LOCKED, OLD_SUITE_HALF_REPLACED),
    f"{SUITE}/.Morvella.app": (NO_BACKUP, UNDISTURBED),
    f"{SUITE}/.Morvella.app/Contents": (NO_BACKUP, UNDISTURBED),
    f"{SUITE}/.Morvella.app/Contents/MacOS": (NO_BACKUP, UNDISTURBED),
    f"{SUITE}/My Patches": (NO_BACKUP, UNDISTURBED),
    f"{SUITE}/Sources": (NO_BACKUP, UNDISTURBED),
}


def make_stage(folder):
    stage = stages.make(folder, previous=True)
    for name in ("files", "info"):
        (stage.trash / name).mkdir(parents=True)
    return stage


def pytest_generate_tests(metafunc):
    """Each folder with each mode. One sweep of a mode covers the home folder, another the rest."""
    with temporary_folder("permissions") as folder:
        items = snapshot.of_folder(make_stage(folder / "stage").root).items()
    places = [".", *sorted(str(path) for path, item in items if item == snapshot.FOLDER)]
    assert RUNS.keys() <= set(places)
    points = [
        pytest.param(
            place,
            mode,
            marks=pytest.mark.sweep(place.startswith(HOME), mode),
            id=f"{mode:o} {place}",
        )
        for mode in (UNREADABLE, UNWRITABLE)
        for place in places
    ]
    metafunc.parametrize(("place", "mode"), points)


class TestPermissions(Scenario):
    """Takes away an ordinary user's access to each folder of the stage in turn."""

    def test_folder(self, place, mode):
        run = RUNS.get(place, (UNDISTURBED, UNDISTURBED))[mode == UNWRITABLE]
        stage = make_stage(self.folder / "stage")
        before = self.snapshot(stage)
        with self.untouched_elsewhere(stage):
            user = ordinary_user(stage.root)
            (stage.root / place).chmod(mode)
            if run is REFUSED:
                self.expect_refused(stage, user)
            else:
                # The installer looks for the User Library again only after this sheet is answered.
                back = {pages.NOT_AVAILABLE: lambda: give_back(stage.root, mode)}
                options = {"before": back, "user": user, "elsewhere": True}
                self.run(stage, criticals=run.criticals, **options)
            give_back(stage.root, mode)
        if run is not REFUSED:
            assert lost(stage, before) == list(run.replaced)
            self.expect_installed(stage, run.installed)
            opened = run.demo and not run.criticals
            expect_opened(stage, [stage.demo_set] if opened else [])

    def expect_refused(self, stage, user):
        with self.launch(stage, user=user) as installer:
            assert installer.wait_for_end() == 2
            assert installer.log == ["HOME must name a folder inside MORVELLA_STAGE.\n"]

    def expect_installed(self, stage, names):
        after = self.snapshot(stage)
        none = {"with_fonts": False, "suite_to": None, "utilities_to": None, "shaders_to": None}
        pieces = {
            "fonts": {"with_fonts": True},
            "suite": {"suite_to": True},
            "utility": {"utilities_to": True},
            "shaders": {"shaders_to": stage.documents / "Morvella"},
        }
        for name, place in pieces.items():
            items = installed(self.bundle, stage, **{**none, **place})
            # The earlier version installed one of the fonts, which stays.
            items.pop((stage.fonts / "OpenSans-Regular.ttf").relative_to(stage.root), None)
            assert (items.items() <= after.items()) == (name in names), f"unexpected state: {name}"


def give_back(root, mode):
    """Makes the folder usable again, wherever it has been moved, before descending into it."""
    folders = [root]
    while folders:
        folder = folders.pop()
        if stat.S_IMODE(folder.lstat().st_mode) == mode:
            folder.chmod(USUAL)
        folders += [
            Path(found) for found in os.scandir(folder) if found.is_dir(follow_symlinks=False)
        ]
