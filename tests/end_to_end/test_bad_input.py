import plistlib

import pytest

from expectations import critical, demo_line, live_line, start_lines
from messages import NO_LIVE_SET, NO_USER_LIBRARY
from scenario import Scenario

MEBIBYTE = 1 << 20


class TestBadLiveApplication(Scenario):
    """What the argument "liveapp" may be, or may name, instead of a Live application."""

    def expect_no_user_library(self, live, reason, stage=None):
        stage = stage or self.make_stage()
        before = self.snapshot(stage)
        arguments = ["-liveapp", str(live), "-app", f"{stage.kit}/"]
        with self.launch(stage, arguments) as installer:
            self.go_to_settings(installer)
            self.quit_critical_sheet(installer, NO_USER_LIBRARY)
            self.expect_log(
                installer, demo_line(stage), live_line(live), reason, critical(NO_USER_LIBRARY)
            )
        self.expect_untouched(stage, before)

    def test_missing_argument(self):
        stage = self.make_stage()
        with self.launch(stage, ["-app", f"{stage.kit}/"]) as installer:
            self.quit_critical_sheet(installer, NO_LIVE_SET)
            self.expect_log(installer, demo_line(stage), critical(NO_LIVE_SET))

    def test_empty(self):
        self.expect_no_user_library("", "Couldn't get executable")

    def test_single_slash(self):
        self.expect_no_user_library("/", "Couldn't get executable")

    def test_application_that_is_not_there(self):
        stage = self.make_stage()
        live = stage.applications / "Live 10 Lite.app/Contents/MacOS/Live"
        self.expect_no_user_library(live, "couldn't get usrlib info, status:1", stage)

    def test_folder_that_is_not_an_application(self):
        stage = self.make_stage()
        self.expect_no_user_library(stage.documents, "couldn't get usrlib info, status:1", stage)

    def expect_unknown_version(self, stage):
        self.expect_no_user_library(
            stage.live_executable, "couldn't get usrlib info, status:1", stage
        )

    def test_application_without_a_version(self):
        stage = self.make_stage()
        information = stage.live_app / "Contents/Info.plist"
        information.write_bytes(plistlib.dumps({"CFBundleName": "Live"}))
        self.expect_unknown_version(stage)

    def test_application_whose_version_is_not_a_text(self):
        stage = self.make_stage()
        information = stage.live_app / "Contents/Info.plist"
        information.write_bytes(plistlib.dumps({"CFBundleVersion": ["11.3.4"]}))
        self.expect_unknown_version(stage)

    def test_application_with_damaged_information(self):
        stage = self.make_stage()
        information = stage.live_app / "Contents/Info.plist"
        information.write_bytes(information.read_bytes()[:200])
        self.expect_unknown_version(stage)

    def test_application_with_information_that_is_not_a_list(self):
        stage = self.make_stage()
        (stage.live_app / "Contents/Info.plist").write_bytes(bytes(range(256)) * 8)
        self.expect_unknown_version(stage)

    def test_application_without_information(self):
        stage = self.make_stage()
        (stage.live_app / "Contents/Info.plist").unlink()
        self.expect_unknown_version(stage)


class TestBadLibraryCfg(Scenario):
    def expect_status_4(self, stage):
        before = self.snapshot(stage)
        with self.launch(stage) as installer:
            self.go_to_settings(installer)
            self.quit_critical_sheet(installer, NO_USER_LIBRARY)
            self.expect_log(
                installer,
                *start_lines(stage),
                "couldn't get usrlib info, status:4",
                critical(NO_USER_LIBRARY),
            )
        self.expect_untouched(stage, before)

    def with_content(self, content):
        stage = self.make_stage()
        stage.library_cfg.write_bytes(content)
        return stage

    def test_empty(self):
        self.expect_status_4(self.with_content(b""))

    def test_binary(self):
        self.expect_status_4(self.with_content(bytes(range(256)) * 4096))

    def test_not_utf_8(self):
        stage = self.make_stage()
        content = stage.library_cfg.read_bytes()
        stage.library_cfg.write_bytes(content + "<!-- Köln -->\n".encode("latin-1"))
        self.expect_status_4(stage)

    def test_folder(self):
        stage = self.make_stage()
        stage.library_cfg.unlink()
        stage.library_cfg.mkdir()
        self.expect_status_4(stage)

    def test_only_entries_of_other_projects(self):
        stage = self.make_stage()
        content = stage.library_cfg.read_text(encoding="utf-8")
        stage.library_cfg.write_text(content.replace("UserLibrary>", "OtherLibrary>"))
        self.expect_status_4(stage)

    @pytest.mark.slow
    def test_200_megabytes_without_an_entry(self):
        line = b'<ProjectName Value="Elsewhere" />\n'
        self.expect_status_4(self.with_content(line * (200 * MEBIBYTE // len(line))))

    @pytest.mark.slow
    def test_200_megabytes_before_the_entry(self):
        stage = self.make_stage()
        content = stage.library_cfg.read_bytes()
        line = b'<ProjectName Value="Elsewhere" />\n'
        with open(stage.library_cfg, "wb") as file:
            file.write(line * (200 * MEBIBYTE // len(line)))
            file.write(content)
        with self.launch(stage) as installer:
            self.install(installer)
            self.leave(installer)
        assert (stage.destination / "Sources/Vellicor.amxd").exists()
