"""What a run must have written and done; each `expect_...` asserts it."""

import re
import urllib.parse
import zipfile
from datetime import datetime
from pathlib import Path

import snapshot
from waiting import wait_until

FONTS = ("Archivo-Medium.ttf", "OpenSans-Regular.ttf")
HIDING = "Hiding the morvella.app to declutter the user library browser..."
HANDLED = "starting install after taking care of the old installation."
BACKUP_NAME = re.compile(r"MorvellaBackup-(\d{4}-\d\d-\d\d\(\d{6}\))\.zip")


# The log, in the order of a run. A line that ends in a platform's own words is a pattern.


def demo_line(stage):
    return f"will open demo set at {stage.demo_set}"


def live_line(live):
    return f"using live app found at {live}"


def start_lines(stage):
    return [demo_line(stage), live_line(stage.live_executable)]


def file_url(path):
    return "file://" + urllib.parse.quote(str(path), safe="-._~!$&'()*+,=:@/")


def font_lines(bundle, stage, present=()):
    return [
        f"Font already installed:{font}"
        if font in present
        else f"Copying: ({file_url(bundle / 'Resources' / font)})"
        f" To: ({file_url(stage.fonts / font)})"
        for font in FONTS
    ]


def unpacking_line(bundle, archive):
    return f"decompress status=>>> Copying {bundle / 'Resources' / archive}"


def refused_line(archive):
    """What the archiver says, in its own words, about an archive that it could not unpack."""
    return re.compile(rf"decompress status=>>> Copying .*{re.escape(archive)}\n.+", re.DOTALL)


def failed_line(archive):
    return f"Decompressing resource failed: {archive}"


def suite_lines(bundle):
    return [unpacking_line(bundle, "morvella.zip")]


def utility_lines(bundle, stage, replaced=False):
    deleting = [f"Deleting {stage.utilities}"] if replaced else []
    return [
        *deleting,
        f"Installing Tressimo.zip to {stage.utilities}...",
        unpacking_line(bundle, "Tressimo.zip"),
    ]


def shader_lines(bundle):
    return ["Installing ISF.zip...", unpacking_line(bundle, "ISF.zip")]


def installation_lines(bundle, stage):
    """A first installation, from its first line to its last."""
    return [
        *font_lines(bundle, stage),
        *suite_lines(bundle),
        *utility_lines(bundle, stage),
        *shader_lines(bundle),
        HIDING,
    ]


def critical(message):
    return f"critical error:{message}"


def expect_log(installer, expected):
    """The whole log, line by line: nothing missing, nothing more."""
    actual = installer.log
    for number, (wanted, found) in enumerate(zip(expected, actual)):
        matches = wanted.fullmatch(found) if isinstance(wanted, re.Pattern) else wanted == found
        assert matches, f"log line {number + 1}: expected {wanted!r}, found {found!r}"
    assert len(actual) >= len(expected), f"the log lacks {expected[len(actual):]!r}"
    assert len(actual) <= len(expected), f"the log goes on with {actual[len(expected):]!r}"


# The files


def suite(bundle):
    """What the suite's archive brings, its application hidden."""
    found = snapshot.of_archive(bundle / "Resources/morvella.zip")
    return snapshot.moved(found, Path("Morvella/Morvella.app"), Path("Morvella/.Morvella.app"))


def installed(bundle, stage, *, fonts=FONTS, suite_to=True, utilities_to=True, shaders_to=True):
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
    everything = snapshot.of_folder(resources)
    for font in fonts:
        added[(stage.fonts / font).relative_to(stage.root)] = everything[Path(font)]
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
    problems = snapshot.differences(expected, actual)
    assert not problems, "the stage is not as expected:\n" + "\n".join(problems)

    trashed = trashed or {}
    wanted = {}
    for name, items in trashed.items():
        wanted.update(snapshot.placed(items, Path(name)))
    problems = snapshot.differences(wanted, found)
    assert not problems, "the Trash is not as expected:\n" + "\n".join(problems)
    assert information == {f"{name}.trashinfo" for name in trashed}, information


def _made_for(trash, path, expected):
    """Whether the Trash brought this path: what is in it, and the folders made to hold it."""
    return path not in expected and (
        path == trash or path in trash.parents or trash in path.parents
    )


def expect_untouched(stage, before):
    problems = snapshot.differences(before, snapshot.of_folder(stage.root))
    assert not problems, "the stage has changed:\n" + "\n".join(problems)


def expect_opened(stage, documents):
    """The Live application was asked for these documents; it runs on after the installer's end."""
    if documents:
        wait_until(lambda: stage.opened_documents, "the demo Live Set to be opened")
    assert stage.opened_documents == documents, stage.opened_documents


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
    problems = snapshot.differences(
        snapshot.placed(folder, Path("Morvella")), snapshot.of_archive(backup)
    )
    assert not problems, "the backup is not the old installation:\n" + "\n".join(problems)
    path = backup.relative_to(stage.root)
    return {path: snapshot.of_folder(backup.parent)[Path(backup.name)]}
