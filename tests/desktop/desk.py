"""Desk: the program in its real window on a desktop of its own, worked by real keys, read as a screen reader reads it.

    with Desk(self.id()) as desk:
        desk.press("Use Quintave")
        desk.key("Down", "Enter")
        desk.type("A title")
        desk.wait_for(lambda: desk.text_of("Value") == "A title", "the title in the box Value")

Runs with the distribution's own python3 (the accessibility bus needs its python3-gi). The desktop's processes are in
display.py, the nodes in reader.py. After a failure out/desktop/<test>/ holds a screenshot, the tree of controls and
the program's own output.
"""

import colorsys
import os
import re
import shutil
import time
from collections import Counter, namedtuple
from itertools import groupby
from pathlib import Path

from display import Display, send, wait_until
from reader import Gone, Reader

ROOT = Path(__file__).resolve().parents[2]
KEY_NAMES = {"enter": "Return", "esc": "Escape", "del": "Delete", "ins": "Insert", "backspace": "BackSpace",
             "pageup": "Prior", "pagedown": "Next", "space": "space", "\n": "Return", "\t": "Tab"}
DIALOGS = ("alert", "dialog", "file chooser")
MODIFIERS = ("ctrl", "shift", "alt")

# The text of a message box, its buttons' captions in their order on the screen, and the default one.
Message = namedtuple("Message", "title text buttons default")
HUES = {"red": (340, 20), "yellow": (35, 70), "blue": (200, 260)}  # of icons, in degrees

# A dark palette without any package: the toolkit reads this file by itself when told that the desktop is KDE.
DARK = {"Window": ("35,38,41", "239,240,241"), "View": ("27,30,32", "239,240,241"),
        "Button": ("49,54,59", "239,240,241"), "Selection": ("61,174,233", "252,252,252"),
        "Tooltip": ("49,54,59", "239,240,241")}


def hue_name(red, green, blue):
    """The colour of a pixel by name, "" of a grey or dark one."""
    hue, saturation, value = colorsys.rgb_to_hsv(red / 255, green / 255, blue / 255)
    if saturation < 0.5 or value < 0.4:
        return ""
    degrees = hue * 360
    return next((name for name, (first, last) in HUES.items()
                 if (first <= degrees <= last if first < last else degrees >= first or degrees <= last)), "")


class Desk:
    """test: names the folder of the evidence. resources: a directory to copy (the repository's by default).

    args: arguments after `--resources COPY`; with resources=False there is no such option and no copy. cwd: the
    working directory, a fresh one by default. scale: QT_SCALE_FACTOR. dark: a dark palette. folder: where the copy
    and the working directory are made; by default they are temporary. display: the Desk whose desktop to share.
    """

    def __init__(self, test, *, program=None, resources=None, args=(), env=None, cwd=None, scale=1, dark=False,
                 size=(1280, 1024), folder=None, evidence=None, display=None):
        self.test, self.args, self.scale, self.dark, self.size = test, list(args), scale, dark, size
        self.program = Path(program or os.environ.get("QUINTAVE") or ROOT / "build/release/quintave")
        self.env = {"QT_SCALE_FACTOR": scale, **(env or {})}
        self.source = ROOT / "resources" if resources is None else resources
        self.folder, self.cwd, self.shared = folder and Path(folder), cwd and Path(cwd), display
        self.evidence_folder = Path(evidence or ROOT / "out/desktop") / re.sub(r"[^\w.-]+", "_", test)
        self.app = self.process = None
        self.pictures = 0

    # Start and end

    def __enter__(self):
        shutil.rmtree(self.evidence_folder, ignore_errors=True)
        if not self.program.exists():
            raise FileNotFoundError(f"{self.program} is not there: run scripts/build")
        self.display = self.shared.display if self.shared else Display(self.size)
        try:
            self.reader = Reader(self.display.env["DBUS_SESSION_BUS_ADDRESS"])
            self._make_files()
            self.launch()
        except BaseException as error:
            self.__exit__(type(error), error, None)
            raise
        return self

    def __exit__(self, kind, error, trace):
        try:
            if kind and not self.pictures:  # a failed wait has taken its own
                print(f"\n{self.test}: evidence in {self.evidence()}", flush=True)
        finally:
            self.stop()
            if hasattr(self, "reader"):
                self.reader.close()
            if not self.shared:
                self.display.close()

    def _make_files(self):
        self.folder = self.folder or self.display.folder / f"files{len(self.display.running)}"
        self.cwd = self.cwd or self.folder / "work"
        self.cwd.mkdir(parents=True, exist_ok=True)
        self.resources = None
        if self.source:
            self.resources = self.folder / "resources"
            shutil.copytree(self.source, self.resources)
        if self.dark:
            self.env.update(QT_QPA_PLATFORMTHEME="kde", XDG_CURRENT_DESKTOP="KDE", KDE_SESSION_VERSION="5",
                            QT_STYLE_OVERRIDE="fusion")
            lines = [f"[Colors:{part}]\nBackgroundNormal={back}\nForegroundNormal={fore}\nBackgroundAlternate={back}\n"
                     f"ForegroundInactive=161,169,177\nForegroundLink=29,153,243\nForegroundVisited=155,89,182\n"
                     for part, (back, fore) in DARK.items()]
            Path(self.display.env["XDG_CONFIG_HOME"], "kdeglobals").write_text("".join(lines))

    def launch(self, *args):
        """Starts the program and waits for its window; args replace those given to Desk. Used again after an end."""
        self.log = self.display.folder / f"program{len(self.display.running)}.log"
        resources = ["--resources", self.resources] if self.resources else []
        env = {**self.display.env, **{name: str(value) for name, value in self.env.items()}}
        self.process = self.display.start([self.program, *resources, *(args or self.args)], self.log.name, env=env,
                                          cwd=self.cwd)
        self.app = None
        self.wait_for(self._find_window, "a window of the program that has the focus", 60)
        self.settle()

    def _find_window(self):
        self.app = self.app or self.reader.application(self.process.pid)
        return self.app and self._has_keys()

    def _focus_pid(self):
        try:
            return int(self.display.run("xdotool", "getwindowfocus", "getwindowpid"))
        except (RuntimeError, ValueError):  # no window has the keys
            return 0

    def activate(self):
        """Gives the keys back to this program after another one on the same desktop had them."""
        found = self.display.run("xdotool", "search", "--all", "--onlyvisible",
                                 "--pid", self.process.pid, "--name", ".")
        self.display.run("xdotool", "windowactivate", "--sync", found.split()[-1])
        self.wait_for(self._has_keys, "the window on top")
        self.settle()

    def running(self):
        return self.process is not None and self.process.poll() is None

    def wait_exit(self, timeout=30):
        """Waits for the program's own end and returns its exit status."""
        if wait_until(lambda: not self.running(), timeout) is False:
            self._fail("the end of the program", timeout)
        return self.process.returncode

    def stop(self):
        """Ends the program, as a session's end would, then by force."""
        for number in (15, 9):
            if self.running():
                send(self.process.pid, number)
                wait_until(lambda: not self.running(), 5)

    def output(self):
        """What the program has written to its standard output and standard error."""
        return self.log.read_text(errors="replace") if hasattr(self, "log") else ""

    # Waiting

    def wait_for(self, predicate, what, timeout=10, may_end=False):
        """The first true value of predicate(). Fails after timeout seconds, or at once when the program has ended.

        may_end: the program's end is as good as a true value.
        """
        def ask():
            if not self.running():
                return may_end or self._fail(what, 0)
            try:
                return predicate()
            except Gone:  # a control that went while it was read; the next look finds the new state
                return False
        return wait_until(ask, timeout) or self._fail(what, timeout)

    def settle(self, timeout=20):
        """Waits until the program has handled what it was sent: it answers, and none of its threads is at work."""
        end = time.monotonic() + timeout
        before = None
        while self.running() and time.monotonic() < end:
            try:
                self.app.child_count
                now = self._work_done()
            except (Gone, OSError):  # the program is ending
                time.sleep(0.02)
                continue
            if now is not None and now == before:
                return
            before = now
            time.sleep(0.012)  # one tick of the processor clock in /proc is 10 ms
        if self.running():
            self._fail("a program at rest", timeout)

    def _work_done(self):
        """The program's processor ticks, or None while one of its threads runs or waits for a disk."""
        total = 0
        for task in Path(f"/proc/{self.process.pid}/task").iterdir():
            fields = (task / "stat").read_text().rpartition(")")[2].split()
            if fields[0] in "RD":
                return None
            total += int(fields[11]) + int(fields[12])
        return total

    def _fail(self, what, timeout):
        if self.running():
            state = f"after {timeout} s not there: {what}"
        else:
            status = self.process.returncode if self.process else "never started"
            state = f"the program has ended (status {status}) while waiting for: {what}\n{self.output()[-3000:]}"
        raise AssertionError(f"{state}\n{self._situation()}\nsee {self.evidence()}")

    def _situation(self):
        try:
            focus, box = self.focused(), self.message()
            active = [window.name for window in self._windows() if "active" in window.states]
            return (f"windows {self.windows()}, active {active}, keys go to process {self._focus_pid()}; "
                    f"focus on {f'{focus.role} {focus.name!r}' if focus else 'nothing'}; "
                    f"{box if box else 'no message box'}")
        except (Gone, AttributeError):
            return "no window answers"

    def evidence(self):
        """Writes screenshot, tree and output to out/desktop/<test>/ and returns the screenshot's path."""
        self.pictures += 1
        self.evidence_folder.mkdir(parents=True, exist_ok=True)
        stem = self.evidence_folder / f"{self.pictures:02}"
        if hasattr(self, "display"):
            self.screenshot(f"{stem}.png", whole=True)
        Path(f"{stem}.tree.txt").write_text("\n".join(self.app.dump() if self.app and self.running() else []) + "\n")
        Path(f"{stem}.output.txt").write_text(self.output())
        return f"{stem}.png"

    # Keys and mouse

    def key(self, *chords):
        """Presses keys, such as "ctrl+s", "Down", "shift+Tab"; waits for the effect of each, a repeated one at once."""
        for chord, repeated in groupby(self._chord(chord) for chord in chords):
            self._keys([chord for _ in repeated])

    @staticmethod
    def _chord(chord):
        *modifiers, key = [part or "plus" for part in re.split(r"(?<=.)\+", chord)] if chord != "+" else ["plus"]
        modifiers = [part.lower() for part in modifiers]
        assert all(part in MODIFIERS for part in modifiers), chord
        if len(key) == 1 and modifiers:
            key = key.lower()  # "ctrl+S" is the key S with Ctrl, not with Shift as well
        elif len(key) == 1:
            key = f"U{ord(key):04X}"
        return "+".join([*modifiers, KEY_NAMES.get(key.lower(), key)])

    def type(self, text):
        """Types the text, line breaks as Enter and tabs as Tab; then waits until the program has taken it.

        The keys follow each other at once: end the text with the character that opens a message box or a new control.
        """
        foreign = [character for character in text if ord(character) > 126]
        codes = dict(zip(foreign, self.display.keys_of(foreign)))
        if foreign:
            self.settle()
        self._keys([codes.get(c) or KEY_NAMES.get(c) or f"U{ord(c):04X}" for c in text])

    def _has_keys(self):
        """Whether what is pressed now reaches the program, and there the newest dialog if one is open.

        A window that opens or closes passes the focus on only when the window manager has answered.
        """
        windows = self._windows()
        dialogs = [window for window in windows if window.role in DIALOGS]
        # A dialog does not count as active while a list of proposals is open below one of its boxes, which has the keys.
        active = any("active" in window.states or any(node.focused for node in window.walk())
                     for window in dialogs[-1:] or windows)
        return active and self._focus_pid() == self.process.pid

    def _take_keys(self):
        """Waits until the program has the keys.

        When windows open and close at once, the window manager may lose its way and leave the keys with none or with
        the wrong one; then the newest window gets them back, as by a user's click on it.
        """
        if self.running() and not wait_until(self._ready, 2):
            self.activate()
        self.wait_for(self._has_keys, "a window of the program that takes keys")

    def _ready(self):
        try:
            return not self.running() or self._has_keys()
        except Gone:
            return False

    def _keys(self, keys):
        self._take_keys()
        for start in range(0, len(keys), 200):
            self.display.run("xdotool", "key", "--delay", "1", *keys[start:start + 200])
            self.settle()

    def copy(self, text):
        """Puts a text on the clipboard, as another program would; also one that cannot be typed."""
        self.display.put_on_clipboard(text)

    def copied(self):
        """The text on the clipboard."""
        return self.display.run("xclip", "-selection", "clipboard", "-out")

    def click(self, target, times=1):
        """A mouse click, or a double-click, on the middle of a node or of the control of that name."""
        x, y, width, height = (round(number * self.scale) for number in self._node(target).extents)
        self.display.run("xdotool", "mousemove", x + width // 2, y + height // 2, "click", "--repeat", times,
                         "--delay", "50", "1")
        self.settle()

    def click_row(self, target, index, times=1):
        """A click on a visible row of a list."""
        self.click(self._node(target).child(index), times)

    def press(self, name):
        """Clicks the enabled button of this name with the mouse."""
        self.wait_for(lambda: any(node.enabled for node in self.nodes(name, "button")), f"an enabled button {name!r}")
        self.click(self.node(name, "button"))

    # Looking

    def windows(self):
        """The titles of the windows that show, in the order of their opening."""
        return [window.name for window in self._windows()]

    def _windows(self):
        found = []
        for window in self.app.children if self.app else []:
            try:
                if window.showing and window.role not in ("tool tip", "notification"):
                    found.append(window)
            except Gone:
                continue
        return found

    def nodes(self, name=None, role=None, hidden=False):
        """The controls that show (hidden: all) with this name or label, and this role."""
        found = []
        for node in self.app.walk(hidden):
            try:
                if (role is None or node.role == role) and (name is None or node.name == name or name in node.labels):
                    found.append(node)
            except Gone:
                continue
        return found

    def node(self, name=None, role=None, timeout=10):
        """The one control with this name and role; waits until there is exactly one that shows."""
        found = []

        def one():
            found[:] = self.nodes(name, role)
            return len(found) == 1
        self.wait_for(one, f"one control named {name!r}, role {role or 'any'} (showing now: {len(found)})", timeout)
        return found[0]

    def _node(self, target):
        return self.node(target) if isinstance(target, str) else target

    def text_of(self, target):
        """The text of a box, the chosen entry of a combo box, the caption of a label, frame or button."""
        return self._node(target).text

    def row_count(self, target):
        return self._node(target).child_count

    def row(self, target, index):
        return self._node(target).child(index).name

    def rows(self, target, count=None):
        """The texts of a list's rows, or of the first so many; about 1,000 rows a second."""
        node = self._node(target)
        return [node.child(index).name for index in range(node.child_count if count is None else count)]

    def selected(self, target):
        """The indexes of the selected rows of a list."""
        return sorted(self._node(target).selected_rows)

    def unnamed(self, window=None):
        """The controls of a window, or of all, that can have the keys but have no name for a screen reader."""
        found = []
        for node in (window or self.app).walk():
            if "focusable" in node.states and node.role not in ("panel", "filler", "frame", "dialog", "alert"):
                if not (node.labels if node.role == "combo box" else node.name):
                    found.append(f"{node.role} at {node.extents}")
        return found

    def go_to(self, target, title):
        """Moves the selection of a list that has the keys to the row of this title, with the arrow keys."""
        node = self._node(target)
        titles = [row[1:27].rstrip() for row in self.rows(node)]
        if title not in titles:
            raise AssertionError(f"no row titled {title!r} in {titles}")
        here, there = (self.selected(node) or [0])[0], titles.index(title)
        self.key(*["Down" if there > here else "Up"] * abs(there - here))
        self.wait_for(lambda: self.selected(node) == [there], f"the row {title!r} selected")

    def tab_to(self, name, most=40):
        """Presses Tab until the control of this name has the keys."""
        for _ in range(most):
            if self.focus_name() == name:
                return
            self.key("Tab")
        self.wait_focus(name, 1)

    def focused(self):
        """The control that has the keys, or None."""
        found = [node for node in self.app.walk() if node.focused] if self.app else []
        own = [node for node in found if node.role not in ("panel", "filler")]  # they say so along with their content
        return (own or found or [None])[-1]

    def focus_name(self):
        node = self.focused()
        return node.name if node else None

    def wait_focus(self, name, timeout=10):
        self.wait_for(lambda: self.focus_name() == name, f"the focus on {name!r}", timeout)

    # Message boxes and dialogs

    def _box(self):
        boxes = [window for window in self._windows() if window.role == "alert"]
        return boxes[-1] if boxes else None

    def message(self):
        """The message box that is open, the newest if there are more, or None."""
        try:
            box = self._box()
            if not box:
                return None
            parts = [(node.role, node) for node in box.walk()]
            buttons = [node for role, node in parts if role == "button"]
            default = [node.name for node in buttons if "default" in node.states]
            return Message(box.name, "\n".join(node.name for role, node in parts if role == "label"),
                           [node.name for node in sorted(buttons, key=lambda node: node.extents[0])],
                           default[0] if default else None)
        except Gone:
            return None

    def box_path(self):
        """What tells the open message box from another one like it; None when none is open."""
        box = self._box()
        return box and box.path

    def icon(self):
        """The colour that stands out in the open message box's icon, which has no name: red, yellow or blue.

        "" when the box has no icon.
        """
        found = Counter(hue_name(*bytes.fromhex(pixel)) for pixel in self.icon_pixels())
        found.pop("", None)
        return found.most_common(1)[0][0] if found else ""

    def icon_pixels(self):
        """The pixels of the open message box's icon, row by row, each as RRGGBB; none when there is no icon."""
        images = [node for node in self._box().walk() if node.role == "image"]
        if not images:
            return []
        x, y, width, height = (round(number * self.scale) for number in images[0].extents)
        shown = self.display.run("import", "-window", "root", "-crop", f"{width}x{height}+{x}+{y}", "-depth", "8",
                                 "txt:-")
        return re.findall(r"#([0-9A-F]{6})", shown)

    def wait_message(self, title=None, timeout=10):
        """Waits for a message box (of this title) and returns it."""
        box = self.wait_for(lambda: (box := self.message()) and (title is None or box.title == title) and box,
                            f"a message box {title or ''}", timeout)
        unnamed = self.unnamed(self._box())
        assert not unnamed, f"without a name in the message box {box.title!r}: {unnamed}; see {self.evidence()}"
        return box

    def answer(self, button, title=None):
        """Waits for a message box (of this title), presses its button and waits until the box is gone."""
        box = self.wait_message(title)
        window = self._box()
        found = [node for node in window.walk() if node.role == "button" and node.name == button]
        if not found:
            raise AssertionError(f"no button {button!r} in {box}; see {self.evidence()}")
        self.click(found[0])
        self.wait_for(lambda: self._closed(window), f"the end of the message box {box.title!r}", may_end=True)
        return box

    def wait_dialog(self, title=None, timeout=10):
        """Waits for a dialog (of this title) that has the focus and returns its node."""
        def find():
            for window in reversed(self._windows()):
                if window.role in DIALOGS and window.role != "alert" and (title is None or window.name == title):
                    return window if any(node.focused for node in window.walk()) else None
            return None
        return self.wait_for(find, f"a dialog {title or ''} with the focus", timeout)

    def choose_file(self, path, title=None):
        """Fills the file dialog (of this title) by keys: the path, then Enter; waits until the dialog is gone."""
        dialog = self.wait_dialog(title)
        self.key("ctrl+a")
        self.type(str(path))
        self.key("Enter")
        self.wait_for(lambda: self._closed(dialog) or self.message(),
                      f"the end of the dialog {title or ''} after {path}, or a question of its own", may_end=True)

    def enter_text(self, text, title=None):
        """Fills an input box (of this title) by keys and confirms it."""
        dialog = self.wait_dialog(title)
        self.key("ctrl+a")
        self.type(str(text)) if text else self.key("Delete")
        self.key("Enter")
        self.wait_for(lambda: self._closed(dialog), "the end of the input box", may_end=True)

    def _closed(self, window):
        return window.path not in [other.path for other in self._windows()]

    # Pictures

    def screenshot(self, path, whole=False):
        """The active window with its frame, or the whole screen, as a PNG file."""
        path = Path(path)
        path.parent.mkdir(parents=True, exist_ok=True)
        window = "root"
        if not whole:
            window = self.display.run("xdotool", "getactivewindow").strip()
        self.display.run("import", "-window", window, *([] if whole else ["-frame"]), path)
        return path
