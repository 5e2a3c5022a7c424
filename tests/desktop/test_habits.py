"""Persons' habits that only a real window system shows: accents, the pasting mouse button, a small window, the wheel."""

import subprocess
import unittest

from case import DesktopTest, fill, open_box, start_entry, value_of


class Habits(DesktopTest):
    TEMPLATE = (
        '1,-1,"","Citation","",""',
        '2,60,"TEXT","Title","",""',
        '2,60,"TEXT","Place","",""',
        '2,20,"LIST","Kind","",""', '"<RESET/CLEAR FIELD ENTRY>"', '"Maps"', '"Numbers"', '"OTHER..."', '"XXX-1XXX"',
        '2,900,"MEMO","Abstract","",""',
    )

    def test_accents_by_dead_keys_and_by_the_third_level(self):
        with self.desk() as desk:
            start_entry(desk)
            open_box(desk, "Title", "C")
            for keys in (["a", "f", "dead_acute", "e"], ["dead_tilde", "n"], ["at", "EuroSign"]):
                desk.display.run("xdotool", "key", "--delay", "30", *keys)
                desk.settle()
            desk.wait_for(lambda: desk.text_of("Value") == "Café\u00f1@\u20ac", "what the keys give")
            desk.key("Enter")
            desk.wait_focus("Fields")
            self.assertEqual(value_of(desk, "Title"), "Café\u00f1@\u20ac")

    def test_the_other_enter_key_commits(self):
        with self.desk() as desk:
            start_entry(desk)
            open_box(desk, "Title", "W")
            desk.key("KP_Enter")
            desk.wait_focus("Fields")
            self.assertEqual(value_of(desk, "Title"), "W")

    def test_the_middle_button_pastes_what_was_marked(self):
        with self.desk() as desk:
            start_entry(desk)
            with open(desk.display.folder / "xclip.log", "ab") as log:
                subprocess.run(["xclip", "-selection", "primary", "-in"], input=b"marked | text", env=desk.display.env,
                               stdout=log, stderr=log, timeout=30, check=True)
            open_box(desk, "Title", "a")
            self.point(desk, desk.node("Value"))
            desk.display.run("xdotool", "click", "2")
            desk.answer("OK", "Quintave")  # the bar is left out
            desk.wait_focus("Value")
            desk.key("Enter")
            desk.wait_focus("Fields")
            self.assertEqual(value_of(desk, "Title"), "amarked  text")  # where the pointer was, behind the letter

    def test_text_is_moved_by_dragging_it(self):
        with self.desk() as desk:
            start_entry(desk)
            open_box(desk, "Title", "w")
            desk.type("ells of Ely")
            desk.key("Home", "ctrl+shift+Right")
            x, y, _, _ = desk.node("Value").extents
            run = desk.display.run
            run("xdotool", "mousemove", x + 15, y + 12, "mousedown", "1")  # on the first line
            for step in (8, 20, 60, 120, 180, 200):
                run("xdotool", "mousemove", x + 15 + step, y + 12, "sleep", "0.1")
                desk.settle()
            run("xdotool", "mouseup", "1")
            desk.settle()
            desk.wait_for(lambda: desk.text_of("Value") == "of Elywells ", "the word at its new place")
            desk.key("Enter")
            desk.wait_focus("Fields")
            self.assertEqual(value_of(desk, "Title"), "of Elywells")

    def test_a_window_made_small_keeps_the_edit(self):
        with self.desk() as desk:
            start_entry(desk)
            open_box(desk, "Title", "W")
            window = desk.display.run("xdotool", "getactivewindow").strip()
            desk.display.run("xdotool", "windowminimize", "--sync", window)
            desk.wait_for(lambda: desk._focus_pid() != desk.process.pid, "the window out of sight")
            desk.display.run("xdotool", "windowmap", "--sync", window)
            desk.display.run("xdotool", "windowactivate", "--sync", window)
            desk.wait_focus("Value")
            desk.type("ells\n")
            desk.wait_focus("Fields")
            self.assertEqual(value_of(desk, "Title"), "Wells")

    def test_the_wheel_scrolls_and_chooses_nothing(self):
        with self.desk() as desk:
            start_entry(desk)
            desk.go_to("Fields", "Kind")
            for name in ("Fields", "Choices"):
                self.point(desk, desk.node(name))
                desk.display.run("xdotool", "click", "--repeat", "5", "--delay", "20", "5")
                desk.settle()
            self.assertEqual((desk.selected("Fields"), desk.selected("Choices"), value_of(desk, "Kind")), ([2], [], ""))

    def test_a_larger_and_a_smaller_window_in_the_middle_of_an_edit(self):
        with self.desk() as desk:
            start_entry(desk)
            open_box(desk, "Abstract", "W")
            window = desk.display.run("xdotool", "getactivewindow").strip()
            for size in ((1200, 900), (300, 200), (900, 700)):
                desk.display.run("xdotool", "windowsize", window, *size)
                desk.settle()
                desk.wait_focus("Value")
            x, y, width, height = desk.node("Value").extents
            left, top, whole, high = desk.app.children[0].extents
            self.assertTrue(left <= x and top <= y and x + width <= left + whole and y + height <= top + high)
            self.assertEqual(desk.text_of("Value"), "W")

    def test_closing_while_a_question_is_open_is_its_cancel(self):
        with self.desk() as desk:
            start_entry(desk)
            fill(desk, "Title", "Wells")
            desk.key("ctrl+q")
            desk.wait_message("Quit Quintave")
            desk.key("alt+F4")  # as a click on a frame's closing button
            desk.wait_focus("Fields")
            self.assertEqual(value_of(desk, "Title"), "Wells")

    def test_a_double_click_opens_a_field_and_takes_a_choice(self):
        with self.desk() as desk:
            start_entry(desk)
            desk.click_row("Fields", 2, 2)
            desk.wait_focus("Choices")
            desk.click_row("Choices", 2, 2)
            desk.wait_for(lambda: value_of(desk, "Kind") == "Numbers", "the choice in its row")

    def test_a_click_on_a_choice_while_the_box_of_another_value_is_open(self):
        with self.desk() as desk:
            start_entry(desk)
            desk.go_to("Fields", "Kind")
            desk.type("o")
            desk.wait_focus("Other value")
            desk.type("Poems")
            desk.click_row("Choices", 1)
            desk.wait_for(lambda: not desk.nodes("Other value"), "the end of the box")
            self.assertEqual((value_of(desk, "Kind"), desk.selected("Choices")), ("Poems", [1]))
            desk.click_row("Choices", 1, 2)
            desk.wait_for(lambda: value_of(desk, "Kind") == "Maps", "the choice in its row")

    def test_a_key_held_down_repeats(self):
        with self.desk() as desk:
            start_entry(desk)
            open_box(desk, "Title", "x")
            desk.display.run("xdotool", "keydown", "x", "sleep", "0.9", "keyup", "x")
            desk.settle()
            text = desk.text_of("Value")
            self.assertTrue(3 <= len(text) <= 60 and set(text) == {"x"}, text)

    def test_on_a_second_monitor_boxes_open_where_the_window_is(self):
        with self.desk(size=(2560, 1024)) as desk:
            monitors = ("left", "1280/338x1024/270+0+0", "screen"), ("right", "1280/338x1024/270+1280+0", "none")
            for monitor in monitors:
                desk.display.run("xrandr", "--setmonitor", *monitor)
            start_entry(desk)
            fill(desk, "Title", "Wells")
            window = desk.display.run("xdotool", "getactivewindow").strip()
            for left in (1400, 100):
                desk.display.run("xdotool", "windowmove", "--sync", window, left, 100)
                desk.wait_for(lambda: abs(desk.app.children[0].extents[0] - left) < 50, "the window on the monitor")
                desk.key("ctrl+q")
                desk.wait_message("Quit Quintave")
                x, _, width, _ = desk.app.children[-1].extents
                desk.key("Escape")
                desk.wait_focus("Fields")
                start = left // 1280 * 1280
                self.assertTrue(start <= x and x + width <= start + 1280, f"a box at {x}, {width} wide, from {start}")

    @staticmethod
    def point(desk, node):
        x, y, width, height = node.extents
        desk.display.run("xdotool", "mousemove", x + width // 2, y + height // 2)


if __name__ == "__main__":
    unittest.main()
