"""The order of script/package-mac's steps and where it stops, with stand-ins for Apple's tools."""

import re
import shutil

import pytest
from conftest import HERE, ROOT, Mac

APP = "build/mac/Morvella Installer.app"
BUILD, PAYLOAD, PAYLOAD_CODE, SIGN, NOTARIZE, STAPLE, PACK, CHECK = STEPS = [
    "Build",
    "Check the payload",
    "Check the signatures inside the payload",
    "Sign",
    "Notarize",
    "Staple",
    "Pack",
    "Check what was packed",
]


class Packaging(Mac):
    """One run of the script, and the calls of the tools that it made."""

    def __init__(self, root, payload):
        super().__init__(root)
        shutil.copy(HERE / "fake_tool", root / "script/check-mac")
        shutil.copy(ROOT / "CMakePresets.json", root)
        self.folder = root / "my payload"
        self.payload = payload
        self._journal = root / "journal"
        self.calls, self.steps = [], []

    def __call__(self, *arguments, **environment):
        self.folder.mkdir()
        self.payload.write(self.folder)
        environment = {
            "JOURNAL": str(self._journal),
            "MORVELLA_SIGN_IDENTITY": "Developer ID Application: Somebody (TEAM)",
            "MORVELLA_NOTARY_PROFILE": "somebody",
            **environment,
        }
        run = self.run("package-mac", *(arguments or [self.folder]), **environment)
        calls = self._journal.read_text().splitlines() if self._journal.exists() else []
        quiet = ("file ", "uname", "xcodebuild")
        self.calls = [call for call in calls if not call.startswith(quiet)]
        self.steps = re.findall(r"^==> (.*)$", run.stdout, re.MULTILINE)
        return run

    def index(self, text):
        """The index of the only call that contains the text."""
        (index,) = [index for index, call in enumerate(self.calls) if text in call]
        return index

    def files(self, text):
        """The last part of the last argument of each call that contains the text."""
        return [call.rpartition("/")[2] for call in self.calls if text in call]


@pytest.fixture
def package(folder, payload):
    return Packaging(folder, payload)


def test_prints_every_step_and_the_package(package):
    run = package()
    assert (run.returncode, run.stderr, package.steps) == (0, "", STEPS)
    made = package.root / "build/package/Morvella Installer 7.5.zip"
    assert run.stdout.splitlines()[-1] == str(made)
    assert made.exists()


def test_builds_signs_notarizes_staples_packs_and_checks_in_this_order(package):
    package()
    order = [
        f"cmake --fresh --preset mac -DMORVELLA_PAYLOAD_DIR={package.folder}",
        "cmake --build --preset mac",
        "--sign Developer ID Application: Somebody (TEAM)",
        "xcrun notarytool submit",
        f"xcrun stapler staple {APP}",
        f"ditto -c -k --keepParent {APP} build/package/",
        "xcrun stapler validate",
        "spctl --assess --type execute",
        "check-mac ",
    ]
    indexes = [package.index(call) for call in order]
    assert indexes == sorted(indexes)


def test_checks_what_was_unpacked_from_the_package(package):
    package()
    (unpacked,) = [call for call in package.calls if "ditto -x -k build/package/" in call]
    folder = unpacked.rpartition(" ")[2]
    assert package.calls[-1] == f"check-mac {folder}/Morvella Installer.app"


def test_builds_from_scratch(package):
    left = package.root / APP / "Contents/left"
    left.parent.mkdir(parents=True)
    left.touch()
    package()
    assert not left.exists()


def test_signs_with_the_hardened_runtime_a_time_stamp_and_the_entitlements(package):
    package()
    call = package.calls[package.index("--sign ")]
    assert " --options runtime --timestamp" in call
    assert " --entitlements resources/MorvellaInstaller.entitlements" in call
    assert call.endswith(APP)


def test_signs_nested_code_before_the_bundle(package):
    package(EXTRA_FILE="Resources/libnested.dylib")
    assert package.files("--sign ") == ["libnested.dylib", "Morvella Installer.app"]


def test_verifies_the_code_inside_the_payload(package):
    package()
    verified = package.files("--test-requirement =anchor apple generic")
    bundles = ["Morvella.app", "Tressimo.app"]
    assert sorted(verified) == sorted(["Morvella", "Tressimo", *bundles])


@pytest.mark.parametrize("team, noted", [("TEAM", False), ("OTHERS", True)])
def test_notes_code_signed_by_another_team(package, team, noted):
    run = package(PAYLOAD_TEAM=team)
    assert run.returncode == 0
    signed = "is signed by OTHERS, the installer by TEAM"
    assert sorted(re.findall("^note: .*$", run.stdout, re.MULTILINE)) == noted * [
        f'note: Tressimo.zip: "Tressimo.app/Contents/MacOS/Tressimo" {signed}',
        f'note: morvella.zip: "Morvella/Morvella.app/Contents/MacOS/Morvella" {signed}',
    ]


@pytest.mark.parametrize(
    "step, command",
    [
        (BUILD, "cmake --fresh"),
        (BUILD, "cmake --build"),
        (PAYLOAD_CODE, "ditto -x -k build/mac"),
        (PAYLOAD_CODE, "codesign --verify --strict"),
        (PAYLOAD_CODE, "codesign --display"),
        (PAYLOAD_CODE, "codesign --verify --deep --strict --test"),
        (SIGN, "xattr -cr"),
        (SIGN, "codesign --force --sign"),
        (SIGN, "codesign --verify --deep --strict --verbose=2"),
        (NOTARIZE, "ditto -c -k"),
        (NOTARIZE, "xcrun notarytool submit"),
        (STAPLE, "xcrun stapler staple"),
        (CHECK, "xcrun stapler validate"),
        (CHECK, "spctl --assess"),
        (CHECK, "check-mac"),
    ],
)
def test_stops_at_the_command_that_fails(package, step, command):
    run = package(FAILING=command)
    assert (run.returncode, package.steps[-1]) == (1, step)
    assert re.search(rf"^script/package-mac: failed: (script/)?{command}", run.stderr, re.MULTILINE)
    assert command in package.calls[-1]


@pytest.mark.parametrize(
    "step, fault, error",
    [
        (PAYLOAD_CODE, {"SIGNATURE": "flags=0x0(none)"}, "codesign: no hardened runtime"),
        (SIGN, {"EXTRA_FILE": "Resources/.DS_Store"}, "the bundle holds hidden files"),
        (NOTARIZE, {"ANSWER": "Invalid"}, "xcrun notarytool submit: the notary service answered"),
    ],
)
def test_stops_at_a_fault(package, step, fault, error):
    run = package(**fault)
    assert (run.returncode, package.steps[-1]) == (1, step)
    assert f"script/package-mac: {error}" in run.stderr


def test_shows_why_the_notary_service_rejects_the_application(package):
    package(ANSWER="Invalid")
    assert package.calls[-1] == "xcrun notarytool log 1234 --keychain-profile somebody"


def test_stops_at_an_incomplete_payload(package):
    package.payload.drop("morvella.zip", "Morvella/Sources/Vellicor.amxd")
    run = package()
    assert (run.returncode, package.steps[-1]) == (1, PAYLOAD)
    assert '"Morvella/Sources/Vellicor.amxd" is missing' in run.stdout


@pytest.mark.parametrize(
    "arguments, environment, error",
    [
        ([], {"SYSTEM": "Linux"}, "this works on macOS only"),
        ([], {"XCODE": "26.0"}, "Xcode 26 cannot build for macOS 10"),
        ([], {"XCODE": "?"}, "xcodebuild does not print its version"),
        ([], {"MORVELLA_SIGN_IDENTITY": ""}, "MORVELLA_SIGN_IDENTITY is not set"),
        ([], {"MORVELLA_NOTARY_PROFILE": ""}, "MORVELLA_NOTARY_PROFILE is not set"),
        ([""], {}, "name the folder of the payload"),
        (["/nowhere"], {}, "there is no folder"),
        (["/one", "/two"], {}, "name the folder"),
        (["--force"], {}, "there is no folder"),
    ],
)
def test_refuses_before_it_does_anything(package, arguments, environment, error):
    run = package(*arguments, **environment)
    assert (run.returncode, package.calls, package.steps) == (2, [], [])
    assert error in run.stderr


def test_accepts_a_newer_xcode_if_the_oldest_system_is_newer(package):
    presets = package.root / "CMakePresets.json"
    presets.write_text(presets.read_text().replace('"10.13"', '"11.0"'))
    assert package(XCODE="26.1").returncode == 0


def test_help_works_on_any_system(package):
    run = package("--help", SYSTEM="Linux", MORVELLA_SIGN_IDENTITY="")
    assert (run.returncode, run.stderr) == (0, "")
    assert "MORVELLA_SIGN_IDENTITY" in run.stdout
