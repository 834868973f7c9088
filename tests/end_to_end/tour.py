#!/usr/bin/env python3
"""Clicks through all pages of the installer in its real window, from the first to the last.

Prints the installer's log and what was installed. Succeeds only if the installation is complete,
the demo Live Set was passed to the Live application, and the installer quit by itself. If no backup
can be made, the tour ends at the critical sheet.
"""

import argparse
import shutil
import sys
from pathlib import Path

import expectations
import log_lines
import folders
import snapshot
import stage as stages
from display import Display
from gate import Gate
from installer import Installer
from pages import INSTALLATION, NO_BACKUP, NOT_AVAILABLE, PAGES, PREVIOUS_INSTALLATION, SETTINGS
from product import FONTS

# The gate holds changes to paths that contain these.
BACKUP, TRASH, SUITE = "MorvellaBackup", ".local/share/Trash", "Morvella/Sources"


class Tour:
    """`keep(name, picture)` gets a picture of each page and sheet. The installer needs a gate."""

    def __init__(self, installer, keep):
        self.installer, self.gate, self.stage = installer, installer.gate, installer.stage
        self._keep = keep
        self._before = snapshot.of_folder(self.stage.root)

    def walk(self):
        """Walks from the first page until the process has ended by itself."""
        installer = self.installer
        for page in PAGES:
            if page.title == SETTINGS and self.stage.unmounted:
                self._mount_the_volume()
            if page.title == INSTALLATION:
                self._watch_installation()
                if self.stage.obstructed:
                    installer.click("Quit")
                    break
            else:
                installer.wait_for(page.title)
                installer.wait_for_button(page.button)
            self._show(page.picture)
            if page.title == SETTINGS:
                first = BACKUP if self.stage.previous else SUITE
                self.gate.hold_next(TRASH if self.stage.obstructed else first)
            if page.button:
                installer.click(page.button)
            else:
                self.gate.open()
        installer.expect_end()

    def _show(self, name):
        self._keep(name, self.installer.picture())

    def _mount_the_volume(self):
        self.installer.wait_for(NOT_AVAILABLE)
        self._show("volume-missing-sheet")
        self.installer.click("OK")
        self.installer.wait_for(SETTINGS)
        self._show("settings-waiting")
        self.stage.mount()

    def _watch_installation(self):
        """Holds the installation while its pictures are taken."""
        if self.stage.previous or self.stage.obstructed:
            self.installer.wait_for(PREVIOUS_INSTALLATION)
            self._show("previous-installation-sheet")
            self.installer.click("Continue")
        self.gate.wait()
        if self.stage.obstructed:
            self._show("critical-sheet")
            self.gate.open()
            self.installer.wait_for(NO_BACKUP)
        elif self.stage.previous:
            self._show("backup")
            self.gate.hold_next(SUITE)
            self.gate.wait()

    def expect_complete(self):
        """Everything is where it belongs, no user file is lost, and the demo Live Set is open."""
        stage, bundle = self.stage, self.installer.bundle
        asked = log_lines.criticals(self.installer.log)
        assert asked == ([NO_BACKUP] if stage.obstructed else []), asked
        expected, trashed = dict(self._before), {}
        if stage.unmounted:
            old, new = (p.relative_to(stage.root) for p in (stage.unmounted_volume, stage.volume))
            expected = snapshot.moved(expected, old, new)
        if stage.previous:
            for name, old in (("Morvella", stage.destination), ("Morvella.2", stage.utilities)):
                place = old.relative_to(stage.root)
                trashed[name] = snapshot.below(expected, place)
                expected = snapshot.without(expected, place)
            expected.update(expectations.expect_backup(stage, trashed["Morvella"]))
        if stage.obstructed:
            place = stage.destination.relative_to(stage.root)
            trashed["Morvella"] = {Path(): expected.pop(place)}
        shaders = None if stage.previous else True
        added = expectations.installed(bundle, stage, shaders_to=shaders)
        # What was there before and was not moved to the Trash stays as it was.
        expectations.expect_files(stage, {**added, **expected}, trashed=trashed)
        expectations.expect_opened(stage, [stage.demo_set] if stage.demo and not asked else [])


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("executable", type=Path, help="the installer to run")
    parser.add_argument("stage", type=Path, help="where to make the stage; must be new or empty")
    parser.add_argument("pictures", type=Path, help="the folder for the pictures; emptied first")
    stages.add_options(parser)
    options = parser.parse_args()
    bundle, pictures = options.executable.resolve().parent, options.pictures.resolve()
    shutil.rmtree(pictures, ignore_errors=True)
    pictures.mkdir(parents=True)
    try:
        stage = stages.make(options.stage, **stages.chosen(options))
        take(bundle, stage, lambda name, picture: picture.save(pictures / f"{name}.png"))
    except (AssertionError, ValueError) as problem:
        sys.exit(f"The tour failed: {problem}")
    print("Installed:")
    tops = [stage.user_library, stage.utilities, stage.shared_data]
    for top in [*tops, *(stage.fonts / font for font in FONTS)]:
        for path in [top, *sorted(top.rglob("*"))]:
            print(f"    {path.relative_to(stage.root)}{'/' if path.is_dir() else ''}")
    print(f"Stage: {stage.root}")
    print(f"Pictures: {pictures}")
    print("The tour is complete: everything is installed and verified.")


def take(bundle, stage, keep):
    with Display() as display, folders.temporary_folder("tour") as work:
        gate = Gate(work / "gate", stage)
        with Installer(display, bundle, stage, gate=gate) as installer:
            tour = Tour(installer, keep)
            try:
                tour.walk()
            finally:
                print("The installer's log:")
                print("".join(f"    {line}\n" for line in installer.output.splitlines()))
            tour.expect_complete()


if __name__ == "__main__":
    main()
