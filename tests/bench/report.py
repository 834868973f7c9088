"""The table, on standard output and in docs/performance.md."""

import dataclasses
import json
import os
import platform
import re
import subprocess
from pathlib import Path

from figures import Figure
from rows import NAMES

BEGIN, END = "<!-- Written by script/bench from here on. -->", "<!-- As far as here. -->"
HEADINGS = ["Figure", "Ours", "Against", "Theirs", "Ratio", "Spread", "To reach", ""]


def line(figure):
    def number(value):
        return "" if value is None else f"{value:.2f}" if value >= 0.1 else f"{value:.4f}"

    return [
        figure.figure,
        figure.ours,
        figure.against,
        figure.theirs,
        number(figure.ratio),
        number(figure.spread),
        number(figure.limit),
        figure.verdict,
    ]


def print_table(figures):
    lines = [HEADINGS] + [line(figure) for figure in figures]
    widths = [max(map(len, column)) for column in zip(*lines)]
    for cells in lines:
        print("  ".join(cell.ljust(width) for cell, width in zip(cells, widths)).rstrip())


def _value(path, pattern):
    found = re.search(pattern, Path(path).read_text(encoding="utf-8"), re.MULTILINE)
    return found[1].strip() if found else "unknown"


def _first_line(*command):
    answer = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)
    return next((text.strip() for text in answer.stdout.splitlines() if text.strip()), "missing")


def machine(work):
    """What this machine is, one line for each thing."""
    memory = int(_value("/proc/meminfo", r"^MemTotal:\s*(\d+)")) / 1024**2
    disk = _first_line("stat", "--file-system", "--format=%T", str(work))
    versions = {
        "bsdtar": _first_line("bsdtar", "--version"),
        "grep": _first_line("grep", "--version"),
    }
    return [
        f"Processor: {_value('/proc/cpuinfo', r'^model name.*?:(.*)')}, {os.cpu_count()} cores",
        f"Memory: {memory:.0f} GiB; disk: {disk}",
        f"System: {_value('/etc/os-release', '^PRETTY_NAME=.(.*).$')}, Linux {platform.release()}",
        *(f"{name}: {version}" for name, version in versions.items()),
    ]


class Results:
    """The figures of every row measured so far, kept beside the build."""

    def __init__(self, file):
        self._file = file
        self._rows = json.loads(file.read_text()) if file.exists() else {}

    def keep(self, name, figures, conditions):
        kept = [dataclasses.asdict(figure) for figure in figures]
        self._rows[name] = {"figures": kept, "conditions": conditions}
        self._file.parent.mkdir(parents=True, exist_ok=True)
        self._file.write_text(json.dumps(self._rows, indent=1))

    def write(self, document, described):
        """Puts the table into the document, in the place of an earlier one."""
        text = document.read_text(encoding="utf-8")
        before, _, rest = text.partition(BEGIN)
        _, _, after = rest.partition(END)
        table = ["| " + " | ".join(cells) + " |" for cells in self._table()]
        conditions = [f"- {each}" for each in [*described, *self._conditions()]]
        parts = [BEGIN, "\n".join(table), "On this machine:", "\n".join(conditions), END]
        document.write_text(before + "\n\n".join(parts) + after, encoding="utf-8")

    def _figures(self):
        for name in NAMES:
            for figure in self._rows.get(name, {"figures": []})["figures"]:
                yield Figure(**figure)

    def _table(self):
        yield HEADINGS
        yield ["---"] * len(HEADINGS)
        yield from map(line, self._figures())

    def _conditions(self):
        by_text = {}
        for name in NAMES:
            if name in self._rows:
                by_text.setdefault(self._rows[name]["conditions"], []).append(name)
        return [f"Measured {text}: {', '.join(names)}" for text, names in by_text.items()]
