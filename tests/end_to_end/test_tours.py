from scenario import Scenario
from tour import Tour

import expectations


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
        return list(shown)

    pages = ["welcome", "licence", "settings", "installation", "post-installation"]

    def test_plain(self):
        self.assertEqual(self.take(), self.pages)

    def test_previous_installation_is_backed_up_and_trashed(self):
        shown = self.take(previous=True)
        self.assertEqual(shown, [*self.pages[:3], "previous-installation-sheet", *self.pages[3:]])

    def test_unmounted_volume_is_waited_for(self):
        shown = self.take(unmounted=True)
        waiting = ["volume-missing-sheet", "settings-waiting"]
        self.assertEqual(shown, [*self.pages[:2], *waiting, *self.pages[2:]])

    def test_missing_demo_set_is_not_opened(self):
        self.assertEqual(self.take(demo=False), self.pages)
