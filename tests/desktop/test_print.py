"""Printing by keys alone: to a print server of the test's own, and to a text file."""

import time

from case import DesktopTest, cancel_dialog, fill, lines, reply, save_as, start_entry
from desk import ROOT
from print_server import PrintServer

OUT = ROOT / "out/print"  # pictures of the last run's pages
QUESTION = "PRINT CURRENT SCREEN FIELDS?"
TO_FILE_TITLE = "Pick an ASCII Quintave print file name..."
TO_PRINT_TITLE = "Pick a Quintave report (*.RPX) file to print..."
TO_PRINTER, TO_FILE = "PRINT (to default printer)", "PRINT (one copy to a file)"
FAILURE = ("Error: 482 - Printer error\nError printing this report! (no default printer? printer off line? full drive? "
           "file locked? wrong privileges?). Correct the problem and try again, or pick a different file name or "
           "location.")
ABSTRACT = "Water levels of twelve wells, read by hand each month and checked against the logger of the oldest one."


def today():
    return time.strftime("%m-%d-%Y")


def open_panel(desk):
    """The print panel for the screen."""
    desk.key("ctrl+p")
    reply(desk, "Yes", QUESTION)
    desk.wait_focus("NO Section/Field Indent")


def choose(desk, entry):
    """Picks this entry of the drop-down list that has it, by keys alone."""
    combos = {node: [child.name for child in node.child(0).children] for node in desk.nodes(role="combo box")}
    combo, entries = next((node, names) for node, names in combos.items() if entry in names)
    for _ in range(20):
        if desk.focused().path == combo.path:
            break
        desk.key("Tab")
    desk.key("Home", *["Down"] * entries.index(entry))
    desk.wait_for(lambda: combo.text == entry, f"the choice {entry!r}")


def words_of(*texts):
    """Lines as a page gives them back: how many blanks stand between two words is no part of a PDF file."""
    return [text.split() for text in texts]


def press_by_keys(desk, name):
    desk.tab_to(name)
    desk.key("space")


class PrintTest(DesktopTest):
    TEMPLATE = ('1,-1,"","Citation","",""', '2,60,"TEXT","Title","",""', '2,300,"TEXT","Abstract","",""')

    def fill_screen(self, desk):
        start_entry(desk)
        fill(desk, "Title", "Wells")
        fill(desk, "Abstract", ABSTRACT)

    def assert_failure_told(self, desk):
        """The message, and behind it the panel ready for another try."""
        self.assert_message(desk, "PRINTING...", FAILURE, ["OK"], "red")
        desk.key("Enter")
        desk.wait_focus(TO_PRINTER)
        self.assertTrue(desk.node("Waiting for PRINT command", "label"))
        self.assertTrue(all(desk.node(name, "button").enabled for name in (TO_PRINTER, TO_FILE, "Cancel")))

    def print_to_file(self, desk, path):
        press_by_keys(desk, TO_FILE)
        desk.choose_file(path, TO_FILE_TITLE)
        desk.wait_focus("Fields")
        return path.read_bytes()


class PrinterTest(PrintTest):
    def print_screen(self, paper, copies=1):
        """The jobs that a print of the screen brings."""
        with PrintServer(paper) as server, self.desk(env=server.env) as desk:
            self.fill_screen(desk)
            open_panel(desk)
            choose(desk, str(copies))
            press_by_keys(desk, TO_PRINTER)
            desk.wait_focus("Fields", 30)
            jobs = server.jobs(copies)
            for number, job in enumerate(jobs):
                job.picture(OUT / f"{paper}-copy{number + 1}")
            return jobs

    def test_two_copies_of_the_screen_are_two_jobs_of_the_same_lines(self):
        jobs = self.print_screen("Letter", 2)
        self.assertEqual(len(jobs), 2)
        for job in jobs:
            self.assertEqual(job.info["Title"], "ON-SCREEN INFORMATION")
            self.assertEqual(len(job.pages), 1)
            self.assertEqual(job.pages[0], words_of(
                f"{today()} [TEST.FTF]; Quintave Report for ON-SCREEN INFORMATION      Page 1",
                "Citation",
                "Title| Wells",
                "Abstract| Water levels of twelve wells, read by hand each month and checked",
                "against the logger of the oldest one."))

    def test_titles_are_bold_and_a_heading_is_larger(self):
        job, = self.print_screen("Letter")
        self.assertEqual(len(job.fonts), 2)
        self.assertEqual(sum("Bold" in font for font in job.fonts), 1)
        width = {word: right - left for _, left, _, right, word in job.words}
        self.assertAlmostEqual(width["Wells"], 5 * 6, delta=0.5)  # a fixed pitch of 10 points: 6 points each
        self.assertAlmostEqual(width["Citation"], 8 * 8.4, delta=0.5)  # 14 points: 8.4 each
        tops = {word: top for _, _, top, _, word in job.words}
        lines_below = {word: (top - tops[today()]) / 12 for word, top in tops.items()}  # the page's header
        # The header's own empty line and two more above the heading, whose larger letters reach higher; one below it.
        self.assertAlmostEqual(lines_below["Citation"], 4, delta=0.4)
        self.assertAlmostEqual(lines_below["Title|"], 6, delta=0.1)

    def test_margins_on_letter_and_a4(self):
        # An inch counts as the paper's width / 8.5 and its height / 11.
        for paper, width, height in (("Letter", 612, 792), ("A4", 595.28, 841.89)):
            with self.subTest(paper):
                job, = self.print_screen(paper)
                self.assertIn(paper.lower(), job.info["Page size"].lower())
                words = {word: (left, top) for _, left, top, _, word in job.words}
                left, top = words[today()]
                self.assertAlmostEqual(left, width / 8.5, delta=0.5)
                self.assertAlmostEqual(top, height / 11, delta=3)  # the letters begin a little below the line's top
                self.assertAlmostEqual(words["Title|"][0], left, delta=0.1)
                self.assertAlmostEqual(words["Title|"][1] - top, 6 * 12, delta=0.5)  # six lines of 1/6 inch below
                values = [right for _, _, word_top, right, _ in job.words if word_top > top + 1]
                self.assertLess(max(values), width - width / 8.5 + 0.5)
                self.assertGreater(max(values), width - width / 8.5 - 60)  # the longest word at a line's end

    def test_a_long_report_has_numbered_pages(self):
        report = self.new_folder() / "LONG.RPX"
        report.write_bytes(self.report(*(f'2,1,"Title","Value {number}"' for number in range(100))))
        with PrintServer() as server, self.desk(env=server.env) as desk:
            start_entry(desk)
            desk.key("ctrl+p")
            reply(desk, "No", QUESTION)
            desk.choose_file(report, TO_PRINT_TITLE)
            desk.wait_focus("NO Section/Field Indent")
            press_by_keys(desk, TO_PRINTER)
            desk.wait_focus("Fields", 30)
            job, = server.jobs(1)
            self.assertEqual(job.info["Title"], "LONG.RPX")
            number = 0
            for page, count in enumerate((47, 47, 6), 1):  # from line 8 to line 54
                self.assertEqual(job.pages[page - 1], words_of(
                    f"{today()} [TEST.FTF]; Quintave Report for LONG.RPX      Page {page}",
                    *(f"Title| Value {n}" for n in range(number, number + count))))
                number += count
            self.assertEqual(len(job.pages), 3)


class FailingPrinterTest(PrintTest):
    def try_to_print(self, env):
        with self.desk(env=env) as desk:
            self.fill_screen(desk)
            open_panel(desk)
            press_by_keys(desk, TO_PRINTER)
            self.assert_failure_told(desk)
            text = self.print_to_file(desk, self.new_folder() / "after.txt").decode("cp1252")
            self.assertIn("Title| Wells\r\n", text)

    def test_without_a_print_server(self):
        self.try_to_print({"CUPS_SERVER": "/nowhere/socket"})

    def test_without_a_default_printer(self):
        with PrintServer(default=False) as server:
            self.try_to_print(server.env)
            self.assertEqual(server.jobs(0), [])

    def test_a_queue_that_takes_no_jobs(self):
        with PrintServer() as server:
            server.refuse()
            self.try_to_print(server.env)

    def test_a_print_server_that_ends_before_the_print(self):
        with PrintServer() as server, self.desk(env=server.env) as desk:
            self.fill_screen(desk)
            open_panel(desk)
            server.stop()
            press_by_keys(desk, TO_PRINTER)
            self.assert_failure_told(desk)


class TextFileTest(PrintTest):
    def assert_printed_alike_without_window(self, desk, printed, *options):
        """quintave-cli makes the same file of the report that the screen is saved as."""
        desk.key("ctrl+s")
        save_as(desk, desk.cwd / "screen.rpx")
        self.without_window(desk, "print", "screen.rpx", "-o", "wells.txt", *options)
        self.assertEqual((desk.cwd / "wells.txt").read_bytes(), printed)

    def test_the_screen_line_by_line(self):
        with self.desk() as desk:
            self.fill_screen(desk)
            open_panel(desk)
            printed = self.print_to_file(desk, self.new_folder() / "wells.txt")
            self.assertEqual(printed, lines(
                f"{today()} [TEST.FTF]; Quintave Report for WELLS.TXT",
                " ",
                "",
                "",
                "                                    Citation",
                "",
                "Title| Wells",
                "Abstract| Water levels of twelve wells, read by hand each month and checked ",
                "against the logger of the oldest one."))
            self.assert_printed_alike_without_window(desk, printed)

    def test_options_chosen_by_keys(self):
        with self.desk() as desk:
            self.fill_screen(desk)
            open_panel(desk)
            desk.key("space")
            desk.wait_focus("Section/Field Nested Indents")
            press_by_keys(desk, "Data Starts on Field Title Line")
            desk.wait_focus("Data Start on Line Below Title")
            desk.tab_to("Spaces to indent data")
            desk.type("a7-5")
            self.assertEqual(desk.text_of("Spaces to indent data"), "75")
            choose(desk, "': '")
            self.assertEqual(desk.text_of("Spaces to indent data"), "60")
            printed = self.print_to_file(desk, self.new_folder() / "wells.txt")
            self.assertEqual(printed, lines(
                f"{today()} [TEST.FTF]; Quintave Report for WELLS.TXT",
                " ",
                "Citation: ",
                "    Title: ",
                " " * 60 + "Wells",
                "    Abstract: ",
                " " * 60 + "Water levels of ",
                " " * 60 + "twelve wells, read ",
                " " * 60 + "by hand each month ",
                " " * 60 + "and checked against ",
                " " * 60 + "the logger of the ",
                " " * 60 + "oldest one."))
            self.assert_printed_alike_without_window(desk, printed, "--mode", "titles", "--below", "--indent", "60",
                                                     "--separator", ": ")

    def test_cancelling_the_dialog_keeps_the_panel_and_cancel_leaves_it(self):
        with self.desk() as desk:
            start_entry(desk)
            open_panel(desk)
            press_by_keys(desk, TO_FILE)
            cancel_dialog(desk, TO_FILE_TITLE)
            desk.wait_focus(TO_FILE)
            press_by_keys(desk, "Cancel")
            desk.wait_focus("Fields")

    def test_a_full_disk_is_told_and_another_file_can_be_taken(self):
        folder = self.new_folder()
        (folder / "full.txt").symlink_to("/dev/full")
        with self.desk() as desk:
            self.fill_screen(desk)
            open_panel(desk)
            press_by_keys(desk, TO_FILE)
            desk.choose_file(folder / "full.txt", TO_FILE_TITLE)
            if desk.message() and desk.message().title != "PRINTING...":
                reply(desk, "Yes")  # to replace what is there
            self.assert_message(desk, "PRINTING...", FAILURE.replace("482 - Printer error", "61 - Disk full"), ["OK"],
                                "red")
            desk.key("Enter")
            desk.wait_focus(TO_FILE)
            self.assertIn(b"Title| Wells\r\n", self.print_to_file(desk, folder / "next.txt"))
