"""The help window by keys and mouse: its text, its place, its sizes, and its end."""

from case import DesktopTest, start_entry

TITLE_HELP = b"What a title is for.\r\n\r\nWrite what was measured, where and when: caf\xe9s of Ely.\r\n"
WINDOW = "Quintave Help"


class HelpTest(DesktopTest):
    TEMPLATE = ('1,40,"TEXT","Title","About titles","TITLE.HLP"', '1,40,"TEXT","Place","About places","PLACE.HLP"',
                '1,40,"TEXT","Other","",""')

    def new_resources(self, *arguments):
        folder = super().new_resources(*arguments)
        (folder / "TITLE.HLP").write_bytes(TITLE_HELP)
        (folder / "PLACE.HLP").write_bytes(b"Where it is.\r\n")
        return folder

    def open_help(self, desk):
        desk.tab_to("More Help")
        desk.key("space")
        return desk.wait_for(lambda: self.window(desk), "the help window")

    @staticmethod
    def window(desk):
        return next((window for window in desk.app.children if window.name == WINDOW and window.showing), None)

    def wait_closed(self, desk):
        desk.wait_for(lambda: not self.window(desk), "the end of the help window")

    def sizes(self, desk):
        """Window, text box and close button as (x, y, width, height) on the screen, the window without its frame."""
        return self.window(desk).extents, desk.node("Help text").extents, desk.node("Close Help").extents

    def placed(self, desk):
        """The lower right corner of the window with its frame; nothing before it has one, or while it still moves."""
        found = desk.display.run("xdotool", "search", "--onlyvisible", "--name", f"^{WINDOW}$").split()[-1]
        frame = desk.display.run("xprop", "-id", found, "_NET_FRAME_EXTENTS")
        if "=" not in frame:
            return None
        _, right, _, bottom = (int(size) for size in frame.split("=")[1].split(","))

        def corner():
            x, y, width, height = self.window(desk).extents
            return x + width + right, y + height + bottom

        first = corner()
        desk.settle()
        return first if bottom and first == corner() else None

    def test_the_text_in_the_lower_right_corner(self):
        with self.desk() as desk:
            start_entry(desk)
            self.open_help(desk)
            self.assertEqual(desk.text_of("Help text"),
                             "\nWhat a title is for.\n\nWrite what was measured, where and when: caf\xe9s of Ely.")
            screen_width, screen_height = desk.size
            # 2.5 % of the screen stay free, the window manager's frame counted in.
            right, bottom = desk.wait_for(lambda: self.placed(desk), "the framed window's place")
            self.assertAlmostEqual(right, 0.975 * screen_width, delta=2)
            self.assertAlmostEqual(bottom, 0.975 * screen_height, delta=2)

    def test_the_text_cannot_be_edited(self):
        with self.desk() as desk:
            start_entry(desk)
            self.open_help(desk)
            before = desk.text_of("Help text")
            desk.click("Help text")
            desk.type("x")
            desk.key("Delete", "BackSpace")
            self.assertEqual(desk.text_of("Help text"), before)

    def test_the_close_button_and_the_frame_close_it_and_it_opens_again(self):
        with self.desk() as desk:
            start_entry(desk)
            self.open_help(desk)
            desk.press("Close Help")
            self.wait_closed(desk)
            desk.activate()
            self.open_help(desk)
            desk.key("alt+F4")
            self.wait_closed(desk)
            desk.activate()
            self.open_help(desk)
            self.assertTrue(desk.running())

    def test_it_follows_the_selected_row(self):
        with self.desk() as desk:
            start_entry(desk)
            self.open_help(desk)
            desk.click_row("Fields", 1)
            desk.wait_for(lambda: desk.text_of("Help text") == "\nWhere it is.", "the help of the second row")
            desk.click_row("Fields", 2)
            self.assertEqual(desk.text_of("Help text"), "\nWhere it is.")

    def test_its_parts_follow_its_size(self):
        with self.desk() as desk:
            start_entry(desk)
            self.open_help(desk)
            for width, height in ((600, 400), (300, 200), (700, 500)):
                desk.display.run("xdotool", "search", "--onlyvisible", "--name", WINDOW, "windowsize", "--sync", width,
                                 height)
                desk.wait_for(lambda: self.window(desk).extents[2:] == (width, height), "the window's new size")
                window, text, button = self.sizes(desk)
                inset = 100 / 15  # 100 twips in pixels
                self.assertAlmostEqual(text[2], width - inset, delta=1.5)
                self.assertAlmostEqual(button[2], width - inset, delta=1.5)
                self.assertLessEqual(text[1] + text[3], window[1] + height)
                self.assertGreaterEqual(text[1], button[1] + button[3])
                self.assertAlmostEqual(text[1] + text[3], window[1] + height, delta=6)

    def test_a_missing_file_is_told_and_no_window_opens(self):
        with self.desk() as desk:
            start_entry(desk)
            (desk.resources / "TITLE.HLP").unlink()
            desk.tab_to("More Help")
            desk.key("space")
            self.assert_message(desk, "More Help", "Error: 53 - File not found\nError reading this help file! "
                                f"({desk.resources}/TITLE.HLP)", ["OK"], "red")
            desk.key("Enter")
            desk.wait_focus("More Help")
            self.assertIsNone(self.window(desk))

    def test_it_ends_with_the_program(self):
        with self.desk() as desk:
            start_entry(desk)
            self.open_help(desk)
            desk.click("Fields")
            desk.key("ctrl+q")
            self.assertEqual(desk.wait_exit(), 0)
            self.assert_no_work_files(desk)
