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

import disturbed
import expectations
import folders
import snapshot
import stage as stages
from changes import INSTALLER, PACKING, at_work, wait_for_change
from display import Display
from gate import Gate
from descriptions import FINISH, LICENCE, SETTINGS, WELCOME
from installer import Installer
from messages import NO_BACKUP, NOT_AVAILABLE, PREVIOUS_INSTALLATION


class Tour:
    """The installer runs with the environment of `gate`.

    `keep(name, picture)` is given a picture of each page and sheet.
    """

    def __init__(self, installer, gate, *, previous=False, obstructed=False, demo=True, keep=None):
        self.installer, self.gate, self.stage = installer, gate, installer.stage
        self._changes = 0
        self._previous, self._obstructed = previous, obstructed
        self._demo = demo and not obstructed
        self._keep = keep or (lambda name, picture: None)
        self._before = snapshot.of_folder(self.stage.root)

    def walk(self):
        """From the first page until the process has ended by itself."""
        installer = self.installer
        installer.wait_for_page(WELCOME)
        self._show("welcome")
        installer.press("Next")
        installer.wait_for_page(LICENCE)
        self._show("licence")
        installer.press("Accept")
        if self.stage.unmounted:
            self._bring_the_volume()
        installer.wait_for_choice(SETTINGS)
        self._show("settings")
        self._install()
        if self._obstructed:
            self._quit()
            return
        installer.wait_for_page(FINISH)
        self._show("post-installation")
        installer.finish()

    def _show(self, name):
        self._keep(name, self.installer.picture())

    def _bring_the_volume(self):
        installer = self.installer
        installer.wait_for_sheet(NOT_AVAILABLE)
        self._show("volume-missing-sheet")
        installer.press("OK")
        installer.wait_for_page(SETTINGS)
        self._show("settings-waiting")
        self.stage.mount()

    def _install(self):
        """Its work is held for a moment, or nobody could look at what is shown meanwhile."""
        installer = self.installer
        installer.press("Next")
        if self._previous or self._obstructed:
            installer.wait_for_sheet(PREVIOUS_INSTALLATION)
            self._show("previous-installation-sheet")
            installer.press("Continue")
        if self._obstructed:
            self._hold(INSTALLER)
            installer.wait_for_sheet(NO_BACKUP)
            self._show("critical-sheet")
            self.gate.open()
            return
        if self._previous:
            self._hold(PACKING)
            installer.wait_for_state(lambda state: turns(state.sheet.accessory), "a backup")
            self._show("backup")
        self._hold("morvella.zip")
        installer.wait_for_state(lambda state: not state.sheets and turns(state), "its work")
        self._show("installation")
        self.gate.open()

    def _quit(self):
        """The installation goes on behind the critical sheet."""
        self.installer.wait_for_line(expectations.HIDING)
        self.installer.wait_for_sheet(NO_BACKUP)
        self.installer.press("Quit")
        status = self.installer.wait_for_end()
        assert status == 0, f"the installer ended with {status}"

    def _hold(self, worker):
        """Lets it work until `worker` is about to make a change."""
        while True:
            self.gate.allow(self._changes)
            self._changes += 1
            if not wait_for_change(self.installer, self.gate, self._changes):
                break
            if at_work(self.installer) == worker:
                return
        raise AssertionError(f"nothing was done by {worker}")

    def expect_complete(self):
        """Everything lies where it belongs, nothing of the user's is lost, the demo is open."""
        stage, bundle = self.stage, self.installer.bundle
        expected, trashed = dict(self._before), {}
        if stage.unmounted:
            expected = snapshot.moved(
                expected,
                stage.unmounted_volume.relative_to(stage.root),
                stage.volume.relative_to(stage.root),
            )
        if self._previous:
            for old in (stage.destination, stage.utilities):
                place = old.relative_to(stage.root)
                name = "Morvella" if old == stage.destination else "Morvella.2"
                trashed[name] = snapshot.below(expected, place)
                expected = snapshot.without(expected, place)
            expected.update(expectations.expect_backup(stage, trashed["Morvella"]))
        if self._obstructed:
            place = stage.destination.relative_to(stage.root)
            trashed["Morvella"] = {Path(): expected.pop(place)}
        shaders = None if self._previous else True
        added = expectations.installed(bundle, stage, shaders_to=shaders)
        # What was there before and has not gone to the Trash stays as it was.
        expected = {**added, **expected}
        expectations.expect_files(stage, expected, trashed=trashed)
        expectations.expect_opened(stage, [str(stage.demo_set)] if self._demo else [])

    def expected_log(self):
        stage, bundle = self.stage, self.installer.bundle
        lines = expectations.start_lines(stage)
        if stage.unmounted:
            lines.append("UL unavailable")
        if self._obstructed:
            lines += disturbed.not_backed_up(bundle, stage)
        if not self._previous:
            return lines + expectations.installation_lines(bundle, stage)
        return [
            *lines,
            expectations.HANDLED,
            *expectations.font_lines(bundle, stage, present=["OpenSans-Regular.ttf"]),
            *expectations.suite_lines(bundle),
            *expectations.utility_lines(bundle, stage, replaced=True),
            expectations.HIDING,
        ]


def turns(view):
    return any(indicator.running and not indicator.hidden for indicator in view.indicators)


def take(executable, folder, options, pictures):
    """Makes a stage in `folder` and takes the tour that the options ask for."""
    chosen = stages.chosen(options)
    stage = stages.make(folder, **chosen)

    def keep(name, picture):
        picture.save(pictures / f"{name}.png")

    bundle = executable.parent
    with Display() as display, folders.temporary_folder("tour") as folder:
        gate = Gate(folder / "gate", bundle)
        with Installer(display, bundle, stage, environment=gate.environment) as installer:
            chosen.pop("unmounted")  # The stage itself tells that.
            tour = Tour(installer, gate, keep=keep, **chosen)
            try:
                tour.walk()
            finally:
                print("The installer's log:")
                print("".join(f"    {line}\n" for line in installer.output.splitlines()))
            expectations.expect_log(installer, tour.expected_log())
            tour.expect_complete()
    print("Installed:")
    print_tree(stage)
    print(f"Stage: {stage.root}")
    print(f"Pictures: {pictures}")
    print("The tour is complete: everything is installed and verified.")


def print_tree(stage):
    fonts = [stage.fonts / font for font in expectations.FONTS]
    for top in (stage.user_library, stage.utilities, stage.shared_data, *fonts):
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
    try:
        take(options.executable.resolve(), options.stage, options, options.pictures.resolve())
    except (AssertionError, ValueError) as problem:
        sys.exit(f"The tour failed: {problem}")


if __name__ == "__main__":
    main()
