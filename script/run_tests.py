#!/usr/bin/python3 -B
"""Runs the checks and tests for script/test, which has installed the packages."""

import argparse
import os
import platform
import re
import shutil
import subprocess
import sys
import tempfile
import threading
import time
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path
from xml.etree import ElementTree

import foundations
from roomy_folder import roomy_folder

RESULTS = Path("build/results")
FAILED = Path("build/failed-tests")
RESOURCES = "build/linux/Morvella Installer.app/Resources"
# Debian's pytest belongs to Debian's Python, which runs this script. The tests spend half of their
# time waiting.
PYTEST = [sys.executable, "-B", "-m", "pytest", "-q", "-n", str(2 * os.cpu_count() + 1)]
SCRIPT_TESTS = [f"tests/{name}" for name in ("archiver", "interface_file", "payload", "sources")]
END_TO_END = "end-to-end tests"


def problem(case):
    """Why a case of a JUnit report did not pass; empty if it did."""
    for child in case:
        if child.tag in ("failure", "error", "skipped"):
            return f"{child.tag}: {child.get('message') or ''} {child.text or ''}"
    return "" if case.get("status", "run") == "run" else "did not run"


def googletest_cases(output):
    """{name: problem} from a program's output; a test that began but did not end has crashed."""
    found = {}
    for word, name in re.findall(r"\[ +(RUN|OK|FAILED|SKIPPED) +\] (\w[^\s,:]*\.[^\s,:]+)", output):
        found[name] = {"RUN": "crashed", "OK": ""}.get(word, word.lower())
    if disabled := re.search(r"YOU HAVE \d+ DISABLED TEST", output):
        found["disabled tests"] = disabled[0]
    return found


def cases(report):
    """(name, problem) of every test. A name is Suite.Name, a pytest node ID or a program's."""
    for case in ElementTree.parse(report).iter("testcase"):
        why, name = problem(case), case.get("name")
        folders = case.get("classname", "").split(".")
        modules = [at for at, part in enumerate(folders, 1) if part.startswith("test_")]
        if modules:
            file = "/".join(folders[: modules[0]])
            name = "::".join([f"{file}.py", *folders[modules[0] :], name])
        output = case.findtext("system-out") or ""
        inner = googletest_cases(output)
        yield from inner.items()
        # The program itself counts only if it failed although its tests passed, as with a leak.
        if "[=====" not in output or (why and not any(inner.values())):
            yield name, why


class Run:
    """Counts what passed and failed; its parts may run in parallel."""

    def __init__(self):
        self.passed, self.failed, self.matched = 0, [], False
        self._lock = threading.Lock()

    def part(self, name, *commands, report=None, may_be_empty=False):
        """Runs the commands one after the other; returns whether all of them passed."""
        started, log, status = time.monotonic(), RESULTS / f"{name.replace(' ', '-')}.log", 0
        with log.open("w") as output:
            for command in commands:
                status = status or subprocess.call(command, stdout=output, stderr=output)
        found = [(name, status)]
        if report:
            found = list(cases(report)) if report.exists() else []
            self.matched |= bool(found)
            nothing_selected = status in (0, 5)  # pytest's status if it selected no test is 5
            empty = may_be_empty and nothing_selected and report.exists() and not found
            if not empty and (not found or (status and not any(why for _, why in found))):
                found.append((name, status or "no test ran"))
        bad = [case for case, why in found if why]
        with self._lock:
            self.passed += len(found) - len(bad)
            self.failed += bad
            if bad:
                print(log.read_text(errors="replace"))
            for case in bad:
                print(f"FAILED {case} (its log: {log})")
            seconds = time.monotonic() - started
            counts = f"{len(found) - len(bad)} passed, {len(bad)} failed"
            print(f"== {name}: {counts} in {seconds:.0f} s", flush=True)
        return not bad


def unit_tests(run, name, *selection, **options):
    report = (RESULTS / f"{name.replace(' ', '-')}.xml").absolute()
    command = ["ctest", "--preset", "linux-tests", "--output-junit", report, *selection]
    # The tests are counted in the programs' output, so it must be complete.
    command += ["--test-output-size-passed", "9999999", "--test-output-size-failed", "9999999"]
    run.part(name, command, report=report, **options)


def python_tests(run, name, selection, **options):
    report = RESULTS / f"{name.replace(' ', '-')}.xml"
    command = [*PYTEST, f"--junitxml={report}", *selection]
    run.part(name, command, report=report, **options)


def build(preset):
    return ["cmake", "--build", "--preset", preset]


# Builds the installer for users, and configures the test build.
BUILD = [
    ["script/build"],
    [*build("linux"), "--target", "gate", "inspector"],
    ["cmake", "--preset", "linux-tests"],
]


def checks(run):
    """Checks the format and runs clang-tidy only on Debian 12: other versions have other rules."""
    if platform.freedesktop_os_release().get("VERSION_ID") == "12":
        run.part("format", ["script/format", "--check"])
        run.part("clang-tidy", ["script/tidy", "--configured"])
    else:
        print("== format and clang-tidy: not checked here, only on Debian 12")
    python_tests(run, "tests of the scripts", SCRIPT_TESTS)


def sanitized(run):
    if run.part("build with sanitizers", build("linux-tests")):
        unit_tests(run, "unit tests with sanitizers")


def everything(run, sample):
    if not run.part("build", *BUILD):
        return
    run.part("sample payload", ["script/check-payload", RESOURCES])
    # At low priority, because the end-to-end tests have deadlines.
    with ThreadPoolExecutor(initializer=os.nice, initargs=[10]) as background:
        parts = [background.submit(work, run) for work in (sanitized, checks)]
        python_tests(run, END_TO_END, ["tests/end_to_end", *sample])
    for part in parts:
        part.result()


def selected(run, googletest, ctest, scripts, end_to_end):
    """Runs the tests selected by a separate filter for each kind of test."""
    os.environ["GTEST_FILTER"] = googletest
    if not run.part("build", *BUILD, build("linux-tests")):
        return
    unit_tests(run, "unit tests", "-L", "unit", may_be_empty=True)
    other = ["-R", ctest, "-LE", "unit", "--no-tests=ignore"]
    unit_tests(run, "fuzz target and leaks", *other, may_be_empty=True)
    for name, tests in (("tests of the scripts", scripts), (END_TO_END, end_to_end)):
        if tests:
            python_tests(run, name, tests, may_be_empty=True)
    if not run.matched and not run.failed:
        sys.exit("script/test: no test matches")


def existing(nodes, *options):
    """The nodes that exist: pytest runs nothing at all if one of its arguments does not."""
    found = []
    for file in {node.partition("::")[0] for node in nodes}:
        command = [sys.executable, "-B", "-m", "pytest", "-q", "--collect-only", *options, file]
        found += subprocess.run(command, capture_output=True, text=True).stdout.splitlines()
    for node in set(nodes) - set(found):
        print(f"{node} does not exist any more")
    return [node for node in nodes if node in found]


def failed_before(run, names):
    """Checks and builds are not tests: if only they failed, everything runs again."""
    nodes = [name for name in names if "::" in name]
    others = [name for name in names if "." in name and name not in nodes]
    if not nodes and not others:
        everything(run, [])
        return
    whole_program = any(re.search(r"_tests\.\d+$", name) for name in others)
    end_to_end = [node for node in nodes if node.startswith("tests/end_to_end/")]
    scripts = existing([node for node in nodes if node not in end_to_end])
    end_to_end = existing(end_to_end, "--deep")
    selected(
        run,
        "*" if whole_program else ":".join(others) or "-*",
        "|".join(f"^{re.escape(name)}$" for name in others) or "^$",
        scripts,
        [*end_to_end, "--deep"] if end_to_end else [],
    )


def main():
    parser = argparse.ArgumentParser(prog="script/test", add_help=False)
    parser.add_argument("pattern", nargs="?")
    parser.add_argument("--failed", action="store_true")
    parser.add_argument("--deep", action="store_true")
    parser.add_argument("--seed")
    options = parser.parse_args()
    before = FAILED.read_text().splitlines() if FAILED.exists() else []
    if options.failed and not before:
        sys.exit("script/test: nothing failed last time")
    shutil.rmtree(RESULTS, ignore_errors=True)
    RESULTS.mkdir(parents=True)
    run = Run()
    sample = ["--deep"] if options.deep else ["--seed", options.seed] if options.seed else []
    with tempfile.TemporaryDirectory(prefix="morvella-", dir=roomy_folder(gigabytes=2)) as folder:
        Path(folder).chmod(0o755)  # some tests run as an ordinary user
        os.environ["TMPDIR"] = folder
        foundations.require(Path(folder))
        if options.failed:
            failed_before(run, before)
        elif options.pattern:
            named = ["-k", options.pattern]
            selected(
                run,
                f"*{options.pattern}*",
                re.escape(options.pattern),
                [*SCRIPT_TESTS, *named],
                ["tests/end_to_end", *named, *sample],
            )
        else:
            everything(run, sample)
    FAILED.write_text("".join(f"{name}\n" for name in run.failed))
    log = RESULTS / f"{END_TO_END.replace(' ', '-')}.log"
    for line in log.read_text(errors="replace").splitlines() if log.exists() else []:
        if line.startswith(("--seed", "--deep")):  # what was sampled
            print(line)
    if run.failed:
        print("script/test --failed runs only what failed")
    print(f"{run.passed} passed, {len(run.failed)} failed")
    sys.exit(1 if run.failed else 0)


main()
