import pytest

import log_lines
from pages import INSTALLATION, SETTINGS, WAY
from scenario import Scenario
from tour import Tour


class TestTours(Scenario):
    def take(self, *shown_between, before=None, **options):
        """Takes a tour, which must show all pages and `shown_between` before this one."""
        stage = self.make_stage(**options)
        shown = {}
        gate = self.hold(stage)
        with self.launch(stage, gate=gate) as installer:
            options.pop("unmounted", None)  # The stage itself tells that.
            tour = Tour(installer, gate, keep=shown.__setitem__, **options)
            tour.walk()
            tour.expect_complete()
            log = installer.log
        expected = []
        for page in WAY:
            expected += [*(shown_between if page.title == before else ()), page.picture]
        if options.get("obstructed"):  # Its critical sheet ends it.
            expected = expected[: expected.index("critical-sheet") + 1]
        assert list(shown) == expected
        return stage, log

    def test_previous_installation_is_backed_up_and_trashed(self):
        self.take("previous-installation-sheet", "backup", before=INSTALLATION, previous=True)

    def test_backup_that_cannot_be_made_ends_in_a_critical_sheet(self):
        shown = "previous-installation-sheet", "critical-sheet"
        self.take(*shown, before=INSTALLATION, obstructed=True)

    @pytest.mark.slow
    def test_unmounted_volume_is_waited_for(self):
        self.take("volume-missing-sheet", "settings-waiting", before=SETTINGS, unmounted=True)

    def test_missing_demo_set_is_not_opened(self):
        self.take(demo=False)

    def test_log_of_a_first_installation(self):
        """The only log that is compared as a whole here."""
        stage, log = self.take()
        assert log == [
            *log_lines.start_lines(stage),
            *log_lines.font_lines(self.bundle, stage),
            log_lines.unpacking_line(self.bundle, "morvella.zip"),
            *log_lines.utility_lines(self.bundle, stage),
            "Installing ISF.zip...",
            log_lines.unpacking_line(self.bundle, "ISF.zip"),
            "Hiding the morvella.app to declutter the user library browser...",
        ]
