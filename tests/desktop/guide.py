"""Takes the pictures of the guide: docs/screenshots/guide-*.png. Run by scripts/screenshots.

What is typed comes from demo.py and docs/examples; the template that the guide writes is read from the guide itself.
"""

import re
import subprocess
import tempfile
from pathlib import Path

from case import OPEN_TITLE, open_box
from demo import choose_value, enter_value, fill, leave_start
from desk import ROOT, Desk
from print_server import PrintServer

DOCS = ROOT / "docs/screenshots"
EXAMPLE = ROOT / "docs/examples/river-temperature.rpx"
DATE = {"SOURCE_DATE_EPOCH": "1709510400"}  # 4 March 2024, so that pages do not differ from day to day
LAYOUTS = ("none", "titles", "data", "raw")  # in the order in which the panel's button brings them
PAGE_DPI = "88"  # ten points of a letter are then twelve pixels high
QUESTION = "PRINT CURRENT SCREEN FIELDS?"
TO_PRINTER = "PRINT (to default printer)"


def entry_pictures():
    with Desk("guide-entry") as desk:
        leave_start(desk)
        fill(desk)
        desk.go_to("Fields", "Language")
        desk.type("o")
        desk.wait_focus("Other value")
        desk.type("Norwegian")
        yield desk, "other"
        desk.key("Enter")
        desk.go_to("Fields", "Keyword")
        desk.press("Add instance")
        desk.wait_focus("Value")
        desk.type("shade")
        yield desk, "instances"
        desk.key("Enter")
        desk.go_to("Fields", "Title")
        desk.tab_to("More Help")
        desk.key("space")
        desk.wait_for(lambda: "Quintave Help" in desk.windows(), "the help window")
        yield desk, "help"


def group_picture():
    with Desk("guide-group") as desk:
        leave_start(desk)
        desk.go_to("Fields", "Contacts")
        desk.key("Enter")
        desk.node("Group fields")
        enter_value(desk, "Name", "Helen Marsh", fields="Group fields")
        choose_value(desk, "Role", "C", "Contact person", fields="Group fields")
        enter_value(desk, "Organisation", "Fenland River Survey", fields="Group fields")
        desk.key("ctrl+n")
        enter_value(desk, "Name", "Tom Brandt", fields="Group fields")
        choose_value(desk, "Role", "D", "Data collector", fields="Group fields")
        open_box(desk, "Organisation", "F", fields="Group fields")
        desk.type("enland River Survey")
        yield desk, "group"


def merge_picture():
    with Desk("guide-merge") as desk:
        leave_start(desk)
        enter_value(desk, "Creator", "Okafor, Grace")
        desk.key("ctrl+a")
        desk.choose_file(EXAMPLE, OPEN_TITLE)
        desk.wait_message("Overwrite or 'Add To'")
        yield desk, "merge"


def scripts_picture():
    """Names of the whole world, and the report's name among them."""
    names = {"Title": "Wody Łódzkie − Υδατα", "Creator": "山田太郎", "Abstract": "Pomiary −25 ‰, שלום, Δ 0,3"}
    with Desk("guide-scripts") as desk:
        leave_start(desk)
        for title, name in names.items():
            desk.go_to("Fields", title)
            desk.key("Enter")
            desk.wait_focus("Value")
            desk.copy(name)
            desk.key("ctrl+v")
            if title != "Abstract":
                desk.key("Enter")
        yield desk, "scripts"


def own_template_picture():
    text = (ROOT / "docs/guide.md").read_text()
    block, = re.findall(r"^```ftf\n(.*?)^```", text, re.M | re.S)
    with tempfile.TemporaryDirectory() as folder:
        Path(folder, "quintave.tbl").write_text('"","WELLS.FTF","-1"\n')
        Path(folder, "WELLS.FTF").write_text(block)
        with Desk("guide-own", resources=folder) as desk:
            leave_start(desk)
            enter_value(desk, "Owner", "Parish of Ely")
            desk.go_to("Fields", "Condition")
            desk.key("Enter")
            yield desk, "own-template"


def print_pictures():
    """The panel, and a page in each layout."""
    with PrintServer("Letter") as server, Desk("guide-print", env={**DATE, **server.env}) as desk:
        leave_start(desk)
        fill(desk)
        for number, layout in enumerate((*LAYOUTS, "below")):
            desk.key("ctrl+p")
            desk.answer("Yes", QUESTION)
            desk.node(TO_PRINTER, "button")
            if layout == "none":
                yield desk, "print"
            if layout == "below":
                desk.press("Data Starts on Field Title Line")
            if number:
                desk.press(next(node.name for node in desk.nodes(role="button") if "Indent" in node.name))
            desk.press(TO_PRINTER)
            desk.node("Fields")
            paint(server.jobs(number + 1)[-1], f"guide-print-{layout}")


def paint(job, name):
    """The printed part of a job's first page."""
    with tempfile.TemporaryDirectory() as folder:
        page = Path(folder, "page.png")
        subprocess.run(["pdftoppm", "-r", PAGE_DPI, "-png", "-singlefile", job.path, page.with_suffix("")], check=True)
        subprocess.run(["convert", page, "-trim", "+repage", "-bordercolor", "white", "-border", "16",
                        "-colors", "32", DOCS / f"{name}.png"], check=True)
    print(f"docs/screenshots/{name}.png", flush=True)


def take():
    for pictures in (entry_pictures, group_picture, merge_picture, scripts_picture, own_template_picture, print_pictures):
        for desk, name in pictures():
            print(desk.screenshot(DOCS / f"guide-{name}.png").relative_to(ROOT), flush=True)
