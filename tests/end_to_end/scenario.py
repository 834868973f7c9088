"""What every end-to-end test starts from: a folder of its own, stages, bundles and installers."""

import os
import shutil
import tempfile
import unittest
import zipfile
from pathlib import Path

import expectations
import snapshot
import stage as stages
from installer import Installer
from waiting import wait_until

NOBODY = 65534


class Scenario(unittest.TestCase):
    """The runner sets `display`, `bundle` and `evidence` before a test runs."""

    display = bundle = evidence = None
    maxDiff = None

    def setUp(self):
        self.folder = Path(tempfile.mkdtemp(prefix="morvella-test-")).resolve()
        self.folder.chmod(0o755)
        self.addCleanup(self._remove_folder)

    def _remove_folder(self):
        for folder, _, _ in os.walk(self.folder):
            os.chmod(folder, 0o755)
        # The Live application may still be writing down what it was asked to open.
        wait_until(self._is_removed, f"the end of {self.folder}")

    def _is_removed(self):
        shutil.rmtree(self.folder, ignore_errors=True)
        return not self.folder.exists()

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
        """A user whom permissions hold back, who owns the stage; root passes through them all."""
        if os.geteuid() != 0:
            return None
        for path in [stage.root, *stage.root.rglob("*")]:
            os.chown(path, NOBODY, NOBODY, follow_symlinks=False)
        return NOBODY

    def launch(self, stage, arguments=None, *, bundle=None, **options):
        options.setdefault("evidence", self.evidence)
        return Installer(self.display, bundle or self.bundle, stage, arguments, **options)

    # What a test does

    def go_to_licence(self, installer):
        installer.wait_for_first_page()
        return installer.press("welcomeButton:")

    def go_to_settings(self, installer):
        self.go_to_licence(installer)
        return installer.press("licenseAcceptedButton:")

    def begin_installation(self, installer):
        """Leaves the settings page; what comes next is the caller's to wait for."""
        self.go_to_settings(installer)
        installer.click(installer.interface.button("beginInstallButton:"))

    def install(self, installer):
        """Walks to the last page."""
        self.begin_installation(installer)
        installer.wait_for_line(expectations.HIDING)
        return installer.wait_for_stillness()

    def leave(self, installer):
        """Presses the last page's button."""
        installer.click(installer.interface.button("installDoneButton:"))
        self.expect_end(installer)

    def quit_critical_sheet(self, installer, message):
        """Waits for the sheet and presses its only button."""
        installer.wait_for_line(expectations.critical(message))
        installer.wait_for_stillness()
        installer.key("Return")
        self.expect_end(installer)

    # What a test expects

    def expect_end(self, installer):
        self.assertEqual(installer.wait_for_end(), 0)

    def expect_log(self, installer, *lines):
        expectations.expect_log(installer, list(lines))

    def snapshot(self, stage):
        return snapshot.of_folder(stage.root)

    def expect_untouched(self, stage, before):
        expectations.expect_untouched(stage, before)
