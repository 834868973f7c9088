import snapshot
from disturbed import Run, not_backed_up
from descriptions import FINISH, INSTALLATION
from expectations import (
    HIDING,
    critical,
    expect_files,
    failed_line,
    font_lines,
    installed,
    start_lines,
    unpacking_line,
)
from fault import Fault
from messages import NO_USER_FILES, NO_UTILITIES, NOT_INSTALLED
from waiting import wait_until

KIBIBYTE = 1 << 10
DIFFERENT_PICTURES = 4


class TestArchiverFaults(Fault):
    """The archiver does its work, or does not, and then behaves strangely."""

    def replace_archiver(self, script, only="-"):
        """The shell runs `script` instead of the archiver when its first option begins with `only`.

        `real` is the archiver itself.
        """
        self.bundle = self.copy_bundle()
        archiver = self.bundle / "Helpers/ditto"
        real = archiver.rename(archiver.with_name("real-ditto"))
        archiver.write_text(
            f"#!/bin/sh\nreal() {{ '{real}' \"$@\"; }}\n"
            f'case "$1" in\n{only}*) ;;\n*) real "$@"; exit ;;\nesac\n{script}\n'
        )
        archiver.chmod(0o755)

    def expect_first(self, said, *, failed=False, end=()):
        """Installs for the first time.

        `said` gives what is logged of the archiver's words about an archive. Returns the stage and
        what was on it before.
        """
        stage = self.make_stage()
        before = self.snapshot(stage)
        failure = {
            archive: [failed_line(archive), critical(message)] if failed else []
            for archive, message in (("Tressimo.zip", NO_UTILITIES), ("ISF.zip", NO_USER_FILES))
        }
        self.expect_run(
            stage,
            *start_lines(stage),
            *font_lines(self.bundle, stage),
            *said("morvella.zip"),
            f"Installing Tressimo.zip to {stage.utilities}...",
            *said("Tressimo.zip"),
            *failure["Tressimo.zip"],
            "Installing ISF.zip...",
            *said("ISF.zip"),
            *failure["ISF.zip"],
            HIDING,
            *end,
        )
        return stage, before

    def expect_complete(self, *expected, **options):
        stage, before = self.expect_first(*expected, **options)
        expect_files(stage, {**before, **installed(self.bundle, stage)})

    def expect_nothing_unpacked(self, **options):
        end = ["aborting, couldn't hide the app file.", critical(NOT_INSTALLED)]
        stage, before = self.expect_first(nothing_said, end=end, **options)
        nothing = {"suite_to": None, "utilities_to": None, "shaders_to": None}
        made = [folder.relative_to(stage.root) for folder in (stage.utilities, stage.shared_data)]
        expect_files(
            stage,
            {
                **before,
                **installed(self.bundle, stage, **nothing),
                **dict.fromkeys(made, snapshot.FOLDER),
            },
        )

    def usually_said(self, archive):
        return [unpacking_line(self.bundle, archive)]

    def test_prints_60_kilobytes(self):
        self.replace_archiver(f"real \"$@\"; head -c {60 * KIBIBYTE} /dev/zero | tr '\\0' x")
        text = "\n" + 60 * KIBIBYTE * "x"
        self.expect_complete(lambda archive: [unpacking_line(self.bundle, archive) + text])

    def test_prints_what_is_not_utf_8(self):
        self.replace_archiver("printf 'Ger\\344t\\n'; real \"$@\"")
        self.expect_complete(nothing_said)

    def test_prints_nothing(self):
        self.replace_archiver('real "$@" >/dev/null 2>&1')
        self.expect_complete(nothing_said)

    def test_exits_with_7(self):
        self.replace_archiver('real "$@"; exit 7')
        self.expect_complete(self.usually_said, failed=True)

    def test_is_ended_by_a_signal(self):
        self.replace_archiver('real "$@"; kill -KILL $$')
        self.expect_complete(self.usually_said, failed=True)

    def test_crashes(self):
        self.replace_archiver('real "$@"; kill -SEGV $$')
        self.expect_complete(self.usually_said, failed=True)

    def test_does_nothing(self):
        self.replace_archiver("exit 0")
        self.expect_nothing_unpacked()

    def test_is_missing(self):
        self.replace_archiver("")
        (self.bundle / "Helpers/ditto").unlink()
        self.expect_nothing_unpacked(failed=True)

    def test_takes_long(self):
        """The indicator turns until it has finished."""
        go = self.folder / "go"
        self.replace_archiver(f"until [ -e '{go}' ]; do sleep 0.01; done; real \"$@\"")
        stage = self.make_stage()
        with self.launch(stage) as installer:
            self.begin_installation(installer)
            installer.wait_for_line(font_lines(self.bundle, stage)[-1])
            area, pictures = installer.content, set()

            def turns():
                pictures.add(self.display.picture(area).pixels)
                return len(pictures) >= DIFFERENT_PICTURES

            wait_until(turns, "the indicator to turn")
            state = installer.state()
            assert state.place == INSTALLATION
            (indicator,) = state.indicators
            assert indicator.running and not indicator.hidden
            go.touch()
            installer.wait_for_page(FINISH)
            self.leave(installer)

    # While it packs

    def expect_no_backup(self, script):
        """What could not be packed goes to the Trash all the same."""
        self.replace_archiver(script, only="-c")
        stage = self.make_stage(previous=True)
        before = self.snapshot(stage)
        self.expect_run(stage, *Run(previous=not_backed_up).log(self.bundle, stage))
        self.expect_nothing_lost(stage, before)

    def test_exits_with_7_while_it_packs(self):
        self.expect_no_backup("exit 7")

    def test_is_ended_by_a_signal_while_it_packs(self):
        self.expect_no_backup("kill -KILL $$")

    def test_packs_all_and_exits_with_1(self):
        self.expect_no_backup('real "$@"; exit 1')


def nothing_said(archive):
    return []
