"""The base class of the end-to-end tests: makes stages and runs the installer on them."""

import configparser
import contextlib
import os
import shutil
import stat
import urllib.parse
from pathlib import Path

import pytest

import expectations
import log_lines
import folders
import snapshot
import stage as stages
from gate import Gate
from installer import Installer
from waiting import PATIENCE


class Scenario:
    # How many seconds each step of `run` may take.
    patience = PATIENCE

    @pytest.fixture(autouse=True)
    def prepare(self, display, build, evidence):
        self.display, self.build, self.evidence = display, build, evidence
        with folders.temporary_folder("test") as self.folder:
            self.bundle = build / "Morvella Installer.app"
            yield

    def make_stage(self, name="stage", **options):
        return stages.make(self.folder / name, **options)

    def copy_bundle(self, *, without=()):
        """Tests a copy of the application from now on, without some of its resources."""
        copy = self.folder / self.bundle.name
        shutil.copytree(self.bundle, copy, symlinks=True)
        for resource in without:
            (copy / "Resources" / resource).unlink()
        self.bundle = copy
        return copy / "Resources"

    def replace_archiver(self, script):
        """Replaces the archiver of a copy with a shell script, which can call the `real` one."""
        self.copy_bundle()
        archiver = self.bundle / "Helpers/ditto"
        real = archiver.rename(archiver.with_name("real-ditto"))
        archiver.write_text(f"#!/bin/bash\nreal() {{ '{real}' \"$@\"; }}\n{script}\n")
        archiver.chmod(0o755)

    def launch(self, stage, arguments=None, **options):
        options = {"build": self.build, "evidence": self.evidence, **options}
        return Installer(self.display, self.bundle, stage, arguments, **options)

    def hold(self, stage):
        """A gate for `launch`, which holds the installation's first change."""
        return Gate(self.folder / "gate", stage)

    def run(
        self, stage, *, criticals=(), log=(), before=None, adds=None, elsewhere=False, **options
    ):
        """Presses the default button of every page and sheet until the installer has ended.

        `criticals` are the critical sheets, in order; `log` are lines of the log, among others;
        `before` maps places to actions to take there before the button is pressed; `adds` is
        exactly what the run must add to the stage. Only the installer's own places may change,
        unless the test itself changes something `elsewhere`. Returns the whole log.
        """
        files = self.snapshot(stage)
        untouched = contextlib.nullcontext() if elsewhere else self.untouched_elsewhere(stage)
        with untouched, self.launch(stage, **options) as installer:
            installer.walk_to_the_end(before, self.patience)
            lines = installer.log
        assert log_lines.criticals(lines) == list(criticals)
        log_lines.expect_log(lines, log)
        if adds is not None:
            expectations.expect_files(stage, {**files, **adds})
            expectations.expect_opened(stage, [] if criticals else [stage.demo_set])
        return lines

    @contextlib.contextmanager
    def untouched_elsewhere(self, stage):
        """Expects no name, content or mode to change outside the installer's own places."""
        before = _with_modes(stage)
        yield
        after = _with_modes(stage)
        new = set(stage.trash.relative_to(stage.root).parents) - before.keys()
        expectations.expect_same(
            _without_own_places(before, stage),
            _without_own_places(after, stage, new),
            "what the installer must not touch",
        )

    def snapshot(self, stage):
        return snapshot.of_folder(stage.root)


def expect_nothing_lost(stage, before):
    assert lost(stage, before) == [], "lost files"


def lost(stage, before):
    """The files of `before` that are no longer on the stage, in the Trash or in a backup."""
    places = _kept(stage)
    files = {path: item for path, item in before.items() if item != snapshot.FOLDER}
    return [str(path) for path, item in files.items() if (path, item) not in places]


def _with_modes(stage):
    """A snapshot of the whole stage that includes permissions."""
    return {
        path: f"{item} {stat.S_IMODE((stage.root / path).lstat().st_mode):o}"
        for path, item in snapshot.of_folder(stage.root).items()
    }


def _without_own_places(items, stage, new=()):
    """The snapshot without the installer's own places and without the `new` paths themselves.

    A backup overwrites the partial one of an archiver killed in the same second.
    """
    places = [stage.destination, stage.utilities, stage.shared_data, stage.documents / "Morvella"]
    places += [stage.trash, stage.root / "opened-documents.txt"]
    for place in places:
        items = snapshot.without(items, place.relative_to(stage.root))
    return {
        path: item
        for path, item in items.items()
        if path not in new
        and not expectations.BACKUP_NAME.fullmatch(path.name.removesuffix(".partial"))
        and not (path.suffix == ".ttf" and stage.root / path.parent == stage.fonts)
    }


def _kept(stage):
    """{(path, what is there)} of everything on the stage, in the Trash and in the backups.

    Items in the Trash and in backups are listed at their original paths.
    """
    places = set(snapshot.of_folder(stage.root).items())
    for information in (stage.trash / "info").glob("*.trashinfo"):
        parser = configparser.ConfigParser(interpolation=None)
        parser.read(information, encoding="utf-8")
        if not parser.sections():
            continue  # Killed before it was written, and so before anything moved.
        origin = Path(urllib.parse.unquote(parser["Trash Info"]["Path"])).relative_to(stage.root)
        trashed = stage.trash / "files" / information.stem
        if trashed.is_dir() and not trashed.is_symlink():
            found = snapshot.of_folder(trashed).items()
            places |= {(origin / path, item) for path, item in found}
        elif os.path.lexists(trashed):
            places.add((origin, snapshot.of_folder(trashed.parent)[Path(trashed.name)]))
    library = stage.user_library.relative_to(stage.root)
    for backup in expectations.backups(stage):
        places |= {(library / path, item) for path, item in snapshot.of_archive(backup).items()}
    return places
