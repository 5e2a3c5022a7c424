"""Damaged and random files: every command ends by itself with a status of its own, and leaves nothing behind."""

import random

import program

TEMPLATE = program.template(
    '1,-1,"","Citation","",""', '2,60,"TEXT","Title","Mandatory.",""', '2,20,"LIST","Kind","",""', '"Maps"',
    '"Numbers"', '"XXX-1XXX"', '2,2,"GROUP START","Places","",""', '3,20,"TEXT","Name","",""', '3,60,"MEMO","Notes","",""',
    '2,0,"GROUP END","","",""', '1,-1,"","End","",""', '2,300,"MEMO","Remarks","",""')
REPORT = program.report(
    '1,-1,"Citation",""', '2,1,"Title","Wells"', '2,1,"Kind","Maps"', '2,-9,"Places","REPEATING GROUP, Occurrence #1"',
    '3,1,"Name","Ely"', '3,2,"Notes","on the"', '"coast"', '2,-99,"END REPEATING GROUP",""', '1,-1,"End",""',
    '2,3,"Remarks","a"', '"b"', '"c"')
PIECES = (b'"', b",", b"\r\n", b"\r", b"\n", b"\x00", b"\x1a", b"32767", b"32768", b"-32768", b"-9", b"-99", b"-1",
          b"0", b"99999999999", b"1E4", b"|", b"LIST", b"GROUP START", b"GROUP END", b"XXX-1XXX", b"\xff\x81", b" " * 300)


def damaged(data, chance):
    """The data with a few pieces put in, taken out, moved or doubled."""
    data = bytearray(data)
    for _ in range(chance.randrange(1, 6)):
        at = chance.randrange(len(data) + 1)
        length = chance.randrange(1, 40)
        match chance.randrange(4):
            case 0: data[at:at] = chance.choice(PIECES)
            case 1: del data[at:at + length]
            case 2: data[at:at + 1] = bytes([chance.randrange(256)])
            case 3: data[at:at] = data[chance.randrange(len(data) + 1):][:length]
    return bytes(data)


class Hostile(program.CliTest):
    ROUNDS = 25

    def setUp(self):
        super().setUp()
        self.write("SITE.FTF", TEMPLATE)
        self.write("whole.rpx", REPORT)

    def run_to_an_end(self, *arguments):
        status, out, err = self.run_cli(*arguments)
        self.assertIn(status, (0, 1, 3), (arguments, err))
        if status == 3:
            self.assertTrue(err.startswith("quintave-cli: "), err)
        return status, out, err

    def test_damaged_reports(self):
        for seed in range(self.ROUNDS):
            self.write("bad.rpx", damaged(REPORT, random.Random(seed)))
            with self.subTest(seed):
                self.run_to_an_end("check", "-t", "SITE.FTF", "--require", "mandatory", "bad.rpx", "whole.rpx")
                self.run_to_an_end("merge", "-t", "SITE.FTF", "--add", "-o", "out.rpx", "bad.rpx", "whole.rpx")
                for form in ("json", "csv", "xml", "markdown"):
                    self.run_to_an_end("export", "--format", form, "bad.rpx")
                self.run_to_an_end("print", "--mode", "raw", "bad.rpx")
                self.run_to_an_end("diff", "whole.rpx", "bad.rpx")

    def test_a_template_is_refused_by_its_check_where_a_load_refuses_it(self):
        refused = 0
        for seed in range(8 * self.ROUNDS):
            self.write("bad.ftf", damaged(TEMPLATE, random.Random(seed)))
            with self.subTest(seed):
                found = self.run_to_an_end("check-template", "bad.ftf")[1]
                status, _, err = self.run_to_an_end("check", "-t", "bad.ftf", "whole.rpx")
                load_refuses = status == 3 and "bad.ftf" in err
                self.assertEqual(b"A load refuses it" in found, load_refuses, (found, err))
                refused += load_refuses
        self.assertGreater(refused, self.ROUNDS)  # both ways have been tried
        self.assertLess(refused, 7 * self.ROUNDS)

    def test_every_refusal_has_a_line(self):
        for seed in range(8 * self.ROUNDS):
            self.write("bad.ftf", damaged(TEMPLATE, random.Random(seed)))
            found = self.run_to_an_end("check-template", "bad.ftf")[1].decode()
            for line in found.splitlines():
                with self.subTest(seed):
                    self.assertRegex(line, r"\Abad\.ftf(:\d+: |: \d+ fields?, \d+ groups?, \d+ lists?\Z)")

    def test_more_than_can_be_counted(self):
        """In 16 bits: elements and choices."""
        for records, line in ((['1,9,"TEXT","Title","",""'] * 32_768, 32_769),
                              (['1,9,"LIST","Kind","",""', *['"A"'] * 32_768, '"XXX-1XXX"'], 2)):
            self.write("SITE.FTF", program.template(*records))
            _, found, _ = self.run_to_an_end("check-template", "SITE.FTF")
            self.assertIn(f"SITE.FTF:{line}: A load refuses it: Error: 6 - Overflow: ".encode(), found)
            self.assertEqual(self.run_to_an_end("check", "-t", "SITE.FTF", "whole.rpx")[0], 3)

    def test_random_bytes(self):
        chance = random.Random(7)
        for _ in range(5):
            self.write("noise.rpx", chance.randbytes(5000))
            self.assertEqual(self.run_to_an_end("check-template", "noise.rpx")[0], 1)
            self.assertEqual(self.run_to_an_end("check", "-t", "SITE.FTF", "noise.rpx")[0], 1)
            self.assertEqual(self.run_to_an_end("export", "-f", "json", "noise.rpx")[0], 3)

    def test_sections_without_end(self):
        """Thirty thousand of them, each in the one before."""
        self.write("deep.rpx", program.report(*(f'{level},-1,"Section",""' for level in range(1, 30_000)),
                                              '30000,1,"Title","x"'))
        for arguments in (["export", "-f", "json"], ["export", "-f", "csv"], ["diff", "whole.rpx"]):
            status, _, err = self.run_to_an_end(*arguments, "deep.rpx")
            self.assertEqual((status, err), (3, "quintave-cli: deep.rpx:102: Error: 6 - Overflow\n"))
        self.run_to_an_end("print", "deep.rpx")

    def test_many_findings_in_one_file_cost_no_more_than_it_is_long(self):
        self.write("many.rpx", program.report(*('1,1,"Nowhere","x"' for _ in range(100_000))))
        status, out, _ = self.run_cli("check", "-t", "SITE.FTF", "many.rpx", limit=30)
        self.assertEqual((status, out.count(b"\n")), (1, 100_000))
        self.assertTrue(out.splitlines()[-1].startswith(b"many.rpx:100001: "))

    def test_many_instances_are_compared_in_time(self):
        self.write("a.rpx", program.report(*(f'1,1,"Title","{number}"' for number in range(30_000))))
        self.write("b.rpx", program.report(*(f'1,1,"Title","{number + number % 2}"' for number in range(30_000))))
        status, out, _ = self.run_cli("diff", "a.rpx", "b.rpx", limit=30)
        self.assertEqual((status, out.count(b"changed Title: ")), (1, 15_000))

    def test_control_characters_do_not_reach_the_terminal(self):
        self.write("bad.rpx", program.report('1,1,"\x1b[31mRed\x07","x"'))
        for arguments in (["check", "-t", "SITE.FTF"], ["diff", "whole.rpx"]):
            status, out, _ = self.run_cli(*arguments, "bad.rpx")
            self.assertEqual(status, 1)
            self.assertFalse(set(out) & set(range(32)) - {10})
