"""README.md's five minutes to a first report, key by key as they stand there."""

from case import DesktopTest, lines, save_as
from desk import ROOT


class ReadmeTest(DesktopTest):
    def test_the_first_report(self):
        with self.desk(resources=ROOT / "resources") as desk:
            desk.wait_focus("Use Quintave")
            desk.key("Enter")
            desk.wait_focus("Fields")
            desk.type("Soil moisture at Wicken, 2024")
            desk.key("Enter")
            desk.type("Okafor, Grace")
            desk.press("Add instance")
            desk.type("Lind, Peter")
            desk.key("Enter")
            desk.go_to("Fields", "Type of Data")
            desk.type("o")
            desk.go_to("Fields", "Abstract")
            desk.type("Daily readings of four probes.\nOne file for each probe.")
            desk.key("ctrl+Enter")
            desk.go_to("Fields", "Variables")
            desk.key("Enter")
            desk.wait_focus("Group fields")
            desk.type("moisture")
            desk.key("Enter", "ctrl+n", "Up")
            desk.type("probe")
            desk.key("Enter", "ctrl+e", "ctrl+s")
            save_as(desk, desk.cwd / "first.rpx")
            desk.wait_focus("Fields")
            desk.key("ctrl+q")
            self.assertEqual(desk.wait_exit(), 0)
            self.assertEqual((desk.cwd / "first.rpx").read_bytes(), lines(
                '0,"QuintaveV2","DATASET.FTF"', '1,-1,"Citation",""', '2,1,"Title","Soil moisture at Wicken, 2024"',
                '2,1,"Creator","Okafor, Grace"', '2,1,"Creator","Lind, Peter"',
                '2,1,"Type of Data","Observations or measurements"', '1,-1,"Description",""',
                '2,2,"Abstract","Daily readings of four probes."', '"One file for each probe."',
                '2,-9,"Variables","REPEATING GROUP, Occurrence #1"', '3,1,"Name","moisture"',
                '2,-9,"Variables","REPEATING GROUP, Occurrence #2"', '3,1,"Name","probe"',
                '2,-99,"END REPEATING GROUP",""', '1,-1,"Contacts",""',
                '2,-9,"Contacts","REPEATING GROUP, Occurrence #1"', '2,-99,"END REPEATING GROUP",""'))
