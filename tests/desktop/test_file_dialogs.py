"""The file dialogues as they are on every desktop: which files they show, and what the keys do in them."""

import shutil
import unittest
from pathlib import Path

from case import SAVE_TITLE, TEMPLATE_TITLE, DesktopTest, fill, start_entry


class FileDialogs(DesktopTest):
    TEMPLATE = ('2,60,"TEXT","Title","",""',)

    def test_names_of_either_case_are_shown_on_a_gnome_desktop(self):
        resources = self.new_resources()
        for name in ("CAPS.FTF", "small.ftf", "notes.txt"):
            (resources / name).write_bytes((resources / self.NAME).read_bytes())
        # the desktop's theme would tell the bus of a program of its own
        with self.desk(resources=resources, env={"XDG_CURRENT_DESKTOP": "GNOME", "NO_AT_BRIDGE": "1"}) as desk:
            self.assertIn("libqgtk3", Path(f"/proc/{desk.process.pid}/maps").read_text(encoding="utf-8"))
            shutil.copytree(desk.resources, desk.cwd / "templates")
            start_entry(desk)
            desk.key("ctrl+f")
            dialog = desk.wait_dialog(TEMPLATE_TITLE)
            self.assertIn("Quintave FTF(*.ftf,*.tbl)", [node.name for node in dialog.walk()])
            desk.type(f"{desk.cwd}/templates\n")
            shown = {"CAPS.FTF", "TEST.FTF", "quintave.tbl", "small.ftf"}
            names = lambda: {cell.name for cell in desk.node("Files", "tree").children}
            desk.wait_for(lambda: names() >= shown, "the templates in the list")
            self.assertNotIn("notes.txt", names())

    def test_a_refused_name_is_proposed_again(self):
        with self.desk() as desk:
            start_entry(desk)
            fill(desk, "Title", "Penguins")
            desk.key("ctrl+s")
            desk.choose_file("penguins.txt", SAVE_TITLE)
            desk.answer("OK")
            desk.wait_dialog(SAVE_TITLE)
            self.assertEqual(desk.focused().text, "penguins.txt")
            desk.type("wells")  # in place of what stands before the ending
            self.assertEqual(desk.focused().text, "wells.txt")
            desk.key("ctrl+a")
            desk.type("penguins.rpx\n")
            desk.wait_for((desk.cwd / "penguins.rpx").exists, "the report")


if __name__ == "__main__":
    unittest.main()
