"""A stage: a folder laid out like a Mac's disk, with a user, Ableton Live and the suite's kit.

The installer never looks outside the stage named by MORVELLA_STAGE and HOME, so a run changes
nothing else on this machine.
"""

import plistlib
from dataclasses import dataclass
from pathlib import Path

LIVE_VERSION = "11.3.4"
DEMO_SET = "Morvella Basic Demo Project/Morvella Basic Demo.als"

LIVE_STUB = """#!/bin/sh
# Stands in for Ableton Live: records every document that it is asked to open, one per line.
bundle=${0%/Contents/MacOS/Live}
stage=${bundle%/*/*}
for document in "$@"; do
    printf '%s\\n' "$document" >>"$stage/opened-documents.txt"
done
"""

LIBRARY_CFG = """<?xml version="1.0" encoding="UTF-8"?>
<Ableton MajorVersion="5" MinorVersion="11.0_11300" Creator="Ableton Live {version}">
\t<ContentLibrary>
\t\t<LibraryProjects>
\t\t\t<LibraryProject Id="0">
\t\t\t\t<ProjectName Value="Rehearsal Takes" />
\t\t\t\t<ProjectPath Value="{home}/Music/Sessions" />
\t\t\t</LibraryProject>
\t\t</LibraryProjects>
\t\t<UserLibrary>
\t\t\t<LibraryProject Id="0">
\t\t\t\t<ProjectId Value="-1" />
\t\t\t\t<ProjectName Value="{name}" />
\t\t\t\t<ProjectPath Value="{parent}" />
\t\t\t\t<Indexed Value="true" />
\t\t\t</LibraryProject>
\t\t</UserLibrary>
\t</ContentLibrary>
</Ableton>
"""


@dataclass(frozen=True)
class Names:
    """The names on the stage that users choose themselves."""

    user: str = "musician"
    live: str = "Live 11 Suite.app"
    library: str = "User Library"
    kit: str = "Morvella Kit"
    volume: str = "Studio Drive"


class Stage:
    """The paths of everything on it, and the options it was made with."""

    def __init__(self, root, previous, obstructed, unmounted, demo, names):
        self.root, self.names, self.unmounted = root, names, unmounted
        self.previous, self.obstructed, self.demo = previous, obstructed, demo
        self.home = root / "Users" / names.user
        self.documents = self.home / "Documents"
        self.fonts = self.home / "Library/Fonts"
        self.trash = self.home / ".local/share/Trash"
        self.kit = self.home / "Downloads" / names.kit
        self.demo_set = self.kit / DEMO_SET
        preferences = self.home / "Library/Preferences/Ableton"
        self.library_cfg = preferences / f"Live {LIVE_VERSION}/Library.cfg"

        self.volume = root / "Volumes" / names.volume
        self.unmounted_volume = root / "Unmounted" / names.volume
        disk = self.volume if unmounted else self.home
        self.user_library = disk / "Music/Ableton" / names.library
        self.destination = self.user_library / "Morvella"

        self.applications = root / "Applications"
        self.utilities = self.applications / "Morvella"
        self.live_app = self.applications / names.live
        self.live_executable = self.live_app / "Contents/MacOS/Live"
        self.shared = root / "Users/Shared"
        self.shared_data = self.shared / "Morvella"

        self.environment = {"MORVELLA_STAGE": str(root), "HOME": str(self.home)}
        self.arguments = ["-liveapp", str(self.live_executable), "-app", f"{self.kit}/"]

    @property
    def places(self):
        """Everything that an installation may change, the Trash included."""
        documents, trash = self.documents / "Morvella", self.home / ".local"
        places = [self.user_library, self.applications, self.shared, self.fonts]
        return [*places, documents, trash, self.volume]

    @property
    def opened_documents(self):
        """What the Live application has been asked to open so far."""
        record = self.root / "opened-documents.txt"
        return record.read_text(encoding="utf-8").splitlines() if record.exists() else []

    def mount(self):
        """Mounts the missing volume; one rename, so it appears all at once."""
        self.unmounted_volume.rename(self.volume)


def make(root, *, previous=False, obstructed=False, unmounted=False, demo=True, names=Names()):
    """Builds a stage in the folder `root`, which must be empty or not exist yet."""
    root = Path(root).resolve()
    if any(mark in str(root / names.library) for mark in '"\n\r'):
        raise ValueError("a User Library's path cannot contain a double quote or a line break")
    if root.exists() and (not root.is_dir() or any(root.iterdir())):
        raise ValueError(f"{root} exists and is not an empty folder")
    stage = Stage(root, previous, obstructed, unmounted, demo, names)
    _make_folders(stage)
    _make_live(stage)
    folder = {"name": names.library, "parent": stage.user_library.parent}
    content = LIBRARY_CFG.format(version=LIVE_VERSION, home=stage.home, **folder)
    _write(stage.library_cfg, content)
    if demo:
        _write(stage.demo_set, "the demo Live Set of the Morvella kit\n")
    if previous:
        _make_previous_installation(stage)
    if obstructed:
        stage.destination.symlink_to("Morvella of Another Disk")
    if unmounted:
        stage.volume.rename(stage.unmounted_volume)
    return stage


OPTIONS = {
    "previous": "there is an earlier installation, with the user's own files in it",
    "obstructed": "a dangling link is in the way of the suite's folder; no backup can be made",
    "unmounted": "the User Library's volume is not mounted",
    "no-demo": "the kit folder lacks the demo Live Set",
}


def add_options(parser):
    """The options of script/stage, script/run and the tour."""
    for name, meaning in OPTIONS.items():
        parser.add_argument(f"--{name}", action="store_true", help=meaning)


def chosen(options):
    """What `make` takes, from the options that `add_options` added."""
    names = ("previous", "obstructed", "unmounted")
    return {**{name: getattr(options, name) for name in names}, "demo": not options.no_demo}


def _write(path, content):
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_text(content, encoding="utf-8")


def _make_folders(stage):
    for folder in (stage.fonts, stage.documents, stage.shared, stage.kit, stage.root / "Volumes"):
        folder.mkdir(parents=True)
    if stage.unmounted:
        stage.unmounted_volume.parent.mkdir()
    _write(stage.user_library / "Presets/Instruments/Soft Keys.adg", "a preset of the user's own\n")
    _write(stage.user_library / "Samples/Recorded/Rain.wav", "a recording of the user's own\n")


def _make_live(stage):
    info = {
        "CFBundleExecutable": "Live",
        "CFBundleIdentifier": "com.ableton.live",
        "CFBundleName": "Live",
        "CFBundleShortVersionString": LIVE_VERSION,
        "CFBundleVersion": f"{LIVE_VERSION} (2023-06-12_5ac24cad7c)",
    }
    stage.live_executable.parent.mkdir(parents=True)
    (stage.live_app / "Contents/Info.plist").write_bytes(plistlib.dumps(info))
    _write(stage.live_executable, LIVE_STUB)
    stage.live_executable.chmod(0o755)


def _make_previous_installation(stage):
    """An installation by an earlier version, which had one font less, and the user's own work."""
    suite = stage.destination
    _write(suite / "Sources/Vellicor.amxd", "Vellicor of an earlier version\n")
    _write(suite / "Sources/Retired.amxd", "a device that is not shipped any more\n")
    _write(
        suite / ".Morvella.app/Contents/MacOS/Morvella", "the application of an earlier version\n"
    )
    _write(suite / "My Patches/Evening Drone.adv", "a patch of the user's own\n")
    _write(stage.utilities / "Tressimo.app/Contents/MacOS/Tressimo", "an earlier version\n")
    _write(stage.shared_data / "ISF/Dariwent/Waves.fs", "a shader of an earlier version\n")
    _write(stage.fonts / "OpenSans-Regular.ttf", "the font as an earlier version brought it\n")
