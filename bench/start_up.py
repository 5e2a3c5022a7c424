"""How long programs take until their window is on the screen, and the memory they hold once they rest.

The X server tells when a window is mapped and when something is drawn in it. A window counts as shown at the last
drawing before the program rests; keys are pressed at the first one. Some editors never rest: where keys are None, the
first drawing counts, which does them a favour.
Programs take turns, so that a busy moment of the machine meets them all.
"""

import re
import select
import shutil
import signal
import statistics
import subprocess
import sys
import time
from pathlib import Path

from Xlib import X, XK
from Xlib.display import Display as Connection
from Xlib.ext import damage, xtest

ROOT = Path(__file__).resolve().parents[1]
sys.path.insert(0, str(ROOT / "tests/desktop"))
from display import Display, die_with_parent  # noqa: E402  (its folder has to be known first)

REST = 0.4  # seconds without drawing; a caret blinks more slowly
TOO_LONG = 30
ROUNDS = 9


class Bare(Display):
    """Without a window manager, whose frames would be drawn too."""

    def _start_window_manager(self):
        pass


class Screen:
    """The display as a client sees it that watches the other ones."""

    def __init__(self, name):
        self.display = Connection(name)
        self.display.damage_query_version()
        self.display.screen().root.change_attributes(event_mask=X.SubstructureNotifyMask)
        self.display.sync()

    def press(self, *names):
        for name in names:
            code = self.display.keysym_to_keycode(XK.string_to_keysym(name))
            xtest.fake_input(self.display, X.KeyPress, code)
            xtest.fake_input(self.display, X.KeyRelease, code)
        self.display.flush()

    def events(self, seconds):
        """The events of these seconds, each with the moment it came."""
        end = time.monotonic() + seconds
        while time.monotonic() < end:
            if not self.display.pending_events():
                select.select([self.display], [], [], max(end - time.monotonic(), 0))
            while self.display.pending_events():
                yield self.display.next_event(), time.monotonic()

    def shown(self, keys):
        """The moment the window is shown; it has come to rest since then."""
        first, drawn, mapped = None, None, False
        start = time.monotonic()
        while time.monotonic() - start < TOO_LONG:
            latest = drawn
            for event, moment in self.events(REST if drawn else 0.05):
                if event.type == X.MapNotify and not event.override and not mapped:
                    mapped = True
                    event.window.damage_create(damage.DamageReportRawRectangles)
                    event.window.set_input_focus(X.RevertToParent, X.CurrentTime)
                    self.display.flush()
                elif event.type == self.display.extension_event.DamageNotify:
                    if not first:
                        first = moment
                        self.press(*(keys or ()))
                    drawn = moment
            if drawn and drawn == latest:
                return first if keys is None else drawn
        raise TimeoutError("no window")


def resident(pid):
    status = Path(f"/proc/{pid}/status").read_text()
    return int(status.split("VmRSS:")[1].split()[0]) * 1024


def one_start(display, command, keys):
    env = {name: value for name, value in display.env.items() if "ACCESSIBILITY" not in name}
    env.update(NO_AT_BRIDGE="1", QT_QPA_PLATFORMTHEME="")
    screen = Screen(env["DISPLAY"])
    start = time.monotonic()
    process = subprocess.Popen(command, env=env, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                               preexec_fn=die_with_parent)
    try:
        seconds = screen.shown(keys) - start
        if process.poll() is not None:
            raise RuntimeError(f"{command[0]} has ended")
        memory = resident(process.pid)
    finally:
        process.send_signal(signal.SIGTERM)
        process.wait(TOO_LONG)
        screen.display.close()
    return seconds, memory


def starts(commands, rounds):
    """commands: name -> (command, keys). For each name the median of the seconds and of the bytes."""
    found = {name: [] for name in commands}
    display = Bare()
    try:
        for turn in range(rounds + 1):
            for name, (command, keys) in commands.items():
                figures = one_start(display, command, keys)
                if turn:  # the first one reads the files from the disk
                    found[name].append(figures)
    finally:
        display.close()
    return {name: tuple(statistics.median(values) for values in zip(*figures)) for name, figures in found.items()}


def largest_template(folder):
    """A copy of the shipped resources that starts on the largest template of them."""
    resources = folder / "resources"
    shutil.copytree(ROOT / "resources", resources)
    largest = max(resources.glob("*.FTF"), key=lambda path: path.stat().st_size)
    first, *others = (resources / "quintave.tbl").read_text("cp1252").splitlines()
    assert ".FTF" in first
    lines = re.sub(r"\w+\.FTF", largest.name, first), *others
    (resources / "quintave.tbl").write_text("".join(f"{line}\r\n" for line in lines), "cp1252", newline="")
    return resources


def rows(build, folder, _measured):
    own = [build / "quintave", "--resources", largest_template(folder)]
    empty = build / "bench/empty-window"
    found = starts({"empty": ([empty], ()), "text": ([empty, "Text"], ()), "own": (own, ("space",)),
                    "mousepad": (["mousepad"], None), "featherpad": (["featherpad", "--standalone"], None)}, ROUNDS)
    seconds = {name: figures[0] for name, figures in found.items()}
    memory = {name: figures[1] for name, figures in found.items()}
    for name, what, most in (("empty", "an empty window", 1.5), ("text", "a window with one word", None),
                             ("mousepad", "mousepad", 1), ("featherpad", "featherpad", 1)):
        yield (f"start to the entry screen: to {what}", f"{seconds['own'] * 1e3:.0f} ms, {seconds[name] * 1e3:.0f} ms",
               seconds["own"] / seconds[name], most)
    yield ("resident memory: to an empty window", f"{memory['own'] / 1e6:.1f} MB, {memory['empty'] / 1e6:.1f} MB",
           memory["own"] / memory["empty"], 1.5)
