"""The stand-in for macOS's archiver beside the archivers that every system has."""

import shutil

import measure
import payload

UNPACK = "-v", "-x", "-k"
PACK = "-c", "-k", "--sequesterRsrc", "--keepParent"


class Archives:
    """A folder with so many files, and a zip of it."""

    def __init__(self, work, programs, files, size):
        self._work, self._ditto = work, programs.ditto
        self._folder, self._zip = work / "Morvella", work / "Morvella.zip"
        payload.make_tree(self._folder, files, size)
        payload.pack(self._folder, self._zip)
        self.sizes = {}

    def unpacking(self):
        """Functions by name that unpack the zip and return the seconds."""
        out, zip_file = self._work / "out", self._zip
        return {
            "stand-in": self._unpack(self._ditto, *UNPACK, zip_file, out),
            "bsdtar": self._unpack("bsdtar", "-x", "-f", zip_file, "-C", out),
            "unzip": self._unpack("unzip", "-q", zip_file, "-d", out),
            "7zz": self._unpack("7zz", "x", "-bso0", "-bsp0", f"-o{out}", zip_file),
        }

    def packing(self):
        folder, out = self._folder, self._work / "out.zip"
        return {
            "stand-in": self._pack("stand-in", self._ditto, *PACK, folder, out),
            "bsdtar": self._pack("bsdtar", "bsdtar", "--format", "zip", "-c", "-f", out, folder.name),
            "zip": self._pack("zip", "zip", "-q", "-r", out, folder.name),
            "7zz": self._pack("7zz", "7zz", "a", "-tzip", "-bso0", "-bsp0", out, folder.name),
        }

    def _unpack(self, *command):
        def run():
            out = self._work / "out"
            shutil.rmtree(out, ignore_errors=True)
            out.mkdir()
            measure.settle()
            return measure.run_time(command)

        return run

    def _pack(self, name, *command):
        def run():
            out = self._work / "out.zip"
            out.unlink(missing_ok=True)
            measure.settle()
            seconds = measure.run_time(command, cwd=self._work)
            self.sizes[name] = out.stat().st_size
            return seconds

        return run
