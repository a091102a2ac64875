"""A client of the remote control that plays a session and prints what it found.

oscclient.py PORT: sets and reads back addresses of each kind, subscribes, is told what a second
client does, and unsubscribes. Exits with 1 at the first fault.
"""

import sys
import time

import liblo

PATIENCE = 30  # seconds


class Client:
    def __init__(self, port):
        self.panel = liblo.Address("127.0.0.1", port)
        self.server = liblo.Server()
        self.server.add_method(None, None, self.take)
        self.values = {}
        self.counts = {}

    def take(self, path, arguments):
        self.values[path] = arguments[0]
        self.counts[path] = self.counts.get(path, 0) + 1

    def send(self, path, *arguments):
        self.server.send(self.panel, path, *arguments)

    def wait(self, path, is_wanted=lambda value: True):
        """Returns the next value at an address that is wanted."""
        end = time.monotonic() + PATIENCE
        while time.monotonic() < end:
            if path in self.values and is_wanted(self.values[path]):
                return self.values.pop(path)
            self.server.recv(10)
        sys.exit(f"no wanted value at {path}; last: {self.values.get(path)}")

    def ask(self, path):
        self.values.pop(path, None)
        self.send(path)
        return self.wait(path)


def check(what, found, expected):
    if found != expected:
        sys.exit(f"{what}: {found}, expected {expected}")


def main():
    port = int(sys.argv[1])
    first, second = Client(port), Client(port)
    settings = {
        "/strip/3/fader": -6.0,
        "/strip/3/pan": -10.0,
        "/strip/3/eq/high-mid/freq": 4000.0,
        "/strip/3/comp/attack": 20.0,
        "/strip/3/mute": 1,
        "/strip/3/name": "Snare",
        "/strip/5-6/link": 1,
        "/strip/5-6/pan/right": 7.0,
        "/master/fader": -3.0,
        "/output/3": 0,
        "/bus/computer": 0,
    }
    for path, value in settings.items():
        first.send(path, value)
        check(path, first.ask(path), value)
        check(path, second.ask(path), value)

    first.send("/strip/5/fader", 0.0)
    check("hidden strip", first.wait("/error"), "Channels 5 and 6 are linked.")

    # A bundle for a time in the far future is performed now.
    first.server.send(
        first.panel,
        liblo.Bundle(liblo.time() + 3600, liblo.Message("/strip/4/mute", 1),
                     liblo.Message("/strip/4/fader", -20.0)))
    check("bundle", first.ask("/strip/4/fader"), -20.0)

    second.send("/subscribe")
    for path, value in settings.items():
        check("state of " + path, second.wait(path), value)
    first.send("/undo")
    second.wait("/strip/4/fader", lambda value: value == 0.0)
    second.send("/subscribe/meters")
    for _ in range(3):
        second.wait("/strip/1/level", lambda value: value > -127)

    # What second moves is told to first only; second hears where it stopped.
    first.send("/subscribe")
    first.wait("/bus/bypass")
    second.counts.clear()
    for level in range(-30, -9):
        second.send("/strip/7/fader", float(level))
    first.wait("/strip/7/fader", lambda value: value == -10.0)
    second.wait("/strip/7/fader", lambda value: value == -10.0)
    check("echoes", second.counts["/strip/7/fader"], 1)
    print("good")


main()
