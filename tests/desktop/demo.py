"""The demonstration: the real window, from the start-up frame to a saved and a printed report, worked by keys.

Run by scripts/demo; everything it makes is left in out/demo/. fill() is also what scripts/screenshots shows.
"""

import shutil
import sys

from desk import ROOT, Desk

OUT = ROOT / "out/demo"
TITLE = "Water temperature of the River Ouse at Ely, 2019 to 2023"


def enter_value(desk, title, value, commit="Enter", fields="Fields"):
    """Types a value into the free-text field of this title and commits it."""
    desk.go_to(fields, title)
    row = desk.selected(fields)[0]
    desk.key("Enter")
    desk.wait_focus("Value")
    desk.type(value)
    desk.key(commit)
    desk.wait_for(lambda: value[:20].split("\n")[0] in desk.row(fields, row), f"the value in the row {title!r}")


def choose_value(desk, title, letters, shown, fields="Fields"):
    """Picks the choice that the letters lead to."""
    desk.go_to(fields, title)
    row = desk.selected(fields)[0]
    desk.type(letters)
    if shown not in desk.row(fields, row):  # more than one choice begins so: the first is selected, Enter takes it
        desk.key("Enter")
    desk.wait_for(lambda: shown in desk.row(fields, row), f"{shown!r} in the row {title!r}")


def leave_start(desk):
    desk.tab_to("Use Quintave")
    desk.key("space")
    desk.node("Fields")


def fill(desk):
    """Enters a small report in the default template."""
    enter_value(desk, "Title", TITLE)
    enter_value(desk, "Creator", "Fenland River Survey")
    choose_value(desk, "Type of Data", "O", "Observations")
    enter_value(desk, "Abstract", "Hourly water temperature from three loggers.\nCalibrated each spring.", "ctrl+Enter")
    choose_value(desk, "Status", "C", "Complete")
    fill_variables(desk)
    enter_value(desk, "Start Date", "2019-01-01")
    enter_value(desk, "End Date", "2023-12-31")
    fill_keywords(desk)


def fill_variables(desk):
    """Two occurrences of a group: Ctrl+N opens the next one, Ctrl+E leaves the group."""
    desk.go_to("Fields", "Variables")
    desk.key("Enter")
    desk.node("Group fields")
    enter_value(desk, "Name", "time", fields="Group fields")
    choose_value(desk, "Kind of Values", "D", "Date or time", fields="Group fields")
    desk.key("ctrl+n")
    desk.wait_for(lambda: "time" not in desk.row("Group fields", 0), "an empty second occurrence")
    enter_value(desk, "Name", "temperature", fields="Group fields")
    choose_value(desk, "Kind of Values", "R", "Real number", fields="Group fields")
    if hasattr(desk, "picture"):
        desk.picture("group")
    desk.key("ctrl+e")
    desk.wait_for(lambda: not desk.nodes("Group fields"), "the end of the group")


def fill_keywords(desk):
    """A field with two instances."""
    desk.go_to("Fields", "Keyword")
    row = desk.selected("Fields")[0]
    desk.key("Enter")
    desk.wait_focus("Value")
    desk.type("rivers")
    desk.press("Add instance")
    desk.wait_focus("Value")
    desk.type("water temperature")
    desk.key("Enter")
    desk.wait_for(lambda: "rivers|water" in desk.row("Fields", row), "both instances in the row Keyword")


class Demo(Desk):
    """A Desk that numbers its pictures and says what it does."""

    shown = 0

    def picture(self, name):
        self.shown += 1
        path = self.screenshot(OUT / f"{self.shown}-{name}.png")
        print(f"  {path.relative_to(ROOT)}", flush=True)


def save(desk):
    desk.key("ctrl+s")
    desk.wait_dialog("Name a Quintave report (*.RPX) output file...")
    desk.picture("save")
    desk.choose_file(OUT / "demo.rpx")
    desk.wait_for((OUT / "demo.rpx").exists, "the report out/demo/demo.rpx")


def print_to_file(desk):
    desk.key("ctrl+p")
    desk.answer("Yes", "PRINT CURRENT SCREEN FIELDS?")
    desk.node("PRINT (one copy to a file)", "button")
    desk.picture("print")
    desk.press("PRINT (one copy to a file)")
    desk.choose_file(OUT / "demo.txt", "Pick an ASCII Quintave print file name...")
    desk.wait_for((OUT / "demo.txt").exists, "the print out/demo/demo.txt")
    desk.node("Fields")


def main():
    shutil.rmtree(OUT, ignore_errors=True)
    OUT.mkdir(parents=True)
    print("The window is worked by keys on a display of its own; pictures as they are taken:", flush=True)
    with Demo("demo", folder=OUT, evidence=OUT / "failure") as desk:
        desk.picture("start")
        leave_start(desk)
        desk.picture("empty")
        fill(desk)
        desk.go_to("Fields", "Abstract")
        desk.picture("filled")
        save(desk)
        print_to_file(desk)
        desk.key("ctrl+q")
        status = desk.wait_exit()
    print(f"The program ended with status {status}. In {OUT}:")
    for path in sorted(OUT.glob("demo.*")):
        print(f"  {path.name}: {path.stat().st_size} bytes")
    print("  resources/: the copy of the resource directory that the program worked in")
    return status


if __name__ == "__main__":
    sys.exit(main())
