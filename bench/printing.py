"""Pages: the program's on a print server, and a text's of the same lines through enscript and ps2pdf."""

import os
import re
import subprocess
import sys
from pathlib import Path

from measure import RUNS, processor_seconds, write_report

sys.path.insert(0, str(Path(__file__).resolve().parents[1] / "tests/desktop"))
from print_server import PrintServer  # noqa: E402  (its folder has to be known first)

PAGES, LINES_PER_PAGE = 1000, 47


def page_count(pdf):
    text = subprocess.run(["pdfinfo", pdf], check=True, capture_output=True, text=True).stdout
    return int(re.search(r"(?m)^Pages:\s+(\d+)", text)[1])


def rows(build, folder, _measured):
    lines = [f"measured {number:7} " * 3 for number in range(PAGES * LINES_PER_PAGE)]
    write_report(folder / "PAGES.RPX", (f'1,1,"Title","{line}"' for line in lines))
    (folder / "pages.txt").write_text("".join(f"Title| {line}\n" for line in lines))
    with PrintServer("Letter") as server:
        env = {**os.environ, **server.env, "QT_QPA_PLATFORM": "offscreen", "XDG_RUNTIME_DIR": str(folder)}
        seconds = processor_seconds([build / "bench/print-pages", f"{folder}/", "PAGES.RPX"], env=env)
        own = page_count(server.jobs(RUNS, 120)[0].path) / seconds
    pdf = folder / "pages.pdf"
    command = f"enscript -q -B -f Courier10 -M Letter -p - {folder}/pages.txt | ps2pdf - {pdf}"
    seconds = processor_seconds(command, shell=True)
    other = page_count(pdf) / seconds
    yield f"print {PAGES} pages: enscript | ps2pdf", f"{own:.0f}, {other:.0f} pages/s", own / other, -1
