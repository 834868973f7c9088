#!/usr/bin/env python3
"""Runs the tests of script/check-payload and script/package-mac."""

import argparse
import sys
import unittest
from pathlib import Path
from xml.etree import ElementTree


class Result(unittest.TextTestResult):
    """Remembers every test, for a JUnit report."""

    def __init__(self, *arguments):
        super().__init__(*arguments)
        self.ran = []

    def startTest(self, test):
        super().startTest(test)
        self.ran.append(test.id().removeprefix("test_"))

    def problems(self):
        """The text of what went wrong by test; a test that was skipped went wrong."""
        problems = {}
        for test, text in [*self.failures, *self.errors, *self.skipped]:
            whole = getattr(test, "test_case", test)  # a subtest counts for the test it is in
            problems.setdefault(whole.id().removeprefix("test_"), text)
        return problems


def main():
    parser = argparse.ArgumentParser(prog="tests/payload/run.py", description=__doc__)
    parser.add_argument("--report", type=Path, help="where to write a JUnit report")
    options = parser.parse_args()

    suite = unittest.defaultTestLoader.discover(str(Path(__file__).resolve().parent))
    result = unittest.TextTestRunner(sys.stdout, resultclass=Result).run(suite)
    problems = result.problems()
    report = ElementTree.Element("testsuite", name="payload")
    for name in [*result.ran, *(set(problems) - set(result.ran))]:
        case = ElementTree.SubElement(report, "testcase", name=name)
        if name in problems:
            ElementTree.SubElement(case, "failure").text = problems[name]
    if options.report:
        ElementTree.ElementTree(report).write(options.report)
    print(f"{len(report) - len(problems)} passed, {len(problems)} failed")
    sys.exit(1 if problems or not result.ran else 0)


if __name__ == "__main__":
    main()
