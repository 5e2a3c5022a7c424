"""One table: what the program's heavy work costs, beside tools that do the like. Run by scripts/bench.

Seconds are the processor's, the least of three runs, so that other work on the machine counts little.
"""

import csv
import json
import os
import re
import subprocess
import sys
import tempfile
import time
from pathlib import Path

import archive

ROOT = Path(__file__).resolve().parents[1]
sys.path.insert(0, str(ROOT / "tests/desktop"))
from print_server import PrintServer  # noqa: E402  (its folder has to be known first)

RUNS = 3
PAGES, LINES_PER_PAGE = 1000, 47
RECORDS = 200_000
HEADER = '0,"QuintaveV2","BENCH.FTF"'


def processor_seconds(command, **options):
    """What a command and all that it starts take, the least of the runs."""
    least = float("inf")
    for _ in range(RUNS):
        before = os.times()
        subprocess.run(command, check=True, **options)
        after = os.times()
        least = min(least, after.children_user + after.children_system - before.children_user - before.children_system)
    return least


def measured_by_the_core(build):
    """Seconds of each of the core's benchmarks, by name."""
    out = subprocess.run([build / "bench/quintave-bench", "--benchmark_format=json",
                          f"--benchmark_repetitions={RUNS}"], check=True, capture_output=True, text=True).stdout
    units = {"ns": 1e9, "us": 1e6, "ms": 1e3, "s": 1}
    found = {}
    for run in json.loads(out)["benchmarks"]:
        if run["run_type"] == "iteration":
            name = run["run_name"].split("/real_time")[0]
            found[name] = min(found.get(name, float("inf")), run["cpu_time"] / units[run["time_unit"]])
    return found


def write_report(path, records):
    path.write_bytes("".join(f"{line}\r\n" for line in (HEADER, *records)).encode())


def seconds_of_csv(path):
    least = float("inf")
    for _ in range(RUNS):
        before = time.process_time()
        with open(path, encoding="cp1252", newline="") as file:
            assert sum(1 for _ in csv.reader(file)) == RECORDS + 1
        least = min(least, time.process_time() - before)
    return least


def page_count(pdf):
    return int(re.search(r"(?m)^Pages:\s+(\d+)", subprocess.run(["pdfinfo", pdf], check=True, capture_output=True,
                                                                text=True).stdout)[1])


def pages_per_second(build, folder):
    """The program's pages on a print server, and a text's of the same lines through enscript and ps2pdf."""
    lines = [f"measured {number:7} " * 3 for number in range(PAGES * LINES_PER_PAGE)]
    write_report(folder / "PAGES.RPX", (f'1,1,"Title","{line}"' for line in lines))
    (folder / "pages.txt").write_text("".join(f"Title| {line}\n" for line in lines))
    with PrintServer("Letter") as server:
        env = {**os.environ, **server.env, "QT_QPA_PLATFORM": "offscreen", "XDG_RUNTIME_DIR": str(folder)}
        own = processor_seconds([build / "bench/print-pages", f"{folder}/", "PAGES.RPX"], env=env)
        own_pages = page_count(server.jobs(RUNS, 120)[0].path)
    pdf = folder / "pages.pdf"
    command = f"enscript -q -B -f Courier10 -M Letter -p - {folder}/pages.txt | ps2pdf - {pdf}"
    other = processor_seconds(command, shell=True)
    return own_pages / own, page_count(pdf) / other


def main(build):
    core = measured_by_the_core(build)
    with tempfile.TemporaryDirectory(prefix="quintave-bench-") as name:
        folder = Path(name)
        write_report(folder / "LONG.RPX", (f'2,1,"Field {i % 1000}","{"measured " * (5 + i % 20)}"'
                                           for i in range(RECORDS)))
        megabytes = (folder / "LONG.RPX").stat().st_size / 1e6
        csv_seconds = seconds_of_csv(folder / "LONG.RPX")
        fold_seconds = processor_seconds(f"fold -s -w 80 {folder}/LONG.RPX >{folder}/folded.txt", shell=True)
        own_pages, other_pages = pages_per_second(build, folder)
    rows = [(f"read {megabytes:.0f} MB, {RECORDS} records", f"{core['ReadRecords']:.3f} s",
             f"{csv_seconds:.3f} s Python's csv.reader", f"{csv_seconds / core['ReadRecords']:.1f} times as fast"),
            ("print them to a text file", f"{core['PrintText']:.3f} s", f"{fold_seconds:.3f} s fold -s -w 80",
             f"{core['PrintText'] / fold_seconds:.2f} of its time"),
            (f"print {PAGES} pages", f"{own_pages:.0f} pages/s", f"{other_pages:.0f} pages/s enscript | ps2pdf",
             f"{own_pages / other_pages:.2f} times as fast")]
    with tempfile.TemporaryDirectory(prefix="quintave-bench-") as name:
        rows += archive.rows(build, Path(name), processor_seconds)
    shown = {"ReadRecords", "PrintText", "FoldTheSameFile"}
    rows += [(name, f"{seconds:.4f} s", "", "") for name, seconds in core.items() if name not in shown]
    for row in rows:
        print("  ".join(text.ljust(width) for text, width in zip(row, (36, 14, 34, 0))).rstrip())


if __name__ == "__main__":
    main(Path(sys.argv[1]))
