"""What script/check-mac accepts and refuses, with stand-ins for the tools of macOS."""

import os
import plistlib
import shutil
import subprocess
import tempfile
import unittest
from pathlib import Path

from payload import Payload

HERE = Path(__file__).resolve().parent
SCRIPTS = HERE.parent.parent / "script"
TOOLS = ("codesign", "lipo", "otool", "plutil", "screencapture", "uname", "vtool", "xcrun")
RESOURCES = (
    "MainMenu.nib",
    "AppIcon.icns",
    "InstallerIcon.png",
    "InstallerIcon@2x.png",
    "license.rtf",
    "Archivo-Medium.ttf",
    "OpenSans-Regular.ttf",
)


class CheckMac(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = Path(folder.name).resolve()
        (self.root / "script").mkdir()
        for name in ("check-mac", "check-payload"):
            shutil.copy(SCRIPTS / name, self.root / "script")
        (self.root / "tools").mkdir()
        for name in TOOLS:
            shutil.copy(HERE / "fake_mac_tool", self.root / "tools" / name)
        self.make_application()

    def make_application(self):
        contents = self.root / "build/mac/Morvella Installer.app/Contents"
        self.resources = contents / "Resources"
        self.resources.mkdir(parents=True)
        for name in RESOURCES:
            (self.resources / name).touch()
        Payload().write(self.resources)
        information = plistlib.dumps({"LSMinimumSystemVersion": "10.13"})
        (contents / "Info.plist").write_bytes(information)
        (contents / "MacOS").mkdir()
        shutil.copy(HERE / "fake_application", contents / "MacOS/Morvella Installer")

    def check(self, **environment):
        run = subprocess.run(
            [self.root / "script/check-mac"],
            stdout=subprocess.PIPE,
            stderr=subprocess.PIPE,
            encoding="utf-8",
            env={
                "PATH": f"{self.root}/tools:{os.environ['PATH']}",
                "TMPDIR": str(self.root),
                "PYTHONDONTWRITEBYTECODE": "1",
                **environment,
            },
            cwd="/",
            check=False,
        )
        left = [path.name for path in self.root.glob("tmp*")]
        self.assertEqual(left, [], "temporary folders are left behind")
        return run

    def expect_refusal(self, text, **environment):
        run = self.check(**environment)
        self.assertEqual(run.returncode, 1, run.stdout)
        self.assertIn(text, run.stderr)

    def test_accepts_an_application_that_is_complete_and_starts(self):
        run = self.check()
        self.assertEqual((run.returncode, run.stderr), (0, ""))
        self.assertEqual(run.stdout.splitlines()[-1], "The application is complete and starts.")

    def test_accepts_another_oldest_system_that_both_name(self):
        information = plistlib.dumps({"LSMinimumSystemVersion": "12"})
        (self.resources.parent / "Info.plist").write_bytes(information)
        self.assertEqual(self.check(BUILT="12.0").returncode, 0)

    def test_refuses_another_oldest_system_than_its_information_names(self):
        self.expect_refusal("built for macOS 10.14, but Info.plist names 10.13", BUILT="10.14")

    def test_refuses_an_application_without_one_of_the_architectures(self):
        for architecture in ("arm64", "x86_64"):
            self.expect_refusal(f"{architecture} is missing", FAULT=architecture)

    def test_refuses_a_library_that_is_not_the_systems(self):
        for library in ("/opt/lib/libc++.dylib", "@rpath/libc++.dylib", "/usr/libexec/x.dylib"):
            self.expect_refusal(f"it links what is not the system's: {library}", LINKED=library)

    def test_refuses_an_application_without_one_of_its_resources(self):
        (self.resources / "license.rtf").unlink()
        self.expect_refusal("license.rtf is missing")

    def test_refuses_a_payload_that_is_not_complete(self):
        (self.resources / "ISF.zip").unlink()
        self.assertIn("error: ISF.zip: is missing", self.check().stdout)

    def test_refuses_a_signature_without_the_hardened_runtime(self):
        self.expect_refusal("the hardened runtime is not on", SIGNATURE="flags=0x2(adhoc)")

    def test_refuses_a_broken_signature(self):
        self.assertEqual(self.check(FAULT="signature").returncode, 1)

    def test_refuses_an_application_that_runs_without_arguments(self):
        self.expect_refusal("did not refuse to run", REFUSAL="something else")

    def test_refuses_an_application_that_ignores_its_arguments(self):
        self.expect_refusal("did not take its launch arguments", LIVE="/elsewhere")

    def test_refuses_an_application_that_ends_with_a_status(self):
        self.expect_refusal("the application ended with status 3", STATUS="3")

    def test_needs_macos(self):
        run = self.check(SYSTEM="Linux")
        self.assertEqual((run.returncode, run.stdout), (2, ""))
        self.assertIn("this works on macOS only", run.stderr)


if __name__ == "__main__":
    unittest.main()
