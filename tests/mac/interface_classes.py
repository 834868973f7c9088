"""Prints the class names in a compiled interface file.

For macOS 10.13 and later ibtool writes the format that iOS uses, whose header gives the size and
offset of each table; for older systems it writes a folder of keyed archives. A class with a
fallback in the archive is left out: a system that lacks the class loads the fallback.
"""

import plistlib
import struct
import sys
from pathlib import Path

MAGIC = b"NIBArchive"


def number(data, at):
    """Reads a number: seven bits per byte, lowest first; the last byte has the eighth bit set."""
    value = shift = 0
    while True:
        value |= (data[at] & 0x7F) << shift
        shift += 7
        at += 1
        if data[at - 1] & 0x80:
            return value, at


def archive_classes(data):
    *_, count, at = struct.unpack_from("<10I", data, len(MAGIC))
    for _ in range(count):
        length, at = number(data, at)
        fallbacks, at = number(data, at)
        at += 4 * fallbacks
        if not fallbacks:
            yield data[at : at + length].rstrip(b"\0").decode("ascii")
        at += length


def keyed_archive_classes(data):
    for each in plistlib.loads(data)["$objects"]:
        if isinstance(each, dict) and "$classname" in each and "$classhints" not in each:
            yield each["$classname"]


def classes(file):
    data = file.read_bytes()
    read = archive_classes if data.startswith(MAGIC) else keyed_archive_classes
    found = set(read(data))
    if not found:
        sys.exit(f"{file}: no class found")
    return found


def main():
    nib = Path(sys.argv[1])
    files = sorted(nib.glob("*.nib")) if nib.is_dir() else [nib]
    print("\n".join(sorted(set().union(*map(classes, files)))))


if __name__ == "__main__":
    main()
