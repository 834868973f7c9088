"""The archiver does its work, or does not, and then behaves strangely."""

import pytest

import pages
import snapshot
from expectations import expect_files, installed
from log_lines import expect_log, failed_line, unpacking_line
from scenario import Scenario, expect_nothing_lost

SAID = 60 << 10  # bytes, almost as many as a pipe holds
ARCHIVES = ("morvella.zip", "Tressimo.zip", "ISF.zip")
FAILURES = [pages.NO_UTILITIES, pages.NO_USER_FILES]
FAILS = {
    "criticals": FAILURES,
    "log": [failed_line("Tressimo.zip"), failed_line("ISF.zip")],
}


class TestUnpacking(Scenario):
    @pytest.mark.parametrize(
        ("script", "said"),
        [
            (f"real \"$@\"; head -c {SAID} /dev/zero | tr '\\0' x", "\n" + SAID * "x"),
            ("printf 'Ger\\344t\\n'; real \"$@\"", None),
            ('real "$@" >/dev/null 2>&1', None),
            ('real "$@"; exit 7', ""),
            ('real "$@"; kill -KILL $$', ""),
            ('real "$@"; kill -SEGV $$', ""),
        ],
    )
    def test_what_it_says_and_how_it_ends(self, script, said):
        """`said` is what is logged after its usual line; None if that is missing too."""
        self.replace_archiver(script)
        stage = self.make_stage()
        before = self.snapshot(stage)
        log = self.run(stage, **(FAILS if said == "" else {}))
        lines = [unpacking_line(self.bundle, archive) for archive in ARCHIVES]
        wanted = [line + said for line in lines] if said is not None else []
        assert [line for line in log if line.startswith("decompress")] == wanted
        expect_files(stage, {**before, **installed(self.bundle, stage)})

    @pytest.mark.parametrize("is_missing", [True, False])
    def test_does_nothing(self, is_missing):
        self.replace_archiver("exit 0")
        if is_missing:
            (self.bundle / "Helpers/ditto").unlink()
        stage = self.make_stage()
        before = self.snapshot(stage)
        failures = FAILURES if is_missing else []
        self.run(stage, criticals=[*failures, pages.NOT_INSTALLED])
        nothing = {"suite_to": None, "utilities_to": None, "shaders_to": None}
        made = [place.relative_to(stage.root) for place in (stage.utilities, stage.shared_data)]
        added = {**installed(self.bundle, stage, **nothing), **dict.fromkeys(made, snapshot.FOLDER)}
        expect_files(stage, {**before, **added})


class TestPacking(Scenario):
    @pytest.mark.parametrize("end", ["exit 7", "kill -KILL $$", 'real "$@"; exit 1'])
    def test_what_could_not_be_packed_goes_to_the_trash_all_the_same(self, end):
        self.replace_archiver(f'case "$1" in -c*) {end} ;; *) real "$@" ;; esac')
        stage = self.make_stage(previous=True)
        before = self.snapshot(stage)
        log = self.run(stage, criticals=[pages.NO_BACKUP])
        expect_log(log, ["Couldn't make a backup of current installation."])
        expect_nothing_lost(stage, before)
        assert installed(self.bundle, stage, shaders_to=None, with_fonts=False).items() <= (
            self.snapshot(stage).items()
        )
