"""The end of the desktop's session: asked as on closing where programs may ask, silent where they may not."""

from case import SAVE_TITLE, cancel_dialog, reply, save_as, start_entry, value_of
from session_manager import SessionManager
from test_session import ANSWERS, CLOSE, SessionTest


class SessionEnd(SessionTest):
    def setUp(self):
        self.manager = SessionManager()
        self.addCleanup(self.manager.close)

    def start(self):
        return self.desk(env=self.manager.env)

    def expect(self, *acts):
        self.assertEqual([self.manager.expect() for _ in acts], list(acts))

    def end(self, desk):
        self.manager.end("any")
        self.expect("asks")
        self.assert_message(desk, *CLOSE, ANSWERS)

    def test_no_ends_and_writes_nothing(self):
        with self.start() as desk:
            start_entry(desk)
            self.enter_something(desk)
            self.end(desk)
            reply(desk, "No")
            self.expect("asked", "saved")
            self.assert_ended(desk)
            self.assertEqual(list(desk.cwd.iterdir()), [])

    def test_yes_saves_and_ends(self):
        with self.start() as desk:
            start_entry(desk)
            self.enter_something(desk)
            self.end(desk)
            reply(desk, "Yes")
            path = desk.cwd / "last.rpx"
            desk.choose_file(path, SAVE_TITLE)
            self.expect("asked", "saved")
            self.assert_ended(desk)
            self.assertEqual(path.read_bytes(), self.saved())

    def test_cancel_and_a_cancelled_save_hold_the_session(self):
        with self.start() as desk:
            start_entry(desk)
            self.enter_something(desk)
            self.end(desk)
            reply(desk, "Cancel")
            self.expect("refused")
            desk.wait_focus("Group fields")
            desk.key("ctrl+e")
            desk.wait_focus("Fields")
            self.assert_entries(desk)
            self.end(desk)
            reply(desk, "Yes")
            cancel_dialog(desk, SAVE_TITLE)
            self.expect("refused")
            self.assert_entries(desk)

    def test_without_unsaved_entries_nothing_is_asked(self):
        with self.start() as desk:
            start_entry(desk)
            self.manager.end("any")
            self.expect("asks", "asked", "saved")
            self.assert_ended(desk)

    def test_an_open_dialogue_holds_the_session(self):
        with self.start() as desk:
            start_entry(desk)
            self.enter_something(desk)
            desk.key("ctrl+a")
            desk.wait_dialog()
            self.manager.end("any")
            self.expect("asks", "refused")
            desk.key("Escape")
            desk.wait_focus("Fields")
            self.assert_entries(desk)

    def test_where_nothing_may_be_asked_it_ends_and_writes_over_nothing(self):
        with self.start() as desk:
            start_entry(desk)
            self.enter_something(desk)
            path = desk.cwd / "kept.rpx"
            desk.key("ctrl+s")
            save_as(desk, path)
            kept = path.read_bytes()
            self.assertEqual(value_of(desk, "Title"), "Fens")
            self.enter_something(desk)
            self.manager.end("none")
            self.expect("saved")
            self.assert_ended_keeping(desk)
            self.assertEqual([entry.name for entry in desk.cwd.iterdir()], ["kept.rpx"])
            self.assertEqual(path.read_bytes(), kept)
