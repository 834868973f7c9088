"""What script/check-mac accepts and refuses, with stand-ins for Apple's tools."""

import plistlib
import shutil
import struct

import pytest
from conftest import HERE, ROOT, Mac

CARRIED = [ROOT / "resources/license.rtf", *ROOT.glob("resources/fonts/*")]
CARRIED += ROOT.glob("resources/icon/InstallerIcon*.png")


def interface_file(*classes):
    """What ibtool writes for 10.13: each class is (name, number of fallback classes)."""
    table = b""
    for name, fallbacks in classes:
        text = name.encode() + b"\0"
        table += bytes([0x80 | len(text), 0x80 | fallbacks]) + b"\1\0\0\0" * fallbacks + text
    start = len("NIBArchive") + 40
    return b"NIBArchive" + struct.pack("<10I", 1, 10, *[0, start] * 3, len(classes), start) + table


@pytest.fixture
def mac(folder, payload):
    mac = Mac(folder)
    for path in ("resources", "tests/mac"):
        shutil.copytree(ROOT / path, folder / path)
    mac.contents = folder / "build/mac/Morvella Installer.app/Contents"
    mac.resources = mac.contents / "Resources"
    mac.resources.mkdir(parents=True)
    for file in CARRIED:
        shutil.copy(file, mac.resources)
    (mac.resources / "AppIcon.icns").touch()
    (mac.resources / "MainMenu.nib").write_bytes(
        interface_file(("NSSwitch", 2), ("NSView", 0), ("NSCustomObject", 0))
    )
    payload.write(mac.resources)
    (mac.contents / "Info.plist").write_bytes(plistlib.dumps({"LSMinimumSystemVersion": "10.13"}))
    (mac.contents / "MacOS").mkdir()
    shutil.copy(HERE / "fake_application", mac.contents / "MacOS/Morvella Installer")
    return mac


def test_accepts_a_complete_application_that_starts(mac):
    run = mac.run("check-mac")
    assert (run.returncode, run.stderr) == (0, "")
    assert run.stdout.splitlines()[-1] == "The application is complete and starts."


def test_checks_the_named_application(mac):
    shutil.move(mac.contents.parent, mac.root / "Named.app")
    assert mac.run("check-mac").returncode == 1
    assert mac.run("check-mac", mac.root / "Named.app").returncode == 0


@pytest.mark.parametrize(
    "fault, error",
    [
        ({"BUILT": "10.14"}, "built for macOS 10.14, but Info.plist says 10.13"),
        ({"FAILING": "-verify_arch arm64"}, "arm64 is missing"),
        ({"FAILING": "-verify_arch x86_64"}, "x86_64 is missing"),
        ({"FAILING": "codesign --verify"}, ""),
        ({"SIGNATURE": "flags=0x2(adhoc)"}, "the hardened runtime is not enabled"),
        ({"LINKED": "/opt/lib/libc++.dylib"}, "not part of macOS: /opt/lib/libc++.dylib"),
        ({"LINKED": "@rpath/libc++.dylib"}, "not part of macOS: @rpath/libc++.dylib"),
        ({"LINKED": "/usr/libexec/x.dylib"}, "not part of macOS: /usr/libexec/x.dylib"),
        ({"NEWER": "NSView"}, "MainMenu.nib uses classes that macOS 10.13 lacks"),
        ({"REFUSAL": "something else"}, "it did not refuse to run without the Live Set"),
        ({"LIVE": "/elsewhere"}, "it ignored its launch arguments"),
        ({"STAYS": "yes", "PATIENCE": "1"}, "the application did not quit"),
        ({"STATUS": "3"}, "the application exited with status 3"),
    ],
)
def test_refuses_a_faulty_application(mac, fault, error):
    run = mac.run("check-mac", **fault)
    assert run.returncode == 1
    assert error in run.stderr


@pytest.mark.parametrize("file", [*(file.name for file in CARRIED), "MainMenu.nib", "ISF.zip"])
def test_refuses_a_missing_resource(mac, file):
    (mac.resources / file).unlink()
    run = mac.run("check-mac")
    assert (run.returncode, run.stderr) == (1, f"script/check-mac: resources are missing: {file}\n")


def test_refuses_a_resource_left_over_from_an_earlier_build(mac):
    (mac.resources / "Dropped.ttf").touch()
    run = mac.run("check-mac")
    assert run.returncode == 1
    assert "unexpected resources: Dropped.ttf" in run.stderr


def test_refuses_an_incomplete_payload(mac, payload):
    payload.drop("ISF.zip", "ISF/Standard")
    payload.write(mac.resources)
    run = mac.run("check-mac")
    assert run.returncode == 1
    assert 'error: ISF.zip: "ISF/Standard/" is missing' in run.stdout


@pytest.mark.parametrize("name", ["NSSwitch", "NSCustomObject"])
def test_accepts_a_newer_class_with_a_fallback_and_the_archives_own(mac, name):
    assert mac.run("check-mac", NEWER=name).returncode == 0


@pytest.mark.parametrize("newer, status", [("NSView", 1), ("NSSwitch", 0), ("NSObject", 0)])
def test_reads_an_interface_file_for_older_systems(mac, newer, status):
    nib = mac.resources / "MainMenu.nib"
    nib.unlink()
    nib.mkdir()
    objects = ["$null", {"$classname": "NSView", "$classes": ["NSView", "NSObject"]}]
    objects += [{"$classname": "NSSwitch", "$classhints": ["NSButton"]}]
    archive = plistlib.dumps({"$objects": objects}, fmt=plistlib.FMT_BINARY)
    (nib / "keyedobjects.nib").write_bytes(archive)
    assert mac.run("check-mac", NEWER=newer).returncode == status


def test_accepts_another_oldest_system_if_info_plist_agrees(mac):
    information = plistlib.dumps({"LSMinimumSystemVersion": "12"})
    (mac.contents / "Info.plist").write_bytes(information)
    assert mac.run("check-mac", BUILT="12.0", OLDEST="12").returncode == 0


def test_needs_macos(mac):
    run = mac.run("check-mac", SYSTEM="Linux")
    assert (run.returncode, run.stdout) == (2, "")
    assert "this works on macOS only" in run.stderr
