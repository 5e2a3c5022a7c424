"""The ways out of a session, each question answered each way; and what an end from outside leaves behind."""

import signal
import unittest

from case import (OPEN_TITLE, SAVE_TITLE, TEMPLATE_TITLE, DesktopTest, cancel_dialog, fill, lines, open_box, reply,
                  save_as, start_entry, value_of, work_files)

RESET = ("CLEAR ALL FIELDS (Reset)", "Do you want to SAVE these field settings before you RESET?")
QUIT = ("Quit Quintave", "Do you want to SAVE this field information before you QUIT?")
CLOSE = ("Done with SESSION", "Do you want to SAVE THE CHANGES you made?")
ANSWERS = ["Yes", "No", "Cancel"]


class SessionTest(DesktopTest):
    NAME = "SESSION.FTF"
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
        """A title, and two occurrences of the group; the second is open."""
        fill(desk, "Title", "Fens")
        self.enter_group(desk)
        fill(desk, "Depth", "1 m", fields="Group fields")
        desk.key("ctrl+n")
        desk.wait_for(lambda: value_of(desk, "Depth", "Group fields") == "", "a second occurrence")
        fill(desk, "Depth", "2 m", fields="Group fields")

    def enter_group(self, desk):
        desk.go_to("Fields", "Samples")
        desk.key("Enter")
        desk.wait_focus("Group fields")

    def assert_entries(self, desk):
        """Everything is there that enter_something() made; the group may be open or closed."""
        self.assertEqual(value_of(desk, "Title"), "Fens")
        self.enter_group(desk)
        self.assertEqual(value_of(desk, "Depth", "Group fields"), "2 m")
        desk.key("ctrl+t")
        desk.wait_for(lambda: value_of(desk, "Depth", "Group fields") == "1 m", "the first occurrence")
        desk.key("ctrl+b")
        desk.wait_for(lambda: value_of(desk, "Depth", "Group fields") == "2 m", "the second occurrence")

    def saved(self):
        return self.report('1,-1,"Site",""', '2,1,"Title","Fens"',
                           '2,-9,"Samples","REPEATING GROUP, Occurrence #1"', '3,1,"Depth","1 m"',
                           '2,-9,"Samples","REPEATING GROUP, Occurrence #2"', '3,1,"Depth","2 m"',
                           '2,-99,"END REPEATING GROUP",""')

    def assert_ended(self, desk, status=0):
        self.assertEqual(desk.wait_exit(), status)
        self.assert_nothing_left(desk)

    def assert_ended_keeping(self, desk, status=0):
        """An end that asked nothing while there were unsaved entries: the next start offers them."""
        self.assertEqual(desk.wait_exit(), status)
        self.assert_no_work_files(desk)
        desk.launch()
        desk.wait_message("UNSAVED ENTRIES")


class Reset(SessionTest):
    def ask(self, desk):
        desk.key("ctrl+r")
        self.assert_message(desk, *RESET, ANSWERS, default="No")

    def assert_cleared(self, desk):
        desk.wait_for(lambda: desk.nodes("Fields"), "the end of the group")
        self.assertEqual([value_of(desk, title) for title in ("Title", "Kind", "Samples")],
                         ["", "", "-- REPEATABLE GROUP --"])
        self.assertEqual(desk.selected("Fields"), [0])
        self.assertEqual(len(desk.nodes("[Template: SESSION.FTF] - RPX File(s): ", "panel")), 1)
        self.assertEqual(len(desk.nodes("Add/Open File", "button")), 1)
        self.enter_group(desk)
        self.assertEqual(desk.node(role="combo box").child_count, 1)
        self.assertEqual(value_of(desk, "Depth", "Group fields"), "")
        desk.key("ctrl+e")
        desk.wait_focus("Fields")

    def test_cancel_leaves_everything_as_it_was_the_open_group_included(self):
        with self.desk() as desk:
            start_entry(desk)
            self.enter_something(desk)
            self.ask(desk)
            reply(desk, "Cancel")
            desk.wait_focus("Group fields")
            self.assertEqual(value_of(desk, "Depth", "Group fields"), "2 m")
            desk.key("ctrl+e")
            desk.wait_focus("Fields")
            self.assert_entries(desk)

    def test_yes_with_the_save_cancelled_clears_nothing(self):
        with self.desk() as desk:
            start_entry(desk)
            self.enter_something(desk)
            self.ask(desk)
            reply(desk, "Yes")
            cancel_dialog(desk, SAVE_TITLE)
            desk.wait_focus("Fields")
            self.assert_entries(desk)

    def test_yes_saves_and_clears(self):
        with self.desk() as desk:
            start_entry(desk)
            self.enter_something(desk)
            self.ask(desk)
            reply(desk, "Yes")
            path = desk.cwd / "before.rpx"
            save_as(desk, path)
            self.assertEqual(path.read_bytes(), self.saved())
            self.assert_cleared(desk)
            desk.key("ctrl+s")  # the cleared screen is not that report any more
            cancel_dialog(desk, SAVE_TITLE)

    def test_no_clears(self):
        with self.desk() as desk:
            start_entry(desk)
            self.enter_something(desk)
            self.ask(desk)
            reply(desk, "No")
            self.assert_cleared(desk)

    def test_without_unsaved_entries_asks_nothing(self):
        with self.desk() as desk:
            start_entry(desk)
            desk.key("ctrl+r")
            self.assertIsNone(desk.message())
            self.assert_cleared(desk)


class Template(SessionTest):
    OTHER = ('2,40,"TEXT","Only field","",""',)

    def ask(self, desk):
        desk.key("ctrl+f")
        self.assert_message(desk, *RESET, ANSWERS, default="No")

    def choose_other(self, desk):
        path = desk.cwd / "other.ftf"
        path.write_bytes(lines('"QUINTAVE FIELDS TEMPLATE FILE","QuintaveV2","","","",""', *self.OTHER))
        desk.choose_file(path, TEMPLATE_TITLE)
        desk.wait_for(lambda: desk.rows("Fields") == [" Only field                | "], "the other template")
        self.assertEqual(len(desk.nodes("[Template: other.ftf] - RPX File(s): ", "panel")), 1)
        self.assertEqual(work_files(desk.resources), [])  # it has no lists and no groups
        desk.wait_focus("Fields")

    def test_cancel_leaves_everything_as_it_was_the_open_group_included(self):
        with self.desk() as desk:
            start_entry(desk)
            self.enter_something(desk)
            self.ask(desk)
            reply(desk, "Cancel")
            desk.wait_focus("Group fields")
            self.assert_main_window_alone(desk)  # no dialog for a template
            desk.key("ctrl+e")
            desk.wait_focus("Fields")
            self.assert_entries(desk)

    def test_yes_with_the_save_cancelled_loads_nothing(self):
        with self.desk() as desk:
            start_entry(desk)
            self.enter_something(desk)
            self.ask(desk)
            reply(desk, "Yes")
            cancel_dialog(desk, SAVE_TITLE)
            desk.wait_focus("Fields")
            self.assert_main_window_alone(desk)
            self.assert_entries(desk)

    def test_yes_saves_and_loads_the_other_template(self):
        with self.desk() as desk:
            start_entry(desk)
            self.enter_something(desk)
            self.ask(desk)
            reply(desk, "Yes")
            path = desk.cwd / "before.rpx"
            save_as(desk, path)
            self.choose_other(desk)
            self.assertEqual(path.read_bytes(), self.saved())

    def test_no_loads_the_other_template(self):
        with self.desk() as desk:
            start_entry(desk)
            self.enter_something(desk)
            self.ask(desk)
            reply(desk, "No")
            self.choose_other(desk)

    def test_a_file_that_is_no_template_is_refused_and_the_old_one_stays(self):
        with self.desk() as desk:
            start_entry(desk)
            path = desk.cwd / "wrong.ftf"
            path.write_bytes(b"no template\r\n")
            desk.key("ctrl+f")
            desk.choose_file(path, TEMPLATE_TITLE)
            self.assert_message(desk, "Quintave",
                                "This is not a valid Fields Template File!\n\nPlease Try Again.", ["OK"])
            desk.key("Enter")
            desk.wait_focus("Fields")
            fill(desk, "Title", "Fens")
            self.assertEqual(work_files(desk.resources), self.WORK_FILES)


class WayOut:
    """What Quit and closing the window have in common; press() starts either."""

    def ask(self, desk):
        self.press(desk)
        self.assert_message(desk, *self.QUESTION, ANSWERS)

    def test_cancel_and_a_cancelled_save_leave_everything_as_it_was(self):
        with self.desk() as desk:
            start_entry(desk)
            self.enter_something(desk)
            self.ask(desk)
            reply(desk, "Cancel")
            self.assert_after_cancel(desk)
            self.assert_entries(desk)
            self.assertEqual(work_files(desk.resources), self.WORK_FILES)
            self.ask(desk)
            reply(desk, "Yes")
            cancel_dialog(desk, SAVE_TITLE)
            desk.wait_focus("Fields")
            self.assert_entries(desk)

    def test_yes_saves_and_ends(self):
        with self.desk() as desk:
            start_entry(desk)
            self.enter_something(desk)
            self.ask(desk)
            reply(desk, "Yes")
            path = desk.cwd / "last.rpx"
            desk.choose_file(path, SAVE_TITLE)
            self.assert_ended(desk)
            self.assertEqual(path.read_bytes(), self.saved())

    def test_no_ends_and_writes_nothing(self):
        with self.desk() as desk:
            start_entry(desk)
            self.enter_something(desk)
            self.ask(desk)
            reply(desk, "No")
            self.assert_ended(desk)
            self.assertEqual(list(desk.cwd.iterdir()), [])

    def test_without_unsaved_entries_ends_at_once(self):
        with self.desk() as desk:
            start_entry(desk)
            self.press(desk)
            self.assert_ended(desk)

    def test_an_open_edit_counts_as_an_unsaved_entry(self):
        with self.desk() as desk:
            start_entry(desk)
            open_box(desk, "Title", "F")
            self.ask(desk)
            reply(desk, "Cancel")
            self.assertEqual(value_of(desk, "Title"), "F")


class Quit(WayOut, SessionTest):
    QUESTION = QUIT

    def press(self, desk):
        desk.key("ctrl+q")

    def assert_after_cancel(self, desk):
        desk.wait_focus("Fields")  # the group was left before the question


class Close(WayOut, SessionTest):
    QUESTION = CLOSE

    def press(self, desk):
        desk.key("alt+F4")

    def assert_after_cancel(self, desk):
        desk.wait_focus("Group fields")
        self.assertEqual(value_of(desk, "Depth", "Group fields"), "2 m")
        desk.key("ctrl+e")
        desk.wait_focus("Fields")

    def test_from_the_start_up_frame_asks_nothing(self):
        with self.desk() as desk:
            desk.wait_focus("Use Quintave")
            self.press(desk)
            self.assert_ended(desk)

    def test_from_the_print_panel_asks_nothing(self):
        with self.desk() as desk:
            start_entry(desk)
            fill(desk, "Title", "Fens")
            desk.key("ctrl+p")
            reply(desk, "Yes", "PRINT CURRENT SCREEN FIELDS?")
            desk.wait_focus("NO Section/Field Indent")
            self.press(desk)
            self.assert_ended_keeping(desk)
            self.assertEqual(list(desk.cwd.iterdir()), [])


class Traces(SessionTest):
    def test_a_whole_session_leaves_only_the_users_file(self):
        with self.desk() as desk:
            before = self.files(desk)
            start_entry(desk)
            self.enter_something(desk)
            desk.key("ctrl+s")
            save_as(desk, desk.cwd / "kept.rpx")
            desk.key("ctrl+a")
            cancel_dialog(desk, OPEN_TITLE)
            desk.key("ctrl+q")
            self.assertEqual(desk.wait_exit(), 0)
            self.assertEqual(self.files(desk) - before, {desk.cwd / "kept.rpx"})
            self.assertEqual(desk.output(), "")

    def files(self, desk):
        """All files of the home, the working directory and the resource directory, but those of other programs."""
        found = {path for folder in (desk.display.folder / "home", desk.cwd, desk.resources)
                 for path in folder.rglob("*") if path.is_file()}
        return found - {desk.resources / name for name in self.WORK_FILES}


class Signal(SessionTest):
    def ask_for_end(self, desk, number):
        desk.process.send_signal(number)

    def test_ends_without_a_question_and_leaves_no_work_file(self):
        for number in (signal.SIGTERM, signal.SIGHUP, signal.SIGINT):
            with self.subTest(number.name), self.desk() as desk:
                path = desk.cwd / "kept.rpx"
                start_entry(desk)
                fill(desk, "Title", "Saved")
                desk.key("ctrl+s")
                save_as(desk, path)
                kept = path.read_bytes()
                self.enter_something(desk)
                self.ask_for_end(desk, number)
                self.assert_ended_keeping(desk, 128 + number)
                self.assertEqual([entry.name for entry in desk.cwd.iterdir()], ["kept.rpx"])
                self.assertEqual(path.read_bytes(), kept)
                reply(desk, "Yes")
                start_entry(desk)
                self.assertEqual(value_of(desk, "Title"), "SavedFens")

    def test_without_unsaved_entries_leaves_nothing(self):
        with self.desk() as desk:
            start_entry(desk)
            self.enter_something(desk)
            desk.key("ctrl+s")
            save_as(desk, desk.cwd / "kept.rpx")
            self.ask_for_end(desk, signal.SIGTERM)
            self.assert_ended(desk, 128 + signal.SIGTERM)
            self.assertFalse((desk.resources / "quintave.rec").exists())

    def test_ends_the_program_in_the_middle_of_a_question(self):
        with self.desk() as desk:
            start_entry(desk)
            self.enter_something(desk)
            desk.key("ctrl+q")
            desk.wait_message(QUIT[0])
            self.ask_for_end(desk, signal.SIGTERM)
            self.assert_ended_keeping(desk, 128 + signal.SIGTERM)

    def test_ends_the_program_in_the_middle_of_a_dialog(self):
        with self.desk() as desk:
            start_entry(desk)
            self.enter_something(desk)
            desk.key("ctrl+a")  # the temporary report lies there while the dialog is open
            desk.wait_dialog()
            self.assertIn("!quin!02.$$$", work_files(desk.resources))
            self.ask_for_end(desk, signal.SIGTERM)
            self.assert_ended_keeping(desk, 128 + signal.SIGTERM)


class Kill(SessionTest):
    def test_the_next_start_in_the_same_directory_works(self):
        with self.desk() as desk:
            start_entry(desk)
            self.enter_something(desk)
            desk.key("ctrl+a")
            desk.wait_dialog()
            desk.process.kill()
            self.assertEqual(desk.wait_exit(), -signal.SIGKILL)
            self.assertEqual(work_files(desk.resources), ["!quin!02.$$$", *self.WORK_FILES])
            desk.launch()
            reply(desk, "No", "UNSAVED ENTRIES")
            self.assertEqual(work_files(desk.resources), self.WORK_FILES)
            start_entry(desk)
            self.assertEqual(value_of(desk, "Title"), "")
            self.enter_something(desk)
            desk.key("ctrl+e")
            desk.wait_focus("Fields")
            self.assert_entries(desk)


if __name__ == "__main__":
    unittest.main()
