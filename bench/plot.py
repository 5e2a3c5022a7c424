"""Draws docs/cost-of-fields.svg and docs/cost-of-lists.svg from what scripts/bench has measured.

    plot.py BUILD
"""

import json
import sys
from pathlib import Path

import matplotlib

matplotlib.use("svg")
matplotlib.rcParams["svg.hashsalt"] = "quintave"  # the same figures make the same file
from matplotlib import pyplot  # noqa: E402  (the way of drawing has to be chosen first)

DOCS = Path(__file__).resolve().parents[1] / "docs"
PLOTS = {
    "cost-of-fields": ("fields, each with two records in the report",
                       ("merge", "report load", "template load", "save", "text print")),
    "cost-of-lists": ("occurrences, each with a choice of its own",
                      ("report load, choices", "save, occurrences", "entering a group")),
}


def draw(growth, name, axis, operations):
    figure, plot = pyplot.subplots(figsize=(7, 4))
    for operation in operations:
        sizes = sorted(growth[operation], key=int)
        plot.plot([int(size) for size in sizes], [growth[operation][size] * 1e3 for size in sizes], "o-", label=operation)
    plot.set(xlabel=axis, ylabel="milliseconds", xlim=0, ylim=0)
    plot.xaxis.set_major_formatter("{x:,.0f}")
    plot.grid(alpha=0.3)
    plot.legend()
    figure.savefig(DOCS / f"{name}.svg", bbox_inches="tight", metadata={"Date": None})


def main(build):
    growth = json.loads((build / "measured.json").read_text())["growth"]
    for name, (axis, operations) in PLOTS.items():
        draw(growth, name, axis, operations)


if __name__ == "__main__":
    main(Path(sys.argv[1]))
