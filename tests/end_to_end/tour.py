#!/usr/bin/env python3
"""A tour through all pages, as a person would go: by the real buttons of the real window.

Prints the installer's log and the tree of what was installed, and ends with status 0 only if the
installation is complete, the demo Live Set was handed to the Live application, and the installer
ended by itself.
"""

import argparse
import shutil
import sys
from pathlib import Path

import expectations
import snapshot
import stage as stages
from display import Display
from installer import Installer


class Tour:
    """`keep(name, picture)` is given a picture of each page and sheet."""

    def __init__(self, installer, *, previous=False, demo=True, keep=lambda name, picture: None):
        self.installer, self.stage = installer, installer.stage
        self._previous, self._demo, self._keep = previous, demo, keep
        self._before = snapshot.of_folder(self.stage.root)

    def walk(self):
        """From the first page until the process has ended by itself."""
        installer = self.installer
        self._keep("welcome", installer.wait_for_first_page())
        self._keep("licence", installer.press("welcomeButton:"))
        settings = installer.press("licenseAcceptedButton:")
        if self.stage.unmounted:
            settings = self._bring_the_volume(settings)
        self._keep("settings", settings)
        self._install()
        installer.click(installer.interface.button("installDoneButton:"))
        status = installer.wait_for_end()
        assert status == 0, f"the installer ended with {status}"

    def _bring_the_volume(self, sheet):
        installer = self.installer
        assert "UL unavailable" in installer.log, "the volume is not missed"
        self._keep("volume-missing-sheet", sheet)
        installer.key("Return")
        waiting = installer.wait_for_stillness(unlike=sheet)
        self._keep("settings-waiting", waiting)
        self.stage.mount()
        return installer.wait_for_stillness(unlike=waiting)

    def _install(self):
        installer = self.installer
        if self._previous:
            before = installer.press("beginInstallButton:")
            self._keep("previous-installation-sheet", before)
            go_on = lambda: installer.key("Return")  # noqa: E731
        else:
            before = installer.hold_down(installer.interface.button("beginInstallButton:"))
            go_on = installer.display.release_mouse
        installing = installer.watch(go_on, expectations.HIDING)
        assert installing != before, "the installation page was not seen"
        self._keep("installation", installing)
        self._keep("post-installation", installer.wait_for_stillness(unlike=installing))

    def expect_complete(self):
        """Everything lies where it belongs, nothing of the user's is lost, the demo is open."""
        stage, bundle = self.stage, self.installer.bundle
        expected, trashed = dict(self._before), {}
        if stage.unmounted:
            expected = snapshot.moved(
                expected, stage.drawer.relative_to(stage.root), stage.volume.relative_to(stage.root)
            )
        if self._previous:
            for old in (stage.destination, stage.utilities):
                place = old.relative_to(stage.root)
                name = "Morvella" if old == stage.destination else "Morvella.2"
                trashed[name] = snapshot.below(expected, place)
                expected = snapshot.without(expected, place)
            expected.update(expectations.expect_backup(stage, trashed["Morvella"]))
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


def take(executable, folder, options, pictures):
    """Makes a stage in `folder` and takes the tour that the options ask for."""
    chosen = stages.chosen(options)
    stage = stages.make(folder, **chosen)
    keep = lambda name, picture: picture.save(pictures / f"{name}.png")  # noqa: E731
    with Display() as display, Installer(display, executable.parent, stage) as installer:
        tour = Tour(installer, previous=chosen["previous"], demo=chosen["demo"], keep=keep)
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
