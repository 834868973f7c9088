#!/usr/bin/env python3
"""Runs the end-to-end tests, a few at a time, each batch on a display of its own.

Prints one line for each test. A failed one leaves a picture and the installer's output in
build/end-to-end.
"""

import argparse
import fnmatch
import os
import queue
import shutil
import sys
import threading
import time
import traceback
import unittest
from pathlib import Path
from xml.etree import ElementTree

from display import Display
from scenario import Scenario

HERE = Path(__file__).resolve().parent
EVIDENCE = HERE.parent.parent / "build/end-to-end"


class Result(unittest.TestResult):
    """Of one test: the traceback if it did not pass."""

    def __init__(self):
        super().__init__()
        self.problem = None

    def _keep(self, _, error):
        self.problem = self.problem or "".join(traceback.format_exception(*error))

    addError = addFailure = _keep

    def addSkip(self, test, reason):
        self.problem = f"skipped: {reason}"


class Runner:
    def __init__(self, tests, executable):
        self._waiting = queue.SimpleQueue()
        for test in tests:
            self._waiting.put(test)
        self._executable = executable
        self._printing = threading.Lock()
        self.report = ElementTree.Element("testsuite", name="end-to-end")

    def work(self):
        with Display() as display:
            while True:
                try:
                    test = self._waiting.get_nowait()
                except queue.Empty:
                    return
                self._run(test, display)

    def stop(self):
        """Lets the tests that run come to their end, and no other start."""
        try:
            while True:
                self._waiting.get_nowait()
        except queue.Empty:
            pass

    def _run(self, test, display):
        test.display, test.bundle = display, self._executable.parent
        test.evidence = EVIDENCE / name(test)
        result, started = Result(), time.monotonic()
        test.run(result)
        seconds = time.monotonic() - started
        with self._printing:
            print(f"{'FAILED' if result.problem else 'passed'} {seconds:5.1f} s  {name(test)}")
            case = ElementTree.SubElement(
                self.report, "testcase", name=name(test), time=f"{seconds:.3f}"
            )
            if result.problem:
                print(result.problem, flush=True)
                ElementTree.SubElement(case, "failure").text = result.problem
            sys.stdout.flush()

    @property
    def failed(self):
        return len(self.report.findall("testcase/failure"))


def name(test):
    return test.id().removeprefix("test_")


def tests_in(suite):
    for item in suite:
        if isinstance(item, Scenario):
            yield item
        else:
            yield from tests_in(item)


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("executable", type=Path, help="the installer to test")
    parser.add_argument("pattern", nargs="*", help="only tests whose names match, as in '*tour*'")
    parser.add_argument("--jobs", type=int, default=os.cpu_count() + 1, help="how many at a time")
    parser.add_argument("--report", type=Path, help="where to write a JUnit report")
    options = parser.parse_args()

    loader = unittest.TestLoader()
    suite = loader.discover(str(HERE))
    if loader.errors:
        sys.exit("\n".join(loader.errors))
    tests = [
        test
        for test in tests_in(suite)
        if not options.pattern or any(fnmatch.fnmatch(name(test), p) for p in options.pattern)
    ]
    shutil.rmtree(EVIDENCE, ignore_errors=True)
    EVIDENCE.mkdir(parents=True)
    runner = Runner(tests, options.executable.resolve())
    workers = [threading.Thread(target=runner.work) for _ in range(options.jobs)]
    for worker in workers:
        worker.start()
    try:
        for worker in workers:
            worker.join()
    except KeyboardInterrupt:
        runner.stop()
        raise
    if options.report:
        ElementTree.ElementTree(runner.report).write(options.report)
    ran = len(runner.report)
    print(f"{ran - runner.failed} passed, {runner.failed} failed")
    sys.exit(0 if ran == len(tests) > 0 and not runner.failed else 1)


if __name__ == "__main__":
    main()
