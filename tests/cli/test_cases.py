"""Golden cases: each folder of cases/ holds files, a command line, and what comes of it.

    command   one line for the shell, in which $Q is the program; it runs in a copy of the folder
    stdout    what it is to print; likewise stderr. Missing: nothing
    status    its exit status. Missing: 0
    after/    files as they are to be afterwards
"""

import shutil
import subprocess
from pathlib import Path

import program

CASES = Path(__file__).parent / "cases"
EXPECTED = ("command", "stdout", "stderr", "status", "after")


class Cases(program.CliTest):
    def check_case(self, case):
        for file in case.iterdir():
            if file.name not in EXPECTED:
                shutil.copy(file, self.folder)
        before = {file.name for file in self.folder.iterdir()}
        done = subprocess.run(["sh", "-c", (case / "command").read_text()], cwd=self.folder, capture_output=True,
                              env={**self.env, "Q": str(program.PATH)}, timeout=60)
        self.assertEqual(done.stderr.decode(), self.text_of(case / "stderr").decode())
        self.assertEqual(done.stdout, self.text_of(case / "stdout"))
        self.assertEqual(done.returncode, int(self.text_of(case / "status") or 0))
        self.check_files(case / "after", before)
        self.assertEqual(list(self.tmp.iterdir()), [])

    def check_files(self, after, before):
        """Those in the folder are as expected, and there are no others but the case's own."""
        made = {file.name for file in after.iterdir()} if after.exists() else set()
        self.assertEqual({file.name for file in self.folder.iterdir()}, before | made)
        for name in made:
            self.assertEqual((self.folder / name).read_bytes(), (after / name).read_bytes())

    @staticmethod
    def text_of(path):
        return path.read_bytes() if path.exists() else b""


def add_test(case):
    setattr(Cases, f"test_{case.name}", lambda self: self.check_case(case))


for folder in sorted(CASES.iterdir()):
    add_test(folder)
