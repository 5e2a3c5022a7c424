"""Runs the desktop tests: all of them, or those whose names contain one of the arguments.

Each class of tests runs in a process of its own, WORKERS of them at a time: a test waits for its desktop more than it
works. "--class NAME" runs one class, in this process.

The last line is "desktop: N passed, N failed, N skipped"; the exit status is 0 only when tests ran and none failed.
A test that takes longer than TEST_SECONDS fails, and so does the run when a process of a test outlives it.
"""

import re
import signal
import subprocess
import sys
import unittest
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

from display import Display, marked

WORKERS = 2
TEST_SECONDS = 240  # the longest test takes a small part of this on two cores
LAST_LINE = re.compile(r"^desktop: (\d+) passed, (\d+) failed, (\d+) skipped$", re.MULTILINE)


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


def find(names):
    """The tests to run, by the name of their class."""
    loader = unittest.TestLoader()
    loader.testNamePatterns = [f"*{name}*" for name in names] or None
    classes, left = {}, [loader.discover(Path(__file__).parent)]
    while left:
        for test in left.pop():
            if isinstance(test, unittest.TestSuite):
                left.append(test)
            else:
                classes.setdefault(test.id().rpartition(".")[0], []).append(test)
    return classes


def run_class(tests):
    signal.signal(signal.SIGALRM, too_long)
    result = unittest.TextTestRunner(resultclass=Result, verbosity=2).run(unittest.TestSuite(tests))
    failed = len(result.failures) + len(result.errors) + len(result.unexpectedSuccesses)
    left = marked(Display.made)
    if left:
        print(f"processes outlived their test: {left}")
        failed += 1
    return result.passed, failed, len(result.skipped) + len(result.expectedFailures)


def run_apart(name, names, running):
    """Runs a class in a process of its own and shows its output when it has ended."""
    command = [sys.executable, "-B", __file__, "--class", name, *names]
    with subprocess.Popen(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True) as process:
        running.append(process)
        output, _ = process.communicate()
    print(LAST_LINE.sub("", output).rstrip(), flush=True)
    counts = [tuple(map(int, found)) for found in LAST_LINE.findall(output)]
    return counts[-1] if counts else (0, 1, 0)


def run_all(classes, names):
    running = []
    # Those with the most tests first, so that no long one is left alone at the end.
    order = sorted(classes, key=lambda name: -len(classes[name]))
    with ThreadPoolExecutor(WORKERS) as pool:
        try:
            counts = list(pool.map(lambda name: run_apart(name, names, running), order))
        except SystemExit:
            for process in running:
                process.terminate()
            raise
    return [sum(column) for column in zip(*counts)]


def main(arguments):
    signal.signal(signal.SIGTERM, ended)  # as an exception, so that every desktop is cleared away
    alone = arguments[1] if arguments[:1] == ["--class"] else None
    names = arguments[2:] if alone else arguments
    classes = find(names)
    if alone:
        passed, failed, skipped = run_class(classes[alone])
    elif classes:
        passed, failed, skipped = run_all(classes, names)
    else:
        print("no test was found")
        passed, failed, skipped = 0, 1, 0
    print(f"desktop: {passed} passed, {failed} failed, {skipped} skipped")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
