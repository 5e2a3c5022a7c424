"""Runs the desktop tests: all of them, or those whose names contain one of the arguments.

The last line is "desktop: N passed, N failed, N skipped"; the exit status is 0 only when tests ran and none failed.
A test that takes longer than TEST_SECONDS fails, and so does the run when a process of a test outlives it.
"""

import signal
import sys
import unittest
from pathlib import Path

from display import Display, marked

TEST_SECONDS = 240  # the longest test takes a small part of this on two cores


class Result(unittest.TextTestResult):
    """Counts what passed, and ends a test that hangs."""

    passed = 0

    def startTest(self, test):
        super().startTest(test)
        signal.alarm(TEST_SECONDS)

    def stopTest(self, test):
        signal.alarm(0)
        super().stopTest(test)

    def addSuccess(self, test):
        super().addSuccess(test)
        self.passed += 1


def too_long(*_):
    raise AssertionError(f"the test took longer than {TEST_SECONDS} s")


def ended(*_):
    raise SystemExit(143)


def main(names):
    signal.signal(signal.SIGALRM, too_long)
    signal.signal(signal.SIGTERM, ended)  # as an exception, so that every desktop is cleared away
    loader = unittest.TestLoader()
    loader.testNamePatterns = [f"*{name}*" for name in names] or None
    tests = loader.discover(Path(__file__).parent)
    result = unittest.TextTestRunner(resultclass=Result, verbosity=2).run(tests)
    failed = len(result.failures) + len(result.errors) + len(result.unexpectedSuccesses)
    left = marked(Display.made)
    if left:
        print(f"processes outlived their test: {left}")
        failed += 1
    if not result.testsRun:
        print("no test was found")
        failed += 1
    skipped = len(result.skipped) + len(result.expectedFailures)
    print(f"desktop: {result.passed} passed, {failed} failed, {skipped} skipped")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
