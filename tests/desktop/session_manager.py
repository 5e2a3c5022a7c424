"""The session manager of a test's desktop, by the reference library of the X session protocol (libSM).

As a program it serves one session: it prints its address, then obeys the lines it reads ("end any": the session is to
end, programs may ask; "end none": they may not) and prints what the program does: "asks", "asked", "refused", "saved",
"gone". SessionManager runs it for a test.
"""

import ctypes
import select
import subprocess
import sys
from pathlib import Path

from display import die_with_parent

SAVE_BOTH, SAVE_LOCAL = 2, 1
STYLES = {"none": 0, "any": 2}
ALL_CALLBACKS = 0x3FF
TEXT = 256


class SessionManager:
    """The session of a test's program, which is to be started with env."""

    def __init__(self):
        self.process = subprocess.Popen([sys.executable, "-B", str(Path(__file__))], bufsize=0,
                                        preexec_fn=die_with_parent, stdin=subprocess.PIPE, stdout=subprocess.PIPE)
        self.env = {"SESSION_MANAGER": self.expect()}

    def expect(self, timeout=30):
        """The next thing that the program does."""
        ready, _, _ = select.select([self.process.stdout], [], [], timeout)
        if not ready:
            raise AssertionError("the program tells its session nothing")
        return self.process.stdout.readline().decode().strip()

    def end(self, style):
        self.process.stdin.write(f"end {style}\n".encode())

    def close(self):
        self.process.kill()
        self.process.communicate()


def tell(text):
    print(text, flush=True)


def callback(*arguments):
    return ctypes.CFUNCTYPE(None, ctypes.c_void_p, ctypes.c_void_p, *arguments)


class Callback(ctypes.Structure):
    _fields_ = [("procedure", ctypes.c_void_p), ("data", ctypes.c_void_p)]


class Session:
    """One program's connection at most; shutting is True from the order to end until it is carried out or refused."""

    def __init__(self):
        self.ice, self.sm = ctypes.CDLL("libICE.so.6"), ctypes.CDLL("libSM.so.6")
        for library, name in ((self.ice, "IceComposeNetworkIdList"), (self.ice, "IceAcceptConnection"),
                              (self.sm, "SmsGenerateClientID")):
            getattr(library, name).restype = ctypes.c_void_p
        self.client, self.shutting = None, False
        self.connections = {}
        self.kept = []  # what C calls must not be collected
        self.procedures = [self._keep(made) for made in self._procedures()]

    def _keep(self, made):
        self.kept.append(made)
        return ctypes.cast(made, ctypes.c_void_p)

    def _procedures(self):
        """In the order of the library's table."""
        status = ctypes.CFUNCTYPE(ctypes.c_int, ctypes.c_void_p, ctypes.c_void_p, ctypes.c_void_p)
        number, pair = callback(ctypes.c_int), callback(ctypes.c_int, ctypes.c_void_p)
        return [
            status(self.register),
            number(lambda client, _, kind: self.interact(client)),
            number(lambda client, _, cancel: self.interact_done(client, cancel)),
            callback(*[ctypes.c_int] * 5)(lambda *_: None),
            callback()(lambda *_: None),
            number(lambda client, _, success: self.saved(client)),
            pair(lambda client, _, count, reasons: self.closed(client)),
            pair(lambda *_: None),
            pair(lambda *_: None),
            callback()(lambda *_: None),
        ]

    def register(self, client, _, previous):
        name = self.sm.SmsGenerateClientID(ctypes.c_void_p(client))
        self.sm.SmsRegisterClientReply(ctypes.c_void_p(client), ctypes.c_void_p(name))
        self.client = client
        self.save(SAVE_LOCAL, False, "none")
        return 1

    def save(self, kind, ends, style):
        self.sm.SmsSaveYourself(ctypes.c_void_p(self.client), kind, ends, STYLES[style], False)

    def interact(self, client):
        tell("asks")
        self.sm.SmsInteract(ctypes.c_void_p(client))

    def interact_done(self, client, cancel):
        tell("refused" if cancel else "asked")
        if cancel:
            self.shutting = False
            self.sm.SmsShutdownCancelled(ctypes.c_void_p(client))

    def saved(self, client):
        if self.shutting:
            tell("saved")
            self.shutting = False
            self.sm.SmsDie(ctypes.c_void_p(client))
        else:
            self.sm.SmsSaveComplete(ctypes.c_void_p(client))

    def closed(self, client):
        self.client = None
        tell("gone")

    def serve(self):
        error, count, listeners = ctypes.create_string_buffer(TEXT), ctypes.c_int(), ctypes.c_void_p()
        new_client = ctypes.CFUNCTYPE(ctypes.c_int, ctypes.c_void_p, ctypes.c_void_p, ctypes.POINTER(ctypes.c_ulong),
                                      ctypes.POINTER(Callback), ctypes.c_void_p)(self.new_client)
        lost = ctypes.CFUNCTYPE(None, ctypes.c_void_p)(lambda connection: None)
        anybody = ctypes.CFUNCTYPE(ctypes.c_int, ctypes.c_char_p)(lambda host: 1)
        self.kept += [new_client, lost, anybody]
        self.ice.IceSetIOErrorHandler(lost)
        if not self.sm.SmsInitialize(b"tests", b"1", new_client, None, anybody, TEXT, error):
            sys.exit(error.value.decode())
        if not self.ice.IceListenForConnections(ctypes.byref(count), ctypes.byref(listeners), TEXT, error):
            sys.exit(error.value.decode())
        listening = ctypes.cast(listeners, ctypes.POINTER(ctypes.c_void_p))[:count.value]
        for listener in listening:
            self.ice.IceSetHostBasedAuthProc(ctypes.c_void_p(listener), anybody)
        names = self.ice.IceComposeNetworkIdList(count, listeners)
        tell(ctypes.string_at(names).decode())
        doors = {self.ice.IceGetListenConnectionNumber(ctypes.c_void_p(listener)): listener for listener in listening}
        while True:
            ready, _, _ = select.select([sys.stdin, *doors, *self.connections], [], [])
            for source in ready:
                if source is sys.stdin:
                    self.obey(sys.stdin.readline())
                elif source in doors:
                    self.accept(doors[source])
                elif source in self.connections:
                    self.hear(source)

    def new_client(self, client, _, mask, callbacks, reason):
        mask[0] = ALL_CALLBACKS
        for at, procedure in enumerate(self.procedures):
            callbacks[at] = Callback(procedure, None)
        return 1

    def accept(self, listener):
        status = ctypes.c_int()
        connection = self.ice.IceAcceptConnection(ctypes.c_void_p(listener), ctypes.byref(status))
        if connection:
            self.connections[self.ice.IceConnectionNumber(ctypes.c_void_p(connection))] = connection

    def hear(self, source):
        connection = ctypes.c_void_p(self.connections[source])
        if self.ice.IceProcessMessages(connection, None, None) != 0:  # the program has closed its end
            self.ice.IceCloseConnection(connection)
            del self.connections[source]

    def obey(self, line):
        words = line.split()
        if not words:
            sys.exit(0)
        self.shutting = True
        self.save(SAVE_BOTH, True, words[1])


if __name__ == "__main__":
    Session().serve()
