import pytest

from scenario import Scenario
from tour import Tour

import expectations
from gate import Gate


def marked_steps(page):
    """The steps in the sidebar with a coloured background, beside their numbers."""
    blank = page.color(14, 14)
    return [step for step in range(1, 6) if page.color(14, 167 + 36 * step) != blank]


class TestTours(Scenario):
    def take(self, **options):
        stage = self.make_stage(**options)
        shown = {}
        gate = Gate(self.folder / "gate", self.bundle)
        with self.launch(stage, environment=gate.environment) as installer:
            options.pop("unmounted", None)  # The stage itself tells that.
            tour = Tour(installer, gate, keep=shown.__setitem__, **options)
            tour.walk()
            expectations.expect_log(installer, tour.expected_log())
            tour.expect_complete()
        return shown

    pages = ["welcome", "licence", "settings", "installation", "post-installation"]

    def test_plain(self):
        assert list(self.take()) == self.pages

    def test_each_page_marks_its_own_step(self):
        shown = self.take()
        marked = [marked_steps(shown[page]) for page in self.pages]
        assert marked == [[1], [2], [3], [4], [5]]

    def test_previous_installation_is_backed_up_and_trashed(self):
        shown = list(self.take(previous=True))
        assert shown == [*self.pages[:3], "previous-installation-sheet", "backup", *self.pages[3:]]

    def test_backup_that_cannot_be_made_ends_in_a_critical_sheet(self):
        shown = list(self.take(obstructed=True))
        assert shown == [*self.pages[:3], "previous-installation-sheet", "critical-sheet"]

    @pytest.mark.slow
    def test_unmounted_volume_is_waited_for(self):
        shown = list(self.take(unmounted=True))
        waiting = ["volume-missing-sheet", "settings-waiting"]
        assert shown == [*self.pages[:2], *waiting, *self.pages[2:]]

    def test_missing_demo_set_is_not_opened(self):
        assert list(self.take(demo=False)) == self.pages
