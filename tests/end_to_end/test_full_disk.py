import os
import subprocess

import pytest

import disturbed
from expectations import HIDING, font_lines, start_lines
from fault import Fault, backups

KIBIBYTE, MEBIBYTE = 1 << 10, 1 << 20


class TestFullDisk(Fault):
    """The whole stage lies on a small disk of its own.

    Where none can be mounted, the files that the archiver writes may not grow instead: to the
    archiver that looks the same.
    """

    @pytest.fixture(autouse=True)
    def mount_disk(self, prepare):
        self.disk = self.folder / "disk"
        self.disk.mkdir()
        mount = ["mount", "-t", "tmpfs", "-o", f"size={64 * MEBIBYTE}", "tmpfs", self.disk]
        self.mounted = subprocess.run(mount, stderr=subprocess.DEVNULL, check=False).returncode == 0
        if not self.mounted:
            print("No disk can be mounted here: the archiver's files are limited instead.")
        yield
        if self.mounted:
            subprocess.run(["umount", self.disk], check=True)

    def leave_free(self, size):
        if self.mounted:
            self.fill_disk(size)
        else:
            self.limit_archiver(size)

    def fill_disk(self, size):
        with open(self.disk / "ballast", "wb") as ballast:
            disk = os.statvfs(ballast.fileno())
            os.posix_fallocate(ballast.fileno(), 0, disk.f_bavail * disk.f_bsize - size)

    def limit_archiver(self, size):
        self.bundle = self.copy_bundle()
        archiver = self.bundle / "Helpers/ditto"
        real = archiver.rename(archiver.with_name("real-ditto"))
        archiver.write_text(f"#!/bin/bash\nulimit -f {size // KIBIBYTE}\n'{real}' \"$@\"\n")
        archiver.chmod(0o755)

    def test_while_unpacking(self):
        stage = self.make_stage("disk/stage")
        self.leave_free(0)
        if self.mounted:
            fonts = disturbed.fonts_not_copied(present=())
            # Names take no room here, so the application's folder is there to be hidden.
            end = [HIDING]
        else:
            fonts = font_lines
            end = disturbed.not_hidden(self.bundle, stage)
        self.expect_run(
            stage,
            *start_lines(stage),
            *fonts(self.bundle, stage),
            *disturbed.archives_refused(stage),
            *end,
        )

    def test_while_packing(self):
        stage = self.make_stage("disk/stage", previous=True)
        own = stage.destination / "My Patches/Long Take.wav"
        own.write_bytes(os.urandom(8 * MEBIBYTE))
        before = self.snapshot(stage)
        self.leave_free(4 * MEBIBYTE)
        run = disturbed.Run(previous=disturbed.not_backed_up)
        self.expect_run(stage, *run.log(self.bundle, stage))
        self.expect_nothing_lost(stage, before)
        assert backups(stage, "*") == []
