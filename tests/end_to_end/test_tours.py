import pytest

import log_lines
from pages import INSTALLATION, NO_BACKUP, PAGES, SETTINGS
from scenario import Scenario
from tour import Tour


class TestTours(Scenario):
    def take(self, *shown_between, before=None, log=(), **options):
        """The tour must show all pages, and `shown_between` before the page `before`. Its log is
        compared except for the last line; `log` are the lines between the start and the
        installation. Returns the last line."""
        stage = self.make_stage(**options)
        shown = {}
        with self.launch(stage, gate=self.hold(stage)) as installer:
            tour = Tour(installer, shown.__setitem__)
            tour.walk()
            tour.expect_complete()
            *found, hiding = installer.log
        expected = []
        for page in PAGES:
            expected += [*(shown_between if page.title == before else ()), page.picture]
        if stage.obstructed:  # The critical sheet is shown last.
            expected = expected[: expected.index("critical-sheet") + 1]
        assert list(shown) == expected
        assert found == [
            *log_lines.start_lines(stage),
            *log,
            *log_lines.installation_lines(self.bundle, stage),
        ]
        return hiding

    def test_first_installation(self):
        hiding = self.take()
        assert hiding == "Hiding the morvella.app to declutter the user library browser..."

    def test_previous_installation_is_backed_up_and_trashed(self):
        shown = "previous-installation-sheet", "backup"
        self.take(*shown, before=INSTALLATION, log=[log_lines.OLD_SUITE_HANDLED], previous=True)

    def test_backup_that_cannot_be_made_ends_in_a_critical_sheet(self):
        shown = "previous-installation-sheet", "critical-sheet"
        log = [
            "Making backup failed",
            "Couldn't make a backup of current installation.",
            log_lines.critical_line(NO_BACKUP),
            log_lines.OLD_SUITE_HANDLED,
        ]
        self.take(*shown, before=INSTALLATION, log=log, obstructed=True)

    @pytest.mark.slow
    def test_installer_waits_for_an_unmounted_volume(self):
        shown = "volume-missing-sheet", "settings-waiting"
        self.take(*shown, before=SETTINGS, log=["UL unavailable"], unmounted=True)
