"""A desktop of its own for one test: X server, window manager, message bus and a home, all gone afterwards.

Nothing of the user's session is touched: the processes get an environment made here, marked so that every one of
them, and whatever they start in turn, can be found and ended. The screen as an assistive program sees it is in
reader.py, the program under test in desk.py.
"""

import ctypes
import os
import select
import shutil
import signal
import subprocess
import tempfile
import time
from itertools import zip_longest
from pathlib import Path

MARK = "QUINTAVE_DESKTOP"
KEPT = ("PATH", "TZ", "LD_LIBRARY_PATH", "FONTCONFIG_FILE", "ASAN_OPTIONS", "UBSAN_OPTIONS", "LSAN_OPTIONS")

# Only what a test needs of a window manager: new windows get the focus, Alt+F4 closes, no other key is taken.
WINDOW_MANAGER = """<?xml version="1.0" encoding="UTF-8"?>
<openbox_config xmlns="http://openbox.org/3.4/rc">
  <focus><focusNew>yes</focusNew><followMouse>no</followMouse></focus>
  <placement><policy>Smart</policy><center>yes</center></placement>
  <desktops><number>1</number><popupTime>0</popupTime></desktops>
  <keyboard><keybind key="A-F4"><action name="Close"/></keybind></keyboard>
  <mouse>
    <context name="Client">
      <mousebind button="Left" action="Press"><action name="Focus"/><action name="Raise"/></mousebind>
    </context>
  </mouse>
</openbox_config>
"""


LIBC = ctypes.CDLL(None)
PR_SET_PDEATHSIG, PR_SET_CHILD_SUBREAPER = 1, 36


def die_with_parent():
    """In a child, before it runs: the kernel ends it should this process be killed."""
    LIBC.prctl(PR_SET_PDEATHSIG, signal.SIGKILL)


def wait_until(predicate, seconds, step=0.02):
    """The first true value of predicate(), or the last false one when the seconds are over."""
    end = time.monotonic() + seconds
    while True:
        value = predicate()
        if value or time.monotonic() > end:
            return value
        time.sleep(step)


class Display:
    """size: width and height in pixels, 96 to the inch. env: what every program on this desktop is to see besides."""

    made = []  # the names of all folders, by which a process that outlived its desktop would be found

    def __init__(self, size=(1280, 1024), env=None):
        self.folder = Path(tempfile.mkdtemp(prefix="quintave-desktop-"))
        self.made.append(self.folder.name)
        self.running = []
        LIBC.prctl(PR_SET_CHILD_SUBREAPER, 1)  # what a service leaves behind becomes ours to end
        self.keys, self.free_keys = {}, None
        try:
            self.env = self._environment(env or {})
            self._start_server(size)
            self._start_bus()
            self._start_window_manager()
        except BaseException:
            self.close()
            raise

    def _environment(self, extra):
        env = {name: os.environ[name] for name in KEPT if name in os.environ}
        for name, folder in (("HOME", "home"), ("XDG_CONFIG_HOME", "home/.config"), ("XDG_CACHE_HOME", "home/.cache"),
                             ("XDG_DATA_HOME", "home/.local/share"), ("XDG_RUNTIME_DIR", "run"), ("TMPDIR", "tmp")):
            path = self.folder / folder
            path.mkdir(parents=True, mode=0o700, exist_ok=True)
            env[name] = str(path)
        env.update({MARK: self.folder.name, "LANG": "C.UTF-8", "XDG_SESSION_TYPE": "x11", "GSETTINGS_BACKEND": "memory",
                    "QT_QPA_PLATFORM": "xcb", "QT_ACCESSIBILITY": "1", "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1"})
        env.update({name: str(value) for name, value in extra.items()})
        return env

    def start(self, command, log, **options):
        """Starts a program of this desktop; its output goes to the file log in the desktop's folder."""
        with open(self.folder / log, "ab") as out:
            options = {"env": self.env, "stdout": out, "stderr": out, **options}
            process = subprocess.Popen([str(word) for word in command], stdin=subprocess.DEVNULL,
                                       preexec_fn=die_with_parent, **options)
        self.running.append(process)
        return process

    def run(self, *command, **options):
        """Runs a helper program on this desktop to its end and returns its output; a failure raises."""
        done = subprocess.run([str(word) for word in command], env=self.env, stdin=subprocess.DEVNULL,
                              capture_output=True, text=True, timeout=30, **options)
        if done.returncode:
            raise RuntimeError(f"{' '.join(map(str, command))[:200]}: {done.stderr.strip() or done.returncode}")
        return done.stdout

    def _line_from(self, name, command, log):
        """Starts a server that writes its address, as one line, to a pipe; returns that line."""
        read, write = os.pipe()
        try:
            process = self.start([word.replace("{fd}", str(write)) for word in command], log, pass_fds=[write])
        finally:
            os.close(write)
        with open(read, encoding="utf-8") as pipe:
            ready, _, _ = select.select([pipe], [], [], 30)
            line = pipe.readline().strip() if ready else ""
        if not line:
            raise RuntimeError(f"{name} did not start: {(self.folder / log).read_text(errors='replace')[-2000:]}")
        return process, line

    def _start_server(self, size):
        command = ["Xvfb", "-displayfd", "{fd}", "-screen", "0", f"{size[0]}x{size[1]}x24", "-dpi", "96", "-noreset",
                   "-nolisten", "tcp"]
        _, number = self._line_from("Xvfb", command, "xvfb.log")
        self.env["DISPLAY"] = f":{number}"

    def _start_bus(self):
        command = ["dbus-daemon", "--session", "--nofork", "--nopidfile", "--print-address={fd}"]
        self.bus, self.env["DBUS_SESSION_BUS_ADDRESS"] = self._line_from("dbus-daemon", command, "bus.log")

    def _start_window_manager(self):
        config = self.folder / "openbox.xml"
        config.write_text(WINDOW_MANAGER)
        self.start(["openbox", "--sm-disable", "--config-file", config], "openbox.log")
        if not wait_until(lambda: "window id" in self.run("xprop", "-root", "_NET_SUPPORTING_WM_CHECK"), 30, 0.05):
            raise RuntimeError("openbox did not start")

    def keys_of(self, characters):
        """For each character the key that gives it, as xdotool takes it; keys are bound to new characters first.

        A binding stays, so the program under test has learnt of it before the key arrives; a key bound for one press
        and freed again would be read by the program after it has changed back.
        """
        if self.free_keys is None:  # those without a character, and the multimedia keys, which no test presses
            table = [line.split("=") for line in self.run("xmodmap", "-pke").splitlines()]
            self.free_keys = [key.split()[1] for key, symbols in table
                              if all(symbol.startswith("XF86") or symbol == "NoSymbol" for symbol in symbols.split())]
        new = [character for character in dict.fromkeys(characters) if character not in self.keys]
        bindings = []
        for plain, shifted in zip_longest(new[::2], new[1::2]):
            if not self.free_keys:
                raise RuntimeError(f"no key is left to bind {plain!r} to")
            code = self.free_keys.pop()
            self.keys.update({plain: code, shifted: f"shift+{code}"})
            bindings += ["-e", f"keycode {code} = U{ord(plain):04X} U{ord(shifted or plain):04X}"]
        if new:
            self.run("xmodmap", *bindings)
        return [self.keys[character] for character in characters]

    def put_on_clipboard(self, text):
        """xclip stays in the background as the owner of the text, as the program would that it was copied in."""
        with open(self.folder / "clipboard.log", "ab") as log:  # a pipe would be held open by the one that stays
            subprocess.run(["xclip", "-selection", "clipboard", "-in"], input=text.encode(), env=self.env, stdout=log,
                           stderr=log, timeout=30, check=True)

    def marked(self):
        """The processes that belong to this desktop, those that its programs started by themselves included."""
        return marked([self.folder.name])

    def close(self):
        """Ends every process of this desktop and removes its folder."""
        bus = getattr(self, "bus", None)
        known = set()
        for number in (signal.SIGTERM, signal.SIGKILL):
            for pid in self.marked():
                if not (bus and pid == bus.pid):  # last: it looks after the services that it started
                    known.add(pid)
                    send(pid, number)
            if wait_until(lambda: self._ended(bus), 5):
                break
        if bus:
            bus.kill()
        for process in self.running:
            process.wait(10)
        wait_until(lambda: not any([reap(pid) for pid in known]), 5)
        shutil.rmtree(self.folder, ignore_errors=True)

    def _ended(self, bus):
        for process in self.running:
            process.poll()
        return not [pid for pid in self.marked() if not (bus and pid == bus.pid)]


def marked(names):
    """The numbers of the processes that belong to the desktops whose folders have these names."""
    found, marks = [], {f"{MARK}={name}".encode() for name in names}
    for entry in os.listdir("/proc"):
        if entry.isdigit() and int(entry) != os.getpid():
            try:
                if marks.intersection(Path("/proc", entry, "environ").read_bytes().split(b"\0")):
                    found.append(int(entry))
            except OSError:
                pass  # another user's process, or one that has just ended
    return found


def send(pid, number):
    try:
        os.kill(pid, number)
    except ProcessLookupError:
        pass


def reap(pid):
    """Whether the process is still a child of this one; takes its exit status when it has ended."""
    try:
        return os.waitpid(pid, os.WNOHANG)[0] == 0
    except ChildProcessError:
        return False
