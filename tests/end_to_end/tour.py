#!/usr/bin/env python3
"""A tour through all pages, as a person would go: by the real buttons of the real window.

Prints the installer's log and the tree of what was installed, and ends with status 0 only if the
installation is complete, the demo Live Set was handed to the Live application, and the installer
ended by itself. Where no backup could be made, it is the critical sheet that ends it.
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
from pages import INSTALLATION, NO_BACKUP, NOT_AVAILABLE, PREVIOUS_INSTALLATION, SETTINGS, WAY

# Parts of paths that change in the course of an installation.
BACKUP, TRASH, SUITE = "MorvellaBackup", ".local/share/Trash", "Morvella/Sources"


class Tour:
    """The installer runs with the environment of `gate`.

    `keep(name, picture)` is given a picture of each page and sheet.
    """

    def __init__(self, installer, gate, *, previous=False, obstructed=False, demo=True, keep=None):
        self.installer, self.gate, self.stage = installer, gate, installer.stage
        self._previous, self._obstructed = previous, obstructed
        self._demo = demo and not obstructed
        self._keep = keep or (lambda name, picture: None)
        self._before = snapshot.of_folder(self.stage.root)

    def walk(self):
        """From the first page until the process has ended by itself."""
        installer = self.installer
        for page in WAY:
            if page.title == SETTINGS and self.stage.unmounted:
                self._bring_the_volume()
            if page.title == INSTALLATION:
                self._watch_installation()
                if self._obstructed:
                    installer.click("Quit")
                    break
            else:
                installer.wait_for(page.title)
                installer.wait_for_button(page.button)
            self._show(page.picture)
            if page.title == SETTINGS:
                self.gate.hold_next(
                    TRASH if self._obstructed else BACKUP if self._previous else SUITE
                )
            if page.button:
                installer.click(page.button)
            else:
                self.gate.open()
        installer.expect_end()

    def _show(self, name):
        self._keep(name, self.installer.picture())

    def _bring_the_volume(self):
        self.installer.wait_for(NOT_AVAILABLE)
        self._show("volume-missing-sheet")
        self.installer.click("OK")
        self.installer.wait_for(SETTINGS)
        self._show("settings-waiting")
        self.stage.mount()

    def _watch_installation(self):
        """Holds the installation for a moment, to take a picture of what is shown meanwhile."""
        if self._previous or self._obstructed:
            self.installer.wait_for(PREVIOUS_INSTALLATION)
            self._show("previous-installation-sheet")
            self.installer.click("Continue")
        self.gate.wait()
        if self._obstructed:
            self._show("critical-sheet")
            self.gate.open()
            self.installer.wait_for(NO_BACKUP)
        elif self._previous:
            self._show("backup")
            self.gate.hold_next(SUITE)
            self.gate.wait()

    def expect_complete(self):
        """Everything lies where it belongs, nothing of the user's is lost, the demo is open."""
        stage, bundle = self.stage, self.installer.bundle
        asked = log_lines.criticals(self.installer.log)
        assert asked == ([NO_BACKUP] if self._obstructed else []), asked
        expected, trashed = dict(self._before), {}
        if stage.unmounted:
            places = stage.unmounted_volume, stage.volume
            expected = snapshot.moved(
                expected, *(place.relative_to(stage.root) for place in places)
            )
        if self._previous:
            for name, old in (("Morvella", stage.destination), ("Morvella.2", stage.utilities)):
                place = old.relative_to(stage.root)
                trashed[name] = snapshot.below(expected, place)
                expected = snapshot.without(expected, place)
            expected.update(expectations.expect_backup(stage, trashed["Morvella"]))
        if self._obstructed:
            place = stage.destination.relative_to(stage.root)
            trashed["Morvella"] = {Path(): expected.pop(place)}
        shaders = None if self._previous else True
        added = expectations.installed(bundle, stage, shaders_to=shaders)
        # What was there before and has not gone to the Trash stays as it was.
        expectations.expect_files(stage, {**added, **expected}, trashed=trashed)
        expectations.expect_opened(stage, [stage.demo_set] if self._demo else [])


def take(executable, folder, options, pictures):
    """Makes a stage in `folder` and takes the tour that the options ask for."""
    chosen = stages.chosen(options)
    stage = stages.make(folder, **chosen)
    chosen.pop("unmounted")  # The stage itself tells that.

    def keep(name, picture):
        picture.save(pictures / f"{name}.png")

    with Display() as display, folders.temporary_folder("tour") as work:
        gate = Gate(work / "gate", stage)
        with Installer(display, executable.parent, stage, gate=gate) as installer:
            tour = Tour(installer, gate, keep=keep, **chosen)
            try:
                tour.walk()
            finally:
                print("The installer's log:")
                print("".join(f"    {line}\n" for line in installer.output.splitlines()))
            tour.expect_complete()
    print("Installed:")
    print_tree(stage, expectations.fonts(executable.parent))
    print(f"Stage: {stage.root}")
    print(f"Pictures: {pictures}")
    print("The tour is complete: everything is installed and verified.")


def print_tree(stage, fonts):
    tops = [stage.user_library, stage.utilities, stage.shared_data]
    for top in [*tops, *(stage.fonts / font for font in fonts)]:
        print(f"    {top.relative_to(stage.root)}")
        for path in sorted(top.rglob("*")):
            depth = len(path.relative_to(top).parts)
            print("    " + "    " * depth + path.name + ("/" if path.is_dir() else ""))


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("executable", type=Path, help="the installer to run")
    parser.add_argument("stage", type=Path, help="where to make the stage; must be new or empty")
    parser.add_argument("pictures", type=Path, help="the folder for the pictures, made anew")
    stages.add_options(parser)
    options = parser.parse_args()
    shutil.rmtree(options.pictures, ignore_errors=True)
    options.pictures.mkdir(parents=True)
    try:
        take(options.executable.resolve(), options.stage, options, options.pictures.resolve())
    except (AssertionError, ValueError) as problem:
        sys.exit(f"The tour failed: {problem}")


if __name__ == "__main__":
    main()
