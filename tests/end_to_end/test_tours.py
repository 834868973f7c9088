from scenario import Scenario
from tour import Tour

import expectations


def marked_steps(page):
    """The steps in the sidebar with a coloured background, beside their numbers."""
    blank = page.color(14, 14)
    return [step for step in range(1, 6) if page.color(14, 167 + 36 * step) != blank]


class Tours(Scenario):
    def take(self, **options):
        stage = self.make_stage(**options)
        shown = {}
        with self.launch(stage) as installer:
            tour = Tour(
                installer,
                previous=options.get("previous", False),
                demo=options.get("demo", True),
                keep=shown.__setitem__,
            )
            tour.walk()
            expectations.expect_log(installer, tour.expected_log())
            tour.expect_complete()
        return shown

    pages = ["welcome", "licence", "settings", "installation", "post-installation"]

    def test_plain(self):
        self.assertEqual(list(self.take()), self.pages)

    def test_each_page_marks_its_own_step(self):
        shown = self.take()
        marked = [marked_steps(shown[page]) for page in self.pages]
        self.assertEqual(marked, [[1], [2], [3], [4], [5]])

    def test_previous_installation_is_backed_up_and_trashed(self):
        shown = list(self.take(previous=True))
        self.assertEqual(shown, [*self.pages[:3], "previous-installation-sheet", *self.pages[3:]])

    def test_unmounted_volume_is_waited_for(self):
        shown = list(self.take(unmounted=True))
        waiting = ["volume-missing-sheet", "settings-waiting"]
        self.assertEqual(shown, [*self.pages[:2], *waiting, *self.pages[2:]])

    def test_missing_demo_set_is_not_opened(self):
        self.assertEqual(list(self.take(demo=False)), self.pages)
