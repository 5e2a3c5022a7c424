"""Several values in one field, by keys: added, scrolled to and deleted, for typed text and for choices."""

import unittest

from case import DesktopTest, open_box, save_as, start_entry, value_of


class Instances(DesktopTest):
    NAME = "INSTANCE.FTF"
    TEMPLATE = (
        '1,-1,"","Topics","",""',
        '2,40,"TEXT","Keyword","",""',
        '2,20,"LIST","Place","",""', '"<RESET/CLEAR FIELD ENTRY>"', '"Ely"', '"Lynn"', '"Wisbech"', '"OTHER..."',
        '"XXX-1XXX"',
        '-2,40,"TEXT","Single","",""',
    )

    def use(self, desk, name, key="space"):
        """Goes to a control with Tab and works it with a key."""
        desk.tab_to(name)
        desk.key(key)

    def save(self, desk):
        desk.key("ctrl+s")
        path = desk.cwd / "topics.rpx"
        save_as(desk, path)
        return path.read_bytes()

    def assert_counts(self, desk, count, shown):
        desk.wait_for(lambda: (desk.node("Instance shown").value == shown), f"instance {shown} on the scroll bar")
        panel = desk.node("Instance shown").parent
        labels = [node.name for node in panel.walk() if node.role == "label"]
        self.assertEqual(labels, ["Field: Instances", str(count), "This: Instance", str(shown)])

    def add_keywords(self, desk):
        open_box(desk, "Keyword", "r")
        desk.type("ivers")
        for word in ("fens", "silt"):
            self.use(desk, "Add instance")
            desk.wait_focus("Value")
            self.assertEqual(desk.text_of("Value"), "")
            desk.type(word)

    def test_texts_are_added_scrolled_to_changed_and_deleted(self):
        with self.desk() as desk:
            start_entry(desk)
            self.add_keywords(desk)
            self.assert_counts(desk, 3, 3)
            self.use(desk, "Instance shown", "Up")
            self.assert_counts(desk, 3, 2)
            self.assertEqual(desk.text_of("Value"), "fens")
            self.assertEqual(value_of(desk, "Keyword"), "rivers|fens|silt")
            desk.tab_to("Value")
            desk.type(" and dykes")
            self.use(desk, "Instance shown", "Up")
            self.assert_counts(desk, 3, 1)
            self.assertEqual(desk.text_of("Value"), "rivers")
            self.use(desk, "Delete instance")
            self.assert_counts(desk, 2, 1)
            self.assertEqual(desk.text_of("Value"), "fens and dykes")
            self.assertEqual(self.save(desk), self.report(
                '1,-1,"Topics",""', '2,1,"Keyword","fens and dykes"', '2,1,"Keyword","silt"'))

    def test_each_key_of_the_scroll_bar_goes_its_way(self):
        with self.desk() as desk:
            start_entry(desk)
            self.add_keywords(desk)
            desk.tab_to("Instance shown")
            for first, key, shown in (("Home", "Right", 2), ("Home", "Down", 2), ("Home", "Left", 1), ("Home", "End", 3),
                                      ("End", "Left", 2), ("End", "Up", 2), ("End", "Right", 3), ("End", "Home", 1)):
                with self.subTest(first=first, key=key):
                    desk.key(first, key)
                    self.assertEqual(desk.node("Instance shown").value, shown)

    def test_an_empty_instance_is_not_followed_by_another(self):
        with self.desk() as desk:
            start_entry(desk)
            desk.key("Enter")
            desk.wait_focus("Value")
            self.use(desk, "Add instance")
            self.assert_counts(desk, 1, 1)

    def choose(self, desk, letter):
        desk.wait_focus("Choices")
        desk.type(letter)

    def test_choices_are_added_scrolled_to_and_deleted(self):
        with self.desk() as desk:
            start_entry(desk)
            self.add_places(desk)
            desk.wait_for(lambda: value_of(desk, "Place") == "Ely|Wisbech|March", "three places")
            desk.go_to("Fields", "Place")
            self.assert_counts(desk, 3, 1)
            self.assertEqual(desk.selected("Choices"), [1])
            self.use(desk, "Instance shown", "Down")
            self.assert_counts(desk, 3, 2)
            self.assertEqual(desk.selected("Choices"), [3])
            desk.key("Down")
            self.assert_counts(desk, 3, 3)
            self.assertEqual((desk.selected("Choices"), desk.text_of("Other value")), ([4], "March"))
            desk.key("Up")
            self.use(desk, "Delete instance")
            self.assert_counts(desk, 2, 2)
            self.assertEqual(value_of(desk, "Place"), "Ely|March")
            self.assertEqual(self.save(desk), self.report(
                '1,-1,"Topics",""', '2,1,"Place","Ely"', '2,1,"Place","March"'))

    def add_places(self, desk):
        """The first two picked by their letters, the third typed after "OTHER..."."""
        desk.go_to("Fields", "Place")
        desk.type("e")
        desk.wait_for(lambda: value_of(desk, "Place") == "Ely", "the first place")
        for letter in ("w", "o"):
            desk.go_to("Fields", "Place")
            if letter == "o":
                self.use(desk, "Instance shown", "Down")
            self.use(desk, "Add instance")
            desk.tab_to("Choices")
            desk.type(letter)
        desk.wait_focus("Other value")
        desk.type("March\n")

    def test_a_field_of_negative_level_offers_no_instances(self):
        with self.desk() as desk:
            start_entry(desk)
            desk.go_to("Fields", "Keyword")
            self.assertEqual(len(desk.nodes("Add instance")), 1)
            desk.go_to("Fields", "Single")
            self.assertEqual(desk.nodes("Add instance"), [])


if __name__ == "__main__":
    unittest.main()
