"""The examples of the manual page, run as they stand there; its options and the program's help."""

import re
import subprocess

import program

PAGE = program.ROOT / "packaging/man/quintave-cli.1"
HEADER = '0,"QuintaveV2","DATASET.FTF"'


def examples():
    """The command lines between .EX and .EE, as a reader sees them."""
    found = re.findall(r"(?ms)^\.EX\n(.*?)^\.EE$", PAGE.read_text().partition(".SH EXAMPLES")[2])
    return [line.replace("\\-", "-") for block in found for line in block.splitlines()]


class Manual(program.CliTest):
    def setUp(self):
        super().setUp()
        (self.folder / "archive").mkdir()
        (self.folder / "DATASET.FTF").write_bytes((program.ROOT / "resources/DATASET.FTF").read_bytes())
        for name, title in (("wells", "Wells of the valley"), ("springs", "Springs")):
            self.write(f"archive/{name}.rpx", program.lines(HEADER, '1,-1,"Citation",""', f'2,1,"Title","{title}"',
                                                            '2,1,"Creator","Ely, Ann"'))
        self.answers = []
        for line in examples():
            done = subprocess.run(["bash", "-c", f"quintave-cli() {{ '{program.PATH}' \"$@\"; }}\n{line}"],
                                  cwd=self.folder, env=self.env, capture_output=True, timeout=60)
            self.answers.append((line.split()[1], done.returncode, done.stdout.decode(), done.stderr.decode()))

    def test_the_examples_run(self):
        self.assertEqual([answer[0] for answer in self.answers],
                         ["check", "export", "print", "merge", "diff", "check-template"])
        check, export, printed, merged, diff, template = self.answers
        self.assertEqual([answer[3] for answer in self.answers if answer is not merged], [""] * 5)
        self.assertEqual([answer[1] for answer in self.answers], [1, 0, 0, 1, 1, 0])
        self.assertIn("archive/wells.rpx: The field Description / Abstract is empty!", check[2])
        self.assertIn('{"field": "Title", "level": 2, "values": ["Wells of the valley"]}', export[2])
        self.assertIn("    Title| Wells of the valley\r\n", printed[2])
        self.assertEqual(merged[2], "")
        # A title is there once, and a later one takes its place, which is told; of creators there may be several.
        self.assertEqual(merged[3], "quintave-cli: archive/springs.rpx:3: The field Title takes one value: "
                                    "this one replaces that before it!\n")
        self.assertEqual(diff[2], 'changed Citation / Title: "Wells of the valley" -> "Springs"\n'
                                  'added Citation / Creator: "Ely, Ann"\n')
        self.assertEqual(template[2], "standard input: 38 fields, 2 groups, 13 lists\n")

    def test_the_page_is_well_formed(self):
        done = subprocess.run(["man", "--warnings", "-E", "UTF-8", "-l", "-Tutf8", "-Z", PAGE], capture_output=True)
        self.assertEqual((done.returncode, done.stderr.decode()), (0, ""))

    def test_the_page_names_the_options_that_help_does(self):
        page = PAGE.read_text().replace("\\-", "-")
        for command in ("check-template", "check", "print", "merge", "export", "diff"):
            status, out, _ = self.run_cli(command, "--help")
            self.assertEqual(status, 0)
            section = page.partition(f"\n.SS {command}\n")[2].partition("\n.S")[0]
            shown = set(re.findall(r"--[a-z]+", out.decode())) - {"--help", "--version"}
            self.assertEqual(set(re.findall(r"--[a-z]+", section)), shown, command)

    def test_the_version_is_the_projects(self):
        version = re.search(r"VERSION (\d+\.\d+\.\d+)", (program.ROOT / "CMakeLists.txt").read_text())[1]
        self.assertEqual(self.run_cli("--version"), (0, f"quintave-cli {version}\n".encode(), ""))
        self.assertIn(f'"Quintave {version}"', PAGE.read_text())
