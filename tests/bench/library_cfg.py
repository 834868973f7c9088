"""The lookup of the User Library, run by bench_lookup on a Library.cfg of a given size."""

import subprocess

OTHER = """\t\t<LibraryProject Id="{number}">
\t\t\t<ProjectName Value="Klänge {number}" />
\t\t\t<ProjectPath Value="/Volumes/Sample Disk/Projects" />
\t\t</LibraryProject>
"""
USER_LIBRARY = """\t\t<UserLibrary>
\t\t\t<ProjectName Value="User Library" />
\t\t\t<ProjectPath Value="/Users/musician/Music" />
\t\t</UserLibrary>
"""
FOUND = "/Users/musician/Music/User Library"


def write(folder, size):
    """A Library.cfg of about `size` bytes with the User Library at its end; returns its size."""
    count = (size - len(USER_LIBRARY)) // len(OTHER.format(number=size // len(OTHER)))
    text = "".join(OTHER.format(number=number) for number in range(count)) + USER_LIBRARY
    return (folder / "Library.cfg").write_bytes(text.encode())


def look_up(build, folder):
    """The seconds of one lookup, and by how many bytes the process grew."""
    command = [build / "bench_lookup", folder]
    answer = subprocess.run(command, check=True, stdout=subprocess.PIPE, text=True).stdout
    nanoseconds, kilobytes, found = answer.splitlines()
    if found != FOUND:
        raise RuntimeError(f"found {found!r}, not {FOUND!r}")
    return int(nanoseconds) / 1e9, int(kilobytes) * 1024
