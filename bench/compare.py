"""One table: what the program costs, beside what it is to cost at most. Run by scripts/bench.

    compare.py BUILD [PART...]     parts: core growth start window print archive; without any, all of them

Each cost is measured beside its yardstick in the same run, so the targets are ratios. Seconds of work without a window
are the processor's, the least of several runs, so that other work on the machine counts little; what a user waits for
is measured by the clock, and is only true on a quiet machine. The figures lie in BUILD/measured.json afterwards.
"""

import json
import sys
import tempfile
from pathlib import Path

import archive
import core
import printing
import start_up
import window

PARTS = {"core": core.rows, "growth": core.growth_rows, "start": start_up.rows, "window": window.rows,
         "print": printing.rows, "archive": archive.rows}


def shown(row):
    what, figure, ratio, limit = row
    if limit is None:
        return what, figure, f"{ratio:.2f}", "", ""
    least = limit < 0  # a negative limit is the least that is asked for
    met = ratio >= -limit if least else ratio <= limit
    return what, figure, f"{ratio:.2f}", f"at {'least' if least else 'most'} {abs(limit):g}", "met" if met else "MISSED"


def main(build, *names):
    with tempfile.TemporaryDirectory(prefix="quintave-bench-") as folder:
        table = [("", "measured", "ratio", "target", "")]
        kept = build / "measured.json"
        measured = json.loads(kept.read_text()) if kept.exists() else {}
        for name in names or PARTS:
            rows = PARTS[name](build, Path(folder), measured)
            table += [shown(row) for row in rows]
    widths = [max(len(row[column]) for row in table) for column in range(len(table[0]))]
    for row in table:
        print("  ".join(text.ljust(width) for text, width in zip(row, widths)).rstrip())
    kept.write_text(json.dumps(measured, indent=1))


if __name__ == "__main__":
    main(Path(sys.argv[1]).resolve(), *sys.argv[2:])
