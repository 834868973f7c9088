"""Builds the project once, and then only what one change needs."""

import json
import os
import shlex
import shutil
import subprocess
from pathlib import Path

from parts import ROOT

# All that the sources include, compiled once.
STANDARD = "algorithm functional map memory optional string vector chrono".split()
# Whatever the project says of warnings: only a missing return counts.
PLAIN = ["-O0", "-g0", "-D_GLIBCXX_ASSERTIONS"]
QUIET = ["-Xclang", "-Wno-everything", "-Xclang", "-Werror=return-type"]
PROGRAMS = {"core": "tests/core_tests", "cocoa": "tests/cocoa/cocoa_tests"}


def run(command, **options):
    """Raises with all that was printed if the command fails."""
    ran = subprocess.run(
        command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, check=False, **options
    )
    if ran.returncode != 0:
        raise RuntimeError(f"{shlex.join(map(str, command))} failed:\n{ran.stdout}")
    return ran.stdout


class Build:
    """The unchanged project without optimisation, in `folder`: commands to compile each source and
    to link each test program. Only those of `PROGRAMS` that are named are built."""

    def __init__(self, folder, jobs, names):
        self.folder, self.names = folder, sorted(names)
        flags = " ".join(PLAIN)
        linker = "-fuse-ld=lld" if shutil.which("ld.lld") else ""
        run(
            ["cmake", "-S", ROOT, "-B", folder, "--preset", "linux", "-DCMAKE_BUILD_TYPE=None"]
            + [f"-DCMAKE_CXX_FLAGS={flags}", f"-DCMAKE_OBJCXX_FLAGS={flags}"]
            + [f"-DCMAKE_EXE_LINKER_FLAGS={linker}"]
            + ["-DMORVELLA_TESTS=ON", "-DCMAKE_DISABLE_PRECOMPILE_HEADERS=ON"]
        )
        targets = [Path(PROGRAMS[name]).name for name in self.names]
        if targets:
            run(["cmake", "--build", folder, "--parallel", str(jobs), "--target", *targets])
        database = json.loads((folder / "compile_commands.json").read_text())
        self._commands = {
            str(Path(each["file"]).relative_to(ROOT)): shlex.split(each["command"])
            for each in database
            if Path(each["file"]).is_relative_to(ROOT)
        }
        self._headers = {
            ".cpp": self._precompile("core", "install/procedure.cpp", self._core_headers()),
            ".mm": self._precompile("cocoa", "platform/cocoa/window.mm", self._cocoa_headers()),
            "joined": self._precompile("joined", "tests/app/page_flow_test.cpp", ["gtest/gtest.h"]),
        }

    def _core_headers(self):
        return ["app/morvella_installer_view_controller.hpp"]

    def _cocoa_headers(self):
        found = (ROOT / "platform/cocoa").glob("*.h")
        return ["AppKit/AppKit.h", *sorted(str(path.relative_to(ROOT)) for path in found)]

    def _precompile(self, name, like, headers):
        header = self.folder / f"{name}.hpp"
        language = "objective-c++-header" if like.endswith(".mm") else "c++-header"
        header.write_text("".join(f"#include <{each}>\n" for each in STANDARD + headers))
        # A header of the system may be installed anew in the meantime.
        kept = ["-Xclang", "-fno-pch-timestamp", "-o", f"{header}.pch"]
        run([*self._flags(like, language), *kept, "-c", header], cwd=self.folder)
        return ["-include-pch", f"{header}.pch"]

    def _flags(self, source, language=None):
        """How `source` is compiled, but for which file from and where to."""
        command = self._commands[source]
        flags = command[: command.index("-o")]
        kept = [flag for flag in flags if not flag.startswith("-W") and flag != "-Werror"]
        if "-x" in kept:
            at = kept.index("-x")
            del kept[at : at + 2]
        language = language or ("objective-c++" if source.endswith(".mm") else "c++")
        return [*kept, *QUIET, "-x", language]

    def compile_command(self, source, changed, target):
        """Compiles the file `changed` in the place of `source`."""
        headers = self._headers[Path(source).suffix]
        flags = self._flags(source)
        return [flags[0], *headers, *flags[1:], "-c", changed, "-o", target]

    def joined_command(self, sources, overlay, target):
        """Compiles several sources as one, with headers of `overlay` in the place of their own."""
        joined = Path(f"{target}.cpp")
        joined.write_text("".join(f'#include "{ROOT / source}"\n' for source in sources))
        flags = self._flags(sources[0])
        headers = self._headers["joined"]
        where = [f"-I{overlay}", f"-I{ROOT}/tests"]
        return [flags[0], *headers, *where, *flags[1:], "-c", joined, "-o", target]

    def object_of(self, source):
        command = self._commands[source]
        return command[command.index("-o") + 1]

    def sources_of(self, *places):
        """The sources whose objects lie in one of these folders of the build."""
        return [source for source in self._commands if self.object_of(source).startswith(places)]

    def link_command(self, program):
        """As a list of words, relative to `folder`; the program's path is among them."""
        last = run(["ninja", "-C", self.folder, "-t", "commands", program]).splitlines()[-1]
        return next(shlex.split(part) for part in last.split("&&") if " -o " in part)
