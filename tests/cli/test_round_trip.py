"""A template of which check-template says nothing gives back what is filled in, and one of which it says so may not."""

import itertools
import random

import program

TITLES = ("A", "B", "C")


class Element:
    def __init__(self, level, kind, title, members=()):
        self.level, self.kind, self.title, self.members = level, kind, title, members

    def template(self):
        if self.kind == 2:
            return [f'{self.level},2,"GROUP START","{self.title}","",""',
                    *(line for member in self.members for line in member.template()),
                    f'{self.level},0,"GROUP END","","",""']
        return [f'{self.level},{self.kind},"{"TEXT" if self.kind > 1 else ""}","{self.title}","",""']


def random_template(chance):
    """Sections with fields in them, some two levels deeper, groups, and sections within; titles come again elsewhere."""
    def fields(level):
        return [Element(level, 9, title) for title in chance.sample(TITLES, chance.randrange(3))]

    elements = []
    for section in chance.sample(TITLES, chance.randrange(1, 4)):
        elements += [Element(1, -1, section), *fields(3)]
        for inner in chance.sample(TITLES, chance.randrange(3)):
            elements.append(Element(2, chance.choice((-1, -1, -1, 0, 2)), inner))
            if elements[-1].kind == 2:
                within = [Element(3, -1, chance.choice(TITLES))] if chance.random() < 0.3 else []
                elements[-1].members = [*within, *fields(4), *fields(3)]
            else:
                elements += fields(3)
    return elements


def values_of(elements):
    """All that can be filled in."""
    return [e for element in elements for e in (element, *element.members) if e.kind == 9]


def value_record(element, filled):
    return [f'{element.level},1,"{element.title}","{filled.index(element)}"'] if element in filled else []


def report_of(elements, filled):
    """The records that the program writes: values, groups, and before them each section that has any inside."""
    for place, element in enumerate(elements):
        yield from value_record(element, filled)
        if element.kind == -1:
            inside = itertools.takewhile(lambda other: other.level > element.level, elements[place + 1:])
            if any(other in filled or other.kind == 2 for other in inside):
                yield f'{element.level},-1,"{element.title}",""'
        if element.kind == 2:
            yield f'{element.level},-9,"{element.title}","REPEATING GROUP, Occurrence #1"'
            for member in element.members:
                if member.kind < 0:
                    yield f'{member.level},-1,"{member.title}",""'
                else:
                    yield from value_record(member, filled)
            yield f'{element.level},-99,"END REPEATING GROUP",""'


class RoundTrip(program.CliTest):
    def comes_back(self, elements, filled):
        given = program.report(*report_of(elements, filled))
        self.write("given.rpx", given)
        # What goes to one field twice is there once afterwards.
        self.run_cli("merge", "-t", "SITE.FTF", "--overwrite", "empty.rpx", "given.rpx", "-o", "back.rpx")
        return (self.folder / "back.rpx").read_bytes() == given

    def test_random_templates_and_whatever_is_filled_in(self):
        self.write("empty.rpx", program.report())
        sound = lossy = 0
        for seed in range(150):
            elements = random_template(random.Random(seed))
            values = values_of(elements)
            self.write("SITE.FTF", program.template(*(line for element in elements for line in element.template())))
            found = self.run_cli("check-template", "SITE.FTF")[1].decode()
            told = " may take its values" in found
            if len(values) > 5 or (not told and sound >= 20):
                continue
            subsets = itertools.chain(*(itertools.combinations(values, count) for count in range(len(values) + 1)))
            comes = all(self.comes_back(elements, filled) for filled in subsets)
            with self.subTest(seed):
                self.assertEqual(comes, not told, found)
            sound, lossy = sound + comes, lossy + (not comes)
        self.assertGreaterEqual(sound, 20)
        self.assertGreater(lossy, 5)
