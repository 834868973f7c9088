"""What a run must have written and left behind."""

import re
import urllib.parse
import zipfile
from datetime import datetime
from pathlib import Path

import snapshot

BACKUP_NAME = re.compile(r"MorvellaBackup-(\d{4}-\d\d-\d\d\(\d{6}\))\.zip")
CRITICAL = "critical error:"


# The log's lines, in the order of a run. One that ends in a platform's own words is a pattern.


def start_lines(stage, live=None):
    live = stage.live_executable if live is None else live
    return [f"will open demo set at {stage.demo_set}", f"using live app found at {live}"]


def file_url(path):
    return "file://" + urllib.parse.quote(str(path), safe="-._~!$&'()*+,=:@/")


def fonts(bundle):
    return sorted(font.name for font in (bundle / "Resources").glob("*.ttf"))


def font_lines(bundle, stage, present=()):
    return [
        (
            f"Font already installed:{font}"
            if font in present
            else f"Copying: ({file_url(bundle / 'Resources' / font)})"
            f" To: ({file_url(stage.fonts / font)})"
        )
        for font in fonts(bundle)
    ]


def unpacking_line(bundle, archive):
    return f"decompress status=>>> Copying {bundle / 'Resources' / archive}"


def refused_line(archive):
    """What the archiver says, in its own words, about an archive that it could not unpack."""
    copying = rf"(>>> Copying .*{re.escape(archive)}\n)?"
    return re.compile(rf"decompress status={copying}.*\S.*", re.DOTALL)


def failed_line(archive):
    return f"Decompressing resource failed: {archive}"


def utility_lines(bundle, stage):
    return [
        f"Installing Tressimo.zip to {stage.utilities}...",
        unpacking_line(bundle, "Tressimo.zip"),
    ]


def not_trashed_line(path):
    return f"failed to move to trash:{file_url(path)}/"


def font_not_copied_lines():
    return [
        re.compile(r"Copy error:(?!\(null\)).+"),
        re.compile(r"Can't find font in the users' fonts library:(?!\(null\)).+"),
        "Couldn't install fonts.",
    ]


def no_folder_line(parent):
    return re.compile(
        rf"Couldn't create shared folder\(.*{parent}/Morvella/?\), error:(?!\(null\)).+"
    )


def shaders_to_documents_lines():
    return [
        no_folder_line("Shared"),
        # The error of the folder that could not be created still stands.
        re.compile(r"Couldn't access documents folder, error:(?!\(null\)).+"),
    ]


def criticals(log):
    """The messages of the critical sheets that were asked for."""
    return [line.removeprefix(CRITICAL) for line in log if line.startswith(CRITICAL)]


def expect_log(log, lines):
    """The log has these lines in this order, among others."""
    rest = iter(log)
    for wanted in lines:
        is_pattern = isinstance(wanted, re.Pattern)
        found = any(wanted.fullmatch(line) if is_pattern else wanted == line for line in rest)
        assert found, f"the log lacks, after what it should follow, {wanted!r}:\n" + "\n".join(log)


# The files


def suite(bundle):
    """What the suite's archive brings, its application hidden."""
    found = snapshot.of_archive(bundle / "Resources/morvella.zip")
    return snapshot.moved(found, Path("Morvella/Morvella.app"), Path("Morvella/.Morvella.app"))


def installed(bundle, stage, *, with_fonts=True, suite_to=True, utilities_to=True, shaders_to=True):
    """What an installation adds to a stage. A piece goes to its usual place, another or none."""
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
    for font in fonts(bundle) if with_fonts else ():
        items = snapshot.of_folder(resources)
        added[(stage.fonts / font).relative_to(stage.root)] = items[Path(font)]
    return added


def expect_files(stage, expected, *, trashed=None):
    """The stage holds exactly what `expected` says, beside the Live application's own record.

    `trashed` are the items in the Trash by their names there; nothing else may be in it.
    """
    actual = snapshot.of_folder(stage.root)
    actual.pop(Path("opened-documents.txt"), None)
    trash = stage.trash.relative_to(stage.root)
    found = snapshot.below(actual, trash / "files")
    information = {path.name for path in snapshot.below(actual, trash / "info")}
    actual = {path: item for path, item in actual.items() if not _made_for(trash, path, expected)}
    expect_same(expected, actual, "the stage")
    wanted = {}
    for name, items in (trashed or {}).items():
        wanted.update(snapshot.placed(items, Path(name)))
    expect_same(wanted, found, "the Trash")
    assert information == {f"{name}.trashinfo" for name in trashed or {}}, information


def _made_for(trash, path, expected):
    """Whether the Trash brought this path: what is in it, and the folders made to hold it."""
    return path not in expected and (
        path == trash or path in trash.parents or trash in path.parents
    )


def expect_same(expected, actual, what):
    problems = snapshot.differences(expected, actual)
    assert not problems, f"{what} is not as expected:\n" + "\n".join(problems)


def expect_untouched(stage, before):
    expect_same(before, snapshot.of_folder(stage.root), "the stage")


def expect_opened(stage, documents):
    """The Live application was asked for these documents; it ends before `wait_for_end` does."""
    assert stage.opened_documents == list(map(str, documents))


def backups(stage, ending=""):
    return list(stage.user_library.glob(f"MorvellaBackup-*.zip{ending}"))


def expect_backup(stage, folder):
    """One backup zip in the User Library holds `folder`, the snapshot of the old installation.

    Returns its path on the stage and its snapshot, to be expected among the stage's files.
    """
    (backup,) = stage.user_library.glob("MorvellaBackup-*")
    stamp = BACKUP_NAME.fullmatch(backup.name)
    assert stamp, f"a backup named {backup.name}"
    datetime.strptime(stamp[1], "%Y-%m-%d(%H%M%S)")
    with zipfile.ZipFile(backup) as opened:
        assert opened.testzip() is None, f"{backup.name} is damaged"
    expect_same(
        snapshot.placed(folder, Path("Morvella")), snapshot.of_archive(backup), "the backup"
    )
    return {backup.relative_to(stage.root): snapshot.of_folder(backup.parent)[Path(backup.name)]}
