"""A second report on top of a first one: what the question's two answers make of both."""

import unittest

from case import SAVE_TITLE, DesktopTest, cancel_dialog, open_report, reply, save_as, start_entry, value_of

OVER_VALUES = (
    "Either this file contains multiple field instances, or you are loading data over existing screen information. "
    "Would you like to OVERWRITE information?\n\n"
    "        YES - Overwrite(replace) existing information.\n"
    "        NO - Add new instances to existing fields.\n\n"
    "Note that a YES answer will cause multiple field instances in the file being added to be overwritten by each "
    "other!")
OVER_GROUPS = (
    "You are loading data over existing screen information. Would you like to OVERWRITE information?\n\n"
    "        YES - Overwrite(replace) existing information.\n"
    "        NO - Add new instances to existing groups.")
UNKNOWN = ("No matching field title was found for the file field Colour!\n\n"
           "This field and its data are NOT being loaded into Quintave!\n\nDo you want to continue loading fields?")
REFUSED = ("No matching list option was found for the field Kind, and this is a closed list (i.e., no 'Other...' "
           "option)!\n\nYour existing field data ( 'Glaciers' ) is NOT being loaded for this field!")
FIELD_TITLE = "WARNING - Field Not Found in List!"
LIST_TITLE = "WARNING - Field Data Not Found in List!"
OVER_TITLE = "Overwrite or 'Add To'"


class Merge(DesktopTest):
    NAME = "MERGE.FTF"
    TEMPLATE = (
        '1,-1,"","Citation","",""',
        '2,60,"TEXT","Title","",""',
        '2,40,"TEXT","Author","",""',
        '2,20,"LIST","Kind","",""', '"Maps"', '"Numbers"', '"XXX-1XXX"',
        '2,2,"GROUP START","Places","",""',
        '3,20,"TEXT","Name","",""',
        '3,60,"MEMO","Notes","",""',
        '2,0,"GROUP END","","",""',
    )
    PLACE = ('2,-9,"Places","REPEATING GROUP, Occurrence #{}"', '3,1,"Name","{}"')
    END = '2,-99,"END REPEATING GROUP",""'

    def place(self, number, name):
        return [text.format(value) for text, value in zip(self.PLACE, (number, name))]

    def write_reports(self, desk):
        """Two reports of which each field is filled; the second has a title and a choice that the template lacks."""
        self.first, self.second = desk.cwd / "first.rpx", desk.cwd / "second.rpx"
        self.first.write_bytes(self.report(
            '1,-1,"Citation",""', '2,1,"Title","First"', '2,1,"Author","Ann"', '2,1,"Kind","Maps"',
            *self.place(1, "Ely"), self.END))
        self.second.write_bytes(self.report(
            '1,-1,"Citation",""', '2,1,"Title","Second"', '2,1,"Author","Ben"', '2,1,"Author","Cy"',
            '2,1,"Colour","Red"', '2,1,"Kind","Glaciers"',
            *self.place(1, "Lynn"), '3,2,"Notes","on the"', '"coast"', self.END))

    def load_both(self, desk, answer):
        self.write_reports(desk)
        start_entry(desk)
        open_report(desk, self.first)
        desk.wait_for(lambda: value_of(desk, "Title") == "First", "the first report")
        self.assertIsNone(desk.message())
        self.assertEqual(len(desk.nodes("Add/Merge File", "button")), 1)
        open_report(desk, self.second)
        self.assert_message(desk, OVER_TITLE, OVER_VALUES, ["Yes", "No"], default="No")
        reply(desk, answer)
        self.assert_message(desk, FIELD_TITLE, UNKNOWN, ["Yes", "No"])
        reply(desk, "Yes")

    def save_merged(self, desk, answer, *reports):
        """The merged screen belongs to neither file: Save asks for a name. The program without a window merges alike."""
        desk.wait_focus("Fields")
        desk.key("ctrl+s")
        path = desk.cwd / "merged.rpx"
        save_as(desk, path)
        option = {"Yes": "--overwrite", "No": "--add"}[answer]
        self.without_window(desk, "merge", "--template", desk.resources / self.NAME, option, "-o", "same.rpx", *reports)
        self.assertEqual((desk.cwd / "same.rpx").read_bytes(), path.read_bytes())
        return path.read_bytes()

    def test_yes_replaces_what_is_on_the_screen(self):
        with self.desk() as desk:
            self.load_both(desk, "Yes")
            self.assert_message(desk, LIST_TITLE, REFUSED, ["OK"], "yellow")
            desk.key("Enter")
            self.assertEqual(self.save_merged(desk, "Yes", self.first, self.second), self.report(
                '1,-1,"Citation",""', '2,1,"Title","Second"', '2,1,"Author","Cy"',
                *self.place(1, "Lynn"), '3,2,"Notes","on the"', '"coast"', self.END))

    def test_no_adds_to_what_is_on_the_screen(self):
        with self.desk() as desk:
            self.load_both(desk, "No")
            self.assertEqual(self.save_merged(desk, "No", self.first, self.second), self.report(
                '1,-1,"Citation",""', '2,1,"Title","First"', '2,1,"Title","Second"',
                '2,1,"Author","Ann"', '2,1,"Author","Ben"', '2,1,"Author","Cy"',
                '2,1,"Kind","Maps"', '2,1,"Kind","Glaciers"',
                *self.place(1, "Ely"),
                *self.place(2, "Lynn"), '3,2,"Notes","on the"', '"coast"', self.END))

    def test_a_report_of_groups_only_asks_about_groups(self):
        for answer, names in (("Yes", ["Ely"]), ("No", ["Ely", "Ely"])):
            with self.subTest(answer), self.desk() as desk:
                start_entry(desk)
                path = desk.cwd / "places.rpx"
                path.write_bytes(self.report('1,-1,"Citation",""', *self.place(1, "Ely"), self.END))
                open_report(desk, path)
                open_report(desk, path)
                self.assert_message(desk, OVER_TITLE, OVER_GROUPS, ["Yes", "No"], default="No")
                reply(desk, answer)
                occurrences = [text for k, name in enumerate(names) for text in self.place(k + 1, name)]
                self.assertEqual(self.save_merged(desk, answer, path, path),
                                 self.report('1,-1,"Citation",""', *occurrences, self.END))

    def test_no_at_an_unknown_field_stops_and_keeps_what_was_loaded(self):
        with self.desk() as desk:
            self.write_reports(desk)
            start_entry(desk)
            open_report(desk, self.second)
            self.assert_message(desk, OVER_TITLE, OVER_VALUES, ["Yes", "No"], default="No")  # two authors in one file
            reply(desk, "No")
            reply(desk, "No", FIELD_TITLE)
            self.assertEqual([value_of(desk, title) for title in ("Title", "Author", "Kind")], ["Second", "Ben|Cy", ""])
            desk.key("ctrl+s")  # not over the file of which only a part was loaded
            cancel_dialog(desk, SAVE_TITLE)

    def test_a_file_that_is_no_report_changes_nothing(self):
        with self.desk() as desk:
            start_entry(desk)
            foreign = desk.cwd / "foreign.rpx"
            foreign.write_bytes(b"name,age\r\nAnn,7\r\n")
            open_report(desk, foreign)
            self.assert_message(desk, "INVALID FILE FORMAT",
                                "This File is not properly identified as a version 2 Quintave file!\n\n"
                                "File load procedure has been CANCELLED!", ["OK"], "red")
            desk.key("Enter")
            desk.wait_focus("Fields")
            self.assertEqual(len(desk.nodes("[Template: MERGE.FTF] - RPX File(s): ", "panel")), 1)
            self.assertEqual(len(desk.nodes("Add/Open File", "button")), 1)

    def test_a_name_that_is_no_report_is_refused(self):
        with self.desk() as desk:
            start_entry(desk)
            text = desk.cwd / "notes.txt"
            text.write_bytes(b"x")
            open_report(desk, text)
            self.assert_message(desk, "Quintave", "You must select a `*.RPX' file!\n\nPlease Try Again.", ["OK"])
            desk.key("Enter")
            desk.wait_focus("Fields")
            self.assert_main_window_alone(desk)


if __name__ == "__main__":
    unittest.main()
