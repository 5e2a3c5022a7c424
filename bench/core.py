"""The core without a window: reading, printing to text, saving, inserting, and how costs grow with size."""

import csv
import json
import os
import subprocess
import time
from concurrent.futures import ThreadPoolExecutor

import cost
from measure import RUNS, processor_seconds, write_report

RECORDS = 200_000
FRAME = 0.016  # seconds: what comes between two pictures of a screen is not felt
UNITS = {"ns": 1e9, "us": 1e6, "ms": 1e3, "s": 1}


def benchmarks(build, only, turns=RUNS, env=None):
    """Of each benchmark whose name fits the pattern, by name: the processor's and the clock's seconds, the least."""
    command = [build / "bench/quintave-bench", "--benchmark_format=json", f"--benchmark_filter={only}",
               f"--benchmark_repetitions={turns}", "--benchmark_enable_random_interleaving=true"]
    found = {}
    done = subprocess.run(command, env=env, check=True, capture_output=True, text=True)
    for run in json.loads(done.stdout)["benchmarks"]:
        if run["run_type"] == "iteration":
            name = run["run_name"].split("/iterations")[0].removesuffix("/real_time")
            former = found.get(name, (float("inf"), float("inf")))
            unit = UNITS[run["time_unit"]]
            found[name] = (min(former[0], run["cpu_time"] / unit), min(former[1], run["real_time"] / unit))
    return found


def seconds_of_csv(path):
    least = float("inf")
    for _ in range(RUNS):
        before = time.process_time()
        with open(path, encoding="cp1252", newline="") as file:
            assert sum(1 for _ in csv.reader(file)) == RECORDS + 1
        least = min(least, time.process_time() - before)
    return least


def growth(build):
    """operation -> size -> the processor's seconds. The files lie in memory: a disk's cost depends on what is on it."""
    env = {**os.environ, "TMPDIR": "/dev/shm"} if os.path.isdir("/dev/shm") else None
    sizes = {}
    for name, (processor, _) in sorted(benchmarks(build, "^growth", env=env).items()):
        operation, size = name.removeprefix("growth: ").split("/")
        sizes.setdefault(operation, {})[int(size)] = processor
    return sizes


def seconds_rows(sizes):
    for operation, seconds in sizes.items():
        ordered = sorted(seconds)
        steps = ", ".join(f"{seconds[size] * 1e3:.1f}" for size in ordered)
        yield f"{operation}: {ordered[-1]} to {ordered[-2]}", f"{steps} ms", seconds[ordered[-1]] / seconds[ordered[-2]], None


def growth_rows(build, folder, _measured):
    """Up to the limits of 16 bits, as instructions: the seconds depend on what else is in the processor's cache."""
    half, whole = 16_000, 32_000
    works = [(name, size) for name in cost.NAMES + ("merge",) for size in (half, whole)]
    with ThreadPoolExecutor() as pool:
        program = build / "bench/quintave-cost"
        counts = dict(zip(works, pool.map(lambda work: cost.instructions(program, *work, folder), works)))
    for name, size in works[::2]:
        twice = counts[name, whole]
        yield (f"{name}: {whole} to {half}", f"{twice / 1e6:.0f} million instructions", twice / counts[name, size], 2.2)


def rows(build, folder, measured):
    write_report(folder / "LONG.RPX", (f'2,1,"Field {i % 1000}","{"measured " * (5 + i % 20)}"'
                                       for i in range(RECORDS)))
    megabytes = (folder / "LONG.RPX").stat().st_size / 1e6
    csv_seconds = seconds_of_csv(folder / "LONG.RPX")
    fold_seconds = processor_seconds(f"fold -s -w 80 {folder}/LONG.RPX >{folder}/folded.txt", shell=True)
    found = benchmarks(build, "^[^g]")
    read, text = found["ReadRecords"][0], found["PrintText"][0]
    copy, insert = found["CopyTheSameBytes"][0], found["InsertAtTheFront"][0]
    flushed, new, again = (found[name][1] for name in ("CopyTheReport", "SaveUnderANewName", "SaveAgain"))
    yield f"read {megabytes:.0f} MB: csv.reader's time", f"{read:.3f} s, {csv_seconds:.3f} s", csv_seconds / read, -10
    yield "print it to text: to fold -s -w 80", f"{text:.3f} s, {fold_seconds:.3f} s", text / fold_seconds, 2
    for what, seconds in ("save 10 MB, new", new), ("save 10 MB, again", again):
        yield f"{what}: to a copy, both flushed", f"{seconds:.3f} s, {flushed:.3f} s", seconds / flushed, 3
    yield "insert before 10,000 of 500 bytes: to a copy", f"{insert * 1e3:.1f} ms, {copy * 1e3:.1f} ms", insert / copy, 3
    for what, name in ("32,000 values", "KeepValues"), ("a group of 10 MB", "KeepTenMegabytes"):
        kept = found[name][1]
        yield f"keep {what} unsaved: to a frame of 16 ms", f"{kept * 1e3:.1f} ms", kept / FRAME, None
    measured["growth"] = growth(build)
    yield from seconds_rows(measured["growth"])
