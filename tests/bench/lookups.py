"""The two lookups in Live's preferences, in a process that is up, against commands that start."""

import shutil
import statistics
import subprocess

import measure

ENTRY = """\t\t<LibraryProject Id="{number}">
\t\t\t<ProjectId Value="{number}" />
\t\t\t<ProjectName Value="{name} {number}" />
\t\t\t<ProjectPath Value="/Volumes/Sample Disk/Projects" />
\t\t\t<Indexed Value="true" />
\t\t</LibraryProject>
"""
NAMES = ("Rehearsal Takes", "Sampled Strings", "Field Recordings", "Klänge", "Choir")
OPENING = "\t\t<UserLibrary>\n"
CLOSING = """\t\t\t<ProjectName Value="User Library" />
\t\t\t<ProjectPath Value="/Users/musician/Music" />
\t\t</UserLibrary>
"""
FOUND = "/Users/musician/Music/User Library"


def write_configuration(folder, size, *, inside_section):
    """A Library.cfg of about `size` bytes with the User Library at its end.

    What comes before it lies outside of the section, or inside.
    """
    shutil.rmtree(folder, ignore_errors=True)
    folder.mkdir(parents=True)
    file = folder / "Library.cfg"
    with open(file, "w", encoding="utf-8") as configuration:
        written = 0
        if inside_section:
            written += configuration.write(OPENING)
        number = 0
        while written + len(ENTRY) + len(OPENING) + len(CLOSING) < size:
            name = NAMES[number % len(NAMES)]
            written += configuration.write(ENTRY.format(number=number, name=name))
            number += 1
        if not inside_section:
            configuration.write(OPENING)
        configuration.write(CLOSING)
    return file


def write_preferences(home, count):
    """A home folder with so many entries beside each other where Live keeps its preferences.

    Returns the folder that holds them and the path of the latest.
    """
    folder = home / "Library/Preferences/Ableton"
    folder.mkdir(parents=True)
    for number in range(count):
        version = f"{number // 10000}.{number // 100 % 100}.{number % 100}"
        (folder / f"Live {version}").touch()
    last = count - 1
    return folder, folder / f"Live {last // 10000}.{last // 100 % 100}.{last % 100}"


class Lookup:
    """One operation of the installer, or of the same by Foundation, run by a helper program."""

    def __init__(self, programs, name, folder, expected):
        self._command = [str(programs.lookup), name, str(folder)]
        self._expected = str(expected)

    def run(self, times):
        """The seconds of each of so many runs in one process, and by how many bytes it grew."""
        answer = subprocess.run(
            [*self._command, str(times)], check=True, stdout=subprocess.PIPE, text=True
        ).stdout.splitlines()
        *nanoseconds, kilobytes, found = answer
        if found != self._expected:
            raise RuntimeError(f"{self._command} found {found!r}, not {self._expected!r}")
        return [int(each) / 1e9 for each in nanoseconds], int(kilobytes) * 1024

    def seconds(self):
        """Of the second run in a process: the first one also loads what the process lacks."""
        return self.run(2)[0][1]

    def memory(self):
        return self.run(1)[1]


class Command:
    """A command whose own start, on a tiny input, is taken off: the lookup has none to bear."""

    def __init__(self, make, full, tiny, **options):
        self._command, self._options = make(full), options
        self._start = statistics.median(
            measure.run_time(make(tiny), **options) for _ in range(1 + measure.ROUNDS)
        )

    def seconds(self):
        seconds = measure.run_time(self._command, **self._options) - self._start
        # On a busy machine a short command may seem to take less than its start.
        return max(seconds, 1e-6)
