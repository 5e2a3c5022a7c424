"""Exports against their published shapes, and against what stood in the report."""

import csv
import io
import json
import random
import subprocess
import xml.etree.ElementTree as ElementTree

import jsonschema

import program

SCHEMAS = program.ROOT / "docs/schema"
SAMPLES = sorted((program.ROOT / "docs/examples").glob("*.rpx"))


def text_of(value):
    return value.replace("\r\n", "\n")


class RandomReport:
    """A report and the values in it, in order: (sections, group, occurrence, field, instance, value)."""

    TITLES = ("Title", "Käse & Brot", 'a<b>', "[x](y)", "tab\there", "1. item")

    def __init__(self, seed):
        self.random = random.Random(seed)
        self.records = []
        self.values = []
        self.last = None
        for section in range(self.random.randrange(1, 4)):
            self.section(f"Section {section}")

    def section(self, title):
        self.records.append(f'1,-1,"{title}",""')
        self.last = None
        for _ in range(self.random.randrange(4)):
            self.field(2, title, "", 0)
        if self.random.random() < 0.7:
            self.group(title, f"Group {title}")

    def group(self, section, title):
        for occurrence in range(1, self.random.randrange(2, 4)):
            self.records.append(f'2,-9,"{title}","REPEATING GROUP, Occurrence #{occurrence}"')
            self.last = None
            for _ in range(self.random.randrange(3)):
                self.field(3, section, title, occurrence)
        self.records.append('2,-99,"END REPEATING GROUP",""')
        self.last = None

    def field(self, level, section, group, occurrence):
        title = self.random.choice(self.TITLES)
        instance = self.last[1] + 1 if self.last and self.last[0] == title else 1
        self.last = title, instance
        texts = ["".join(self.random.choice("aZ0 ,;&<>'|*_#-€ß\x07é") for _ in range(self.random.randrange(12)))
                 for _ in range(self.random.choice((1, 1, 3)))]
        self.records.append(f'{level},{len(texts)},"{title}","{texts[0]}"')
        self.records += [f'"{text}"' for text in texts[1:]]
        self.values.append((section, group, occurrence, title, instance, "\n".join(texts)))

    def bytes(self):
        return program.report(*self.records)


def json_values(content, section="", group="", occurrence=0):
    for part in content:
        if "section" in part:
            yield from json_values(part["content"], part["section"], group, occurrence)
        elif "group" in part:
            for number, held in enumerate(part["occurrences"], 1):
                yield from json_values(held, section, part["group"], number)
        else:
            for instance, value in enumerate(part["values"], 1):
                yield section, group, occurrence, part["field"], instance, value


def xml_values(parts, section="", group="", occurrence=0):
    for part in parts:
        if part.tag == "section":
            yield from xml_values(part, part.get("title"), group, occurrence)
        elif part.tag == "group":
            for held in part:
                yield from xml_values(held, section, part.get("title"), int(held.get("number")))
        else:
            for instance, value in enumerate(part, 1):
                yield section, group, occurrence, part.get("title"), instance, value.text or ""


class Exports(program.CliTest):
    def export(self, path, form):
        status, out, err = self.run_cli("export", "--format", form, str(path))
        self.assertEqual((status, err), (0, ""))
        return out

    def check_json(self, path):
        document = json.loads(self.export(path, "json"))
        schema = json.loads((SCHEMAS / "report.schema.json").read_bytes())
        jsonschema.Draft7Validator.check_schema(schema)
        jsonschema.validate(document, schema)
        return document

    def check_xml(self, path):
        data = self.export(path, "xml")
        done = subprocess.run(["xmllint", "--noout", "--schema", SCHEMAS / "report.xsd", "-"], input=data,
                              capture_output=True)
        self.assertEqual(done.returncode, 0, done.stderr.decode())
        return ElementTree.fromstring(data)

    def test_the_samples_fit_their_shapes(self):
        self.assertGreaterEqual(len(SAMPLES), 3)
        for path in SAMPLES:
            with self.subTest(path.name):
                values = list(json_values(self.check_json(path)["content"]))
                self.assertEqual(list(xml_values(self.check_xml(path))), values)
                self.assertGreater(len(values), 5)

    def test_every_value_of_random_reports_comes_out_in_order(self):
        for seed in range(40):
            with self.subTest(seed):
                made = RandomReport(seed)
                self.write("a.rpx", made.bytes())
                document = self.check_json("a.rpx")
                self.assertEqual(document["template"], "SITE.FTF")
                self.assertEqual(list(json_values(document["content"])), made.values)
                without_bell = [tuple(part.replace("\x07", "\ufffd") if isinstance(part, str) else part
                                      for part in value) for value in made.values]
                self.assertEqual(list(xml_values(self.check_xml("a.rpx"))), without_bell)
                rows = list(csv.reader(io.StringIO(self.export("a.rpx", "csv").decode(), newline="")))
                self.assertEqual(rows[0], ["section", "group", "occurrence", "field", "instance", "value"])
                self.assertEqual(rows[1:], [[section, group, str(occurrence or ""), title, str(instance), value]
                                            for section, group, occurrence, title, instance, value in made.values])

    def test_a_document_of_another_shape_does_not_fit(self):
        """The checks can fail."""
        schema = json.loads((SCHEMAS / "report.schema.json").read_bytes())
        for wrong in ({"template": "A"}, {"template": "A", "content": [{"field": "T", "level": 1, "values": []}]},
                      {"template": "A", "content": [{"group": "G", "level": 1, "content": []}]}):
            with self.subTest(wrong), self.assertRaises(jsonschema.ValidationError):
                jsonschema.validate(wrong, schema)
        done = subprocess.run(["xmllint", "--noout", "--schema", SCHEMAS / "report.xsd", "-"], capture_output=True,
                              input=b'<report template="A"><field title="T" level="1"/></report>')
        self.assertNotEqual(done.returncode, 0)

    def test_the_page_shows_what_the_program_writes(self):
        """docs/cli.md, its one report in each format."""
        self.write("a.rpx", program.report(
            '1,-1,"Field work",""', '2,1,"Team","Ann"', '2,1,"Team","Ben"',
            '2,-9,"Samples","REPEATING GROUP, Occurrence #1"', '3,1,"Depth","12 ft"', '2,-99,"END REPEATING GROUP",""'))
        page = (program.ROOT / "docs/cli.md").read_text()
        for form in ("json", "xml", "csv", "markdown"):
            with self.subTest(form):
                shown = "".join(f"    {line}".rstrip() + "\n"
                                for line in self.export("a.rpx", form).decode().splitlines())
                self.assertIn(shown, page)
