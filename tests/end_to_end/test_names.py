import unicodedata

from expectations import expect_files, expect_opened, installation_lines, installed, start_lines
from scenario import Scenario
from stage import Names


class TestUnusualNames(Scenario):
    """Names of folders, from the launch arguments to the last file, unchanged."""

    def expect_complete_run(self, folder="stage", **names):
        stage = self.make_stage(folder, names=Names(**names))
        before = self.snapshot(stage)
        with self.launch(stage) as installer:
            self.install(installer)
            self.leave(installer)
            self.expect_log(installer, *start_lines(stage), *installation_lines(self.bundle, stage))
        expect_files(stage, {**before, **installed(self.bundle, stage)})
        expect_opened(stage, [str(stage.demo_set)])

    def test_blanks(self):
        self.expect_complete_run(" my  stage ", user="a musician", library=" User  Library ")

    def test_percent_signs(self):
        self.expect_complete_run("100%", user="%s%@%n", library="%41 %20", kit="50%@ off %d")

    def test_single_quotes_and_backslashes(self):
        self.expect_complete_run("it's", user="o'brien\\n", library="Anna's `Lib`", kit="'kit'")

    def test_double_quotes_where_library_cfg_does_not_hold_them(self):
        self.expect_complete_run(live='Live "11" Suite.app', kit='The "Kit"')

    def test_characters_that_mean_something_to_shells_and_lists(self):
        self.expect_complete_run("$HOME & <co>", library="(a, b); {c = d;}", kit="*?[x]|#~")

    def test_emoji(self):
        self.expect_complete_run("🎹 studio", user="mu🎸sician", library="Größe 🎛", kit="キット 🎁")

    def test_composed_umlauts(self):
        name = unicodedata.normalize("NFC", "Fäden über Öl")
        self.expect_complete_run(name, user=name, library=name, kit=name)

    def test_decomposed_umlauts(self):
        name = unicodedata.normalize("NFD", "Fäden über Öl")
        self.expect_complete_run(name, user=name, library=name, kit=name)

    def test_live_application_named_by_its_bundle(self):
        stage = self.make_stage()
        arguments = ["-liveapp", str(stage.live_app), "-app", f"{stage.kit}/"]
        with self.launch(stage, arguments) as installer:
            self.install(installer)
            self.leave(installer)
        expect_opened(stage, [str(stage.demo_set)])

    def test_kit_folder_without_its_final_slash_hides_the_demo_set(self):
        stage = self.make_stage()
        arguments = ["-liveapp", str(stage.live_executable), "-app", str(stage.kit)]
        with self.launch(stage, arguments) as installer:
            self.install(installer)
            self.leave(installer)
        expect_opened(stage, [])
