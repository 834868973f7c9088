"""The archiver is missing, does nothing, or fails."""

import pytest

import pages
import snapshot
from expectations import installed
from scenario import Scenario, expect_nothing_lost


class TestUnpacking(Scenario):
    @pytest.mark.parametrize("is_missing", [True, False])
    def test_with_an_archiver_that_is_missing_or_does_nothing(self, is_missing):
        self.replace_archiver("exit 0")
        if is_missing:
            (self.bundle / "Helpers/ditto").unlink()
        stage = self.make_stage()
        failures = [pages.NO_UTILITIES, pages.NO_USER_FILES] if is_missing else []
        nothing = {"suite_to": None, "utilities_to": None, "shaders_to": None}
        made = [place.relative_to(stage.root) for place in (stage.utilities, stage.shared_data)]
        added = {**installed(self.bundle, stage, **nothing), **dict.fromkeys(made, snapshot.FOLDER)}
        self.run(stage, criticals=[*failures, pages.NOT_INSTALLED], adds=added)


class TestPacking(Scenario):
    @pytest.mark.parametrize("end", ["exit 7", "kill -KILL $$", 'real "$@"; exit 1'])
    def test_old_suite_goes_to_the_trash_even_if_packing_fails(self, end):
        self.replace_archiver(f'case "$1" in -c*) {end} ;; *) real "$@" ;; esac')
        stage = self.make_stage(previous=True)
        before = self.snapshot(stage)
        log = ["Couldn't make a backup of current installation."]
        self.run(stage, criticals=[pages.NO_BACKUP], log=log)
        expect_nothing_lost(stage, before)
        assert installed(self.bundle, stage, shaders_to=None, with_fonts=False).items() <= (
            self.snapshot(stage).items()
        )
