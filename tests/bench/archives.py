"""The stand-in for macOS's archiver beside bsdtar, which is made of the same library."""

import shutil

import measure
import payload


class Archives:
    """A folder with so many files, and a zip of it."""

    def __init__(self, work, programs, files, size):
        self._work, self._ditto = work, programs.ditto
        self._folder, self._zip = work / "Morvella", work / "Morvella.zip"
        payload.make_tree(self._folder, files, size)
        payload.pack(self._folder, self._zip)

    def unpacking(self, rounds):
        out = self._work / "out"
        return measure.side_by_side(
            lambda: self._unpack(out, self._ditto, "-v", "-x", "-k", self._zip, out),
            lambda: self._unpack(out, "bsdtar", "-x", "-f", self._zip, "-C", out),
            rounds,
        )

    def packing(self, rounds):
        out = self._work / "out.zip"
        options = "-c", "-k", "--sequesterRsrc", "--keepParent"
        return measure.side_by_side(
            lambda: self._pack(out, self._ditto, *options, self._folder, out),
            lambda: self._pack(out, *payload.PACK, out, self._folder.name),
            rounds,
        )

    def _unpack(self, out, *command):
        shutil.rmtree(out, ignore_errors=True)
        out.mkdir()
        measure.settle()
        return measure.run_time(command)

    def _pack(self, out, *command):
        out.unlink(missing_ok=True)
        measure.settle()
        return measure.run_time(command, cwd=self._work)
