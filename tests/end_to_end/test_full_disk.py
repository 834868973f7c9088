import os
import subprocess

import pytest

from expectations import backups
from log_lines import failed_line, refused_line
from pages import NO_BACKUP, NO_USER_FILES, NO_UTILITIES, NOT_INSTALLED
from scenario import Scenario, expect_nothing_lost

KIBIBYTE, MEBIBYTE = 1 << 10, 1 << 20


class TestFullDisk(Scenario):
    """The whole stage is on a small disk of its own.

    If none can be mounted, the size of the archiver's files is limited instead, which looks the
    same to it.
    """

    @pytest.fixture(autouse=True)
    def mount_disk(self, prepare):
        self.disk = self.folder / "disk"
        self.disk.mkdir()
        mount = ["mount", "-t", "tmpfs", "-o", f"size={64 * MEBIBYTE}", "tmpfs", self.disk]
        self.mounted = subprocess.run(mount, stderr=subprocess.DEVNULL, check=False).returncode == 0
        if not self.mounted:
            print("No disk can be mounted here: the size of the archiver's files is limited.")
        yield
        if self.mounted:
            subprocess.run(["umount", self.disk], check=True)

    def leave_free(self, size):
        if self.mounted:
            with open(self.disk / "ballast", "wb") as ballast:
                disk = os.statvfs(ballast.fileno())
                os.posix_fallocate(ballast.fileno(), 0, disk.f_bavail * disk.f_bsize - size)
        else:
            self.replace_archiver(f'ulimit -f {size // KIBIBYTE}\nreal "$@"')

    def test_while_unpacking(self):
        stage = self.make_stage("disk/stage")
        self.leave_free(0)
        # Folders take no space on this disk, so the application's folder exists and can be hidden.
        end = [] if self.mounted else [NOT_INSTALLED]
        fonts = ["Couldn't install fonts."] if self.mounted else []
        log = [*fonts, refused_line("morvella.zip"), failed_line("Tressimo.zip")]
        self.run(stage, criticals=[NO_UTILITIES, NO_USER_FILES, *end], log=log)

    def test_while_packing(self):
        stage = self.make_stage("disk/stage", previous=True)
        own = stage.destination / "My Patches/Long Take.wav"
        own.write_bytes(os.urandom(8 * MEBIBYTE))
        before = self.snapshot(stage)
        self.leave_free(4 * MEBIBYTE)
        self.run(stage, criticals=[NO_BACKUP])
        expect_nothing_lost(stage, before)
        assert backups(stage, "*") == []
