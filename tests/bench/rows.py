"""The rows of the table. Each function measures its figures and returns them."""

import contextlib
from dataclasses import dataclass

import archives
import lookups
import measure
import windows

KB, MB, GB = 10**3, 10**6, 10**9


@dataclass(frozen=True)
class Sizes:
    rounds: int = measure.ROUNDS
    # What takes a moment or two is small beside the machine's moods: more rounds even them out.
    short_rounds: int = 21
    big: tuple = (200, GB)
    many: tuple = (50_000, 100 * MB)
    small: tuple = (200, 10 * MB)
    configuration: int = 100 * MB
    lengths: tuple = (KB, 10 * KB, 100 * KB, MB, 10 * MB, 100 * MB, 200 * MB)
    entries: int = 100_000


QUICK = Sizes(2, 2, (20, 20 * MB), (1000, 2 * MB), (20, MB), 2 * MB, (KB, MB, 2 * MB), 2000)


@dataclass
class Figure:
    """One line of the table: what was measured, against what, and the ratio that is to be reached."""

    figure: str
    against: str
    ours: str
    others: str
    ratio: float
    limit: float
    note: str = ""


def compared(figure, pairs, limit, *, others=None, note="", against=""):
    other = others or pairs.best_other
    return Figure(
        figure,
        against or other,
        seconds(pairs.median(pairs.ours)),
        seconds(pairs.median(other)),
        pairs.ratio(other),
        limit,
        note,
    )


def seconds(value):
    return f"{value:.2f} s" if value >= 1 else f"{value * 1e3:.3g} ms"


def amount(value):
    for unit, name in ((GB, "GB"), (MB, "MB"), (KB, "KB")):
        if value >= unit:
            return f"{value / unit:.3g} {name}"
    return f"{value:g} bytes"


def files(count, size):
    return f"{amount(size)} in {count:,} files"


class Rows:
    """Measures in the folder `work`, which is the caller's to remove."""

    def __init__(self, programs, work, sizes):
        self._programs, self._work, self._sizes = programs, work, sizes

    @contextlib.contextmanager
    def _applications(self):
        with windows.Applications(self._work, self._programs) as applications:
            yield applications

    def start(self):
        with self._applications() as both:
            candidates = {}
            for name, start in (("installer", both.installer), ("smallest", both.smallest)):
                page = both.first_page(start)
                candidates[name] = lambda page=page, start=start: both.time_to(page, start)
            pairs, _ = measure.side_by_side(candidates, self._sizes.short_rounds)
        return [
            compared("start to first page drawn", pairs, 1.10, against="the smallest application")
        ]

    def _installation(self, folder, display, size):
        work = self._work / folder
        work.mkdir()
        return windows.Installation(work, self._programs, display, *size)

    def _install(self, size):
        with windows.Display() as display:
            installation = self._installation("installation", display, size)
            pairs, _ = measure.side_by_side(
                {"installer": installation.by_installer, "script": installation.by_script},
                self._sizes.short_rounds,
            )
        figure = f"whole installation, payload {files(*size)}"
        return [compared(figure, pairs, 1.02, against="the same commands by a shell script")]

    def install_big(self):
        return self._install(self._sizes.big)

    def install_many(self):
        return self._install(self._sizes.many)

    def memory(self):
        figures = []
        with self._applications() as both:
            for size in (self._sizes.small, self._sizes.big):
                installation = self._installation(f"installation {size}", both.display, size)
                installed = {
                    "installer": lambda: installation.by_installer() and installation.memory[-1],
                    "smallest": both.smallest_memory,
                }
                pairs, _ = measure.side_by_side(installed, self._sizes.rounds)
                figures.append(
                    Figure(
                        f"the installer's own peak memory, whole run, {amount(size[1])} payload",
                        "the smallest application",
                        amount(pairs.median("installer") * 1024),
                        amount(pairs.median("smallest") * 1024),
                        pairs.ratio(),
                        1.15,
                    )
                )
        return figures

    def _configuration(self, size, inside_section=False):
        folder = self._work / "preferences"
        file = lookups.write_configuration(folder, size, inside_section=inside_section)
        return file, [
            lookups.Lookup(self._programs, name, folder, lookups.FOUND)
            for name in ("user-library", "user-library-by-foundation")
        ]

    def library_cfg(self):
        figures = []
        tiny = self._work / "tiny.cfg"
        tiny.write_text("<ProjectName Value=")
        for inside in (False, True):
            where = "inside the section" if inside else "before the section"
            figure = f"User Library from a Library.cfg of {amount(self._sizes.configuration)}, "
            file, (lookup, foundation) = self._configuration(self._sizes.configuration, inside)

            def grep(path):
                return ["grep", "-c", "<ProjectName Value=", path]

            # To a pipe: what it knows nobody will read, it does not count.
            command = lookups.Command(grep, file, tiny, stdout=-1)
            pairs, _ = measure.side_by_side(
                {"lookup": lookup.seconds, "grep -c": command.seconds}, self._sizes.rounds
            )
            figures.append(compared(figure + f"all lines {where}", pairs, 1.5))
            pairs, _ = measure.side_by_side(
                {"lookup": lookup.seconds, "Foundation's way": foundation.seconds},
                self._sizes.rounds,
            )
            figures.append(compared(figure + f"all lines {where}", pairs, 0.1))
            grown = lookup.memory()
            figures.append(
                Figure(
                    f"peak memory of that, all lines {where}",
                    "the file",
                    amount(grown),
                    amount(file.stat().st_size),
                    grown / file.stat().st_size,
                    1.2,
                )
            )
        return figures

    def linear(self):
        """Of the shortest and the longest file, the seconds for each byte."""
        each = {}
        for length in self._sizes.lengths:
            file, (lookup, _) = self._configuration(length)
            each[length] = lookup.median() / file.stat().st_size
        *_, million, longest = [length for length in each if length >= MB]
        note = "ns per byte: " + ", ".join(
            f"{amount(length)} {value * 1e9:.2f}" for length, value in each.items()
        )
        return [
            Figure(
                f"time per byte of a Library.cfg of {amount(longest)}",
                f"of {amount(million)}",
                f"{each[longest] * 1e9:.2f} ns",
                f"{each[million] * 1e9:.2f} ns",
                each[longest] / each[million],
                1.2,
                note,
            )
        ]

    def latest_folder(self):
        home = self._work / "home"
        folder, latest = lookups.write_preferences(home, self._sizes.entries)
        empty = self._work / "empty"
        empty.mkdir()
        lookup = lookups.Lookup(self._programs, "latest-folder", home, latest)
        command = lookups.Command(lambda path: ["ls", "-U", path], folder, empty)
        pairs, _ = measure.side_by_side(
            {"lookup": lookup.seconds, "ls -U": command.seconds}, self._sizes.rounds
        )
        figure = f"latest preferences folder among {self._sizes.entries:,} entries"
        return [compared(figure, pairs, 1.5)]

    def _archive(self, size, packing):
        archive = archives.Archives(self._work, self._programs, *size)
        candidates = archive.packing() if packing else archive.unpacking()
        rounds = self._sizes.rounds if packing else self._sizes.short_rounds
        pairs, warm_up = measure.side_by_side(candidates, rounds)
        times = (
            f"{name} {seconds(pairs.median(name) if name in pairs.seconds else once)}"
            + ("" if name in pairs.seconds else " (once)")
            for name, once in warm_up.items()
        )
        note = ", ".join(times)
        if packing:
            larger = archive.sizes["stand-in"] / archive.sizes["zip"] - 1
            note += f"; its archive against zip's: {larger:+.1%}"
        verb = "packing" if packing else "unpacking"
        return [compared(f"the archiver stand-in, {verb} {files(*size)}", pairs, 1.05, note=note)]

    def unpack_big(self):
        return self._archive(self._sizes.big, packing=False)

    def unpack_many(self):
        return self._archive(self._sizes.many, packing=False)

    def pack_big(self):
        return self._archive(self._sizes.big, packing=True)

    def pack_many(self):
        return self._archive(self._sizes.many, packing=True)


NAMES = [
    "start",
    "install-big",
    "install-many",
    "memory",
    "library-cfg",
    "linear",
    "latest-folder",
    "unpack-big",
    "unpack-many",
    "pack-big",
    "pack-many",
]
