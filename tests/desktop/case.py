"""What the desktop tests share: a template of the test's own, and the program worked on it by keys.

    class SomeTest(DesktopTest):
        TEMPLATE = ('2,40,"TEXT","Title","",""',)
        def test_...(self):
            with self.desk() as desk:
                start_entry(desk)
                fill(desk, "Title", "Soil")

The desktop itself is in desk.py.
"""

import contextlib
import subprocess
import tempfile
import unittest
from pathlib import Path

from desk import Desk

HEADER = '"QUINTAVE FIELDS TEMPLATE FILE","QuintaveV2","","","",""'
OPEN_TITLE = "Pick a '*.RPX' file to add..."
SAVE_TITLE = "Name a Quintave report (*.RPX) output file..."
TEMPLATE_TITLE = "Select a new FIELDS TEMPLATE File..."


def lines(*texts):
    """The bytes of a text file of these lines, as the program reads and writes them."""
    return "".join(f"{text}\r\n" for text in texts).encode("cp1252")


class DesktopTest(unittest.TestCase):
    """TEMPLATE: the records of the test's template, without its header. NAME: its file name."""

    TEMPLATE = ()
    NAME = "TEST.FTF"
    maxDiff = None

    def new_folder(self):
        folder = tempfile.TemporaryDirectory(prefix="quintave-test-")
        self.addCleanup(folder.cleanup)
        return Path(folder.name)

    def new_resources(self, header=HEADER):
        """A resource directory with the test's template."""
        folder = self.new_folder()
        (folder / "quintave.tbl").write_bytes(lines(f'"","{self.NAME}","-1"'))
        (folder / self.NAME).write_bytes(lines(header, *self.TEMPLATE))
        return folder

    @contextlib.contextmanager
    def desk(self, **options):
        options.setdefault("resources", self.new_resources())
        with Desk(self.id(), **options) as desk:
            yield desk

    def report(self, *records):
        """The bytes of a report on the test's template."""
        return lines(f'0,"QuintaveV2","{self.NAME}"', *records)

    def without_window(self, desk, *arguments):
        """Runs quintave-cli beside the program, in its working directory, over the test's template."""
        program = desk.program.with_name("quintave-cli")
        done = subprocess.run([program, *arguments], cwd=desk.cwd, capture_output=True, timeout=60)
        self.assertIn(done.returncode, (0, 1), done.stderr.decode())

    def assert_message(self, desk, title, text, buttons, icon="", default=None):
        """Waits for the message box of this title and compares everything that it shows."""
        box = desk.wait_message(title)
        if icon:  # a little after its names the box is painted, too
            desk.wait_for(desk.icon, f"the icon of the message box {title}")
        self.assertEqual((box.title, box.text, box.buttons, box.default, desk.icon()),
                         (title, text, buttons, default or buttons[0], icon))

    def assert_main_window_alone(self, desk):
        """No dialog is open: there is one window, whose title ends in the program's name."""
        self.assertEqual([title.rpartition(" ")[2] for title in desk.windows()], ["Quintave"])

    def assert_nothing_left(self, desk):
        """After an end: no work file in the resource directory, and its lock is free, the program starts there again."""
        self.assert_no_work_files(desk)
        desk.launch()
        self.assertIsNone(desk.message())
        self.assertEqual(desk.focus_name(), "Use Quintave")

    def assert_no_work_files(self, desk):
        self.assertEqual(work_files(desk.resources), [])


def work_files(folder):
    return sorted(path.name for path in Path(folder).iterdir() if path.suffix.upper() in (".XXX", ".$$$"))


def start_entry(desk):
    """From the start-up frame to the field list."""
    desk.wait_focus("Use Quintave")
    desk.key("space")
    desk.wait_focus("Fields")


def open_box(desk, title, first, fields="Fields"):
    """Opens the box of a free-text field by typing its first character on the field's row."""
    desk.go_to(fields, title)
    desk.type(first)
    desk.wait_focus("Value")


def fill(desk, title, text, commit="Enter", fields="Fields"):
    """Types a text into a field, from its row in the list, and commits it."""
    open_box(desk, title, text[0], fields)
    if text[1:]:
        desk.type(text[1:])
    desk.key(commit)
    desk.wait_focus(fields)


def value_of(desk, title, fields="Fields"):
    """The value part of the row of this title."""
    for row in desk.rows(fields):
        if row[1:27].rstrip() == title:
            return row[29:]
    raise AssertionError(f"no row titled {title!r}")


def reply(desk, button, title=None):
    """Answers the open message box (of this title) by keys: Tab to the button, then the space bar."""
    desk.wait_message(title)
    path = desk.box_path()
    desk.tab_to(button, 5)
    desk.key("space")
    desk.wait_for(lambda: desk.box_path() != path, f"the end of the message box {title or ''}", may_end=True)


def open_report(desk, path):
    desk.key("ctrl+a")
    desk.choose_file(path, OPEN_TITLE)


def save_as(desk, path):
    """Completes the dialog that Save has opened."""
    desk.choose_file(path, SAVE_TITLE)
    desk.wait_for(Path(path).exists, f"the report {path}")


def cancel_dialog(desk, title):
    desk.wait_dialog(title)
    desk.key("Escape")
    desk.wait_for(lambda: title not in desk.windows(), f"the end of the dialog {title}")
