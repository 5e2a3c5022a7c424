"""Starting: the resource directory asked for, the lock, faulty templates, arguments, the start-up frame."""

import fcntl
import os
import subprocess
import time
import unittest

from case import DesktopTest, fill, reply, save_as, start_entry, value_of, work_files
from desk import ROOT, Desk
from display import wait_until

ASKED = ("What is the Resource Directory for Quintave?\n\n(i.e., where is Quintave.Tbl located?)\n\n"
         "(e.g., 'd:\\quintave\\')")
WHERE = "Quintave.Tbl Location?"
BAD = "BAD DRIVE/DIRECTORY INFORMATION!"
MISSING = ("WARNING! Quintave resources were not found in the directory you specified ({}).  "
           "The Quintave.Tbl file must be loaded!  Try Again?")
TAKEN = ("WARNING! Another Quintave is working in the directory you specified ({}/).  "
         "Each needs a resource directory of its own!  Try Again?")


class StartTest(DesktopTest):
    NAME = "START.FTF"
    TEMPLATE = (
        '1,-1,"","Site","",""',
        '2,40,"TEXT","Title","",""',
        '2,20,"LIST","Kind","",""', '"Maps"', '"Numbers"', '"XXX-1XXX"',
    )

    def caption(self, desk, text):
        return len(desk.nodes(text, "panel")) == 1


class ResourceDirectory(StartTest):
    def desk(self, **options):
        return Desk(self.id(), resources=False, **options)

    def test_is_asked_for_until_it_is_found(self):
        right = self.new_resources()
        with self.desk() as desk:
            dialog = desk.wait_dialog(WHERE)
            self.assertEqual([node.name for node in dialog.walk() if node.role == "label"], [ASKED])
            self.assertEqual(desk.focused().text, f"{desk.cwd}/")
            desk.enter_text(desk.folder, WHERE)  # without a separator at its end
            self.assert_message(desk, BAD, MISSING.format(f"{desk.folder}/"), ["Yes", "No"], "red")
            reply(desk, "Yes")
            desk.wait_dialog(WHERE)
            desk.key("Escape")  # an empty answer
            self.assert_message(desk, BAD, MISSING.format("/"), ["Yes", "No"], "red")
            reply(desk, "Yes")
            desk.enter_text(right, WHERE)
            start_entry(desk)
            self.assertTrue(self.caption(desk, "[Template: START.FTF] - RPX File(s): "))
            self.assertEqual(work_files(right), ["LST00003.XXX"])

    def test_answered_with_no_ends_the_program(self):
        with self.desk() as desk:
            desk.wait_dialog(WHERE)
            desk.key("Enter")
            desk.wait_message(BAD)
            reply(desk, "No")
            self.assertEqual(desk.wait_exit(), 0)

    def test_the_warning_is_closed_by_its_buttons_only(self):
        with self.desk() as desk:
            desk.wait_dialog(WHERE)
            desk.key("Enter")
            desk.wait_message(BAD)
            desk.key("Escape", "alt+F4")
            self.assertEqual(desk.message().title, BAD)

    def test_the_current_directory_is_taken_when_the_table_lies_there(self):
        with self.desk(cwd=self.new_resources()) as desk:
            start_entry(desk)
            self.assertEqual(desk.row_count("Fields"), 2)

    def locked(self):
        """A resource directory that a program of another user or machine works on, until the test is over."""
        resources = self.new_resources()
        handle = os.open(resources, os.O_RDONLY | os.O_DIRECTORY)
        self.addCleanup(os.close, handle)
        fcntl.flock(handle, fcntl.LOCK_EX)
        return resources

    def test_of_another_users_program_is_refused(self):
        resources = self.locked()
        with self.desk(args=["--resources", str(resources)]) as desk:
            self.assert_message(desk, BAD, TAKEN.format(resources), ["Yes", "No"], "red")
            self.assertEqual(work_files(resources), [])
            reply(desk, "Yes")
            desk.enter_text(self.new_resources(), WHERE)
            start_entry(desk)
            desk.key("ctrl+q")
            self.assertEqual(desk.wait_exit(), 0)
            self.assertEqual(work_files(resources), [])

    def test_of_another_users_program_answered_with_no_ends_the_program(self):
        resources = self.locked()
        with self.desk(args=["--resources", str(resources)]) as desk:
            desk.wait_message(BAD)
            reply(desk, "No")
            self.assertEqual(desk.wait_exit(), 0)
            self.assertEqual(work_files(resources), [])


class SecondStart(StartTest):
    """Of the user's own, on the directory that the first one works in."""

    def start_again(self, desk, *arguments):
        second = desk.display.start([desk.program, "--resources", desk.resources, *arguments], "second.log",
                                    cwd=desk.cwd)
        self.assertEqual(second.wait(30), 0)
        self.assertEqual((desk.display.folder / "second.log").read_text(), "")

    def test_hands_its_report_over_and_ends(self):
        with self.desk() as desk:
            (desk.cwd / "given.rpx").write_bytes(self.report('1,-1,"Site",""', '2,1,"Title","Given"'))
            start_entry(desk)
            self.start_again(desk, "given.rpx")
            desk.wait_for(lambda: value_of(desk, "Title") == "Given", "the report that was handed over")
            self.assertEqual(desk.windows(), [f"given.rpx - {self.NAME} - Quintave"])
            self.assertEqual(desk.focus_name(), "Fields")
            self.assertEqual(work_files(desk.resources)[-1], "LST00003.XXX")

    def test_brings_the_first_to_the_front(self):
        with self.desk() as desk:
            start_entry(desk)
            window = desk.display.run("xdotool", "getwindowfocus").strip()
            desk.display.run("xdotool", "windowminimize", "--sync", window)
            self.start_again(desk)
            desk.wait_for(lambda: desk.display.run("xdotool", "getwindowfocus").strip() == window, "the window in front")
            fill(desk, "Title", "untouched")

    def test_of_many_at_once_one_stays(self):
        with self.desk() as desk:
            desk.key("alt+F4")
            desk.wait_exit()
            many = [desk.display.start([desk.program, "--resources", desk.resources, f"r{number}.rpx"], "many.log",
                                       cwd=desk.cwd) for number in range(6)]
            self.assertTrue(wait_until(lambda: [one.poll() for one in many].count(None) == 1, 60))
            time.sleep(1)
            self.assertEqual(sorted(-1 if one.poll() is None else one.poll() for one in many), [-1, 0, 0, 0, 0, 0])

    def test_waits_for_an_open_question(self):
        with self.desk() as desk:
            (desk.cwd / "given.rpx").write_bytes(self.report('1,-1,"Site",""', '2,1,"Title","Given"'))
            start_entry(desk)
            fill(desk, "Title", "Mine")
            desk.key("ctrl+r")
            desk.wait_message("CLEAR ALL FIELDS (Reset)")
            self.start_again(desk, "given.rpx")
            time.sleep(1)
            self.assertEqual(desk.message().title, "CLEAR ALL FIELDS (Reset)")
            reply(desk, "No")
            desk.wait_for(lambda: value_of(desk, "Title") == "Given", "the report that was handed over")


class FaultyTemplate(StartTest):
    def test_of_a_wrong_header_ends_the_program(self):
        for header in ('"QUINTAVE FIELDS TEMPLATE FILE","QuintaveV1","","","",""',
                       '"A FIELDS TEMPLATE FILE","QuintaveV2","","","",""'):
            with self.subTest(header), self.desk(resources=self.new_resources(header)) as desk:
                self.assert_message(desk, "Quintave",
                                    "This is not a valid Fields Template File!\n\nPlease Try Again.", ["OK"])
                desk.key("Enter")
                self.assertEqual(desk.wait_exit(), 0)
                self.assert_no_work_files(desk)
                (desk.resources / self.NAME).write_bytes(self.template())
                desk.launch()  # the lock is free, too
                start_entry(desk)

    def template(self):
        return (self.new_resources() / self.NAME).read_bytes()

    def test_that_is_not_there_leaves_a_window_that_can_load_another(self):
        resources = self.new_resources()
        (resources / self.NAME).unlink()
        with self.desk(resources=resources) as desk:
            start_entry(desk)
            self.assertIsNone(desk.message())
            self.assertTrue(self.caption(desk, "[No Fields Template Loaded -- Click on 'Field Template' to Load a "
                                               "Template!]"))
            self.assertEqual(desk.rows("Fields"), ["NO DATA FIELDS"])
            desk.key("Enter", "Delete")
            desk.type("a")
            self.assertEqual((desk.message(), desk.nodes("Value"), desk.nodes("Choices")), (None, [], []))
            other = desk.cwd / "later.ftf"
            other.write_bytes(self.template())
            desk.key("ctrl+f")
            desk.choose_file(other)
            desk.wait_for(lambda: desk.row_count("Fields") == 2, "the template")

    def test_that_breaks_off_is_told_and_not_loaded(self):
        resources = self.new_resources()
        whole = (resources / self.NAME).read_bytes()
        (resources / self.NAME).write_bytes(whole.replace(b'"XXX-1XXX"\r\n', b""))
        with self.desk(resources=resources) as desk:
            self.assert_message(
                desk, "ERROR LOADING START.FTF",
                "Error: 62 - Input past end of file\nError reading this Fields Template File! (file damaged? choice "
                "list or group not ended? file locked? wrong privileges?). Correct the problem and try again, or pick "
                "another Fields Template File.\n\nLook at line 4 first.", ["OK"], "red")
            desk.key("Enter")
            start_entry(desk)
            self.assertEqual(desk.rows("Fields"), ["NO DATA FIELDS"])


class Arguments(StartTest):
    def run_without_display(self, *arguments, **environment):
        program = Desk(self.id()).program
        return subprocess.run([program, *arguments], env={"PATH": "/usr/bin:/bin", **environment}, capture_output=True,
                              text=True, cwd=self.new_folder(), timeout=30, check=False)

    def test_help_and_version_answer_without_a_display(self):
        done = self.run_without_display("--version")
        self.assertRegex(done.stdout, r"\Aquintave \d+\.\d+(\.\d+)?\n\Z")
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        done = self.run_without_display("--help")
        self.assertRegex(done.stdout, r"\AUsage: quintave \[--resources DIR \| --user-resources\] \[REPORT\.rpx\]\n")
        self.assertEqual((done.returncode, done.stderr), (0, ""))

    def test_without_a_display_it_says_so(self):
        done = self.run_without_display()
        self.assertEqual((done.returncode, done.stdout, done.stderr),
                         (1, "", "quintave: there is no display to open a window on\n"))

    def test_what_is_not_understood_is_answered_with_the_usage(self):
        for arguments in (["--nonsense"], ["--resources"], ["one.rpx", "two.rpx"],
                          ["--user-resources", "--resources", "/tmp"]):
            with self.subTest(arguments):
                done = self.run_without_display(*arguments, QT_QPA_PLATFORM="offscreen")
                self.assertEqual((done.returncode, done.stdout), (2, ""))
                self.assertRegex(done.stderr, r"(?m)^Usage: quintave ")

    def test_the_resource_directory_may_stand_behind_an_equals_sign(self):
        with Desk(self.id(), resources=False, args=[f"--resources={self.new_resources()}"]) as desk:
            start_entry(desk)
            self.assertEqual(desk.row_count("Fields"), 2)

    def test_a_report_is_loaded_without_a_dialog(self):
        with self.desk() as desk:
            path = desk.cwd / "given.rpx"
            path.write_bytes(self.report('1,-1,"Site",""', '2,1,"Title","Given"'))
            desk.key("alt+F4")
            desk.wait_exit()
            for argument in ("given.rpx", str(path)):
                desk.launch(argument)
                start_entry(desk)
                self.assertEqual(value_of(desk, "Title"), "Given")
                self.assertTrue(self.caption(desk, "[Template: START.FTF] - RPX File(s): given; "))
                desk.key("ctrl+q")  # nothing was entered: no question
                self.assertEqual(desk.wait_exit(), 0)
            desk.launch("given.rpx")
            start_entry(desk)
            fill(desk, "Title", "!")
            desk.key("ctrl+s")  # to the file that was loaded, without a dialog
            desk.wait_for(lambda: b"Given!" in path.read_bytes(), "the saved report")
            self.assertEqual(desk.windows(), [f"given.rpx - {self.NAME} - Quintave"])

    def test_a_report_that_is_not_there_is_told(self):
        with self.desk(args=["lost.rpx"]) as desk:
            self.assert_message(
                desk, "ERROR LOADING lost.rpx",
                "Error:  53 - File not found\n\n\nQuintave Data Fields may have been corrupted!\n\n"
                "You might want to `RESET' and start over!", ["OK"], "red")
            desk.key("Enter")
            start_entry(desk)
            self.assertEqual(desk.row_count("Fields"), 2)


class StartUpFrame(StartTest):
    def texts(self, desk):
        return [node.name for node in desk.nodes(role="label")]

    def test_shows_the_date_and_leads_to_the_field_list(self):
        with self.desk() as desk:
            days = {time.strftime("%-d %b %Y"), time.strftime("%-d %b %Y", time.localtime(time.time() - 60))}
            texts = self.texts(desk)
            self.assertIn("Today's Date (as set on your computer):", texts)
            self.assertTrue([text for text in texts if text in {f" {day} " for day in days}], texts)
            self.assertIn("Note that Quintave automatically includes this date on all print outs.  If the date is "
                          "incorrect, please quit and correct the problem.", texts)
            self.assertEqual(desk.nodes("Fields"), [])
            desk.key("ctrl+s")  # no command works from here
            self.assertEqual(desk.windows(), ["Quintave"])
            desk.key("Enter")
            desk.wait_focus("Fields")
            self.assertEqual((desk.nodes("QUIT"), desk.selected("Fields")), ([], [0]))

    def test_quit_removes_the_work_files_and_ends(self):
        with self.desk() as desk:
            (desk.resources / "!quin!02.$$$").write_bytes(b"old")
            self.assertEqual(work_files(desk.resources), ["!quin!02.$$$", "LST00003.XXX"])
            desk.tab_to("QUIT")
            desk.key("space")
            self.assertEqual(desk.wait_exit(), 0)
            self.assert_nothing_left(desk)


class Environment(StartTest):
    def test_the_shipped_templates_all_load(self):
        names = sorted(path.name for path in (ROOT / "resources").glob("*.FTF"))
        self.assertGreater(len(names), 1)
        with Desk(self.id()) as desk:
            start_entry(desk)
            for name in names:
                with self.subTest(name):
                    desk.key("ctrl+f")
                    desk.choose_file(desk.resources / name)
                    desk.wait_for(lambda name=name: self.caption(desk, f"[Template: {name}] - RPX File(s): "), name)
                    self.assertGreater(desk.row_count("Fields"), 5)

    def test_a_message_stands_in_the_middle_of_the_window(self):
        report = self.new_folder() / "other.rpx"
        report.write_bytes(self.report('2,1,"Not a title of the template","x"'))
        with self.desk(args=[report]) as desk:
            desk.wait_message()
            (left, top, width, height), (x, y, box_width, box_height) = [node.extents for node in desk.app.children]
            self.assertLess(abs(x + box_width / 2 - left - width / 2), 20)
            self.assertLess(abs(y + box_height / 2 - top - height / 2), 40)  # the frames' titles count here

    def test_a_directory_of_any_name_can_be_worked_in(self):
        folder = self.new_folder() / "Daten für Ely (neu) €"
        self.new_resources().rename(folder)
        with Desk(self.id(), resources=False, args=["--resources", str(folder)]) as desk:
            start_entry(desk)
            fill(desk, "Title", "x")
            desk.key("ctrl+s")
            path = folder / "Bericht ä.rpx"
            save_as(desk, path)
            self.assertEqual(path.read_bytes(), self.report('1,-1,"Site",""', '2,1,"Title","x"'))


if __name__ == "__main__":
    unittest.main()
