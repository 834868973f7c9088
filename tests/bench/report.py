"""Formats the table and writes it into docs/performance.md."""

import os
import platform
import re
import statistics
import time
from pathlib import Path

BEGIN, END = "<!-- script/bench writes this part. -->", "<!-- End of that part. -->"
HEADINGS = "Figure", "Ours", "Against", "Theirs", "Ratio", "Spread", "Limit", ""


def seconds(value):
    return f"{value:.2f} s" if value >= 1 else f"{value * 1e3:.3g} ms"


def amount(value):
    for unit, name in ((10**9, "GB"), (10**6, "MB"), (10**3, "KB")):
        if value >= unit:
            return f"{value / unit:.3g} {name}"
    return f"{value:g} bytes"


def compared(figure, against, pairs, *, limit, unit=seconds):
    """A row of the table. `pairs` has our and their value for each round."""
    ours, theirs = zip(*pairs)
    # Within a round, both sides ran under the same conditions.
    ratios = [a / b for a, b in pairs]
    first, median, third = statistics.quantiles(ratios, n=4, method="inclusive")
    verdict = "met by less than its spread" if median + third - first > limit else "met"
    if float(_ratio(median)) > limit:
        verdict = "**missed**"
    return (
        figure,
        unit(statistics.median(ours)),
        against,
        unit(statistics.median(theirs)),
        _ratio(median),
        _ratio(third - first),
        _ratio(limit),
        verdict,
    )


def _ratio(value):
    return f"{value:.2f}" if value >= 0.1 else f"{value:.4f}"


def table(figures):
    yield from (f"| {' | '.join(line)} |" for line in (HEADINGS, ["---"] * len(HEADINGS), *figures))


def machine():
    """Says when and on what machine the figures were measured."""
    described = re.search(r"^model name.*?: (.*)", Path("/proc/cpuinfo").read_text(), re.MULTILINE)
    processor = described[1] if described else platform.machine()
    memory = os.sysconf("SC_PHYS_PAGES") * os.sysconf("SC_PAGE_SIZE") / 1024**3
    system = platform.freedesktop_os_release()["PRETTY_NAME"]
    return (
        f"Measured on {time.strftime('%Y-%m-%d')} on {processor} ({os.cpu_count()} cores, "
        f"{memory:.0f} GiB) with {system}, Linux {platform.release()}; "
        f"the load before it was {os.getloadavg()[0]:.1f}."
    )


def write(document, figures, conditions):
    before, _, rest = document.read_text(encoding="utf-8").partition(BEGIN)
    parts = [BEGIN, "\n".join(table(figures)), conditions, END]
    after = rest.partition(END)[2]
    document.write_text(before + "\n\n".join(parts) + after, encoding="utf-8")
