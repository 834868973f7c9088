"""The order of script/package-mac and how it stops, with stand-ins for the tools of macOS."""

import os
import re
import shutil
import subprocess
import tempfile
import unittest
from pathlib import Path

from payload import Payload

HERE = Path(__file__).resolve().parent
SCRIPTS = HERE.parent.parent / "script"
TOOLS = ("cmake", "codesign", "ditto", "file", "spctl", "uname", "xattr", "xcrun")
APP = "build/mac/Morvella Installer.app"
STEPS = [
    "Build",
    "Check the payload",
    "Check the signatures inside the payload",
    "Sign",
    "Notarize",
    "Staple",
    "Pack",
    "Verify what was packed",
]


class PackageMac(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = Path(folder.name).resolve()
        self.journal = self.root / "journal"
        (self.root / "script").mkdir()
        for name in ("package-mac", "check-payload"):
            shutil.copy(SCRIPTS / name, self.root / "script")
        (self.root / "tools").mkdir()
        for name in TOOLS:
            shutil.copy(HERE / "fake_tool", self.root / "tools" / name)
            (self.root / "tools" / name).chmod(0o755)
        self.payload = Payload()
        self.environment = {
            "PATH": f"{self.root}/tools:{os.environ['PATH']}",
            "JOURNAL": str(self.journal),
            "TMPDIR": str(self.root),
            "PYTHONDONTWRITEBYTECODE": "1",
            "MORVELLA_SIGN_IDENTITY": "Developer ID Application: Somebody (TEAM)",
            "MORVELLA_NOTARY_PROFILE": "somebody",
        }

    def package(self, *arguments, **environment):
        folder = self.root / "my payload"
        folder.mkdir()
        self.payload.write(folder)
        run = subprocess.run(
            [self.root / "script/package-mac", *(arguments or [folder])],
            stdout=subprocess.PIPE,
            stderr=subprocess.PIPE,
            encoding="utf-8",
            env=self.environment | environment,
            cwd="/",
            check=False,
        )
        self.status, self.out, self.err = run.returncode, run.stdout, run.stderr
        self.steps = re.findall(r"^==> (.*)$", run.stdout, re.MULTILINE)
        calls = self.journal.read_text() if self.journal.exists() else ""
        quiet = ("file ", "uname")
        self.calls = [call for call in calls.splitlines() if not call.startswith(quiet)]
        left = [path.name for path in self.root.glob("tmp*")]
        self.assertEqual(left, [], "temporary folders are left behind")

    def called(self, text):
        """The place of the only call that contains the text."""
        places = [place for place, call in enumerate(self.calls) if text in call]
        self.assertEqual(len(places), 1, f"{text} in {self.calls}")
        return places[0]

    def expect_failure(self, step, command):
        self.assertEqual(self.status, 1)
        self.assertEqual(self.steps, STEPS[: STEPS.index(step) + 1])
        self.assertIn(f"script/package-mac: failed: {command}", self.err)

    def expect_refusal(self, text):
        self.assertEqual(self.status, 2)
        self.assertEqual((self.calls, self.steps), ([], []))
        self.assertIn(text, self.err)


class Success(PackageMac):
    def test_names_every_step_and_the_package(self):
        self.package()
        self.assertEqual((self.status, self.err, self.steps), (0, "", STEPS))
        package = self.root / "build/package/Morvella Installer 2.2.zip"
        self.assertEqual(self.out.splitlines()[-1], str(package))
        self.assertTrue(package.exists())

    def test_builds_with_the_payload_that_was_named(self):
        self.package()
        self.called(f"cmake --fresh --preset mac -DMORVELLA_PAYLOAD_DIR={self.root}/my payload")

    def test_signs_then_notarizes_then_staples_then_packs_then_verifies(self):
        self.package()
        order = [
            self.called("cmake --build --preset mac"),
            self.called("--sign Developer ID Application: Somebody (TEAM)"),
            self.called("xcrun notarytool submit"),
            self.called(f"xcrun stapler staple {APP}"),
            self.called(f"ditto -c -k --keepParent {APP} build/package/"),
            self.called("xcrun stapler validate"),
            self.called("spctl --assess --type execute"),
        ]
        self.assertEqual(order, sorted(order))

    def test_signs_with_the_hardened_runtime_a_time_stamp_and_the_entitlements(self):
        self.package()
        call = self.calls[self.called("--sign ")]
        self.assertIn(" --options runtime --timestamp", call)
        self.assertIn(" --entitlements resources/MorvellaInstaller.entitlements", call)
        self.assertTrue(call.endswith(APP))

    def test_signs_nested_code_before_the_bundle(self):
        self.package(EXTRA_FILE="Resources/libnested.dylib")
        signed = [call.rpartition("/")[2] for call in self.calls if "--sign " in call]
        self.assertEqual(signed, ["libnested.dylib", "Morvella Installer.app"])

    def test_verifies_the_code_inside_the_payload(self):
        self.package()
        requirement = "--test-requirement =anchor apple generic"
        verified = [call.rpartition("/")[2] for call in self.calls if requirement in call]
        bundles = ["Morvella.app", "Tressimo.app"]
        self.assertEqual(sorted(verified), sorted(["Morvella", "Tressimo", *bundles]))

    def test_is_silent_about_code_of_the_installers_own_team(self):
        self.package()
        self.assertNotIn("note:", self.out)

    def test_notes_code_that_another_team_has_signed(self):
        self.package(PAYLOAD_TEAM="OTHERS")
        self.assertEqual(self.status, 0)
        signed = "is signed by OTHERS, the installer by TEAM"
        self.assertEqual(
            sorted(re.findall("^note: .*$", self.out, re.MULTILINE)),
            [
                f'note: Tressimo.zip: "Tressimo.app/Contents/MacOS/Tressimo" {signed}',
                f'note: morvella.zip: "Morvella/Morvella.app/Contents/MacOS/Morvella" {signed}',
            ],
        )

    def test_takes_a_key_for_the_notary_service(self):
        self.environment.pop("MORVELLA_NOTARY_PROFILE")
        self.package(
            MORVELLA_NOTARY_KEY="/keys/key.p8",
            MORVELLA_NOTARY_KEY_ID="KEY",
            MORVELLA_NOTARY_ISSUER="ISSUER",
        )
        self.assertEqual(self.status, 0)
        self.called("--key /keys/key.p8 --key-id KEY --issuer ISSUER")


class Failure(PackageMac):
    def test_stops_at_the_command_that_fails(self):
        for step, command in (
            ("Build", "cmake --fresh"),
            ("Build", "cmake --build"),
            ("Check the signatures inside the payload", "ditto -x -k build/mac"),
            ("Check the signatures inside the payload", "codesign --verify --strict"),
            ("Check the signatures inside the payload", "codesign --display"),
            ("Check the signatures inside the payload", "codesign --verify --deep --strict --test"),
            ("Sign", "xattr -cr"),
            ("Sign", "codesign --force --sign"),
            ("Sign", "codesign --verify --deep --strict --verbose=2"),
            ("Notarize", "ditto -c -k"),
            ("Notarize", "xcrun notarytool submit"),
            ("Staple", "xcrun stapler staple"),
            ("Verify what was packed", "xcrun stapler validate"),
            ("Verify what was packed", "spctl --assess"),
        ):
            with self.subTest(command):
                self.package(FAILING=command)
                self.expect_failure(step, command)
                self.assertIn(command, self.calls[-1])
            self.tearDown()
            self.doCleanups()
            self.setUp()

    def test_stops_at_a_payload_that_is_not_complete(self):
        self.payload.drop("morvella.zip", "Morvella/Sources/Vellicor.amxd")
        self.package()
        self.expect_failure("Check the payload", "script/check-payload")
        self.assertIn('"Morvella/Sources/Vellicor.amxd" is missing', self.out)

    def test_stops_at_code_in_the_payload_without_the_hardened_runtime(self):
        self.package(SIGNATURE="flags=0x0(none)")
        self.expect_failure("Check the signatures inside the payload", "codesign: no hardened")

    def test_stops_at_a_hidden_file_in_the_bundle(self):
        self.package(EXTRA_FILE="Resources/.DS_Store")
        self.expect_failure("Sign", "nothing hidden may be in the bundle")

    def test_stops_when_the_notary_service_says_no_and_shows_why(self):
        self.package(ANSWER="Invalid")
        self.expect_failure("Notarize", "xcrun notarytool submit: the notary service answered")
        self.assertEqual(self.calls[-1], "xcrun notarytool log 1234 --keychain-profile somebody")


class Refusal(PackageMac):
    def test_needs_macos(self):
        self.package(SYSTEM="Linux")
        self.expect_refusal("this works on macOS only")

    def test_needs_a_signing_identity(self):
        self.package(MORVELLA_SIGN_IDENTITY="")
        self.expect_refusal("MORVELLA_SIGN_IDENTITY is not set")

    def test_needs_credentials_for_the_notary_service(self):
        self.package(MORVELLA_NOTARY_PROFILE="")
        self.expect_refusal("set MORVELLA_NOTARY_PROFILE")

    def test_needs_all_parts_of_a_key(self):
        self.package(MORVELLA_NOTARY_PROFILE="", MORVELLA_NOTARY_KEY="/keys/key.p8")
        self.expect_refusal("set MORVELLA_NOTARY_PROFILE")

    def test_needs_a_payload(self):
        self.package("")
        self.expect_refusal("name the folder of the payload")

    def test_needs_a_payload_that_is_there(self):
        self.package(self.root / "nowhere")
        self.expect_refusal("there is no folder")

    def test_knows_no_options_but_help(self):
        self.package("--force")
        self.expect_refusal("unknown option --force")

    def test_help_needs_nothing(self):
        self.package("--help", SYSTEM="Linux", MORVELLA_SIGN_IDENTITY="")
        self.assertEqual((self.status, self.err), (0, ""))
        self.assertIn("MORVELLA_SIGN_IDENTITY", self.out)


if __name__ == "__main__":
    unittest.main()
