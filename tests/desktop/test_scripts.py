"""Names of the whole world: typed on their own keyboards or pasted, saved, opened again, printed, and brought back."""

import signal

from case import HEADER, DesktopTest, lines, open_report, reply, save_as, start_entry, value_of
from print_server import PrintServer
from test_print import TO_FILE, TO_FILE_TITLE, TO_PRINTER, open_panel, press_by_keys

ALT_GR, SHIFT = 108, 50

# Each keyboard, and its keys for a name as they lie in the United States; a key with the one that is held with it.
TYPED = {
    "Polish": (("pl",), ((SHIFT, ALT_GR, 46), 30, 45, 38, 39, 52, 65, (SHIFT, ALT_GR, 52), 38, 45), "Łukasz Żak"),
    "Greek": (("gr",), ((SHIFT, 32), 31, 45, 32, 57, 47, 32, 58, 32, 29), "Οικονόμου"),
    "Turkish": (("tr",), ((SHIFT, 48), 39, 28, 38, 57, 56, 30, 46), "İstanbul"),
    "Russian": (("ru",), ((SHIFT, 47), 26, 27, 44, 40), "Жуков"),
    # By the toolkit's own input method: Compose, stroke and l, then Compose, acute and z.
    "Composed": (("us", "-option", "compose:ralt"), (ALT_GR, 61, 46, 32, ALT_GR, 48, 52), "łoź"),
}
PASTED = {
    "Japanese": ("山田太郎", "山田太郎"),
    "Hebrew": ("עברית", "עברית"),
    "Accent": ("Caf" + "e\u0301", "Café"),  # a letter and its mark, which become one
    "Emoji": ("\U0001F468\u200D\U0001F469\u200D\U0001F467", "\U0001F468\u200D\U0001F469\u200D\U0001F467"),
}
VALUES = {title: name for title, (_, _, name) in TYPED.items()} | {title: text for title, (_, text) in PASTED.items()}


class Scripts(DesktopTest):
    TEMPLATE = ('1,-1,"","Names","",""', *(f'2,40,"TEXT","{title}","",""' for title in VALUES),
                '2,2,"GROUP START","People","",""', '3,12,"TEXT","Person","",""', '2,0,"GROUP END","","",""',
                '2,20,"LIST","Kind","",""', '"Alpha"', '"Ωμέγα"', '"XXX-1XXX"')

    def new_resources(self, header=HEADER):
        folder = self.new_folder()
        (folder / "quintave.tbl").write_bytes(lines(f'"","{self.NAME}","-1"'))
        (folder / self.NAME).write_bytes("".join(f"{line}\r\n" for line in (header, *self.TEMPLATE)).encode())
        return folder

    def press(self, desk, keys):
        for key in keys:
            *held, last = key if isinstance(key, tuple) else (key,)
            desk.display.run("xdotool", *[word for code in held for word in ("keydown", str(code))], "key", str(last),
                             *[word for code in reversed(held) for word in ("keyup", str(code))])
            desk.settle()

    def assert_committed(self, desk, title, text):
        desk.wait_for(lambda: desk.text_of("Value") == text, f"{text} in the box of {title}")
        desk.key("Enter")
        desk.wait_focus("Fields")
        self.assertEqual(value_of(desk, title), text)

    def enter_all(self, desk):
        for title, (layout, keys, name) in TYPED.items():
            desk.display.run("setxkbmap", "us", "-option", "")
            desk.go_to("Fields", title)
            desk.display.run("setxkbmap", *layout)
            desk.settle()
            self.press(desk, keys)
            self.assert_committed(desk, title, name)
        desk.display.run("setxkbmap", "us", "-option", "")
        for title, (text, composed) in PASTED.items():
            desk.go_to("Fields", title)
            desk.key("Enter")
            desk.wait_focus("Value")
            desk.copy(text)
            desk.key("ctrl+v")
            self.assert_committed(desk, title, composed)

    def enter_person(self, desk):
        desk.go_to("Fields", "People")
        desk.key("Enter")
        desk.wait_focus("Group fields")
        desk.key("Enter")
        desk.wait_focus("Value")
        desk.copy("佐藤 Żak")
        desk.key("shift+Insert")  # Ctrl+V goes to another occurrence here
        desk.wait_for(lambda: desk.text_of("Value") == "佐藤 Żak", "the person in the box")

    def values(self):
        return [f'2,1,"{title}","{text}"' for title, text in VALUES.items()]

    def report(self, *records):
        header = f'0,"QuintaveV2 UTF-8","{self.NAME}"'
        return "".join(f"{line}\r\n" for line in (header, '1,-1,"Names",""', *records)).encode()

    def test_are_typed_saved_opened_and_printed(self):
        with PrintServer() as server, self.desk(env=server.env) as desk:
            start_entry(desk)
            self.enter_all(desk)
            self.enter_person(desk)
            desk.key("ctrl+e")
            path = desk.cwd / "Zażółć.rpx"
            desk.key("ctrl+s")
            save_as(desk, path)
            people = ['2,-9,"People","REPEATING GROUP, Occurrence #1"', '3,1,"Person","佐藤 Żak"',
                      '2,-99,"END REPEATING GROUP",""']
            self.assertEqual(path.read_bytes(), self.report(*self.values(), *people))
            self.assertTrue(desk.node(f"[Template: {self.NAME}] - RPX File(s): Zażółć; ", "panel"))
            desk.key("ctrl+r")
            desk.wait_for(lambda: value_of(desk, "Polish") == "", "the empty screen")
            open_report(desk, path)
            desk.wait_focus("Fields")
            self.assertEqual({title: value_of(desk, title) for title in VALUES}, VALUES)
            self.assert_printed(desk, server)

    def assert_printed(self, desk, server):
        open_panel(desk)
        press_by_keys(desk, TO_FILE)
        printed = desk.cwd / "names.txt"
        desk.choose_file(printed, TO_FILE_TITLE)
        desk.wait_focus("Fields")
        text = printed.read_bytes().decode()
        for title, name in VALUES.items():
            self.assertIn(f"{title}| {name}\r\n", text)
        open_panel(desk)
        press_by_keys(desk, TO_PRINTER)
        desk.wait_focus("Fields", 30)
        job, = server.jobs(1)
        words = " ".join(word for page in job.pages for line in page for word in line)
        for title in ("Polish", "Greek", "Turkish", "Russian", "Japanese", "Accent"):
            self.assertIn(f"{title}| {VALUES[title]}", words)
        # A page has the letters of this one in the order in which they are seen.
        self.assertTrue(VALUES["Hebrew"] in words or VALUES["Hebrew"][::-1] in words, words)

    def test_come_back_after_a_kill(self):
        with self.desk() as desk:
            start_entry(desk)
            self.enter_all(desk)
            self.enter_person(desk)
            kept = desk.resources / "quintave.rec"
            desk.wait_for(lambda: kept.exists() and "佐藤 Żak".encode() in kept.read_bytes(), "the entries to be kept", 30)
            desk.process.send_signal(signal.SIGKILL)
            self.assertEqual(desk.wait_exit(), -signal.SIGKILL)
            desk.launch()
            reply(desk, "Yes")
            start_entry(desk)
            self.assertEqual({title: value_of(desk, title) for title in VALUES}, VALUES)
            desk.key("ctrl+z")  # all of it is one step
            desk.wait_for(lambda: not any(value_of(desk, title) for title in VALUES), "the empty screen")
            desk.key("ctrl+y")
            desk.wait_for(lambda: value_of(desk, "Polish") == VALUES["Polish"], "the entries")
            self.assertEqual({title: value_of(desk, title) for title in VALUES}, VALUES)
            desk.go_to("Fields", "People")
            desk.key("Enter")
            desk.wait_focus("Group fields")
            self.assertEqual(value_of(desk, "Person", "Group fields"), "佐藤 Żak")

    def test_a_letter_of_any_script_finds_its_choice(self):
        with self.desk() as desk:
            start_entry(desk)
            desk.go_to("Fields", "Kind")
            desk.display.run("setxkbmap", "gr")
            desk.settle()
            self.press(desk, (55,))  # a small omega
            desk.wait_for(lambda: value_of(desk, "Kind") == "Ωμέγα", "the choice in its row")
