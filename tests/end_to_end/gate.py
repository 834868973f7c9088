"""Holds the installer and the archiver before any one change that they make on the stage.

Whatever the speed of the machine, they stand still there until they are killed or let through. See
gate.cpp.
"""

import mmap
import struct

from inspector import installed_module

# The two numbers of the shared file.
ARRIVED, ALLOWED = range(2)
NUMBER = struct.Struct("=i")
EVERYTHING = 2**31 - 1


class Gate:
    def __init__(self, file, bundle):
        library = installed_module(bundle, "libgate.so")
        file.write_bytes(bytes(2 * NUMBER.size))
        with open(file, "r+b") as opened:
            self._numbers = mmap.mmap(opened.fileno(), 0)
        self.environment = {"LD_PRELOAD": str(library), "GATE": str(file)}

    @property
    def arrived(self):
        """How many changes were made or wait to be made."""
        return NUMBER.unpack_from(self._numbers, ARRIVED * NUMBER.size)[0]

    def allow(self, changes):
        NUMBER.pack_into(self._numbers, ALLOWED * NUMBER.size, changes)

    def open(self):
        self.allow(EVERYTHING)
