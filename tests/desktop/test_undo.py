"""A way back by keys alone: what a key, a command or a merge has changed, undone and done again, and saved."""

import unittest

from case import DesktopTest, fill, open_box, open_report, reply, save_as, start_entry, value_of


class Undo(DesktopTest):
    NAME = "UNDO.FTF"
    TEMPLATE = (
        '1,-1,"","Site","",""',
        '2,40,"TEXT","Title","",""',
        '2,40,"TEXT","Author","",""',
        '2,20,"LIST","Kind","",""', '"Maps"', '"Numbers"', '"XXX-1XXX"',
        '2,2,"GROUP START","Samples","",""',
        '3,10,"TEXT","Depth","",""',
        '2,0,"GROUP END","","",""',
        '2,40,"TEXT","Remark","",""',
    )

    def wait_value(self, desk, title, value, fields="Fields"):
        desk.wait_for(lambda: value_of(desk, title, fields) == value, f"{title} to be {value!r}")

    def wait_note(self, desk, text):
        """The note in passing, as a screen reader finds it."""
        desk.wait_for(lambda: [node.name for node in desk.nodes(role="notification")] == [text], f"the note {text!r}")

    def save(self, desk, name):
        path = desk.cwd / name
        desk.key("ctrl+s")
        save_as(desk, path)
        return path

    def test_a_deleted_occurrence_comes_back_where_it_was(self):
        with self.desk() as desk:
            start_entry(desk)
            desk.go_to("Fields", "Samples")
            desk.key("Enter")
            desk.wait_focus("Group fields")
            for depth in ("1 m", "2 m", "3 m"):
                if depth != "1 m":
                    desk.key("ctrl+n")
                    self.wait_value(desk, "Depth", "", "Group fields")
                fill(desk, "Depth", depth, fields="Group fields")
            desk.key("ctrl+v")
            self.wait_value(desk, "Depth", "2 m", "Group fields")
            desk.key("ctrl+d")
            self.wait_value(desk, "Depth", "1 m", "Group fields")
            desk.key("ctrl+e")
            desk.wait_focus("Fields")
            desk.key("ctrl+z")
            desk.wait_focus("Group fields")
            self.wait_value(desk, "Depth", "2 m", "Group fields")
            self.wait_note(desk, "Undone: Delete")
            self.assertEqual(desk.text_of("Occurrence"), "2")
            saved = self.save(desk, "undone.rpx").read_text()
            self.assertEqual([line for line in saved.splitlines() if "Depth" in line],
                             ['3,1,"Depth","1 m"', '3,1,"Depth","2 m"', '3,1,"Depth","3 m"'])

    def test_a_merge_that_was_undone_saves_the_bytes_of_before(self):
        with self.desk() as desk:
            start_entry(desk)
            other = desk.cwd / "other.rpx"
            other.write_bytes(self.report('1,-1,"Site",""', '2,1,"Title","Second"', '2,1,"Author","Ben"', '2,1,"Remark","Other"'))
            fill(desk, "Title", "First")
            fill(desk, "Author", "Ann")
            path = self.save(desk, "first.rpx")
            before = path.read_bytes()
            open_report(desk, other)
            reply(desk, "Yes")
            self.wait_value(desk, "Title", "Second")
            self.wait_value(desk, "Remark", "Other")
            desk.key("ctrl+z")
            self.wait_value(desk, "Title", "First")
            self.wait_value(desk, "Remark", "")
            path.unlink()
            desk.key("ctrl+s")  # under the name that it has again
            desk.wait_for(path.exists, "the report")
            self.assertEqual(path.read_bytes(), before)
            desk.key("ctrl+q")  # saved: nothing is asked
            desk.wait_exit()

    def test_a_reset_is_undone_and_done_again(self):
        with self.desk() as desk:
            start_entry(desk)
            fill(desk, "Title", "First")
            fill(desk, "Remark", "Last")
            desk.key("ctrl+r")
            reply(desk, "No")
            self.wait_value(desk, "Title", "")
            desk.key("ctrl+z")
            self.wait_value(desk, "Title", "First")
            self.wait_value(desk, "Remark", "Last")
            self.wait_note(desk, "Undone: Reset/Clear")
            desk.key("ctrl+y")
            self.wait_value(desk, "Title", "")
            self.wait_value(desk, "Remark", "")

    def test_three_fields_typed_over_come_back_one_by_one(self):
        with self.desk() as desk:
            start_entry(desk)
            titles = ("Title", "Author", "Remark")
            for title in titles:
                fill(desk, title, title.lower())
            for title in titles:
                fill(desk, title, "oops")
            for title in reversed(titles):
                self.wait_value(desk, title, title.lower() + "oops")
                desk.key("ctrl+z")
                self.wait_value(desk, title, title.lower())
                desk.wait_for(lambda: desk.row("Fields", desk.selected("Fields")[0])[1:27].rstrip() == title, title)

    def test_in_a_box_its_own_edit_comes_first(self):
        with self.desk() as desk:
            start_entry(desk)
            fill(desk, "Title", "First")
            open_box(desk, "Author", "A")
            desk.type("nn")
            desk.key("ctrl+z")
            desk.wait_for(lambda: desk.text_of("Value") == "A", "the text without what was typed in the box")
            self.assertEqual(value_of(desk, "Title"), "First")
            desk.key("ctrl+z")  # the character that opened the box
            desk.wait_focus("Fields")
            self.wait_value(desk, "Author", "")
            self.assertEqual(value_of(desk, "Title"), "First")
            desk.key("ctrl+z")
            self.wait_value(desk, "Title", "")


if __name__ == "__main__":
    unittest.main()
