"""Started from the desktop's menu, or with a report from a file manager: the installed program as its entry starts it."""

import configparser
import shlex
import subprocess
import unittest

from case import DesktopTest, lines, start_entry, value_of, work_files
from desk import ROOT, Desk

ENTRY = "share/applications/io.github.quintave.quintave.desktop"
REPORT = lines('0,"QuintaveV2","DATASET.FTF"', '1,-1,"Citation",""', '2,1,"Title","Wells"')
CAPTION = "[Template: DATASET.FTF] - RPX File(s): "


class Menu(DesktopTest):
    def install(self):
        """The release program, installed below a folder of the test's own."""
        prefix = self.new_folder()
        subprocess.run(["cmake", "--install", ROOT / "build/release", "--prefix", prefix], check=True,
                       stdout=subprocess.DEVNULL)
        return prefix

    def entry(self, prefix):
        parser = configparser.ConfigParser(interpolation=None)
        parser.optionxform = str
        parser.read(prefix / ENTRY)
        return parser["Desktop Entry"]

    def chosen(self, prefix, report=None, **options):
        """The program as the entry's Exec line starts it, in a current directory that nobody may write to."""
        program, *words = shlex.split(self.entry(prefix)["Exec"])
        self.assertEqual(words[-1], "%f")
        args = [*words[:-1], *([str(report)] if report else [])]
        return Desk(self.id(), program=prefix / "bin" / program, resources=False, args=args, cwd="/proc", **options)

    def own(self, desk):
        return desk.display.folder / "home/.local/share/quintave"

    def names(self, folder):
        return sorted(path.name for path in folder.iterdir() if path.name[0] != "." and path.suffix != ".XXX")

    def test_the_first_start_makes_a_resource_directory_and_later_ones_keep_it(self):
        prefix = self.install()
        installed = self.names(prefix / "share/quintave/resources")
        self.assertIn("quintave.tbl", installed)
        with self.chosen(prefix) as desk:
            start_entry(desk)
            self.assertEqual(len(desk.nodes(CAPTION, "panel")), 1)
            self.assertEqual(self.names(self.own(desk)), installed)
            desk.key("ctrl+q")
            self.assertEqual(desk.wait_exit(), 0)
            self.assertEqual(work_files(self.own(desk)), [])
            changed = (self.own(desk) / "DATASET.FTF").read_bytes().replace(b'"Title"', b'"Title here"', 1)
            (self.own(desk) / "DATASET.FTF").write_bytes(changed)
            (self.own(desk) / "DUBLIN.FTF").unlink()
            desk.launch()
            start_entry(desk)
            self.assertEqual(value_of(desk, "Title here"), "")
            self.assertEqual(self.names(self.own(desk)), [name for name in installed if name != "DUBLIN.FTF"])

    def test_a_report_opens_wherever_the_program_is_started(self):
        report = self.new_folder() / "von der Ouse (2. Fassung).rpx"
        report.write_bytes(REPORT)
        with self.chosen(self.install(), report) as desk:
            start_entry(desk)
            self.assertEqual(len(desk.nodes(CAPTION + f"{report.stem}; ", "panel")), 1)
            self.assertEqual(value_of(desk, "Title"), "Wells")

    def test_a_data_home_that_takes_nothing_is_told(self):
        closed = self.new_folder() / "closed"
        closed.touch()
        prefix = self.install()
        with self.chosen(prefix, env={"XDG_DATA_HOME": closed}) as desk:
            self.assert_message(
                desk, "Quintave",
                f"Error: 58 - File already exists\nError filling your own resource directory ({closed}/quintave/) from "
                f"the installed one ({prefix}/share/quintave/resources/)! (not installed? read only file or "
                "drive? full drive? wrong privileges?). Correct the problem and try again.", ["OK"], "red")
            desk.key("Enter")
            desk.wait_dialog("Quintave.Tbl Location?")

    def test_the_window_names_its_entry(self):
        prefix = self.install()
        with self.chosen(prefix) as desk:
            window = desk.display.run("xdotool", "getactivewindow").strip()
            names = desk.display.run("xprop", "-id", window, "WM_CLASS")
            self.assertIn(f'"{self.entry(prefix)["StartupWMClass"]}"', names)


if __name__ == "__main__":
    unittest.main()
