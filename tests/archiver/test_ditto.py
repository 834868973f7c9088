"""The behaviour of the stand-in for macOS's ditto that the other tests rely on."""

import os
import signal
import stat
import subprocess
import time
import zipfile
from pathlib import Path
from resource import RLIMIT_FSIZE, setrlimit

import pytest

ARCHIVER = Path(__file__).resolve().parents[2] / "platform/gnustep/ditto"
PACK = ("-c", "-k", "--sequesterRsrc", "--keepParent")
NAMES = ["two words", "ä", "キー", "🎹", "-x", "@x", "100% $HOME `id` *", "line\nbreak", 255 * "x"]


def run(*arguments, **options):
    return subprocess.run(
        [ARCHIVER, *arguments], stderr=subprocess.PIPE, check=False, timeout=60, **options
    )


def unpack(folder):
    return run("-v", "-x", "-k", folder / "archive.zip", folder / "destination")


def make_zip(folder, *entries, links=()):
    with zipfile.ZipFile(folder / "archive.zip", "w") as archive:
        for name, target in links:
            link = zipfile.ZipInfo(name)
            link.external_attr = (stat.S_IFLNK | 0o777) << 16
            archive.writestr(link, str(target))
        for name in (*entries, "Morvella/device"):
            archive.writestr(name, "new")


def contents(folder):
    """{relative path: text} of the files."""
    files = (path for path in folder.rglob("*") if path.is_file())
    return {str(path.relative_to(folder)): path.read_text() for path in files}


def test_unpacking_adds_to_the_destination_and_prints_one_line(tmp_path):
    device = tmp_path / "destination/Morvella/device"
    device.parent.mkdir(parents=True)
    device.write_text("an older, longer version")
    (device.parent / "mine").write_text("my own")
    make_zip(tmp_path, *(f"Morvella/{name}" for name in NAMES))
    result = unpack(tmp_path)
    assert result.returncode == 0
    assert result.stderr == b">>> Copying " + bytes(tmp_path / "archive.zip") + b"\n"
    assert contents(device.parent) == dict.fromkeys([*NAMES, "device"], "new") | {"mine": "my own"}


@pytest.mark.parametrize(
    ("name", "links", "refused"),
    [
        ("../outside/secret", [], True),
        ("Morvella/../../outside/secret", [], True),
        ("link/secret", [("link", "OUTSIDE")], True),
        ("link/secret", [("link", "../outside")], True),
        ("there/secret", [], True),
        ("there/", [], False),
        ("link", [("link", "OUTSIDE/secret")], False),
        ("OUTSIDE/secret", [], False),
    ],
)
@pytest.mark.filterwarnings("ignore:Duplicate name")
def test_hostile_entry_changes_nothing_outside(tmp_path, name, links, refused):
    outside = tmp_path / "outside"
    outside.mkdir()
    (outside / "secret").write_text("secret")
    (tmp_path / "destination").mkdir()
    (tmp_path / "destination/there").symlink_to(outside)
    links = [(link, target.replace("OUTSIDE", str(outside))) for link, target in links]
    make_zip(tmp_path, name.replace("OUTSIDE", str(outside)), links=links)
    mode = outside.stat().st_mode
    assert (unpack(tmp_path).returncode != 0) == refused
    assert (contents(outside), outside.stat().st_mode) == ({"secret": "secret"}, mode)
    assert {path.name for path in tmp_path.iterdir()} == {"archive.zip", "destination", "outside"}
    assert (tmp_path / "destination/Morvella/device").read_text() == "new"


@pytest.mark.parametrize("data", [b"", b"this is not a zip archive", b"PK\5\6" + bytes(18)])
def test_unpacking_an_empty_or_invalid_archive_fails(tmp_path, data):
    (tmp_path / "archive.zip").write_bytes(data)
    assert unpack(tmp_path).returncode != 0
    assert not (tmp_path / "destination").exists()


def test_damaged_entry_is_reported_and_the_others_are_unpacked(tmp_path):
    make_zip(tmp_path, "damaged")
    archive = tmp_path / "archive.zip"
    archive.write_bytes(archive.read_bytes().replace(b"new", b"now", 1))
    assert unpack(tmp_path).returncode != 0
    assert (tmp_path / "destination/Morvella/device").read_text() == "new"


@pytest.fixture(name="suite")
def linked_suite_to_pack(tmp_path):
    suite = tmp_path / "User Library/Morvella"
    suite.parent.mkdir()
    (tmp_path / "suite").mkdir()
    suite.symlink_to(tmp_path / "suite")
    for name in NAMES:
        (suite / name).write_text(name)
    (suite / "large").write_bytes(os.urandom(1 << 20))
    return suite


def test_packing_is_silent_and_keeps_everything_in_one_folder(suite):
    backup = suite.parent / "backup.zip"
    result = run(*PACK, suite, backup)
    assert (result.returncode, result.stderr) == (0, b"")
    with zipfile.ZipFile(backup) as packed:
        for name in NAMES:
            assert packed.read(f"Morvella/{name}") == name.encode()
        assert all(name.startswith("Morvella/") for name in packed.namelist())


def test_failed_packing_leaves_nothing_behind(suite):
    backup = suite.parent / "backup.zip"
    limit = RLIMIT_FSIZE, (1 << 19, 1 << 19)
    assert run(*PACK, suite, backup, preexec_fn=lambda: setrlimit(*limit)).returncode == 1
    assert run(*PACK, suite.parent / "missing", backup).returncode == 1
    assert list(suite.parent.iterdir()) == [suite]


@pytest.mark.parametrize("how", [signal.SIGTERM, signal.SIGKILL])
def test_interrupted_packing_leaves_no_backup(suite, how):
    os.truncate(suite / "large", 1 << 40)
    command = [ARCHIVER, *PACK, suite, suite.parent / "backup.zip"]
    deadline = time.monotonic() + 60
    with subprocess.Popen(command, start_new_session=True) as archiver:
        while not list(suite.parent.glob("backup.zip?*")) and time.monotonic() < deadline:
            time.sleep(0.01)
        os.killpg(archiver.pid, how)
    left = {"Morvella"} if how == signal.SIGTERM else {"Morvella", "backup.zip.partial"}
    assert {path.name for path in suite.parent.iterdir()} == left


@pytest.mark.parametrize(
    "arguments",
    [(), ("--help",), ("-x", "-k", "a", "b"), ("-v", "-x", "-k", "a"), (*PACK, "a", "b", "c")],
)
def test_rejects_other_command_lines(arguments):
    result = run(*arguments)
    assert (result.returncode, result.stderr[:12]) == (os.EX_USAGE, b"usage: ditto")
