#!/usr/bin/env python3
"""BASIC programs send and receive through the serial card and its companion.

    serial_basic.py terminal|tcp QUOLLRUN FOLDER COUNT

FOLDER has ROMs and companion; COUNT is the number of bytes each way, compared one by one. Run in an empty folder.
terminal: an echo through a pseudo terminal, whose companion is killed and started again on the way: first while
nothing is under way, when nothing may be lost, then while bytes go out, when only what it had in hand may be.
tcp: two machines talk over two companions; one sends what the other one turns and sends back. COUNT is a multiple of
200.
"""
import os
import random
import select
import signal
import subprocess
import sys
import time

# What came in goes out with all bits turned, but for the time that the script holds it by a byte of memory.
TURN = "10 if in(&21)=0 or peek(&B000) then 10\n20 out &20,255-in(&20)\n30 goto 10"
LIMIT = 600  # seconds after which nothing more is expected
IN_HAND = 255  # bytes that a companion can have taken from the machine and not yet given to its terminal


def turned(data):
    return bytes(255 - byte for byte in data)


class Machine:
    def __init__(self, run, folder, name, program, companion):
        self.name, self.process_file = name, f"process-{name}"
        script = os.path.join(os.path.dirname(os.path.abspath(__file__)), "serial_basic.lua")
        self.log = open(f"log-{name}", "w+")
        self.process = subprocess.Popen(
            [run, "--folder", folder, script, f"test-{os.getpid()}-{name}", self.process_file, program, *companion],
            stdout=self.log, stderr=self.log)

    def companion(self):
        """The companion's process number, as soon as it has one."""
        wait(lambda: os.path.exists(self.process_file), f"the companion of {self.name}")
        return int(read(self.process_file))

    def kill_companion(self):
        """Ends it the hard way. The machine then starts the next one."""
        os.kill(self.companion(), signal.SIGKILL)
        time.sleep(0.2)
        os.remove(self.process_file)

    def said(self):
        self.log.seek(0)
        return self.log.read()


def wait(condition, what, seconds=60):
    end = time.monotonic() + seconds
    while not condition():
        if time.monotonic() > end:
            raise SystemExit(f"waited in vain for {what}")
        time.sleep(0.01)


class Terminal:
    """The other side of the terminal; the link leads to a new one when the companion is a new one."""

    def __init__(self, link):
        self.link, self.file = link, None

    def open(self):
        if self.file is not None:
            os.close(self.file)
        wait(lambda: os.path.exists(self.link), "the terminal")
        self.file = os.open(self.link, os.O_RDWR | os.O_NOCTTY | os.O_NONBLOCK)

    def move(self, out, count, until=None):
        """Sends out, and reads until count bytes have come, or until says so with all sent."""
        got, sent, end = bytearray(), 0, time.monotonic() + LIMIT
        while len(got) < count or sent < len(out):
            if until is not None and sent == len(out) and until(got):
                break
            if time.monotonic() > end:
                raise SystemExit(f"{sent} bytes sent, {len(got)} of {count} received in time")
            more = sent < len(out)
            readable, writable, _ = select.select([self.file], [self.file] if more else [], [], 0.05)
            if readable:
                got += os.read(self.file, 4096)
            if writable:
                sent += os.write(self.file, out[sent : sent + 256])
        return bytes(got)


def read(name):
    with open(name) as file:
        return file.read()


def check(condition, what):
    if not condition:
        raise SystemExit(what)


def same_ends(got, wanted):
    """How many bytes are missing in one piece of wanted; None when got differs in another way."""
    head = len(os.path.commonprefix([got, wanted]))
    tail = len(os.path.commonprefix([got[::-1], wanted[::-1]]))
    return len(wanted) - len(got) if head + tail >= len(got) <= len(wanted) else None


def through_a_terminal(run, folder, count, data):
    machine = Machine(run, folder, "terminal", TURN, ["--pty", "--link", "line"])
    try:
        machine.companion()
        line = Terminal("line")
        line.open()
        half = count // 2
        started = time.monotonic()
        got = line.move(data[:half], half)
        machine.kill_companion()
        machine.companion()
        line.open()
        got += line.move(data[half:], count - half)
        print(f"{count} bytes each way in {time.monotonic() - started:.1f} s, companion killed half way")
        check(got == turned(data), "what came back is not what was sent")

        # All has gone in, and comes out, when the companion is stopped, its terminal read empty, and killed.
        with open("hold", "w"):
            pass
        wait(lambda: os.path.exists("waiting"), "the machine to hold")
        first = line.move(data, 0)
        wait(lambda: read("waiting") == str(count), "all to be in", 60)
        os.remove("hold")
        first += line.move(b"", count // 4)
        os.kill(machine.companion(), signal.SIGSTOP)
        first += line.move(b"", count, until=stands_still(0.3))
        machine.kill_companion()
        machine.companion()
        line.open()
        rest = line.move(b"", count - len(first), until=stands_still(10))
        lost = same_ends(first + rest, turned(data))
        check(rest, "nothing came after the kill")
        check(lost is not None, "something else is wrong than a missing piece")
        check(lost <= IN_HAND, f"{lost} bytes lost")
        print(f"killed with {len(rest)} bytes to come: {lost} lost")
    finally:
        stop([machine])


def stands_still(seconds):
    """A condition: nothing more has come for so long."""
    state = {"length": 0, "since": time.monotonic()}

    def condition(got):
        if len(got) != state["length"]:
            state.update(length=len(got), since=time.monotonic())
        return time.monotonic() - state["since"] > seconds

    return condition


def two_machines(run, folder, count, _data):
    place = f"127.0.0.1:{random.randrange(20000, 30000)}"
    sender = (f"10 for n=0 to {count - 1} step 200\n20 for i=n to n+199:out &20,i*7 mod 256:next\n"
              "30 for i=n to n+199\n40 if in(&21)=0 then 40\n50 if in(&20)=255-i*7 mod 256 then g=g+1\n60 next:next\n"
              "70 print \"good\";g")
    machines = [Machine(run, folder, "echo", TURN, ["--tcp-listen", place]),
                Machine(run, folder, "sender", sender, ["--tcp", place])]
    try:
        started = time.monotonic()
        for machine in machines:
            machine.companion()
        result = "process-sender.result"
        wait(lambda: os.path.exists(result), "the sender's end", LIMIT)
        words = read(result).split()
        check(words == ["good", str(count)], f"the sender says: {words}")
        print(f"{count} bytes each way between two machines in {time.monotonic() - started:.1f} s")
    finally:
        stop(machines)


def stop(machines):
    with open("stop", "w"):
        pass
    for machine in machines:
        if machine.process.wait(60) != 0:
            print(f"{machine.name} ended with {machine.process.returncode}: {machine.said()}")


def main():
    signal.signal(signal.SIGTERM, lambda *_: sys.exit("asked to end"))
    kind, run, folder, count = sys.argv[1:]
    for name in os.listdir("."):
        if not os.path.isdir(name):
            os.remove(name)
    data = random.Random(1).randbytes(int(count))
    {"terminal": through_a_terminal, "tcp": two_machines}[kind](run, folder, int(count), data)


main()
