"""Takes the pictures of docs/screenshots (light and dark, and the guide's) and, at scales 1, 1.5 and 2, of
out/screenshots.

Run by scripts/screenshots; with the argument guide, the guide's alone. What is typed into the window is in demo.py, the
guide's pictures are in guide.py.
"""

import shutil
import sys

import guide
from demo import fill, leave_start
from desk import ROOT, Desk

DOCS, OUT = ROOT / "docs/screenshots", ROOT / "out/screenshots"
SCREEN = (2560, 2048)  # holds the window at scale 2


def take(scale, dark):
    shade = "dark" if dark else "light"
    with Desk(f"screenshots-{shade}-{scale}", scale=scale, dark=dark, size=SCREEN) as desk:
        pictures = [desk.screenshot(OUT / f"start-{shade}-{scale}.png")]
        leave_start(desk)
        fill(desk)
        desk.go_to("Fields", "Type of Data")
        pictures.append(desk.screenshot(OUT / f"entry-{shade}-{scale}.png"))
    return pictures


def take_all():
    shutil.rmtree(OUT, ignore_errors=True)
    for dark in (False, True):
        for scale in (1, 1.5, 2):
            for picture in take(scale, dark):
                print(picture.relative_to(ROOT), flush=True)
                if scale == 1:
                    shutil.copy(picture, DOCS / picture.name.replace("-1.png", ".png"))


def main(arguments):
    DOCS.mkdir(parents=True, exist_ok=True)
    if arguments != ["guide"]:
        take_all()
    guide.take()
    print(f"in {DOCS.relative_to(ROOT)}:", *sorted(path.name for path in DOCS.glob("*.png")))


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
