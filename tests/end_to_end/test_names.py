import unicodedata

import pytest

from expectations import expect_opened, installed
from log_lines import installation_lines, start_lines
from scenario import Scenario
from stage import Names

UMLAUTS = "Fäden über Öl"
COMPOSED, DECOMPOSED = (unicodedata.normalize(form, UMLAUTS) for form in ("NFC", "NFD"))


class TestUnusualNames(Scenario):
    """The names of folders reach the log and every file unchanged."""

    @pytest.mark.parametrize(
        ("folder", "names"),
        [
            (" my  stage ", Names(user="a musician", library=" User  Library ")),
            ("100%", Names(user="%s%@%n", library="%41 %20", kit="50%@ off %d")),
            ("it's", Names(user="o'brien\\n", library="Anna's `Lib`", kit="'kit'")),
            ("stage", Names(live='Live "11" Suite.app', kit='The "Kit"')),  # none in Library.cfg
            ("$HOME & <co>", Names(library="(a, b); {c = d;}", kit="*?[x]|#~")),
            ("🎹 studio", Names(user="mu🎸sician", library="Größe 🎛", kit="キット 🎁")),
            *((name, Names(user=name, library=name, kit=name)) for name in (COMPOSED, DECOMPOSED)),
        ],
    )
    def test_complete_run(self, folder, names):
        stage = self.make_stage(folder, names=names)
        *log, _ = self.run(stage, adds=installed(self.bundle, stage))
        assert log == [*start_lines(stage), *installation_lines(self.bundle, stage)]

    def test_live_application_named_by_its_bundle(self):
        stage = self.make_stage()
        self.run(stage, arguments=["-liveapp", stage.live_app, "-app", f"{stage.kit}/"])
        expect_opened(stage, [stage.demo_set])
