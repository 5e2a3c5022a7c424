"""Entries that were unsaved when the program was killed: kept while work goes on, offered at the next start."""

import signal
import unittest

from case import DesktopTest, fill, open_box, reply, save_as, start_entry, value_of, work_files

TITLE = "UNSAVED ENTRIES"
KEPT = "quintave.rec"
QUESTION = ("The entries of your last session were not SAVED when Quintave ended.\n\n{}\n"
            "Would you like to bring them BACK?\n\n"
            "        YES - Bring all entries back, still to be saved.\n"
            "        NO - Remove them for good.")
OF_TEMPLATE = "        Fields Template File: RECOVER.FTF\n"
REFUSAL = "{}\n\nYour unsaved entries are NOT being loaded into Quintave!\n\nThey are kept in the file {}."
WAY_BACK = (" To bring them back, correct the problem, end Quintave, give this file the name quintave.rec again and start "
            "Quintave.")


class Recovery(DesktopTest):
    NAME = "RECOVER.FTF"
    TEMPLATE = (
        '1,-1,"","Site","",""',
        '2,40,"TEXT","Title","",""',
        '2,20,"LIST","Kind","",""', '"Maps"', '"Numbers"', '"XXX-1XXX"',
        '2,2,"GROUP START","Samples","",""',
        '3,10,"TEXT","Depth","",""',
        '2,0,"GROUP END","","",""',
    )
    WORK_FILES = ["GRP00004.XXX", "LST00003.XXX"]

    def enter_something(self, desk):
        """Two instances of a title, a choice, two occurrences of the group; the edit of a third one stays open."""
        fill(desk, "Title", "Fens")
        open_box(desk, "Title", " ")
        desk.press("Add instance")
        desk.wait_focus("Value")
        desk.type("Meres")
        desk.key("Enter")
        desk.wait_focus("Fields")
        desk.go_to("Fields", "Kind")
        desk.type("N")
        desk.wait_for(lambda: value_of(desk, "Kind") == "Numbers", "the choice")
        desk.go_to("Fields", "Samples")
        desk.key("Enter")
        desk.wait_focus("Group fields")
        for depth in ("1 m", "2 m"):
            fill(desk, "Depth", depth, fields="Group fields")
            desk.key("ctrl+n")
            desk.wait_for(lambda: value_of(desk, "Depth", "Group fields") == "", "another occurrence")
        open_box(desk, "Depth", "3", fields="Group fields")
        desk.type(" m")

    def wait_until_kept(self, desk, text):
        kept = desk.resources / KEPT
        desk.wait_for(lambda: kept.exists() and text in kept.read_bytes(), f"{text} in {kept}", 20)

    def kill(self, desk):
        desk.process.kill()
        self.assertEqual(desk.wait_exit(), -signal.SIGKILL)

    def assert_question(self, desk, lines=OF_TEMPLATE):
        self.assert_message(desk, TITLE, QUESTION.format(lines), ["Yes", "No"], icon="blue")

    def assert_entries(self, desk):
        self.assertEqual(value_of(desk, "Title"), "Fens|Meres")
        self.assertEqual(value_of(desk, "Kind"), "Numbers")
        desk.go_to("Fields", "Samples")
        desk.key("Enter")
        desk.wait_focus("Group fields")
        self.assertEqual(value_of(desk, "Depth", "Group fields"), "3 m")
        for depth in ("2 m", "1 m"):
            desk.key("ctrl+v")
            desk.wait_for(lambda: value_of(desk, "Depth", "Group fields") == depth, f"the occurrence of {depth}")

    def test_yes_brings_everything_back_after_the_program_was_killed(self):
        with self.desk() as desk:
            start_entry(desk)
            self.enter_something(desk)
            self.wait_until_kept(desk, b"3 m")
            desk.wait_focus("Value")
            self.assertEqual(desk.text_of("Value"), "3 m")
            self.assertEqual((desk.resources / KEPT).stat().st_mode & 0o777, 0o600)
            self.kill(desk)
            (desk.resources / "LEFT.XXX").touch()
            desk.launch()
            self.assert_question(desk)
            self.assertEqual(work_files(desk.resources), ["GRP00004.XXX", "LEFT.XXX", "LST00003.XXX"])
            reply(desk, "Yes")
            self.assertEqual(work_files(desk.resources), self.WORK_FILES)
            start_entry(desk)
            self.assert_entries(desk)
            desk.key("ctrl+s")
            path = desk.cwd / "saved.rpx"
            save_as(desk, path)
            self.assertEqual(path.read_bytes(), self.report(
                '1,-1,"Site",""', '2,1,"Title","Fens"', '2,1,"Title","Meres"', '2,1,"Kind","Numbers"',
                '2,-9,"Samples","REPEATING GROUP, Occurrence #1"', '3,1,"Depth","1 m"',
                '2,-9,"Samples","REPEATING GROUP, Occurrence #2"', '3,1,"Depth","2 m"',
                '2,-9,"Samples","REPEATING GROUP, Occurrence #3"', '3,1,"Depth","3 m"',
                '2,-99,"END REPEATING GROUP",""'))
            desk.wait_for(lambda: not (desk.resources / KEPT).exists(), "the end of what was kept")
            self.kill(desk)
            desk.launch()
            self.assertIsNone(desk.message())

    def test_no_removes_it_and_starts_clean(self):
        with self.desk() as desk:
            start_entry(desk)
            fill(desk, "Title", "Fens")
            self.wait_until_kept(desk, b"Fens")
            self.kill(desk)
            desk.launch()
            self.assert_question(desk)
            reply(desk, "No")
            self.assertFalse((desk.resources / KEPT).exists())
            start_entry(desk)
            self.assertEqual(value_of(desk, "Title"), "")
            desk.key("ctrl+q")
            self.assertEqual(desk.wait_exit(), 0)

    def test_a_signal_that_ends_the_question_leaves_it_for_the_next_start(self):
        with self.desk() as desk:
            start_entry(desk)
            fill(desk, "Title", "Fens")
            self.wait_until_kept(desk, b"Fens")
            self.kill(desk)
            kept = (desk.resources / KEPT).read_bytes()
            desk.launch()
            self.assert_question(desk)
            desk.process.terminate()
            self.assertEqual(desk.wait_exit(), 128 + signal.SIGTERM)
            self.assertEqual((desk.resources / KEPT).read_bytes(), kept)
            desk.launch()
            self.assert_question(desk)
            desk.key("Enter")  # Yes is the default
            start_entry(desk)
            self.assertEqual(value_of(desk, "Title"), "Fens")

    def test_the_question_names_the_report_and_the_one_that_stays_unopened(self):
        with self.desk() as desk:
            start_entry(desk)
            fill(desk, "Title", "Fens")
            desk.key("ctrl+s")
            save_as(desk, desk.cwd / "fens.rpx")
            fill(desk, "Title", "more")
            self.wait_until_kept(desk, b"Fensmore")
            self.kill(desk)
            desk.launch("fens.rpx")
            self.assert_message(
                desk, TITLE, QUESTION.format(OF_TEMPLATE + "        RPX File: fens.rpx\n")
                + "\n\nNote that after a YES answer the file fens.rpx is not opened!", ["Yes", "No"], icon="blue")
            reply(desk, "Yes")
            start_entry(desk)
            self.assertEqual(value_of(desk, "Title"), "Fensmore")

    def test_a_damaged_file_is_refused_and_kept_aside(self):
        resources = self.new_resources()
        (resources / KEPT).write_bytes(b"Quintave 2 unsaved entries\n")
        with self.desk(resources=resources) as desk:
            kept = desk.resources / "quintave-kept1.rec"
            self.assert_message(desk, TITLE, REFUSAL.format(
                "The file with the unsaved entries of your last session is damaged!", kept), ["OK"], icon="red")
            desk.key("Enter")
            start_entry(desk)
            self.assertEqual(value_of(desk, "Title"), "")
            self.assertEqual(kept.read_bytes(), b"Quintave 2 unsaved entries\n")

    def test_a_template_that_has_changed_is_told(self):
        with self.desk() as desk:
            start_entry(desk)
            fill(desk, "Title", "Fens")
            self.wait_until_kept(desk, b"Fens")
            self.kill(desk)
            template = desk.resources / self.NAME
            template.write_bytes(template.read_bytes().replace(b'40,"TEXT","Title"', b'40,"TEXT","Name"'))
            desk.launch()
            reply(desk, "Yes", TITLE)
            desk.wait_for(lambda: "OK" in (desk.message() or ("", "", []))[2], "the second message")
            self.assert_message(desk, TITLE, REFUSAL.format(
                "The Fields Template File RECOVER.FTF of the unsaved entries of your last session has changed since "
                "then!", desk.resources / "quintave-kept1.rec") + WAY_BACK, ["OK"], icon="red")
            desk.key("Enter")
            start_entry(desk)
            self.assertEqual(value_of(desk, "Name"), "")


if __name__ == "__main__":
    unittest.main()
