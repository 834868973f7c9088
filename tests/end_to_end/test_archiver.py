"""The archiver does its work, or does not, and then behaves strangely."""

import pytest

import snapshot
from expectations import expect_files, installed
from log_lines import expect_log, failed_line, unpacking_line
from pages import INSTALLATION, NO_BACKUP, NO_USER_FILES, NO_UTILITIES, NOT_INSTALLED
from scenario import Scenario, expect_nothing_lost

KIBIBYTE = 1 << 10
DIFFERENT_PICTURES = 4
ARCHIVES = ("morvella.zip", "Tressimo.zip", "ISF.zip")
FAILED = [failed_line("Tressimo.zip"), failed_line("ISF.zip")]


class TestUnpacking(Scenario):
    def expect_unpacked(self, script, *, said, failed=False):
        """`said` is what is logged after the archiver's usual line; None if that is missing too."""
        self.replace_archiver(script)
        stage = self.make_stage()
        before = self.snapshot(stage)
        criticals = [NO_UTILITIES, NO_USER_FILES] if failed else []
        log = self.run(stage, criticals=criticals, log=FAILED if failed else ())
        lines = [unpacking_line(self.bundle, archive) for archive in ARCHIVES]
        wanted = [line + said for line in lines] if said is not None else []
        assert [line for line in log if line.startswith("decompress")] == wanted
        expect_files(stage, {**before, **installed(self.bundle, stage)})

    def test_prints_60_kilobytes(self):
        script = f"real \"$@\"; head -c {60 * KIBIBYTE} /dev/zero | tr '\\0' x"
        self.expect_unpacked(script, said="\n" + 60 * KIBIBYTE * "x")

    def test_prints_what_is_not_utf_8(self):
        self.expect_unpacked("printf 'Ger\\344t\\n'; real \"$@\"", said=None)

    def test_prints_nothing(self):
        self.expect_unpacked('real "$@" >/dev/null 2>&1', said=None)

    @pytest.mark.parametrize("end", ["exit 7", "kill -KILL $$", "kill -SEGV $$"])
    def test_ends_badly(self, end):
        self.expect_unpacked(f'real "$@"; {end}', said="", failed=True)

    @pytest.mark.parametrize("is_missing", [True, False])
    def test_does_nothing(self, is_missing):
        self.replace_archiver("exit 0")
        if is_missing:
            (self.bundle / "Helpers/ditto").unlink()
        stage = self.make_stage()
        before = self.snapshot(stage)
        failures = [NO_UTILITIES, NO_USER_FILES] if is_missing else []
        self.run(stage, criticals=[*failures, NOT_INSTALLED], log=FAILED if is_missing else ())
        nothing = {"suite_to": None, "utilities_to": None, "shaders_to": None}
        made = [place.relative_to(stage.root) for place in (stage.utilities, stage.shared_data)]
        added = {**installed(self.bundle, stage, **nothing), **dict.fromkeys(made, snapshot.FOLDER)}
        expect_files(stage, {**before, **added})

    def test_takes_long(self):
        """The indicator turns until it has finished."""
        go = self.folder / "go"
        self.replace_archiver(f"until [ -e '{go}' ]; do sleep 0.01; done; real \"$@\"")
        with self.launch(self.make_stage()) as installer:
            content = installer.content
            installer.begin_installation()
            state = installer.wait_for_state(
                lambda state: state.place == INSTALLATION and state.working, "the archiver"
            )
            (indicator,) = state.page_view.indicators
            assert indicator.turning and not indicator.hidden
            pictures = []

            def turns():
                picture = self.display.picture(content)
                pictures.extend([] if picture in pictures else [picture])
                return len(pictures) >= DIFFERENT_PICTURES

            installer.wait(turns, "the indicator to turn")
            go.touch()
            installer.finish()


class TestPacking(Scenario):
    @pytest.mark.parametrize("end", ["exit 7", "kill -KILL $$", 'real "$@"; exit 1'])
    def test_what_could_not_be_packed_goes_to_the_trash_all_the_same(self, end):
        self.replace_archiver(f'case "$1" in -c*) {end} ;; *) real "$@" ;; esac')
        stage = self.make_stage(previous=True)
        before = self.snapshot(stage)
        log = self.run(stage, criticals=[NO_BACKUP])
        expect_log(log, ["Couldn't make a backup of current installation."])
        expect_nothing_lost(stage, before)
        assert installed(self.bundle, stage, shaders_to=None, with_fonts=False).items() <= (
            self.snapshot(stage).items()
        )
