import resource

from descriptions import LICENCE, SETTINGS, WELCOME, critical_sheet, whole_sheet
from expectations import critical, start_lines
from messages import UNKNOWN_STATE
from scenario import Scenario


class TestExceptions(Scenario):
    """What goes wrong inside the system's own classes is logged and ends in a sheet."""

    def test_thread_that_cannot_be_started(self):
        """Of all pages only the installation's starts one. GNUstep's clicks start one, too."""
        stage, bundle = self.make_stage(), self.copy_bundle()
        before, user = self.snapshot(stage), self.ordinary_user(stage)
        limits = {resource.RLIMIT_NPROC: 1}  # Of processes and threads together.
        with self.launch(stage, bundle=bundle, user=user, limits=limits) as installer:
            for page in (WELCOME, LICENCE, SETTINGS):
                installer.wait_for_choice(page)
                installer.key("Return")
            sheet = installer.wait_for_sheet(UNKNOWN_STATE)
            assert whole_sheet(sheet) == critical_sheet(UNKNOWN_STATE)
            installer.key("Return")
            self.expect_end(installer)
            *started, exception, state, message = installer.log
            assert started == start_lines(stage)
            assert "Unable to detach thread" in exception
            assert [state, message] == ["unknown state reached.", critical(UNKNOWN_STATE)]
        self.expect_untouched(stage, before)
