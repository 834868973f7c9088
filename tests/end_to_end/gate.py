"""Holds the installer and the archiver before a chosen change to the installation's places.

They wait there, however fast the machine is, until killed or allowed to go on. See gate.cpp.
"""

import mmap
import struct

from waiting import PATIENCE, wait_until

NUMBER = struct.Struct("=i")
TEXT = struct.Struct("=248s")
ARRIVED, ALLOWED, HELD_TEXT = 0, NUMBER.size, 2 * NUMBER.size
EVERYTHING = 2**31 - 1


class Gate:
    def __init__(self, file, stage, seconds=6 * PATIENCE):
        """Holds the first change. A process held for longer than `seconds` aborts."""
        file.write_bytes(bytes(HELD_TEXT + TEXT.size))
        file.chmod(0o666)
        with open(file, "r+b") as opened:
            self._memory = mmap.mmap(opened.fileno(), 0)
        self.environment = {
            "GATE": str(file),
            "GATE_PLACES": "\n".join(map(str, stage.places)),
            "GATE_SECONDS": str(seconds),
        }

    @property
    def arrived(self):
        """The number of changes made, including those being held."""
        return NUMBER.unpack_from(self._memory, ARRIVED)[0]

    @property
    def is_holding(self):
        return self.arrived > NUMBER.unpack_from(self._memory, ALLOWED)[0]

    def allow(self, changes):
        NUMBER.pack_into(self._memory, ALLOWED, changes)

    def open(self):
        self.allow(EVERYTHING)

    def hold_next(self, text):
        """Lets everything through until a path that contains this text is about to change."""
        TEXT.pack_into(self._memory, HELD_TEXT, text.encode())
        self.allow(self.arrived)

    def wait(self):
        wait_until(lambda: self.is_holding, "a change to be held", interval=0.001)
