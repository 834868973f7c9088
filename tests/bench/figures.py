"""The lines of the table."""

import statistics
from dataclasses import dataclass

KB, MB, GB = 10**3, 10**6, 10**9


@dataclass
class Figure:
    """What was measured, against what, and the ratio that is to be reached, if any is."""

    figure: str
    ours: str
    against: str
    theirs: str
    ratio: float
    # Between the quartiles of the rounds' own ratios; None where there was one run only.
    spread: float | None = None
    limit: float | None = None

    @property
    def verdict(self):
        if self.limit is None:
            return "no limit"
        if self.ratio > self.limit:
            return "**missed**"
        if self.ratio + (self.spread or 0) > self.limit:
            return "reached by less than its spread"
        return "reached"


def seconds(value):
    return f"{value:.2f} s" if value >= 1 else f"{value * 1e3:.3g} ms"


def amount(value):
    for unit, name in ((GB, "GB"), (MB, "MB"), (KB, "KB")):
        if value >= unit:
            return f"{value / unit:.3g} {name}"
    return f"{value:g} bytes"


def files(count, size):
    return f"{amount(size)} in {count:,} files"


def compared(figure, against, pairs, limit=None, unit=seconds):
    """From pairs of ours and theirs, one for each round."""
    ours, theirs = zip(*pairs)
    # Round by round, so that both had the same machine.
    ratios = [a / b for a, b in pairs]
    first, median, third = statistics.quantiles(ratios, n=4, method="inclusive")
    return Figure(
        figure,
        unit(statistics.median(ours)),
        against,
        unit(statistics.median(theirs)),
        median,
        third - first,
        limit,
    )
