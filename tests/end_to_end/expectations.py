"""Checks of what a run has left behind."""

import re
import zipfile
from datetime import datetime
from pathlib import Path

import snapshot
from product import FONTS

BACKUP_NAME = re.compile(r"MorvellaBackup-(\d{4}-\d\d-\d\d\(\d{6}\))\.zip")


def suite(bundle):
    """What the suite's archive installs, with its application hidden."""
    found = snapshot.of_archive(bundle / "Resources/morvella.zip")
    return snapshot.moved(found, Path("Morvella/Morvella.app"), Path("Morvella/.Morvella.app"))


def installed(bundle, stage, *, with_fonts=True, suite_to=True, utilities_to=True, shaders_to=True):
    """What an installation adds to a stage. A piece may have another place, or none."""
    resources = bundle / "Resources"
    pieces = [
        (suite(bundle), suite_to, stage.user_library),
        (snapshot.of_archive(resources / "Tressimo.zip"), utilities_to, stage.utilities),
        (snapshot.of_archive(resources / "ISF.zip"), shaders_to, stage.shared_data),
    ]
    added = {}
    for items, place, usual in pieces:
        if place:
            folder = usual if place is True else place
            added.update(snapshot.placed(items, folder.relative_to(stage.root)))
    for font in FONTS if with_fonts else ():
        items = snapshot.of_folder(resources)
        added[(stage.fonts / font).relative_to(stage.root)] = items[Path(font)]
    return added


def expect_files(stage, expected, *, trashed=None):
    """Expects exactly `expected` on the stage, apart from the stub Live application's record.

    `trashed` maps each name in the Trash to its contents; the Trash holds nothing else.
    """
    actual = snapshot.of_folder(stage.root)
    actual.pop(Path("opened-documents.txt"), None)
    trash = stage.trash.relative_to(stage.root)
    found = snapshot.below(actual, trash / "files")
    information = {path.name for path in snapshot.below(actual, trash / "info")}
    actual = {path: item for path, item in actual.items() if not _belongs_to(trash, path, expected)}
    expect_same(expected, actual, "the stage")
    wanted = {}
    for name, items in (trashed or {}).items():
        wanted.update(snapshot.placed(items, Path(name)))
    expect_same(wanted, found, "the Trash")
    assert information == {f"{name}.trashinfo" for name in trashed or {}}, information


def _belongs_to(trash, path, expected):
    """Whether this path is in the Trash, or is a folder created to hold the Trash."""
    return path not in expected and (
        path == trash or path in trash.parents or trash in path.parents
    )


def expect_same(expected, actual, what):
    problems = [
        f"{path}: expected {expected.get(path, 'nothing')}, found {actual.get(path, 'nothing')}"
        for path in sorted(expected.keys() | actual.keys())
        if expected.get(path) != actual.get(path)
    ]
    assert not problems, f"{what} is not as expected:\n" + "\n".join(problems)


def expect_untouched(stage, before):
    expect_same(before, snapshot.of_folder(stage.root), "the stage")


def expect_opened(stage, documents):
    """Live must have opened exactly these documents; `wait_for_end` waits for Live, too."""
    assert stage.opened_documents == list(map(str, documents))


def backups(stage, ending=""):
    return list(stage.user_library.glob(f"MorvellaBackup-*.zip{ending}"))


def expect_backup(stage, folder):
    """Expects one backup zip in the User Library, of `folder`, the old installation's snapshot.

    Returns {its path on the stage: its snapshot}, to add to the expected files.
    """
    (backup,) = stage.user_library.glob("MorvellaBackup-*")
    stamp = BACKUP_NAME.fullmatch(backup.name)
    assert stamp, f"{backup.name} is not a backup's name"
    datetime.strptime(stamp[1], "%Y-%m-%d(%H%M%S)")
    with zipfile.ZipFile(backup) as opened:
        assert opened.testzip() is None, f"{backup.name} is damaged"
    expect_same(
        snapshot.placed(folder, Path("Morvella")), snapshot.of_archive(backup), "the backup"
    )
    return {backup.relative_to(stage.root): snapshot.of_folder(backup.parent)[Path(backup.name)]}
