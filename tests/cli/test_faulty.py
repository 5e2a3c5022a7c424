"""Templates with one slip each, as authors make them: one message, at the line of the slip, that names the cause."""

import subprocess

import program

HEADER = program.TEMPLATE_HEADER
PAST_END = "A load refuses it: Error: 62 - Input past end of file: "
NO_TEMPLATE = "A load refuses it: This is not a valid Fields Template File! Please Try Again. "
RUNS_OFF = ": a value printed behind it runs off the paper"
ODD_QUOTES = "Only straight double quotes enclose an item: those here become a part of it"

SOUND = [HEADER,
         '1,-1,"","Sample","",""',
         '-2,60,"TEXT","Aim","Mandatory. What is to be found out.","AIM.HLP"',
         '2,40,"TEXT","Person","",""',
         '-2,20,"LIST","Kind","",""',
         '"<RESET/CLEAR FIELD ENTRY>"',
         '"Rock"',
         '"Soil"',
         '"OTHER..."',
         '"XXX-1XXX"',
         '2,2,"GROUP START","Readings","",""',
         '3,10,"TEXT","Date","",""',
         '3,8,"LIST","Unit","",""',
         '"Gram"',
         '"Litre"',
         '"XXX-1XXX"',
         '3,200,"MEMO","Notes","",""',
         '2,0,"GROUP END","","",""',
         '1,-1,"","Remarks","",""',
         '-2,999,"MEMO","Text","",""']

# Name of the fault: the line that is changed, what stands there instead ("" for nothing; several lines are divided by a
# line feed), and what is told.
SLIPS = {
    "missing_item": (4, '2,40,"TEXT","Person",""', 4, PAST_END + "the record has 5 items, and not 6"),
    "missing_level": (4, '40,"TEXT","Person","",""', 4, PAST_END + "the record has 5 items, and not 6"),
    "missing_item_of_a_list": (5, '-2,20,"LIST","Kind",""', 5, "The record has 5 items, and not 6"),
    "missing_item_of_a_group_start": (
        11, '2,2,"GROUP START","Readings",""', 11,
        PAST_END + "the record has 5 items, and not 6"),
    "missing_item_of_a_group_end": (18, '2,0,"GROUP END","",""', 18, PAST_END + "the record has 5 items, and not 6"),
    "missing_item_in_the_last_record": (
        20, '-2,999,"MEMO","Text",""', 20,
        PAST_END + "the record has fewer than six items, or a quote is not closed"),
    "surplus_item": (4, '2,40,"TEXT","Person","","",""', 4, "The record has 7 items, and not 6"),
    "surplus_item_of_a_list": (13, '3,8,"LIST","Unit","","",""', 13, "The record has 7 items, and not 6"),
    "comma_in_an_unquoted_title": (
        4, "2,40,TEXT,Person, or team,,", 4,
        "The record has 7 items, and not 6: a text that holds a comma needs double quotes"),
    "two_records_on_a_line": (
        4, '2,40,"TEXT","Person","","",2,40,"TEXT","Place","",""', 4,
        "The record has 12 items, and not 6"),
    "missing_comma": (
        4, '2,40,"TEXT" "Person","",""', 4,
        "What stands behind the closing quote is taken for the next item"),
    "comment": (
        4, '# who took it\n2,40,"TEXT","Person","",""', 4,
        "A template has no comments: this line is read as items of a record"),
    "comment_with_commas": (
        4, '; who, when, where\n2,40,"TEXT","Person","",""', 4,
        PAST_END + "a template has no comments: this line is read as items of a record"),
    "record_commented_out": (
        4, '#2,40,"TEXT","Person","",""', 4,
        "A template has no comments: this line is read as items of a record"),
    "doubled_quotes": (
        3, '-2,60,"TEXT","Aim","Mandatory. The ""aim"".","AIM.HLP"', 3,
        PAST_END + "two double quotes do not stand for one: the first of them ends the item"),
    "quote_in_quotes": (
        3, '-2,60,"TEXT","Aim","Mandatory. The "aim" of it.","AIM.HLP"', 3,
        "What stands behind the closing quote is taken for the next item"),
    "quote_not_closed": (4, '2,40,"TEXT","Person,"",""', 4, "A quote is not closed"),
    "last_quote_not_closed": (4, '2,40,"TEXT","Person","","', 4, "A quote is not closed"),
    "quote_of_a_choice_not_closed": (7, '"Rock', 7, "A quote is not closed"),
    "last_quote_of_the_file_not_closed": (20, '-2,999,"MEMO","Text","","', 20, PAST_END + "a quote is not closed"),
    "list_not_ended": (10, "", 5, "The choice list is not ended by XXX-1XXX before line 10"),
    "list_in_a_group_not_ended": (16, "", 13, PAST_END + "the choice list is not ended by XXX-1XXX before line 16"),
    "end_of_a_list_in_small_letters": (10, '"xxx-1xxx"', 10, "The end of a list reads XXX-1XXX, and not xxx-1xxx"),
    "end_of_a_list_misspelt": (16, '"XXX-IXXX"', 16, PAST_END + "the end of a list reads XXX-1XXX, and not XXX-IXXX"),
    "end_of_a_list_with_more_behind_it": (
        10, '"XXX-1XXX","",""', 10,
        PAST_END + "the end of a list stands on a line of its own"),
    "comma_in_an_unquoted_choice": (7, "Rock, hard", 7, "A comma outside quotes divides this into 2 choices"),
    "semicolons_in_a_record": (5, '-2;20;"LIST";"Kind";"";""', 5, "Commas divide items, and not semicolons"),
    "help_file_that_is_not_there": (
        3, '-2,60,"TEXT","Aim","","GOAL.HLP"', 3,
        "There is no help file GOAL.HLP beside the template"),
    "other_with_two_dots": (
        9, '"OTHER.."', 9,
        "This is a choice like any other: the one that opens a box reads OTHER..."),
    "other_without_dots": (9, '"OTHER"', 9, "This is a choice like any other: the one that opens a box reads OTHER..."),
    "reset_misspelt": (
        6, '"<RESET>"', 6,
        "This is a choice like any other: the one that empties the field reads <RESET/CLEAR FIELD ENTRY>"),
    "section_of_kind_0": (
        2, '1,0,"","Sample","",""', 2,
        "A section needs a kind of -1: with 0 this one has neither line nor heading"),
    "section_of_kind_0_behind_a_field": (
        19, '1,40,"TEXT","Place","",""\n1,0,"","Remarks","",""', 20,
        "A section needs a kind of -1: with 0 this one has neither line nor heading"),
    "choice_that_comes_twice": (8, '"Rock"', 8, "The choice is that of line 7, too"),
    "choice_of_small_letters": (
        8, '"soil"', 8,
        "No letter reaches the choice, because it does not begin with a capital: soil"),
    "choice_too_long_for_its_cells": (
        15, '"Litre or more"', 15,
        "The choice is longer than the 8 characters of its field: Litre or more"),
    "curly_quotes": (4, "2,40,“TEXT”,“Person”,“”,“”", 4, ODD_QUOTES),
    "curly_quotes_of_a_list": (5, "-2,20,“LIST”,“Kind”,“One, or none”,“”", 5, ODD_QUOTES),
    "curly_quotes_around_a_choice": (7, "“Rock”", 7, ODD_QUOTES),
    "apostrophes_for_quotes": (4, "2,40,'TEXT','Person','',''", 4, ODD_QUOTES),
    "level_0": (4, '0,40,"TEXT","Person","",""', 4, "Levels begin at 1: titles at level 0 do not tell values apart"),
    "group_of_negative_level": (
        11, '-2,2,"GROUP START","Readings","",""', 11,
        "A negative level means nothing here: it marks a field of one value"),
    "member_of_negative_level": (
        12, '-3,10,"TEXT","Date","",""', 12,
        "A negative level means nothing here: each member of a group has one value"),
    "field_below_a_field": (
        4, '3,40,"TEXT","Person","",""', 4,
        "This stands at level 3 below the field of line 3 at level 2, which holds no others"),
    "choices_of_a_text": (
        5, '-2,20,"TEXT","Kind","",""', 6,
        PAST_END + "a line of one item is a choice, and this one does not stand in a list"),
    "choices_of_an_unknown_type": (
        5, '-2,20,"PICKLIST","Kind","",""', 5,
        PAST_END + "the type 'PICKLIST' is not known: the field takes no value"),
    "group_not_ended": (18, "", 11, PAST_END + "the group is not ended by GROUP END"),
    "group_without_its_start": (11, "", 17, "The GROUP END has no GROUP START"),
    "title_too_long": (
        4, '2,40,"TEXT","Person who took the samples","",""', 4,
        "The title has more than 26 characters and is shown as ...on who took the samples"),
    "title_too_long_for_a_page": (
        4, f'2,40,"TEXT","{"Who " * 20}","",""', 4,
        "The title has more than 26 characters and is shown as ...ho Who Who Who Who Who , and too long for a page" +
        RUNS_OFF),
    "title_too_deep_for_a_page": (
        20, '-19,999,"MEMO","Text","",""', 20,
        "The title is too long for a page where it is indented by its level" + RUNS_OFF),
    "kind_past_16_bits": (
        20, '-2,99999,"MEMO","Text","",""', 20,
        "A load refuses it: Error: 6 - Overflow: the kind goes past 16 bits"),
    "title_that_comes_twice": (
        4, '2,40,"TEXT","Aim","",""', 4,
        "The title path Sample / Aim is that of line 3, too, which may take its values"),
    "bar_in_a_choice": (
        7, '"Rock|Stone"', 7,
        "The choice holds a double quote or a '|', which are taken out: Rock|Stone"),
    "type_that_is_not_known": (
        4, '2,40,"DATE","Person","",""', 4,
        "The type 'DATE' is not known: the field takes no value"),
    "header_with_a_missing_item": (1, HEADER[:-3], 1, PAST_END + "the header has 5 items, and not 6"),
    "header_with_another_version": (
        1, HEADER.replace("V2", "V3"), 1,
        NO_TEMPLATE + "Its second item does not begin with QuintaveV2."),
    "header_that_is_a_reports": (
        1, '0,"QuintaveV2","LAB.FTF"', 1,
        NO_TEMPLATE + 'It does not begin with "QUINTAVE FIELDS TEMPLATE FILE".'),
    "header_in_curly_quotes": (
        1, HEADER.replace('"', "“"), 1,
        NO_TEMPLATE + "Only straight double quotes enclose an item: those here become a part of it."),
    "comment_before_the_header": (
        1, "# Samples\n" + HEADER, 1,
        NO_TEMPLATE + "A template has no comments: this line is read as items of a record."),
}


def lines_with(line, instead):
    return SOUND[:line - 1] + (instead.split("\n") if instead else []) + SOUND[line:]


class Faulty(program.CliTest):
    def setUp(self):
        super().setUp()
        self.write("AIM.HLP", b"What is to be found out.\r\n")

    def check(self, template):
        """What check-template prints of these bytes, and its exit status."""
        self.write("LAB.FTF", template)
        status, out, err = self.run_cli("check-template", "LAB.FTF")
        self.assertEqual(err, "")
        return out.decode(), status

    def assert_told(self, template, line, text):
        self.assertEqual(self.check(template), (f"LAB.FTF:{line}: {text}\n", 1))

    def assert_sound(self, template):
        self.assertEqual(self.check(template), ("LAB.FTF: 7 fields, 1 group, 2 lists\n", 0))

    def test_the_template_that_the_slips_are_made_in_is_sound(self):
        self.assert_sound(program.lines(*SOUND))

    def test_one_slip_gives_one_message(self):
        for name, (line, instead, told, text) in SLIPS.items():
            with self.subTest(name):
                self.assert_told(program.lines(*lines_with(line, instead)), told, text)

    def test_other_dividers(self):
        self.assert_told(program.lines(*SOUND).replace(b",", b";"), 1,
                         NO_TEMPLATE + "Commas divide items, and not semicolons.")
        self.assert_told(program.lines(*SOUND).replace(b",", b"\t"), 1,
                         PAST_END + "commas divide items, and not tabs")
        self.assert_told(program.lines(HEADER) + program.lines(*SOUND[1:]).replace(b",", b";"), 2,
                         PAST_END + "commas divide items, and not semicolons")

    def test_other_encodings(self):
        text = "".join(f"{line}\r\n" for line in SOUND)
        for encoding in ("utf-16", "utf-16-le", "utf-16-be"):
            self.assert_told(text.encode(encoding), 1, NO_TEMPLATE + "It is UTF-16, and neither UTF-8 nor Windows-1252.")
        self.assert_sound(text.replace("Soil", "Sédiment “fin”").encode())  # without a mark
        marked = text.replace('"QuintaveV2"', '"QuintaveV2 UTF-8"').replace("Soil", "Sol argileux")
        self.assert_sound(marked.encode())
        self.assert_told(marked.replace("Sol", "Sédiment").encode("cp1252"), 8,
                         "The template says that it is UTF-8, and here it is not: what is none is read as Windows-1252")
        self.assert_told(text.replace('"Soil"', "“Soil”").encode(), 8, ODD_QUOTES)
        self.assert_sound(text.replace("Soil", "Sédiment “fin”").encode("cp1252"))
        self.assert_sound(text.encode("utf-8-sig"))  # with a byte-order mark

    def test_an_empty_file(self):
        for data in (b"", b"\r\n \r\n"):
            self.assert_told(data, 1, NO_TEMPLATE + "It is empty.")

    def test_what_only_looks_like_a_slip(self):
        """Commas behind the last item, help lines and records on several lines, several choices on one."""
        for line, instead in ((4, '2,40,"TEXT","Person","","",'),
                              (7, '"Rock",'),
                              (1, HEADER + ","),
                              (4, '2,40,TEXT,Person,,'),
                              (4, '2,40,"TEXT","Person","Who took it,\nin full.",""'),
                              (4, '2\n40\n"TEXT"\n"Person"\n""\n""'),
                              (4, '2,40,"TEXT"\n"Person","",""'),
                              (1, HEADER.replace(",", "\n")),
                              (7, '"Rock, hard"'),
                              (7, '"Rock\nof any sort"'),
                              (7, "'t Gesteente"),
                              (9, '"Other"')):
            with self.subTest(instead):
                self.assert_sound(program.lines(*lines_with(line, instead)))
        self.assert_sound(program.lines(*SOUND[:6], '"Rock","Soil","OTHER...","XXX-1XXX"', *SOUND[10:]))

    def test_several_slips_are_told_each(self):
        lines = list(SOUND)
        lines[3] = '2,40,"TEXT","Person",""'
        lines[6] = "“Rock”"
        lines[16] = '3,200,"MEMO","Notes"","",""'
        lines[19] = '-2,999,"MEMO","Text","","",""'
        told, status = self.check(program.lines(*lines))
        self.assertEqual([line.split(":")[1] for line in told.splitlines()], ["4", "7", "17", "20"])
        self.assertEqual((told.count("A load refuses it"), status), (1, 1))

    def test_without_a_folder_no_help_file_is_looked_for(self):
        (self.folder / "AIM.HLP").unlink()
        status, out, err = self.run_cli("check-template", "-", data=program.lines(*SOUND))
        self.assertEqual((status, out, err), (0, b"standard input: 7 fields, 1 group, 2 lists\n", ""))
        self.write("LAB.FTF", program.lines(*SOUND))
        done = subprocess.run(["bash", "-c", f"'{program.PATH}' check-template <(cat LAB.FTF)"], cwd=self.folder,
                              env=self.env, capture_output=True, timeout=60)
        self.assertRegex(done.stdout, rb"\A\S+: 7 fields, 1 group, 2 lists\n\Z")

    def test_the_name_of_a_help_file_in_any_letters(self):
        (self.folder / "AIM.HLP").rename(self.folder / "aim.hlp")
        self.assert_sound(program.lines(*SOUND))

    def test_the_templates_that_come_with_the_program_are_sound(self):
        templates = sorted((program.ROOT / "resources").glob("*.FTF"))
        self.assertEqual(len(templates), 5)
        for template in templates:
            status, out, err = self.run_cli("check-template", template)
            self.assertRegex(out.decode(), r"\A\S+: \d+ fields, \d+ groups, \d+ lists\n\Z")
            self.assertEqual((status, err), (0, ""))

    def test_the_template_of_the_guide_is_counted_as_it_says(self):
        guide = (program.ROOT / "docs/guide.md").read_text()
        block = guide.partition("```ftf\n")[2].partition("```")[0]
        self.write("WELLS.FTF", program.lines(*block.splitlines()))
        counted = self.run_cli("check-template", "WELLS.FTF")[1].decode().partition(": ")[2].strip()
        self.assertRegex(counted, "fields")
        self.assertIn(f"Of this template it says `{counted}`", guide)
