"""The lines of the log. A line that contains the platform's own words is a pattern."""

import re
import urllib.parse

from product import FONTS

CRITICAL = "critical error:"
OLD_SUITE_HANDLED = "starting install after taking care of the old installation."


def start_lines(stage, live=None):
    live = stage.live_executable if live is None else live
    return [f"will open demo set at {stage.demo_set}", f"using live app found at {live}"]


def file_url(path):
    return "file://" + urllib.parse.quote(str(path), safe="-._~!$&'()*+,=:@/")


def unpacking_line(bundle, archive):
    return f"decompress status=>>> Copying {bundle / 'Resources' / archive}"


def refused_line(archive):
    """The archiver's own message about an archive that it could not unpack."""
    copying = rf"(>>> Copying .*{re.escape(archive)}\n)?"
    return re.compile(rf"decompress status={copying}.*\S.*", re.DOTALL)


def failed_line(archive):
    return f"Decompressing resource failed: {archive}"


def installation_lines(bundle, stage):
    """The lines that an installation logs before it hides the suite's application."""
    lines = []
    for font in FONTS:
        source, target = file_url(bundle / "Resources" / font), file_url(stage.fonts / font)
        is_present = stage.previous and font == "OpenSans-Regular.ttf"
        copying = f"Copying: ({source}) To: ({target})"
        lines.append(f"Font already installed:{font}" if is_present else copying)
    lines.append(unpacking_line(bundle, "morvella.zip"))
    if stage.previous:
        lines.append(f"Deleting {stage.utilities}")
    lines.append(f"Installing Tressimo.zip to {stage.utilities}...")
    lines.append(unpacking_line(bundle, "Tressimo.zip"))
    if not stage.previous:
        lines += ["Installing ISF.zip...", unpacking_line(bundle, "ISF.zip")]
    return lines


def not_trashed_line(path):
    return f"failed to move to trash:{file_url(path)}/"


def critical_line(message):
    return CRITICAL + message


def criticals(log):
    """The messages of the critical sheets that were requested."""
    return [line.removeprefix(CRITICAL) for line in log if line.startswith(CRITICAL)]


def expect_log(log, lines):
    """The log has these lines in this order, among others."""
    rest = iter(log)
    for wanted in lines:
        is_pattern = isinstance(wanted, re.Pattern)
        found = any(wanted.fullmatch(line) if is_pattern else wanted == line for line in rest)
        assert found, "\n".join([f"{wanted!r} is missing or out of order in the log:", *log])
