import pytest

from log_lines import start_lines
from pages import NO_LIVE_SET, NO_USER_LIBRARY
from scenario import Scenario

MANY_LINES = b'<ProjectName Value="Elsewhere" />\n' * 1_500_000  # 50 megabytes
NO_EXECUTABLE = "Couldn't get executable"
STATUS_1 = "couldn't get usrlib info, status:1"
STATUS_4 = "couldn't get usrlib info, status:4"


class TestArguments(Scenario):
    @pytest.mark.parametrize("has_kit", [True, False])
    def test_without_the_live_application(self, has_kit):
        stage = self.make_stage()
        arguments = ["-app", f"{stage.kit}/"] if has_kit else []
        self.run(stage, criticals=[NO_LIVE_SET], arguments=arguments, adds={})

    @pytest.mark.parametrize(
        ("live", "reason"),
        [
            ("", NO_EXECUTABLE),
            ("/", NO_EXECUTABLE),
            ("{applications}/Live 10 Lite.app/Contents/MacOS/Live", STATUS_1),
            ("{documents}", STATUS_1),
        ],
    )
    def test_invalid_live_application(self, live, reason):
        stage = self.make_stage()
        live = live.format(applications=stage.applications, documents=stage.documents)
        arguments = ["-liveapp", live, "-app", f"{stage.kit}/"]
        log = [*start_lines(stage, live), reason]
        self.run(stage, criticals=[NO_USER_LIBRARY], log=log, arguments=arguments, adds={})


class TestLibraryCfg(Scenario):
    @pytest.mark.parametrize(
        ("change", "reason"),
        [
            pytest.param(lambda old: None, STATUS_1, id="missing"),
            pytest.param(lambda old: bytes(range(256)) * 4096, STATUS_4, id="binary"),
            pytest.param(
                lambda old: old + "<!-- ö -->\n".encode("latin-1"), STATUS_4, id="Latin 1"
            ),
            pytest.param(lambda old: old.replace(b"UserL", b"L"), STATUS_4, id="other projects"),
            pytest.param(lambda old: MANY_LINES, STATUS_4, id="large"),
        ],
    )
    def test_without_a_readable_entry(self, change, reason):
        stage = self.make_stage()
        content = change(stage.library_cfg.read_bytes())
        stage.library_cfg.unlink() if content is None else stage.library_cfg.write_bytes(content)
        self.run(stage, criticals=[NO_USER_LIBRARY], log=[reason], adds={})

    def test_entry_after_50_megabytes(self):
        stage = self.make_stage()
        stage.library_cfg.write_bytes(MANY_LINES + stage.library_cfg.read_bytes())
        self.run(stage)
        assert (stage.destination / "Sources/Vellicor.amxd").exists()
