"""Keyboards of other countries, by the keys as they lie there: letters that are composed, letters of other scripts."""

import unittest

from case import SAVE_TITLE, DesktopTest, cancel_dialog, open_box, start_entry, value_of

# Keys by what stands on them in the United States.
KEY = {"q": 24, "e": 26, "[": 34, "a": 38, "s": 39, "d": 40, "'": 48, "x": 53, "c": 54, "v": 55, "space": 65, "2": 11}


class Keyboards(DesktopTest):
    TEMPLATE = (
        '2,60,"TEXT","Title","",""',
        '2,60,"TEXT","Place","",""',
        '2,20,"LIST","Kind","",""', '"Eta"', '"\u00c9cole"', '"Maps"', '"Moss"', '"XXX-1XXX"',
    )

    def press(self, desk, *keys):
        """Presses keys where they lie; each may have "ctrl+" or the like before it."""
        chords = []
        for key in keys:
            modifiers, _, name = key.rpartition("+")
            chords.append(f"{modifiers}+{KEY[name]}" if modifiers else str(KEY[name]))
        desk.display.run("xdotool", "key", "--delay", "30", *chords)
        desk.settle()

    def use(self, desk, *layout):
        desk.display.run("setxkbmap", *layout)
        desk.settle()

    def assert_typed(self, desk, row, keys, text):
        """On the row's line of the field list these keys begin this value."""
        desk.go_to("Fields", row)
        self.press(desk, *keys)
        desk.wait_for(lambda: desk.focus_name() == "Value" and desk.text_of("Value") == text, f"{text} in the box")
        desk.key("Enter")
        desk.wait_focus("Fields")
        self.assertEqual(value_of(desk, row), text)

    def test_dead_keys_on_the_field_list(self):
        with self.desk() as desk:
            start_entry(desk)
            self.use(desk, "fr")
            self.assert_typed(desk, "Title", ("[", "e", "q"), "\u00eaa")
            self.use(desk, "us", "intl")
            self.assert_typed(desk, "Place", ("'", "e", "a"), "\u00e9a")

    def test_dead_keys_choose_by_the_letter_with_its_accent(self):
        with self.desk() as desk:
            start_entry(desk)
            self.use(desk, "us", "intl")
            desk.go_to("Fields", "Kind")
            self.press(desk, "'", "e")
            desk.wait_for(lambda: value_of(desk, "Kind"), "a choice in its row")
            self.assertEqual(value_of(desk, "Kind"), "\u00c9cole")
            desk.key("Delete")
            desk.answer("Yes")
            desk.key("Enter")
            desk.wait_focus("Choices")
            self.press(desk, "'", "e")
            desk.wait_for(lambda: value_of(desk, "Kind"), "a choice in its row")
            self.assertEqual(value_of(desk, "Kind"), "\u00c9cole")

    def test_commands_and_the_clipboard_on_a_keyboard_without_latin_letters(self):
        with self.desk() as desk:
            start_entry(desk)
            for layout in ("ru", "gr"):
                self.use(desk, layout)
                self.press(desk, "ctrl+s")
                cancel_dialog(desk, SAVE_TITLE)
                desk.wait_focus("Fields")
            self.use(desk, "us")
            open_box(desk, "Title", "x")
            self.use(desk, "ru")
            desk.key("shift+Home")
            self.press(desk, "ctrl+c", "ctrl+x")
            desk.wait_for(lambda: desk.text_of("Value") == "", "the end of what was cut")
            self.press(desk, "ctrl+v", "ctrl+v")
            desk.wait_for(lambda: desk.text_of("Value") == "xx", "what was cut, twice")

    def test_ctrl_and_alt_type_nothing(self):
        with self.desk() as desk:
            start_entry(desk)
            for layout in ("cz", "ru", "us"):
                self.use(desk, layout)
                self.press(desk, "ctrl+2", "ctrl+shift+2", "ctrl+alt+2", "alt+x", "super+x")
                self.assertEqual((desk.message(), desk.focus_name()), (None, "Fields"))
            open_box(desk, "Title", "a")
            self.press(desk, "alt+x", "ctrl+alt+2", "super+x")
            self.assertEqual(desk.text_of("Value"), "a")


if __name__ == "__main__":
    unittest.main()
