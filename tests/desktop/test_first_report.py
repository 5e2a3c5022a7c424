"""A first report by keys alone: from the start-up frame to the bytes of the saved file."""

import unittest

from case import SAVE_TITLE, DesktopTest, fill, open_box, reply, save_as, start_entry, value_of

BAR = "'|' is a reserved character in Quintave and is not allowed as input. Please choose another character."
QUOTE = ("the 'double quote' or 'seconds' symbol is a reserved character in Quintave and is not allowed as input. "
         "Please choose another character or spell out the appropriate word.")


class FirstReport(DesktopTest):
    NAME = "FIRST.FTF"
    TEMPLATE = (
        '1,-1,"","Citation","",""',
        '2,60,"TEXT","Title","The full title.",""',
        '2,40,"TEXT","Creator","",""',
        '1,-1,"","Content","",""',
        '2,999,"MEMO","Abstract","",""',
        '2,20,"LIST","Kind","",""', '"<RESET/CLEAR FIELD ENTRY>"', '"Maps"', '"Numbers"', '"Pictures"', '"XXX-1XXX"',
        '2,20,"LIST","Language","",""', '"English"', '"French"', '"OTHER..."', '"XXX-1XXX"',
        '2,40,"TEXT","Remark","",""',
    )

    def test_is_written_by_keys_from_the_start_up_frame_to_the_saved_bytes(self):
        with self.desk() as desk:
            start_entry(desk)
            fill(desk, "Title", "Rivers of Ely é")
            self.assertEqual(desk.selected("Fields"), [1])
            fill(desk, "Abstract", "Two loggers.\n\nOne broke.", "ctrl+Enter")
            self.choose_by_letter(desk)
            self.choose_another_language(desk)
            self.clear_a_row(desk)
            self.save(desk, desk.cwd / "first.rpx")
            desk.key("ctrl+q")
            self.assertEqual(desk.wait_exit(), 0)
            self.assert_no_work_files(desk)
            self.assertEqual((desk.cwd / "first.rpx").read_bytes(), self.report(
                '1,-1,"Citation",""', '2,1,"Title","Rivers of Ely é"',
                '1,-1,"Content",""', '2,3,"Abstract","Two loggers."', '""', '"One broke."',
                '2,1,"Kind","Numbers"', '2,1,"Language","Welsh"'))

    def choose_by_letter(self, desk):
        desk.go_to("Fields", "Kind")
        desk.type("n")  # the one choice that begins so is taken at once
        desk.wait_for(lambda: value_of(desk, "Kind") == "Numbers", "the choice in its row")
        desk.wait_focus("Fields")

    def choose_another_language(self, desk):
        desk.go_to("Fields", "Language")
        desk.key("Enter")
        desk.wait_focus("Choices")
        desk.key("Down", "Down", "Down", "Enter")
        desk.wait_focus("Other value")
        desk.type("Welsh\n")
        desk.wait_focus("Fields")
        self.assertEqual(value_of(desk, "Language"), "Welsh")

    def clear_a_row(self, desk):
        fill(desk, "Remark", "gone soon")
        for button, left in (("No", "gone soon"), ("Yes", "")):
            desk.go_to("Fields", "Remark")
            desk.key("Delete")
            self.assert_message(desk, "DELETING FIELD DATA",
                                "Do you want to remove all entered data associated with this field?",
                                ["Yes", "No"], "blue")
            reply(desk, button)
            self.assertEqual(value_of(desk, "Remark"), left)

    def save(self, desk, path):
        desk.key("ctrl+s")
        desk.choose_file(path.with_suffix(".txt"), SAVE_TITLE)
        self.assert_message(desk, "Quintave", "You must select a `.RPX' file!\n\nPlease Try Again.", ["OK"])
        desk.key("Enter")
        save_as(desk, path)  # asked again
        self.assertFalse(path.with_suffix(".txt").exists())
        desk.wait_focus("Fields")
        self.assertEqual(len(desk.nodes("[Template: FIRST.FTF] - RPX File(s): first; ", "panel")), 1)

    def test_a_reserved_character_is_refused_in_the_box_and_on_the_row(self):
        with self.desk() as desk:
            start_entry(desk)
            open_box(desk, "Title", "a")
            for key, text in (("|", BAR), ('"', QUOTE)):
                desk.type("b" + key)
                self.assert_message(desk, "Quintave", text, ["OK"])
                desk.key("Enter")
                desk.wait_focus("Value")
            self.assertEqual(desk.text_of("Value"), "abb")
            desk.key("Enter")
            desk.wait_focus("Fields")
            self.assertEqual(desk.rows("Fields", 2), [" Title                     | abb", " Creator                   | "])
            desk.type("|")
            self.assert_message(desk, "Quintave", BAR, ["OK"])
            desk.key("Enter")
            desk.wait_focus("Value")  # the row's box opens all the same
            self.assertEqual(desk.text_of("Value"), "")

    def test_delete_on_a_row_without_a_value_asks_nothing(self):
        with self.desk() as desk:
            start_entry(desk)
            desk.key("Delete")
            self.assertIsNone(desk.message())
            self.assert_main_window_alone(desk)


if __name__ == "__main__":
    unittest.main()
