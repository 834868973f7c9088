"""The rows of the table. Each function measures its figures and returns them."""

from dataclasses import dataclass

import archives
import clone
import lookups
import measure
import windows
from figures import GB, MB, Figure, amount, compared, files, seconds

SMALLEST = "the smallest application"
SCRIPT = "the same commands by a shell script"


@dataclass(frozen=True)
class Sizes:
    rounds: int = measure.ROUNDS
    # What takes a moment or two is small beside the machine's moods: more rounds even them out.
    short_rounds: int = 21
    big: tuple = (200, GB)
    many: tuple = (50_000, 100 * MB)
    small: tuple = (200, 10 * MB)
    configuration: int = 100 * MB
    entries: int = 100_000


QUICK = Sizes(2, 2, (20, 20 * MB), (1000, 2 * MB), (20, MB), 2 * MB, 2000)


class Rows:
    """Measures in the folder `work`, which is the caller's to remove."""

    def __init__(self, programs, work, sizes):
        self._programs, self._work, self._sizes = programs, work, sizes

    def start(self):
        with windows.Applications(self._work, self._programs) as both:
            installer, smallest = both.first_page(both.installer), both.first_page(both.smallest)
            pairs = measure.side_by_side(
                lambda: both.time_to(installer, both.installer),
                lambda: both.time_to(smallest, both.smallest),
                self._sizes.short_rounds,
            )
        return [compared("start to first page drawn", SMALLEST, pairs)]

    def _installation(self, folder, display, size):
        work = self._work / folder
        work.mkdir()
        return windows.Installation(work, self._programs, display, *size)

    def _install(self, size):
        with windows.Display() as display:
            installation = self._installation("installation", display, size)
            runs = measure.side_by_side(
                installation.by_installer, installation.by_script, self._sizes.short_rounds
            )
        whole = [(ours.seconds, script.seconds) for ours, script in runs]
        outside = [(ours.outside, script.outside) for ours, script in runs]
        share = [(ours.outside, ours.seconds) for ours, _ in runs]
        payload = f"payload {files(*size)}"
        figure = f"installation outside the archiver's runs, {payload}"
        return [
            compared(f"whole installation, {payload}", SCRIPT, whole),
            compared(figure, SCRIPT, outside),
            compared(figure, "the whole installation", share, 0.015),
        ]

    def install_big(self):
        return self._install(self._sizes.big)

    def install_many(self):
        return self._install(self._sizes.many)

    def memory(self):
        return [self._memory(size) for size in (self._sizes.small, self._sizes.big)]

    def _memory(self, size):
        folder = self._work / amount(size[1])
        folder.mkdir()
        with windows.Applications(folder, self._programs) as both:
            installation = self._installation(folder / "installation", both.display, size)
            pairs = measure.side_by_side(
                lambda: installation.by_installer().memory,
                both.smallest_memory,
                self._sizes.rounds,
            )
        figure = f"the installer's own peak memory, whole run, {amount(size[1])} payload"
        return compared(figure, SMALLEST, pairs, unit=amount)

    def _configuration(self, size, inside_section=False):
        folder = self._work / f"preferences {size}"
        file = lookups.write_configuration(folder, size, inside_section=inside_section)
        return file, [
            lookups.Lookup(self._programs, name, folder, lookups.FOUND)
            for name in ("user-library", "user-library-by-foundation")
        ]

    def library_cfg(self):
        return [*self._library_cfg(inside=False), *self._library_cfg(inside=True)]

    def _library_cfg(self, inside):
        file, (lookup, foundation) = self._configuration(self._sizes.configuration, inside)
        tiny = self._work / "tiny.cfg"
        tiny.write_text("<ProjectName Value=")

        def grep(path):
            return ["grep", "-c", "<ProjectName Value=", path]

        # To a pipe: what it knows nobody will read, it does not count.
        command = lookups.Command(grep, file, tiny, stdout=-1)
        rounds, size = self._sizes.rounds, file.stat().st_size
        lines = f"all lines {'inside' if inside else 'before'} the section"
        figure = f"User Library from a Library.cfg of {amount(size)}, {lines}"
        by_grep = measure.side_by_side(lookup.seconds, command.seconds, rounds)
        by_foundation = measure.side_by_side(lookup.seconds, foundation.seconds, rounds)
        memory = measure.side_by_side(lookup.memory, lambda: size, rounds)
        return [
            compared(figure, "grep -c", by_grep, 1.5),
            compared(figure, "Foundation's way", by_foundation, 0.1),
            compared(f"peak memory of that, {lines}", "the file", memory, 1.2, unit=amount),
        ]

    def linear(self):
        size = self._sizes.configuration
        once, (lookup, _) = self._configuration(size)
        twice, (lookup_in_twice, _) = self._configuration(2 * size)
        pairs = measure.side_by_side(
            lambda: lookup_in_twice.seconds() / twice.stat().st_size,
            lambda: lookup.seconds() / once.stat().st_size,
            self._sizes.rounds,
        )
        figure = f"time per byte of a Library.cfg of {amount(2 * size)}"
        return [
            compared(
                figure, f"of {amount(size)}", pairs, 1.2, unit=lambda each: f"{each * 1e9:.2f} ns"
            )
        ]

    def latest_folder(self):
        home = self._work / "home"
        folder, latest = lookups.write_preferences(home, self._sizes.entries)
        empty = self._work / "empty"
        empty.mkdir()
        lookup = lookups.Lookup(self._programs, "latest-folder", home, latest)
        command = lookups.Command(lambda path: ["ls", "-U", path], folder, empty)
        pairs = measure.side_by_side(lookup.seconds, command.seconds, self._sizes.rounds)
        figure = f"latest preferences folder among {self._sizes.entries:,} entries"
        return [compared(figure, "ls -U", pairs)]

    def _unpack(self, size):
        archive = archives.Archives(self._work, self._programs, *size)
        pairs = archive.unpacking(self._sizes.short_rounds)
        return [compared(f"the archiver stand-in, unpacking {files(*size)}", "bsdtar", pairs, 1.05)]

    def unpack_big(self):
        return self._unpack(self._sizes.big)

    def unpack_many(self):
        return self._unpack(self._sizes.many)

    def _pack(self, size):
        archive = archives.Archives(self._work, self._programs, *size)
        pairs = archive.packing(self._sizes.rounds)
        return [compared(f"the archiver stand-in, packing {files(*size)}", "bsdtar", pairs, 1.05)]

    def pack_big(self):
        return self._pack(self._sizes.big)

    def pack_many(self):
        return self._pack(self._sizes.many)

    def tests(self):
        """One run each: they are no timed test."""
        cloned = clone.Clone(self._work / "clone")
        fresh = cloned.test()
        cloned.change_core()
        again = cloned.test()
        return [
            Figure(figure, seconds(taken), "what is asked", seconds(most), taken / most, limit=1)
            for figure, taken, most in (
                ("script/test in a fresh clone", fresh, 300),
                ("script/test again, one file of the core changed", again, 90),
            )
        ]


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
    "tests",
]
