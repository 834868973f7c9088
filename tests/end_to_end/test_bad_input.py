import plistlib

import pytest

from expectations import expect_untouched
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
        before = self.snapshot(stage)
        self.run(stage, criticals=[NO_LIVE_SET], arguments=arguments)
        expect_untouched(stage, before)

    @pytest.mark.parametrize(
        ("live", "reason"),
        [
            ("", NO_EXECUTABLE),
            ("/", NO_EXECUTABLE),
            ("{applications}/Live 10 Lite.app/Contents/MacOS/Live", STATUS_1),
            ("{documents}", STATUS_1),
        ],
    )
    def test_live_application_that_is_none(self, live, reason):
        stage = self.make_stage()
        live = live.format(applications=stage.applications, documents=stage.documents)
        arguments = ["-liveapp", live, "-app", f"{stage.kit}/"]
        before = self.snapshot(stage)
        log = [*start_lines(stage, live), reason]
        self.run(stage, criticals=[NO_USER_LIBRARY], log=log, arguments=arguments)
        expect_untouched(stage, before)


class TestLiveApplication(Scenario):
    """What the Live application's own information may hold."""

    @pytest.mark.parametrize(
        "content",
        [
            pytest.param(plistlib.dumps({"CFBundleName": "Live"}), id="no version"),
            pytest.param(plistlib.dumps({"CFBundleVersion": ["11.3.4"]}), id="a list of versions"),
            pytest.param(plistlib.dumps({"CFBundleName": 200 * "x"})[:200], id="half a list"),
            pytest.param(bytes(range(256)) * 8, id="no list"),
            pytest.param(None, id="nothing"),
        ],
    )
    def test_has_no_version(self, content):
        stage = self.make_stage()
        information = stage.live_app / "Contents/Info.plist"
        information.unlink()
        if content:
            information.write_bytes(content)
        before = self.snapshot(stage)
        self.run(stage, criticals=[NO_USER_LIBRARY], log=[STATUS_1])
        expect_untouched(stage, before)


class TestLibraryCfg(Scenario):
    def expect_no_user_library(self, stage, reason=STATUS_4):
        before = self.snapshot(stage)
        self.run(stage, criticals=[NO_USER_LIBRARY], log=[reason])
        expect_untouched(stage, before)

    def test_is_missing(self):
        stage = self.make_stage()
        stage.library_cfg.unlink()
        self.expect_no_user_library(stage, STATUS_1)

    @pytest.mark.parametrize(
        "change",
        [
            pytest.param(lambda old: b"", id="empty"),
            pytest.param(lambda old: bytes(range(256)) * 4096, id="binary"),
            pytest.param(lambda old: MANY_LINES, id="large"),
            pytest.param(lambda old: old + "<!-- Köln -->\n".encode("latin-1"), id="not UTF-8"),
            pytest.param(lambda old: old.replace(b"UserLibrary>", b"Other>"), id="other projects"),
        ],
    )
    def test_has_no_entry(self, change):
        stage = self.make_stage()
        stage.library_cfg.write_bytes(change(stage.library_cfg.read_bytes()))
        self.expect_no_user_library(stage)

    def test_is_a_folder(self):
        stage = self.make_stage()
        stage.library_cfg.unlink()
        stage.library_cfg.mkdir()
        self.expect_no_user_library(stage)

    def test_has_its_entry_behind_50_megabytes(self):
        stage = self.make_stage()
        stage.library_cfg.write_bytes(MANY_LINES + stage.library_cfg.read_bytes())
        self.run(stage)
        assert (stage.destination / "Sources/Vellicor.amxd").exists()
