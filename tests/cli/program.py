"""What the tests of quintave-cli share: the program under test, and files for it."""

import os
import subprocess
import tempfile
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
PATH = None  # of the program; run.py sets it

TEMPLATE_HEADER = '"QUINTAVE FIELDS TEMPLATE FILE","QuintaveV2","","","",""'


def lines(*texts):
    """The bytes of a text file of these lines, as the program reads and writes them."""
    return "".join(f"{text}\r\n" for text in texts).encode("cp1252")


def template(*records):
    return lines(TEMPLATE_HEADER, *records)


def report(*records, name="SITE.FTF"):
    return lines(f'0,"QuintaveV2","{name}"', *records)


class CliTest(unittest.TestCase):
    """A folder of the test's own, in which the program runs; it leaves nothing in self.tmp, where temporary files go."""

    maxDiff = None

    def setUp(self):
        folder = tempfile.TemporaryDirectory(prefix="quintave-test-")
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name) / "work"
        self.tmp = Path(folder.name) / "tmp"
        self.folder.mkdir()
        self.tmp.mkdir()
        self.env = {**os.environ, "TMPDIR": str(self.tmp), "LC_ALL": "C.UTF-8", "SOURCE_DATE_EPOCH": "1551571200"}

    def write(self, name, data):
        (self.folder / name).write_bytes(data)

    def start(self, *arguments, **options):
        pipes = {"stdin": subprocess.DEVNULL, "stdout": subprocess.PIPE, "stderr": subprocess.PIPE, **options}
        return subprocess.Popen([PATH, *arguments], cwd=self.folder, env=self.env, **pipes)

    def run_cli(self, *arguments, data=b"", limit=60):
        """Runs the program to its end: exit status, standard output, standard error. It leaves no work files."""
        done = subprocess.run([PATH, *arguments], cwd=self.folder, env=self.env, input=data, capture_output=True,
                              timeout=limit)
        self.assertEqual(list(self.tmp.iterdir()), [])
        return done.returncode, done.stdout, done.stderr.decode()
