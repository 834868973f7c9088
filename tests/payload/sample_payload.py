"""A sound payload, which a test then spoils in one place."""

import plistlib
import stat
import zipfile

FILE = stat.S_IFREG | 0o644
PROGRAM = stat.S_IFREG | 0o755
FOLDER = stat.S_IFDIR | 0o755
LINK = stat.S_IFLNK | 0o755
UNIX = 3


def information(executable):
    return plistlib.dumps({"CFBundleExecutable": executable})


class SamplePayload:
    """Three archives as lists of (name, content, mode), to be changed before `write`."""

    def __init__(self):
        self.archives = {
            "morvella.zip": [
                ("Morvella/Morvella.app/Contents/Info.plist", information("Morvella"), FILE),
                ("Morvella/Morvella.app/Contents/MacOS/Morvella", b"#!/bin/sh\n", PROGRAM),
                ("Morvella/Sources/Vellicor.amxd", b"ampf", FILE),
            ],
            "Tressimo.zip": [
                ("Tressimo.app/Contents/Info.plist", information("Tressimo"), FILE),
                ("Tressimo.app/Contents/MacOS/Tressimo", b"#!/bin/sh\n", PROGRAM),
            ],
            "ISF.zip": [
                ("ISF/Dariwent/Ripple.fs", b"/*{}*/", FILE),
                ("ISF/Standard/Invert.fs", b"/*{}*/", FILE),
            ],
        }

    def add(self, archive, name, content=b"x", mode=FILE):
        self.archives[archive].append((name, content, mode))

    def drop(self, archive, start):
        """Drops the entries whose names begin so."""
        entries = self.archives[archive]
        self.archives[archive] = [each for each in entries if not each[0].startswith(start)]
        assert self.archives[archive] != entries, start

    def rename(self, archive, old, new):
        self.archives[archive] = [
            (name.replace(old, new), content, mode)
            for name, content, mode in self.archives[archive]
        ]

    def replace(self, archive, name, content, mode=FILE):
        self.drop(archive, name)
        self.add(archive, name, content, mode)

    def write(self, folder):
        for archive, entries in self.archives.items():
            with zipfile.ZipFile(folder / archive, "w", zipfile.ZIP_DEFLATED) as file:
                for name, content, mode in entries:
                    info = zipfile.ZipInfo(name)
                    info.create_system = UNIX
                    info.external_attr = mode << 16
                    info.compress_type = zipfile.ZIP_DEFLATED
                    file.writestr(info, content)
