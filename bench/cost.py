"""Counts the instructions of the program's heavy work, which does not depend on what else the machine does, and fails
where one of its operations costs a tenth more than is on record, or more than 2.2 times as much at twice the size.

    cost.py PROGRAM           compares with bench/cost.tsv
    cost.py PROGRAM --renew   writes it anew: after a change that is meant to cost more, or one that saves a lot

A cost on record is a ratio to a piece of work of the same program that uses the standard library alone, counted in the
same run: so it hardly depends on the library. It does depend on the compiler and the kind of processor, and is on record
for each pair by name; with one that is not there only the growth is checked, and the program says so.
"""

import csv
import os
import platform
import re
import subprocess
import sys
import tempfile
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

RECORD = Path(__file__).with_name("cost.tsv")
NAMES = ("template load", "report load", "save", "text print", "entering a group")
SIZE = 4000
# The C library copies and searches bytes in other ways on a newer processor; so it takes every one for an older one.
ENVIRONMENT = {**os.environ, "GLIBC_TUNABLES": "glibc.cpu.hwcaps=-AVX2,-AVX512VL,-AVX512BW,-ERMS,-FSRM,-RTM"}
MOST_RISE = 1.10
MOST_GROWTH = 2.2


def instructions(program, name, size, folder):
    out = Path(folder, f"{name}-{size}".replace(" ", "-"))
    done = subprocess.run(["valgrind", "--tool=callgrind", "--collect-atstart=no", "--toggle-collect=Counted(*",
                           f"--callgrind-out-file={out}", program, name, str(size)], env=ENVIRONMENT, capture_output=True, text=True)
    count = re.search(r"Collected : (\d+)", done.stderr)
    if done.returncode or not count or int(count[1]) == 0:
        sys.exit(f"cost: {name} was not counted:\n{done.stderr}")
    return int(count[1])


def count_all(program):
    """For each operation its ratio to the reference, and how much more it costs at twice the size."""
    works = [("reference", SIZE), *((name, size) for name in NAMES for size in (SIZE, 2 * SIZE))]
    with tempfile.TemporaryDirectory(prefix="quintave-cost-") as folder, ThreadPoolExecutor() as pool:
        counts = dict(zip(works, pool.map(lambda work: instructions(program, *work, folder), works)))
    reference = counts["reference", SIZE]
    return {name: (counts[name, SIZE] / reference, counts[name, 2 * SIZE] / counts[name, SIZE]) for name in NAMES}


def read_record():
    """compiler -> name -> ratio"""
    if not RECORD.exists():
        return {}
    with open(RECORD, newline="") as file:
        return {row.pop("compiler"): row for row in csv.DictReader(file, delimiter="\t")}


def renew(compiler, found):
    record = read_record() | {compiler: {name: f"{ratio:.4f}" for name, (ratio, _) in found.items()}}
    with open(RECORD, "w", newline="") as file:
        rows = csv.DictWriter(file, ("compiler", *NAMES), delimiter="\t", lineterminator="\n")
        rows.writeheader()
        rows.writerows({"compiler": compiler, **record[compiler]} for compiler in sorted(record))


def verdict(rise, growth):
    if rise and rise > MOST_RISE:
        return "TOO DEAR"
    return "GROWS TOO FAST" if growth > MOST_GROWTH else ""


def main(program, *options):
    compiler = subprocess.run([program], check=True, capture_output=True, text=True).stdout.strip()
    compiler += f" {platform.machine()}"
    found = count_all(program)
    if "--renew" in options:
        renew(compiler, found)
    recorded = read_record().get(compiler, {})
    if not recorded:
        print(f"{RECORD.name} has no costs for {compiler}: only their growth is checked.")
    print(f"{compiler:18} {'ratio':>8} {'on record':>10} {'rise':>8} {'twice the size':>15}")
    faults = 0
    for name, (ratio, growth) in found.items():
        rise = ratio / float(recorded[name]) if recorded else None
        faults += bool(verdict(rise, growth))
        shown = f"{recorded[name]:>10} {(rise - 1) * 100:+6.1f} %" if recorded else " " * 19
        print(f"{name:18} {ratio:8.4f} {shown} {growth:9.2f} times  {verdict(rise, growth)}".rstrip())
    if faults:
        print("Where a rise is meant: scripts/bench --renew writes the record anew.")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
