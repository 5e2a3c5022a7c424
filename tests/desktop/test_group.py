"""A repeatable group by keys alone: occurrences filled, inserted, deleted, jumped to, saved from inside, found again."""

import unittest

from case import DesktopTest, fill, open_box, save_as, start_entry, value_of


class Group(DesktopTest):
    NAME = "GROUP.FTF"
    TEMPLATE = (
        '1,-1,"","Site","",""',
        '2,40,"TEXT","Title","",""',
        '2,2,"GROUP START","Samples","",""',
        '3,10,"TEXT","Depth","",""',
        '3,60,"MEMO","Notes","",""',
        '2,0,"GROUP END","","",""',
        '2,40,"TEXT","Remark","",""',
    )

    def enter_group(self, desk):
        desk.go_to("Fields", "Samples")
        desk.key("Enter")
        desk.wait_focus("Group fields")

    def fill_occurrence(self, desk, depth, notes):
        fill(desk, "Depth", depth, fields="Group fields")
        fill(desk, "Notes", notes, "ctrl+Enter", "Group fields")

    def fill_three(self, desk):
        """Occurrences "1 m", "2 m" and "3 m", each with a note of two lines; the third is shown."""
        self.enter_group(desk)
        for number in (1, 2, 3):
            if number > 1:
                desk.key("ctrl+n")
                self.assert_shown(desk, str(number), "")
            self.fill_occurrence(desk, f"{number} m", f"layer {number}\nwet")

    def assert_shown(self, desk, number, depth):
        desk.wait_for(lambda: occurrence(desk) == number, f"occurrence {number}")
        self.assertEqual(value_of(desk, "Depth", "Group fields"), depth)

    def occurrence_records(self, number, depth, *notes):
        first, *more = notes
        return [f'2,-9,"Samples","REPEATING GROUP, Occurrence #{number}"', f'3,1,"Depth","{depth}"',
                f'3,{len(notes)},"Notes","{first}"', *[f'"{line}"' for line in more]]

    def samples(self, *occurrences):
        records = [record for k, texts in enumerate(occurrences)
                   for record in self.occurrence_records(k + 1, *texts)]
        return self.report('1,-1,"Site",""', *records, '2,-99,"END REPEATING GROUP",""')

    def test_inserted_deleted_and_jumped_to_then_saved_from_inside(self):
        with self.desk() as desk:
            start_entry(desk)
            self.fill_three(desk)
            desk.key("ctrl+v")
            self.assert_shown(desk, "2", "2 m")
            desk.key("ctrl+i")
            self.assert_shown(desk, "2", "")
            self.fill_occurrence(desk, "1.5 m", "between\ndry")
            self.jump(desk, "3", "2 m")
            desk.key("ctrl+d")
            self.assert_shown(desk, "2", "1.5 m")
            self.jump(desk, "3", "3 m")
            path = desk.cwd / "samples.rpx"
            self.save_with_an_open_box(desk, path)
            self.assertEqual(path.read_bytes(), self.samples(
                ("1 m", "layer 1", "wet"), ("1.5 m", "between", "dry"), ("3 m deep", "layer 3", "wet")))

    def jump(self, desk, number, depth):
        desk.key("ctrl+g")
        desk.wait_for(lambda: desk.focused().role == "combo box", "the keys for the occurrence's number")
        desk.type(number)
        self.assert_shown(desk, number, depth)
        desk.key("Enter")
        desk.wait_focus("Group fields")

    def save_with_an_open_box(self, desk, path):
        """What was typed last belongs to the report although nothing has ended the edit."""
        open_box(desk, "Depth", " ", "Group fields")
        desk.type("deep")
        desk.key("ctrl+s")
        save_as(desk, path)
        desk.wait_focus("Fields")
        self.assertEqual(desk.nodes("Group fields"), [])

    def test_leaving_and_coming_back_shows_the_same_occurrence(self):
        with self.desk() as desk:
            start_entry(desk)
            self.fill_three(desk)
            desk.key("ctrl+v")
            self.assert_shown(desk, "2", "2 m")
            desk.key("ctrl+e")
            desk.wait_focus("Fields")
            self.assertEqual(desk.selected("Fields"), [2])  # the row after the group
            self.enter_group(desk)
            self.assert_shown(desk, "2", "2 m")
            self.assertEqual(value_of(desk, "Notes", "Group fields"), "layer 2 wet")
            self.assertEqual(len(desk.nodes("REPEATED GROUP: Samples", "panel")), 1)

    def test_top_and_bottom_go_to_the_ends_and_before_the_first_is_nothing(self):
        with self.desk() as desk:
            start_entry(desk)
            self.fill_three(desk)
            for key, number in (("ctrl+t", "1"), ("ctrl+v", "1"), ("ctrl+b", "3")):
                desk.key(key)
                self.assert_shown(desk, number, f"{number} m")

    def test_deleting_the_only_occurrence_empties_it(self):
        with self.desk() as desk:
            start_entry(desk)
            self.enter_group(desk)
            self.fill_occurrence(desk, "1 m", "wet")
            desk.key("ctrl+d")
            self.assert_shown(desk, "1", "")
            self.assertEqual(value_of(desk, "Notes", "Group fields"), "")
            desk.key("ctrl+s")
            path = desk.cwd / "empty.rpx"
            save_as(desk, path)
            self.assertEqual(path.read_bytes(), self.report(
                '1,-1,"Site",""', '2,-9,"Samples","REPEATING GROUP, Occurrence #1"',
                '2,-99,"END REPEATING GROUP",""'))

    def test_delete_on_the_group_row_refuses_and_keeps_the_data(self):
        with self.desk() as desk:
            start_entry(desk)
            self.enter_group(desk)
            self.fill_occurrence(desk, "1 m", "wet")
            desk.key("ctrl+e")
            desk.go_to("Fields", "Samples")
            desk.key("Delete")
            self.assert_message(desk, "DELETING FIELD DATA",
                                "You can not remove all entered data associated with this Repeating Group from here! "
                                "Go into the group itself and remove entered data from there!", ["OK"], "blue")
            desk.key("Enter")
            self.enter_group(desk)
            self.assert_shown(desk, "1", "1 m")

    def test_delete_asks_on_a_field_and_informs_on_a_group(self):
        with self.desk() as desk:
            start_entry(desk)
            fill(desk, "Title", "Fens")
            icons = []
            for title in ("Title", "Samples"):
                desk.go_to("Fields", title)
                desk.key("Delete")
                desk.wait_message("DELETING FIELD DATA")
                icons.append((desk.icon(), desk.icon_pixels()))
                desk.key("Tab", "space")  # No, or the only button
            self.assertEqual([colour for colour, _ in icons], ["blue", "blue"])
            self.assertNotEqual(*[pixels for _, pixels in icons])


def occurrence(desk):
    """The number that the selector of the open group shows."""
    return desk.node(role="combo box").text


if __name__ == "__main__":
    unittest.main()
