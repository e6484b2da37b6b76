"""The reference interpreter: runs a program on a screen."""
import re

import words
from control import Control
from expressions import OWN
from faults import BasicError, NO_LINE, SYNTAX, Unsettled, text_of
from screen import Screen
from statements import Ended, Statements

MOST_STATEMENTS = 3000


class Machine(Control, Statements):
    def __init__(self, lines, answers, width):
        """lines: "10 PRINT 1" in order; answers: what is typed, "\\r" for Enter."""
        super().__init__()
        self.screen = Screen(width)
        self.numbers = [int(re.match(r"\d+", text).group()) for text in lines]
        self.program = [words.cut(text[len(str(n)):]) for n, text in zip(self.numbers, lines)]
        self.data = [(n, item) for n, tokens in zip(self.numbers, self.program) for kind, items in tokens
                     if kind == "data" for item in items]
        self.next_item = 0
        self.answers, self.used = list(answers), 0
        self.stack = []
        self.handler, self.failed, self.err, self.erl = None, None, 0, 0
        self.trace = False
        self.steps = 0
        self.go(0)

    # Where the program is.
    def go(self, line, at=0):
        self.line, self.at = line, at
        if line == len(self.program):
            raise Ended
        self.tokens = self.program[line]
        self.arrived = at == 0

    def line_of(self, target):
        if target not in self.numbers:
            raise BasicError(NO_LINE)
        return self.numbers.index(target)

    def line_number(self):
        kind, value = self.peek()
        if kind != "number":
            raise BasicError(SYNTAX)
        self.at += 1
        return int(value)

    def at_end(self):
        return self.peek() in (("end", None), ("sign", ":"), ("word", "ELSE"))

    # Running.
    def run(self):
        self.screen.write("run")
        self.screen.newline()
        try:
            while True:
                self.step()
        except Ended:
            pass
        self.screen.fresh()
        self.screen.write("Ready")
        self.screen.newline()
        return self.screen.lines()

    def step(self):
        if self.arrived and self.trace:
            self.screen.write(f"[{self.numbers[self.line]}]")
        self.arrived = False
        kind, value = self.peek()
        if kind == "end":
            self.go(self.line + 1)
        elif (kind, value) == ("sign", ":"):
            self.at += 1
        elif (kind, value) == ("word", "ELSE"):
            self.go(self.line + 1)
        else:
            self.steps += 1
            if self.steps > MOST_STATEMENTS:
                raise Unsettled("too long")
            self.statement_from = self.line, self.at
            try:
                self.statement()
                if self.statement_from[0] == self.line and not self.at_end() and not self.free:
                    raise BasicError(SYNTAX)
            except BasicError as error:
                self.fail(error.number)

    def fail(self, code):
        line, at = self.statement_from
        self.err, self.erl = code, self.numbers[line]
        if self.handler is not None and self.failed is None:
            self.failed = line, at
            self.go(self.handler)
            return
        self.message(code, self.erl)

    def message(self, code, line):
        """Ends the program with an error."""
        self.screen.fresh()
        self.screen.write(f"{text_of(code)} in {line}")
        self.screen.newline()
        raise Ended

    def statement(self):
        kind, value = self.peek()
        self.free = False                                     # whether something else than an end may follow
        if kind == "data":
            self.at += 1
        elif kind == "name" or value in OWN:
            self.assign()
        elif kind == "word":
            self.at += 1
            method = getattr(self, "do_" + value.lower().replace("$", ""), None)
            if not method:
                raise BasicError(SYNTAX)
            method()
        else:
            raise BasicError(SYNTAX)

    def store(self, place, value):
        store, key, name = place
        store[key] = self.fit(name, value)

    def assign(self):
        place = self.place()
        self.need("sign", "=")
        self.store(place, self.expression())

    do_let = assign
