"""What a screen reader finds in every state of the window: each control that can have the keys has a name, the names
are those that users are told, and the Tab key goes through the controls as they stand on the screen."""

import unittest

from case import (OPEN_TITLE, SAVE_TITLE, TEMPLATE_TITLE, DesktopTest, cancel_dialog, fill, open_box, reply,
                  start_entry)

# Parts of the system's own file dialogs; there a combo box is called by its entry.
OWN_PARTS = ("combo box",)


class Names(DesktopTest):
    NAME = "NAMES.FTF"
    TEMPLATE = (
        '1,-1,"","Citation","",""',
        '2,40,"TEXT","Title","About titles","TITLE.HLP"',
        '2,90,"TEXT","Long title","",""',
        '2,999,"MEMO","Abstract","",""',
        '2,20,"LIST","Kind","",""', '"<RESET/CLEAR FIELD ENTRY>"', '"Maps"', '"OTHER..."', '"XXX-1XXX"',
        '2,2,"GROUP START","Samples","",""',
        '3,10,"TEXT","Depth","",""', '3,60,"MEMO","Notes","",""',
        '3,20,"LIST","Soil","",""', '"Clay"', '"OTHER..."', '"XXX-1XXX"',
        '2,0,"GROUP END","","",""',
    )
    COMMANDS = ["Add/Open File", "Save", "SaveAs", "Print", "Reset/Clear", "Field Template", "Quit"]
    INSTANCES = ["Instance shown", "Add instance", "Delete instance"]

    def new_resources(self, *arguments):
        folder = super().new_resources(*arguments)
        (folder / "TITLE.HLP").write_bytes(b"Help.\r\n")
        return folder

    def assert_named(self, desk, state):
        """No control without a name; names the state, the control and the picture of it."""
        desk.settle()
        dialog = any(title in desk.windows() for title in (OPEN_TITLE, SAVE_TITLE, TEMPLATE_TITLE))
        unnamed = [text for text in desk.unnamed() if not (dialog and text.startswith(OWN_PARTS))]
        self.assertEqual(unnamed, [], f"{state}: see {desk.evidence() if unnamed else ''}")

    def tab_order(self, desk):
        """The controls that the Tab key goes through, once around, each with where it stands."""
        found = []
        for _ in range(40):
            node = desk.focused()
            name = (node.labels or [node.name])[0]
            if found and name == found[0]:
                return found
            found.append(name)
            desk.key("Tab")
        raise AssertionError(f"the Tab key does not come round: {found}; see {desk.evidence()}")

    def assert_order_of_screen(self, desk, names):
        """Rows of controls from the top down, in each from the left to the right; a panel beside the list is one."""
        places = [desk.node(name).extents for name in names]
        for (name, a), (other, b) in zip(zip(names, places), zip(names[1:], places[1:])):
            above, left = a[1] + a[3] <= b[1], a[0] + a[2] <= b[0]
            self.assertTrue(above or left, f"{name} {a} comes before {other} {b}; see {desk.evidence()}")

    def test_of_the_start_up_frame(self):
        with self.desk() as desk:
            desk.wait_focus("Use Quintave")
            self.assert_named(desk, "start-up frame")
            self.assertEqual(self.tab_order(desk), ["Use Quintave", "QUIT"])

    def test_of_each_kind_of_field(self):
        with self.desk() as desk:
            start_entry(desk)
            orders = {"Title": ["More Help", "Value"], "Kind": ["Choices"]}
            for title in ("Title", "Long title", "Abstract", "Kind"):
                desk.go_to("Fields", title)
                self.assert_named(desk, title)
                if title in orders:
                    order = self.tab_order(desk)
                    self.assertEqual(order, ["Fields", *self.INSTANCES, *orders[title], *self.COMMANDS], title)
                    self.assert_order_of_screen(desk, order)
            desk.type("o")
            desk.wait_focus("Other value")
            self.assert_named(desk, "other value")

    def test_of_instances_and_of_the_help_window(self):
        with self.desk() as desk:
            start_entry(desk)
            fill(desk, "Title", "Wells")
            desk.go_to("Fields", "Title")
            desk.tab_to("Add instance")
            desk.key("space")
            self.assert_named(desk, "a second instance")
            desk.type("Fens\n")
            desk.wait_focus("Fields")
            desk.go_to("Fields", "Title")
            desk.tab_to("More Help")
            desk.key("space")
            desk.wait_for(lambda: "Quintave Help" in desk.windows(), "the help window")
            self.assert_named(desk, "help window")
            self.assertEqual([desk.node(name).role for name in ("Help text", "Close Help")], ["text", "button"])

    def test_of_a_group(self):
        with self.desk() as desk:
            start_entry(desk)
            desk.go_to("Fields", "Samples")
            desk.key("Enter")
            desk.wait_focus("Group fields")
            for title in ("Depth", "Notes", "Soil"):
                desk.go_to("Group fields", title)
                self.assert_named(desk, f"group, {title}")
            order = self.tab_order(desk)
            self.assertEqual(order, ["Group fields", "V-Prev", "Top", "Next", "Bottom", "Insert", "Delete",
                                     "Occurrence", "Exit From Group", "Group choices", *self.COMMANDS])
            self.assert_order_of_screen(desk, order)

    def test_of_the_print_panel_and_its_question(self):
        with self.desk() as desk:
            start_entry(desk)
            desk.key("ctrl+p")
            desk.wait_message()
            self.assert_named(desk, "print question")
            reply(desk, "Yes")
            desk.wait_focus("NO Section/Field Indent")
            self.assert_named(desk, "print panel")
            order = self.tab_order(desk)
            self.assertEqual(order, ["NO Section/Field Indent", "Data Starts on Field Title Line",
                                     "Spaces to indent data", "Title/data separator", "Copies to print",
                                     "PRINT (to default printer)", "PRINT (one copy to a file)", "Cancel"])
            self.assert_order_of_screen(desk, order)

    def test_of_dialogs_and_message_boxes(self):
        with self.desk() as desk:
            start_entry(desk)
            for key, title in (("ctrl+a", OPEN_TITLE), ("ctrl+s", SAVE_TITLE), ("ctrl+f", TEMPLATE_TITLE)):
                desk.key(key)
                desk.wait_dialog(title)
                self.assert_named(desk, title)
                cancel_dialog(desk, title)
            open_box(desk, "Title", "a")
            desk.type("|")
            self.box(desk, "reserved character", "Enter")
            desk.key("Enter")
            desk.wait_focus("Fields")
            desk.go_to("Fields", "Title")
            for key, state, away in (("Delete", "delete question", "Escape"), ("ctrl+r", "reset question", "Escape"),
                                     ("ctrl+q", "quit question", "Escape")):
                desk.key(key)
                self.box(desk, state, away)

    def box(self, desk, state, key):
        desk.wait_message()
        self.assert_named(desk, state)
        if state == "delete question":
            return reply(desk, "No")
        desk.key(key)
        desk.wait_for(lambda: not desk.message(), f"the end of the {state}")

    def test_of_the_question_for_the_resource_directory(self):
        with self.desk(resources=False) as desk:
            desk.wait_dialog("Quintave.Tbl Location?")
            self.assert_named(desk, "input box")
            desk.key("Escape")
            desk.wait_message("BAD DRIVE/DIRECTORY INFORMATION!")
            self.assert_named(desk, "directory warning")
            reply(desk, "No")
            desk.wait_exit()


if __name__ == "__main__":
    unittest.main()
