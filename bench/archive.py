"""An archive for the measurements of quintave-cli: reports on the general template, as somebody filled it in."""

import os
import subprocess
from pathlib import Path

from measure import processor_seconds

TEMPLATE = Path(__file__).resolve().parents[1] / "resources/DATASET.FTF"
REPORTS = 10_000


def report(number):
    records = ['0,"QuintaveV2","DATASET.FTF"', '1,-1,"Citation",""',
               f'2,1,"Title","Water levels of well {number} in the valley"', f'2,1,"Creator","Surname {number}, Ann"',
               '2,1,"Creator","Second, Ben"', '2,1,"Publisher","Valley water board"',
               '2,1,"Type of Data","Observations or measurements"', '1,-1,"Description",""',
               '2,4,"Abstract","Levels read by hand every week,"', '"at noon, from the rim of the casing."',
               '"Gaps where the well was dry."', '"See the log book."', '2,1,"Status","Complete"',
               '2,1,"Language","English"']
    for variable in range(1, 5):
        records += [f'2,-9,"Variables","REPEATING GROUP, Occurrence #{variable}"', f'3,1,"Name","level_{variable}"',
                    '3,1,"Meaning","Water level below the rim"', '3,1,"Kind of Values","Real number"']
    return "".join(f"{record}\r\n" for record in (*records, '2,-99,"END REPEATING GROUP",""')).encode()


def make(folder):
    """The reports' paths; they have just been written, so that reading them needs no disk."""
    paths = []
    for number in range(REPORTS):
        paths.append(str(folder / f"{number:05}.rpx"))
        Path(paths[-1]).write_bytes(report(number))
    return paths


def rows(build, folder, _measured):
    """Checking them all, beside reading them all. Nothing is found in them, or the run would fail."""
    paths = make(folder)
    megabytes = sum(os.path.getsize(path) for path in paths) / 1e6
    check = processor_seconds([build / "quintave-cli", "check", "--template", TEMPLATE, "--add", *paths])
    count = processor_seconds(["grep", "-c", ".", *paths], stdout=subprocess.DEVNULL)
    yield (f"check {REPORTS} reports, {megabytes:.0f} MB: to grep -c .", f"{check:.3f} s, {count:.3f} s", check / count,
           None)
