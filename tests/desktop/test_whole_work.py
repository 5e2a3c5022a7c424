"""One whole piece of work, from the start-up frame to the end, done in two ways: by keys alone, and by the means of an
assistive program alone (names, actions, texts, selections and values of controls, and its own Enter key).

Both fill fields, add an instance, fill a group, save, merge a second report, print to a file and quit; both must leave
the same bytes.
"""

import unittest

from case import OPEN_TITLE, SAVE_TITLE, DesktopTest, fill, open_report, reply, save_as, start_entry, value_of

ENTER = 0xFF0D
TO_FILE = "PRINT (one copy to a file)"
TO_FILE_TITLE = "Pick an ASCII Quintave print file name..."
MERGE_TITLE = "Overwrite or 'Add To'"
PRINT_QUESTION = "PRINT CURRENT SCREEN FIELDS?"


class WholeWork(DesktopTest):
    NAME = "WORK.FTF"
    TEMPLATE = (
        '1,-1,"","Citation","",""',
        '2,60,"TEXT","Title","",""',
        '2,40,"TEXT","Keyword","",""',
        '2,20,"LIST","Kind","",""', '"<RESET/CLEAR FIELD ENTRY>"', '"Maps"', '"Numbers"', '"OTHER..."', '"XXX-1XXX"',
        '2,2,"GROUP START","Samples","",""',
        '3,10,"TEXT","Depth","",""',
        '2,0,"GROUP END","","",""',
        '2,900,"MEMO","Abstract","",""',
    )

    def prepare(self, desk):
        (desk.cwd / "other.rpx").write_bytes(self.report('1,-1,"Citation",""', '2,1,"Keyword","lakes"'))
        return desk.cwd / "work.rpx", desk.cwd / "other.rpx", desk.cwd / "work.txt"

    def check(self, desk, saved, printed):
        self.assertEqual(desk.wait_exit(), 0)
        self.assert_no_work_files(desk)
        self.assertEqual(saved.read_bytes(), self.report(
            '1,-1,"Citation",""', '2,1,"Title","Wells of Ely"', '2,1,"Keyword","rivers"', '2,1,"Keyword","fens"',
            '2,1,"Keyword","lakes"', '2,1,"Kind","Numbers"',
            '2,-9,"Samples","REPEATING GROUP, Occurrence #1"', '3,1,"Depth","1 m"',
            '2,-9,"Samples","REPEATING GROUP, Occurrence #2"', '3,1,"Depth","2 m"',
            '2,-99,"END REPEATING GROUP",""', '2,2,"Abstract","Two wells."', '"One is dry."'))
        text = printed.read_text("cp1252")
        for line in ("Wells of Ely", "rivers", "lakes", "Numbers", "2 m", "One is dry."):
            self.assertIn(line, text)

    def test_by_keys_alone(self):
        with self.desk() as desk:
            saved, other, printed = self.prepare(desk)
            start_entry(desk)
            fill(desk, "Title", "Wells of Ely")
            fill(desk, "Keyword", "rivers")
            desk.go_to("Fields", "Keyword")
            desk.tab_to("Add instance")
            desk.key("space")
            desk.wait_focus("Value")
            desk.type("fens\n")
            desk.wait_focus("Fields")
            desk.go_to("Fields", "Kind")
            desk.type("n")
            desk.wait_for(lambda: value_of(desk, "Kind") == "Numbers", "the choice in its row")
            desk.go_to("Fields", "Samples")
            desk.key("Enter")
            desk.wait_focus("Group fields")
            fill(desk, "Depth", "1 m", fields="Group fields")
            desk.key("ctrl+n")
            fill(desk, "Depth", "2 m", fields="Group fields")
            desk.key("ctrl+e")
            desk.wait_focus("Fields")
            fill(desk, "Abstract", "Two wells.\nOne is dry.", "ctrl+Enter")
            desk.key("ctrl+s")
            save_as(desk, saved)
            desk.wait_focus("Fields")
            open_report(desk, other)
            reply(desk, "No", MERGE_TITLE)
            desk.wait_for(lambda: value_of(desk, "Keyword") == "rivers|fens|lakes", "the merged instance")
            desk.tab_to("SaveAs")
            desk.key("space")
            desk.choose_file(saved, SAVE_TITLE)
            if desk.message():  # the file is there already
                reply(desk, "Yes")
            desk.wait_for(lambda: b"lakes" in saved.read_bytes(), "the second save")
            desk.key("ctrl+p")
            reply(desk, "Yes", PRINT_QUESTION)
            desk.tab_to(TO_FILE)
            desk.key("space")
            desk.choose_file(printed, TO_FILE_TITLE)
            desk.wait_focus("Fields")
            desk.key("ctrl+q")
            self.check(desk, saved, printed)

    def test_by_an_assistive_programs_means_alone(self):
        with self.desk() as desk:
            saved, other, printed = self.prepare(desk)
            self.press(desk, "Use Quintave")
            desk.node("Fields")
            self.write(desk, "Title", "Wells of Ely")
            self.write(desk, "Keyword", "rivers")
            self.press(desk, "Add instance")
            desk.wait_for(lambda: desk.text_of("Value") == "", "an empty instance")
            desk.node("Value").set_text("fens")
            desk.node("Instance shown").set_value(1)
            desk.wait_for(lambda: desk.text_of("Value") == "rivers", "the first instance")
            self.select(desk, "Kind")
            desk.node("Choices").select_row(2)
            self.enter(desk)
            desk.wait_for(lambda: value_of(desk, "Kind") == "Numbers", "the choice in its row")
            self.fill_group(desk)
            self.write(desk, "Abstract", "Two wells.\nOne is dry.")
            self.press(desk, "Save")
            self.complete(desk, SAVE_TITLE, saved, "Save")
            self.press(desk, "Add/Merge File")
            self.complete(desk, OPEN_TITLE, other, "Open")
            self.press_in_box(desk, "No", MERGE_TITLE)
            desk.wait_for(lambda: value_of(desk, "Keyword") == "rivers|fens|lakes", "the merged instance")
            self.press(desk, "SaveAs")
            self.complete(desk, SAVE_TITLE, saved, "Save")
            if desk.message():
                self.press_in_box(desk, "Yes")
            desk.wait_for(lambda: b"lakes" in saved.read_bytes(), "the second save")
            self.press(desk, "Print")
            self.press_in_box(desk, "Yes", PRINT_QUESTION)
            self.press(desk, TO_FILE)
            self.complete(desk, TO_FILE_TITLE, printed, "Save")
            desk.node("Fields")
            self.press(desk, "Quit")
            self.check(desk, saved, printed)

    def fill_group(self, desk):
        self.select(desk, "Samples")
        self.enter(desk)
        desk.node("Group fields")
        self.write(desk, "Depth", "1 m", "Group fields")
        self.press(desk, "Next")
        desk.wait_for(lambda: desk.node("Occurrence", "combo box").text == "2", "the second occurrence")
        self.write(desk, "Depth", "2 m", "Group fields")
        self.press(desk, "Exit From Group")
        desk.node("Fields")

    @staticmethod
    def press(desk, name):
        desk.wait_for(lambda: any(node.enabled for node in desk.nodes(name, "button")), f"an enabled button {name!r}")
        desk.node(name, "button").press()
        desk.settle()

    @staticmethod
    def enter(desk):
        desk.reader.send_key(ENTER)
        desk.settle()

    @staticmethod
    def select(desk, title, fields="Fields"):
        node = desk.node(fields)
        row = [text[1:27].rstrip() for text in desk.rows(fields)].index(title)
        node.select_row(row)
        desk.settle()
        desk.wait_for(lambda: desk.selected(fields) == [row], f"the row {title!r} selected")

    def write(self, desk, title, text, fields="Fields"):
        self.select(desk, title, fields)
        desk.node("Value").set_text(text)
        desk.settle()
        self.assertEqual(desk.text_of("Value"), text)

    @staticmethod
    def press_in_box(desk, button, title=None):
        desk.wait_message(title)
        path = desk.box_path()
        desk.node(button, "button").press()
        desk.wait_for(lambda: desk.box_path() != path, f"the end of the box {title or ''}")
        desk.settle()

    def complete(self, desk, title, path, button):
        """Fills a file dialog."""
        dialog = desk.wait_dialog(title)
        inside = {(node.role, node.name): node for node in dialog.walk()}
        inside["text", "File name:"].set_text(str(path))
        desk.settle()
        inside["button", button].press()
        desk.wait_for(lambda: title not in desk.windows() or desk.message(), f"the end of {title}")
        desk.settle()


if __name__ == "__main__":
    unittest.main()
