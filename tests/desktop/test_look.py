"""What the window looks like at several scales, light and dark: nothing outside, nothing cut, nothing without a name.

The pictures of the last run are left in out/look/.
"""

import unittest

from case import DesktopTest, fill, reply, start_entry
from desk import ROOT

OUT = ROOT / "out/look"
SMALL_SCREEN, LARGE_SCREEN = (1280, 1024), (2560, 2048)
BUTTON_FRAME = 8
LARGE = 10


class Look:
    """What is looked at in each of the kinds at the end of this file."""

    NAME = "LOOK.FTF"
    TEMPLATE = (
        '1,-1,"","Identification of the data set","",""',
        '2,60,"TEXT","Title","Mandatory. Full title of the data set: what was measured, where and when, and by whom, '
        'as it is to stand in a catalogue that people of other fields of work read.","TITLE.HLP"',
        '2,30,"TEXT","Keyword","One word.",""',
        '2,999,"MEMO","Abstract","What the data are.",""',
        '1,-1,"","Content","",""',
        '2,20,"LIST","Kind","",""', '"<RESET/CLEAR FIELD ENTRY>"', '"Maps"', '"Numbers"', '"OTHER..."', '"XXX-1XXX"',
        '2,50,"LIST","Long choices","",""',
        *[f'"Choice {number}, longer than a choice needs to be to be understood"' for number in range(1, 30)],
        '"XXX-1XXX"',
        '-2,0,"","Details","",""',
        '3,40,"TEXT","A title that is longer than a row of the list can show","",""',
        '2,2,"GROUP START","Samples and where they were taken","",""',
        '3,10,"TEXT","Depth","",""',
        '3,600,"MEMO","Notes","",""',
        '3,20,"LIST","Soil","",""', '"Clay"', '"Peat"', '"OTHER..."', '"XXX-1XXX"',
        '2,0,"GROUP END","","",""',
    )

    def new_resources(self, *arguments):
        folder = super().new_resources(*arguments)
        (folder / "quintave.tbl").write_bytes(f'"","{self.NAME}","-1"\r\n"COLOR",15787740\r\n'.encode())
        (folder / "TITLE.HLP").write_bytes(b"Help.\r\n")
        return folder

    def open(self):
        return self.desk(scale=self.SCALE, dark=self.DARK, size=SMALL_SCREEN if self.SCALE == 1 else LARGE_SCREEN)

    def picture(self, desk, state):
        return desk.screenshot(OUT / f"{state}-{'dark' if self.DARK else 'light'}-{self.SCALE}.png")

    def check(self, desk, state):
        """One state of the window: picture, places, room for texts, names."""
        desk.settle()
        picture = self.picture(desk, state)
        window = desk.app.children[0]
        shown = [(node, node.role, node.extents) for node in window.walk()]
        with self.subTest(state, see=str(picture.relative_to(ROOT))):
            self.assertEqual(outside(shown, window.extents), [])
            self.assertEqual(overlapping(shown), [])
            self.assertEqual(cut_texts(desk, shown), [])
            self.assertEqual(desk.unnamed(), [])
            if desk.scale == 1:
                x, y, width, height = window.extents
                self.assertTrue(0 <= x and x + width <= SMALL_SCREEN[0] and 0 <= y and y + height <= SMALL_SCREEN[1])

    def test_the_start_up_frame(self):
        with self.open() as desk:
            self.check(desk, "start")

    def test_the_entry_controls_of_every_type(self):
        with self.open() as desk:
            start_entry(desk)
            self.check(desk, "text-empty")
            fill(desk, "Title", "A title of sixty characters, no more and not a single one les")
            desk.go_to("Fields", "Title")
            desk.key("Enter")
            self.check(desk, "text")
            desk.key("Enter")
            desk.wait_focus("Fields")
            fill(desk, "Abstract", "\n".join(f"Line {number}" for number in range(1, 13)), "ctrl+Enter")
            desk.go_to("Fields", "Abstract")
            desk.key("Enter")
            self.check(desk, "memo")
            desk.key("ctrl+Enter")
            self.instances(desk)
            self.choices(desk)

    def instances(self, desk):
        fill(desk, "Keyword", "rivers")
        desk.go_to("Fields", "Keyword")
        desk.tab_to("Add instance")
        desk.key("space")
        desk.type("fens")
        desk.tab_to("Instance shown")
        self.check(desk, "instances")

    def choices(self, desk):
        desk.tab_to("Fields")
        desk.go_to("Fields", "Kind")
        desk.type("o")
        desk.wait_focus("Other value")
        desk.type("Poems")
        self.check(desk, "other")
        desk.key("Enter")
        desk.wait_focus("Fields")
        desk.go_to("Fields", "Long choices")
        desk.key("Enter", "Down", "Down")
        self.check(desk, "choices")

    def test_an_open_group(self):
        with self.open() as desk:
            start_entry(desk)
            desk.key("End", "Enter")
            desk.wait_focus("Group fields")
            self.check(desk, "group")
            fill(desk, "Depth", "1 m", fields="Group fields")
            fill(desk, "Notes", "wet\ncold", "ctrl+Enter", "Group fields")
            desk.key("Enter")
            self.check(desk, "group-choices")
            desk.type("o")
            desk.wait_focus("Other value")
            self.check(desk, "group-other")

    def test_the_print_panel_and_the_help_window(self):
        with self.open() as desk:
            start_entry(desk)
            desk.key("ctrl+p")
            reply(desk, "Yes", "PRINT CURRENT SCREEN FIELDS?")
            desk.wait_focus("NO Section/Field Indent")
            self.check(desk, "print")
            desk.tab_to("Cancel")
            desk.key("space")
            desk.wait_focus("Fields")
            desk.tab_to("More Help")
            desk.key("space")
            window = desk.wait_for(lambda: next((found for found in desk.app.children
                                                 if found.name == "Quintave Help" and found.showing), None), "help")
            desk.settle()
            self.picture(desk, "help")
            shown = [(node, node.role, node.extents) for node in window.walk()]
            self.assertEqual(outside(shown, window.extents), [])
            self.assertEqual(cut_texts(desk, shown), [])

    def test_the_question_for_the_resource_directory(self):
        with self.desk(scale=self.SCALE, dark=self.DARK, resources=False,
                       size=SMALL_SCREEN if self.SCALE == 1 else LARGE_SCREEN) as desk:
            box = desk.wait_dialog("Quintave.Tbl Location?")
            self.picture(desk, "directory")
            shown = [(node, node.role, node.extents) for node in box.walk()]
            self.assertEqual(outside(shown, box.extents), [])

    def test_a_message_box(self):
        with self.open() as desk:
            start_entry(desk)
            fill(desk, "Title", "a")
            desk.key("ctrl+q")
            desk.wait_message()
            self.picture(desk, "message")
            box = desk.app.children[-1]
            shown = [(node, node.role, node.extents) for node in box.walk()]
            self.assertEqual(outside(shown, box.extents), [])
            self.assertEqual(cut_texts(desk, shown), [])
            self.assertEqual(desk.unnamed(), [])


def outside(shown, frame):
    """The controls that are not wholly inside the frame; rows of lists, which scroll, are not looked at."""
    left, top, width, height = frame
    return [f"{role} {node.name!r} {extents} outside {frame}" for node, role, extents in shown
            if extents[0] < left or extents[1] < top or extents[0] + extents[2] > left + width
            or extents[1] + extents[3] > top + height]


def overlapping(shown):
    """The pairs of controls that stand on each other; what only holds others, or is part of one, is left out."""
    placed = [(node.name, role, extents) for node, role, extents in shown
              if role in ("button", "label", "list", "text", "combo box") or role == "scroll bar" and node.name]
    return [f"{a[1]} {a[0]!r} {a[2]} and {b[1]} {b[0]!r} {b[2]}"
            for index, a in enumerate(placed) for b in placed[:index]
            if min(a[2][0] + a[2][2], b[2][0] + b[2][2]) > max(a[2][0], b[2][0])
            and min(a[2][1] + a[2][3], b[2][1] + b[2][3]) > max(a[2][1], b[2][1])]


def cut_texts(desk, shown):
    """The buttons and labels that have less room than their text takes, as the picture drawer measures it.

    The help line is left out: its name is not its text. Sizes of controls are in pixels before scaling. A text that does not fit its width may go on in further lines.
    """
    found = []
    for node, role, (_, _, width, height) in shown:
        if role not in ("button", "label") or not node.name.strip() or node.name == "Help line":
            continue
        text = ("^" if node.description.startswith("Ctrl+") else "") + node.name  # as the key stands in the caption
        needed, line = text_size(desk, text)
        lines_there = max(1, round(height / line)) if role == "label" else 1
        room = width * lines_there - (BUTTON_FRAME if role == "button" else 0)
        if needed > room * 1.02 + 1:  # the window's drawer does round
            found.append(f"{role} {text!r}: {needed:.0f} pixels in {width} x {height}")
    return found


MEASURED = {}


def text_size(desk, text):
    """Width and height of a line of this text in the font of the desktop, in pixels at scale 1.

    It is measured large, where no letter's width is rounded: two drawers round them in different ways.
    """
    if text not in MEASURED:
        font = desk.display.run("fc-match", "-f", "%{file}", "sans")
        drawn = desk.display.run("convert", "-density", 96 * LARGE, "-font", font, "-pointsize", "9",
                                 f"label:{text.strip().replace('%', '%%')}", "-format", "%w %h", "info:")
        MEASURED[text] = tuple(int(number) / LARGE for number in drawn.split())
    return MEASURED[text]


class LightAtScale1(Look, DesktopTest):
    SCALE, DARK = 1, False


class DarkAtScale1(Look, DesktopTest):
    SCALE, DARK = 1, True


class LightAtScale1AndAQuarter(Look, DesktopTest):
    SCALE, DARK = 1.25, False


class LightAtScale1AndAHalf(Look, DesktopTest):
    SCALE, DARK = 1.5, False


class LightAtScale2(Look, DesktopTest):
    SCALE, DARK = 2, False


class DarkAtScale2(Look, DesktopTest):
    SCALE, DARK = 2, True


if __name__ == "__main__":
    unittest.main()
