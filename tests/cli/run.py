"""Runs the tests of quintave-cli: all of a file, or those whose names contain one of the arguments behind it.

    run.py PROGRAM FILE [NAME...]

FILE is cases, behaviour, faulty, schemas, hostile, manual or round_trip: tests/cli/test_FILE.py.
"""

import sys
import unittest
from pathlib import Path

import program


def main(path, file, *names):
    program.PATH = Path(path).resolve()
    loader = unittest.TestLoader()
    loader.testNamePatterns = [f"*{name}*" for name in names] or None
    tests = loader.loadTestsFromName(f"test_{file}")
    result = unittest.TextTestRunner(verbosity=2).run(tests)
    return 0 if result.wasSuccessful() and result.testsRun else 1


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
