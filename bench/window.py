"""The real window on a virtual display: from the key press to the painted row, and a load into the window that shows it."""

import statistics
import subprocess

import core
from start_up import Bare

FIELDS, ROWS, OCCURRENCES = 16_000, 32_000, 10_000
FRAME = 0.016
KEYS, LOADS = 1000, 5
FEW = 10


def acts(build, display, *arguments):
    """The seconds of every act, by name."""
    command = [build / "bench/window-bench", *map(str, arguments)]
    found = {}
    for line in subprocess.run(command, env=display.env, check=True, capture_output=True, text=True).stdout.splitlines():
        name, seconds = line.split()
        found.setdefault(name, []).append(float(seconds))
    return found


def delay(what, seconds):
    middle, late = statistics.median(seconds), statistics.quantiles(seconds, n=100)[98]
    return what, f"{late * 1e3:.1f} ms (half the times {middle * 1e3:.1f} ms)", late / FRAME, 1


def rows(build, _folder, _measured):
    display = Bare()
    try:
        typing = acts(build, display, "typing", ROWS, KEYS)
        group = acts(build, display, "group", OCCURRENCES, KEYS)
        load, question = (min(acts(build, display, "load", fields, 1)["load"][0] for _ in range(LOADS))
                          for fields in (FIELDS, FEW))
    finally:
        display.close()
    yield delay(f"a key in {ROWS} rows, to 16 ms in 99 of 100", typing["key"])
    yield delay(f"Enter in {ROWS} rows", typing["enter"])
    yield delay(f"a key in {OCCURRENCES} occurrences", group["key"])
    yield delay(f"Enter in {OCCURRENCES} occurrences", group["enter"])
    yield delay(f"the next of {OCCURRENCES} occurrences", group["next"])
    own = core.benchmarks(build, f"^growth: report load/{FIELDS}", LOADS)[f"growth: report load/{FIELDS}"][1]
    # What the load of a few fields takes is its question: a message box that is shown, painted and answered.
    yield (f"load {2 * FIELDS} records into the window: to the core",
           f"{load * 1e3:.0f} ms less {question * 1e3:.0f} ms for a question, {own * 1e3:.0f} ms", (load - question) / own, 3)
