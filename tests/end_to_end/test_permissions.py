import os
import stat
from pathlib import Path

import pytest

import disturbed
import snapshot
from disturbed import Run
from expectations import FONTS, expect_opened, installed
from fault import Fault, lost
from walking import nothing, walk

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

UNDISTURBED = Run()
NO_DEMO = Run(demo=False)
WAITS = Run(previous=disturbed.unavailable)
NO_USER_LIBRARY = Run(
    previous=disturbed.no_user_library,
    fonts=disturbed.nothing,
    suite=disturbed.nothing,
    utility=disturbed.nothing,
    end=disturbed.nothing,
    installed=(),
)
NO_BACKUP = Run(previous=disturbed.not_backed_up)
NO_TRASH = Run(
    previous=disturbed.not_trashed,
    utility=disturbed.old_utility_kept,
    end=disturbed.old_app_kept,
    installed=("fonts", "utility"),
    replaced=(OLD_UTILITY,),
)
NO_FONT = Run(fonts=disturbed.fonts_not_copied(present=()), installed=("suite", "utility"))
ONE_FONT = NO_FONT._replace(fonts=disturbed.fonts_not_copied(present=FONTS[1:]))
NO_SUITE = Run(
    previous=disturbed.nothing,
    suite=disturbed.suite_refused,
    end=disturbed.not_hidden,
    installed=("fonts", "utility"),
)
OLD_SUITE_CLOSED = NO_SUITE._replace(previous=disturbed.not_accessible)
OLD_SUITE_HALF_REPLACED = NO_SUITE._replace(previous=disturbed.not_trashed)
OLD_SUITE_REPLACED = Run(
    previous=disturbed.not_accessible, end=disturbed.old_app_replaced, replaced=(OLD_DEVICE,)
)
OLD_UTILITY_REPLACED = Run(utility=disturbed.old_utility_kept, replaced=(OLD_UTILITY,))
NO_UTILITY = Run(utility=disturbed.utility_refused, installed=("fonts", "suite"))
SHADERS_TO_DOCUMENTS = Run(
    shaders=disturbed.shaders_to_documents, installed=("fonts", "suite", "utility", "shaders")
)

# Nobody can see then that the home lies inside the stage.
REFUSED = None

# How a run goes when the user may not look into a folder, and when the user may not write to it.
RUNS = {
    # Live on the stage could not record there that it was asked to open anything.
    ".": (REFUSED, NO_DEMO),
    "Applications": (NO_USER_LIBRARY, OLD_UTILITY_REPLACED),
    LIVE: (NO_USER_LIBRARY, UNDISTURBED),
    f"{LIVE}/Contents": (NO_USER_LIBRARY, UNDISTURBED),
    f"{LIVE}/Contents/MacOS": (NO_DEMO, UNDISTURBED),
    "Applications/Morvella": (NO_UTILITY, OLD_UTILITY_REPLACED),
    "Applications/Morvella/Tressimo.app": (UNDISTURBED, UNDISTURBED),
    "Applications/Morvella/Tressimo.app/Contents": (UNDISTURBED, UNDISTURBED),
    "Applications/Morvella/Tressimo.app/Contents/MacOS": (UNDISTURBED, UNDISTURBED),
    "Users": (REFUSED, UNDISTURBED),
    "Users/Shared": (SHADERS_TO_DOCUMENTS, UNDISTURBED),
    "Users/Shared/Morvella": (UNDISTURBED, UNDISTURBED),
    "Users/Shared/Morvella/ISF": (UNDISTURBED, UNDISTURBED),
    "Users/Shared/Morvella/ISF/Dariwent": (UNDISTURBED, UNDISTURBED),
    HOME: (NO_USER_LIBRARY, UNDISTURBED),
    f"{HOME}/.local": (NO_TRASH, UNDISTURBED),
    f"{HOME}/.local/share": (NO_TRASH, UNDISTURBED),
    TRASH: (NO_TRASH, UNDISTURBED),
    f"{TRASH}/files": (NO_TRASH, NO_TRASH),
    f"{TRASH}/info": (NO_TRASH, NO_TRASH),
    f"{HOME}/Documents": (UNDISTURBED, UNDISTURBED),
    f"{HOME}/Downloads": (NO_DEMO, UNDISTURBED),
    KIT: (NO_DEMO, UNDISTURBED),
    f"{KIT}/Morvella Basic Demo Project": (NO_DEMO, UNDISTURBED),
    f"{HOME}/Library": (NO_USER_LIBRARY, UNDISTURBED),
    f"{HOME}/Library/Fonts": (NO_FONT, ONE_FONT),
    PREFERENCES: (NO_USER_LIBRARY, UNDISTURBED),
    f"{PREFERENCES}/Ableton": (NO_USER_LIBRARY, UNDISTURBED),
    f"{PREFERENCES}/Ableton/Live 11.3.4": (NO_USER_LIBRARY, UNDISTURBED),
    f"{HOME}/Music": (WAITS, UNDISTURBED),
    f"{HOME}/Music/Ableton": (WAITS, UNDISTURBED),
    LIBRARY: (NO_SUITE, OLD_SUITE_REPLACED),
    f"{LIBRARY}/Presets": (UNDISTURBED, UNDISTURBED),
    f"{LIBRARY}/Presets/Instruments": (UNDISTURBED, UNDISTURBED),
    f"{LIBRARY}/Samples": (UNDISTURBED, UNDISTURBED),
    f"{LIBRARY}/Samples/Recorded": (UNDISTURBED, UNDISTURBED),
    SUITE: (OLD_SUITE_CLOSED, OLD_SUITE_HALF_REPLACED),
    f"{SUITE}/.Morvella.app": (NO_BACKUP, UNDISTURBED),
    f"{SUITE}/.Morvella.app/Contents": (NO_BACKUP, UNDISTURBED),
    f"{SUITE}/.Morvella.app/Contents/MacOS": (NO_BACKUP, UNDISTURBED),
    f"{SUITE}/My Patches": (NO_BACKUP, UNDISTURBED),
    f"{SUITE}/Sources": (NO_BACKUP, UNDISTURBED),
    "Volumes": (UNDISTURBED, UNDISTURBED),
}


def points():
    """Each folder with each of the two modes; the sweeps are those of the user's own folders."""
    for mode in (UNREADABLE, UNWRITABLE):
        for place in RUNS:
            of_user = place.startswith(f"{HOME}/")
            yield pytest.param(
                place, mode, marks=pytest.mark.sweep(of_user, mode), id=f"{mode:o} {place}"
            )


POINTS = list(points())


class TestPermissions(Fault):
    """Each folder of the stage in turn is one that an ordinary user may not use."""

    @pytest.fixture(autouse=True)
    def copy(self, prepare):
        self.bundle = self.copy_bundle()  # Every user may read this one.

    def test_table_names_every_folder(self):
        stage = self.make_stage_with_trash()
        items = self.snapshot(stage).items()
        folders = {str(path) for path, item in items if item == snapshot.FOLDER}
        assert RUNS.keys() == folders | {"."}

    @pytest.mark.parametrize(("place", "mode"), POINTS)
    def test_folder(self, place, mode):
        run = RUNS[place][mode == UNWRITABLE]
        stage = self.make_stage_with_trash()
        user = self.ordinary_user(stage)
        if run is REFUSED:
            self.expect_refused(stage, place, mode, user)
        else:
            self.expect_as_told(run, stage, place, mode, user)

    def expect_refused(self, stage, place, mode, user):
        with self.untouched_elsewhere(stage):
            (stage.root / place).chmod(mode)
            with self.launch(stage, user=user) as installer:
                assert installer.wait_for_end() == 2
                self.expect_log(installer, "HOME must name a folder inside MORVELLA_STAGE.\n")
            give_back(stage.root, mode)

    def expect_as_told(self, run, stage, place, mode, user):
        before = self.snapshot(stage)
        with self.untouched_elsewhere(stage):
            (stage.root / place).chmod(mode)
            with self.launch(stage, user=user) as installer:
                assert walk(installer, self.actions(installer, mode, run)) == 0
                self.expect_log(installer, *run.log(self.bundle, stage))
                criticals = [line for line in installer.log if line.startswith("critical")]
            give_back(stage.root, mode)
        assert lost(stage, before) == list(run.replaced)
        self.expect_installed(stage, run.installed)
        expect_opened(stage, [str(stage.demo_set)] if run.demo and not criticals else [])

    def make_stage_with_trash(self):
        stage = self.make_stage(previous=True)
        for folder in ("files", "info"):
            (stage.trash / folder).mkdir(parents=True)
        return stage

    def actions(self, installer, mode, run):
        """What to do before each page is left, the sheet about the User Library counted as one."""
        if run != WAITS:
            return []
        # Before the sheet that says so is answered; it is looked for only then.
        return [nothing, nothing, lambda: give_back(installer.stage.root, mode)]

    def expect_installed(self, stage, names):
        after = self.snapshot(stage)
        none = {"fonts": (), "suite_to": None, "utilities_to": None, "shaders_to": None}
        pieces = {
            "fonts": {"fonts": FONTS[:1]},
            "suite": {"suite_to": True},
            "utility": {"utilities_to": True},
            "shaders": {"shaders_to": stage.documents / "Morvella"},
        }
        for name, place in pieces.items():
            items = installed(self.bundle, stage, **{**none, **place}).items()
            assert (items <= after.items()) == (name in names), f"{name} in place"


def give_back(root, mode):
    """Makes the folder usable again, wherever it has gone to."""
    for folder in folders_in(root):
        if stat.S_IMODE(folder.lstat().st_mode) == mode:
            folder.chmod(USUAL)


def folders_in(root):
    """Each comes before it is looked into."""
    yield root
    for folder, names, _ in os.walk(root):
        for name in names:
            yield Path(folder) / name
