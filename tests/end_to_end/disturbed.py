"""Runs on a stage with a previous installation in which something is disturbed, step by step.

Each step is a function of the bundle and the stage that tells what it logs.
"""

import re
from typing import Callable, NamedTuple

from expectations import (
    FONTS,
    HANDLED,
    HIDING,
    critical,
    failed_line,
    file_url,
    font_lines,
    refused_line,
    shader_lines,
    start_lines,
    suite_lines,
    utility_lines,
)
from messages import (
    NO_BACKUP,
    NO_USER_FILES,
    NO_USER_LIBRARY,
    NO_UTILITIES,
    NOT_INSTALLED,
    NOT_TRASHED,
    STILL_THERE,
)


class Run(NamedTuple):
    """What is not told is as in a run that nothing disturbs."""

    previous: Callable = lambda bundle, stage: [HANDLED]
    fonts: Callable = lambda bundle, stage: font_lines(bundle, stage, FONTS[1:])
    suite: Callable = lambda bundle, stage: suite_lines(bundle)
    utility: Callable = lambda bundle, stage: utility_lines(bundle, stage, replaced=True)
    shaders: Callable = lambda bundle, stage: []
    end: Callable = lambda bundle, stage: [HIDING]
    # What is in place afterwards; the shaders are only if they go to Documents.
    installed: tuple = ("fonts", "suite", "utility")
    # The old product's files that were written over and are kept nowhere.
    replaced: tuple = ()
    # Whether the Live application gets the demo Live Set, if there is no critical sheet.
    demo: bool = True

    def log(self, bundle, stage):
        lines = start_lines(stage)
        for step in self[: self._fields.index("installed")]:
            lines += step(bundle, stage)
        return lines


def nothing(bundle, stage):
    return []


def unavailable(bundle, stage):
    return ["UL unavailable", HANDLED]


def no_user_library(bundle, stage):
    return ["couldn't get usrlib info, status:1", critical(NO_USER_LIBRARY)]


def not_backed_up(bundle, stage):
    return ["Couldn't make a backup of current installation.", critical(NO_BACKUP), HANDLED]


def not_trashed(bundle, stage):
    return [
        f"failed to move to trash:{file_url(stage.destination)}/",
        "couldn't move to trash.",
        critical(NOT_TRASHED),
        critical(STILL_THERE),
        HANDLED,
    ]


def not_readable(bundle, stage):
    return ["Making backup failed", *not_backed_up(bundle, stage)]


def not_accessible(bundle, stage):
    return [*not_readable(bundle, stage)[:-1], *not_trashed(bundle, stage)]


def fonts_not_copied(present):
    def step(bundle, stage):
        lines = []
        for font, line in zip(FONTS, font_lines(bundle, stage, present)):
            lines.append(line)
            if font not in present:
                lines.append(re.compile(r"Copy error:(?!\(null\)).+"))
                missing = r"Can't find font in the users' fonts library:(?!\(null\)).+"
                lines.append(re.compile(missing))
        return [*lines, "Couldn't install fonts."]

    return step


def suite_refused(bundle, stage):
    return [refused_line("morvella.zip")]


def archives_refused(stage):
    """All three, where nothing else is disturbed."""
    return [
        refused_line("morvella.zip"),
        f"Installing Tressimo.zip to {stage.utilities}...",
        refused_line("Tressimo.zip"),
        failed_line("Tressimo.zip"),
        critical(NO_UTILITIES),
        "Installing ISF.zip...",
        refused_line("ISF.zip"),
        failed_line("ISF.zip"),
        critical(NO_USER_FILES),
    ]


def old_utility_kept(bundle, stage):
    deleting, *installing = utility_lines(bundle, stage, replaced=True)
    refused = f"failed to move to trash:{file_url(stage.utilities)}/"
    return [deleting, refused, f"Couldn't delete {stage.utilities}", *installing]


def utility_refused(bundle, stage):
    *lines, _ = old_utility_kept(bundle, stage)
    return [
        *lines,
        refused_line("Tressimo.zip"),
        failed_line("Tressimo.zip"),
        critical(NO_UTILITIES),
    ]


def shaders_to_documents(bundle, stage):
    creating = r"Couldn't create shared folder\(.*Shared/Morvella/?\), error:(?!\(null\)).+"
    return [
        re.compile(creating),
        "Shared folder not found, falling back to user folder.",
        # The error of the folder that could not be created still stands.
        re.compile(r"Couldn't access documents folder, error:(?!\(null\)).+"),
        *shader_lines(bundle),
    ]


def not_hidden(bundle, stage):
    return [HIDING, "aborting, couldn't hide the app file.", critical(NOT_INSTALLED)]


def old_app_replaced(bundle, stage):
    return [HIDING, "App already exists at destination, deleting."]


def old_app_kept(bundle, stage):
    hidden = stage.destination / ".Morvella.app"
    return [
        *old_app_replaced(bundle, stage),
        f"failed to move to trash:{file_url(hidden)}/",
        "Couldn't move older copy of the hidden app to trash, aborting.",
        *not_hidden(bundle, stage)[1:],
    ]
