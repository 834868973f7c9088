"""What every end-to-end test starts from: a folder of its own, stages, bundles and installers."""

import shutil
import zipfile

import pytest

import expectations
import folders
import snapshot
import stage as stages
from descriptions import (
    FINISH,
    LICENCE,
    SETTINGS,
    WELCOME,
    critical_sheet,
    whole_sheet,
)
from installer import Installer
from walking import await_choice


class Scenario:
    @pytest.fixture(autouse=True)
    def prepare(self, display, bundle, evidence):
        self.display, self.bundle, self.built, self.evidence = display, bundle, bundle, evidence
        with folders.temporary_folder("test") as self.folder:
            yield

    # What a test starts from

    def make_stage(self, name="stage", **options):
        return stages.make(self.folder / name, **options)

    def copy_bundle(self, *, without=()):
        """A copy of the application that a test may change, without some of its resources."""
        copy = self.folder / self.bundle.name
        shutil.copytree(self.bundle, copy, symlinks=True)
        for resource in without:
            (copy / "Resources" / resource).unlink()
        return copy

    def remove_from_archive(self, archive, top):
        """Writes the zip file anew without the item `top` and what is in it."""
        old = archive.rename(archive.with_suffix(".old"))
        with zipfile.ZipFile(old) as source, zipfile.ZipFile(archive, "w") as target:
            for entry in source.infolist():
                if entry.filename.rstrip("/") != top and not entry.filename.startswith(f"{top}/"):
                    target.writestr(entry, source.read(entry))
        old.unlink()

    def ordinary_user(self, stage):
        """A user whom permissions hold back, who owns the stage."""
        return folders.ordinary_user(stage.root)

    def launch(self, stage, arguments=None, *, bundle=None, **options):
        options.setdefault("evidence", self.evidence)
        return Installer(
            self.display, bundle or self.bundle, stage, arguments, built=self.built, **options
        )

    # What a test does

    def go_to_licence(self, installer):
        installer.wait_for_page(WELCOME)
        installer.press("Next")
        return installer.wait_for_page(LICENCE)

    def go_to_settings(self, installer):
        """Whatever sheet the page may show then."""
        self.go_to_licence(installer)
        installer.press("Accept")
        return installer.wait_for_state(lambda state: state.page == SETTINGS, "the settings page")

    def begin_installation(self, installer):
        """Leaves the settings page; what comes next is the caller's to wait for."""
        self.go_to_settings(installer)
        installer.wait_for_choice(SETTINGS)
        installer.press("Next")

    def install(self, installer):
        """Walks to the last page."""
        self.begin_installation(installer)
        return installer.wait_for_page(FINISH)

    def leave(self, installer):
        """Presses the last page's button."""
        installer.press("Finish")
        self.expect_end(installer)

    def quit_critical_sheet(self, installer, message):
        """Waits for the sheet and presses its only button."""
        assert whole_sheet(installer.wait_for_sheet(message)) == critical_sheet(message)
        assert expectations.critical(message) in installer.log
        installer.press("Quit")
        self.expect_end(installer)

    def quit_any_sheet(self, installer):
        """Waits for a critical sheet about the installation, and presses its only button."""
        installer.wait_for_line(expectations.HIDING)
        state = await_choice(installer, None)
        assert whole_sheet(state.sheet) == critical_sheet(state.sheet.message)
        installer.press("Quit")
        self.expect_end(installer)

    # What a test expects

    def expect_end(self, installer):
        assert installer.wait_for_end() == 0

    def expect_log(self, installer, *lines):
        expectations.expect_log(installer, list(lines))

    def snapshot(self, stage):
        return snapshot.of_folder(stage.root)

    def expect_untouched(self, stage, before):
        expectations.expect_untouched(stage, before)
