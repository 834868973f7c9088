"""What the tests of script/check-payload have in common."""

import subprocess
import sys
import tempfile
import unittest
import warnings
from pathlib import Path

from payload import Payload

CHECK = Path(__file__).resolve().parent.parent.parent / "script/check-payload"


class CheckPayload(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name)
        self.payload = Payload()

    def check(self, *arguments):
        run = subprocess.run(
            [sys.executable, CHECK, *(arguments or [self.folder])],
            stdout=subprocess.PIPE,
            stderr=subprocess.PIPE,
            encoding="utf-8",
            env={"PYTHONUTF8": "1", "PYTHONDONTWRITEBYTECODE": "1"},
            check=False,
        )
        return run.returncode, run.stdout.splitlines(), run.stderr

    def write(self):
        with warnings.catch_warnings():
            warnings.simplefilter("ignore")  # of a name that is there twice
            self.payload.write(self.folder)

    def findings(self):
        """All errors of the payload as it stands in the folder."""
        status, lines, stderr = self.check()
        self.assertEqual(stderr, "")
        errors = [line for line in lines if line.startswith("error: ")]
        self.assertEqual(status, 1 if errors else 0)
        return errors

    def expect(self, *errors):
        self.write()
        self.assertEqual(self.findings(), [f"error: {error}" for error in errors])

    def spoil(self, archive, old, new):
        """Replaces bytes in a written archive."""
        path = self.folder / archive
        content = path.read_bytes()
        self.assertIn(old, content)
        path.write_bytes(content.replace(old, new))
