"""What all measurements share."""

import os
import subprocess

RUNS = 3
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


def write_report(path, records):
    path.write_bytes("".join(f"{line}\r\n" for line in (HEADER, *records)).encode())
