"""Jumps, loops, and what an error does."""
from expressions import Expressions
from faults import (BasicError, FOR_NEXT, NO_RESUME, RETURN_GOSUB, SYNTAX, Unsettled, WHILE_WEND)
from functions import count, number
from numbers40 import rounded


class Control(Expressions):
    """The statements that go elsewhere."""

    # Jumps.
    def do_goto(self):
        self.free = True
        self.go(self.line_of(self.line_number()))

    def do_gosub(self):
        self.free = True
        line = self.line_number()
        self.subroutine(line)

    def subroutine(self, target):
        line = self.line_of(target)
        self.stack.append(("GOSUB", self.line, self.at))
        self.go(line)

    def do_return(self):
        while any(entry[0] == "GOSUB" for entry in self.stack):
            kind, *where = self.stack.pop()
            if kind == "GOSUB":
                self.go(*where)
                self.free, self.arrived = True, False
                return
        raise BasicError(RETURN_GOSUB)

    def do_on(self):
        if self.take("word", "ERROR"):
            self.need("word", "GOTO")
            target = self.line_number()
            if target == 0:
                self.handler = None
                if self.failed:
                    self.message(self.err, self.erl)
            else:
                self.handler = self.line_of(target)
            return
        which = count(self.expression())
        kind, word = self.peek()
        self.at += 1
        lines = [self.line_number()]
        while self.take("sign", ","):
            lines.append(self.line_number())
        if 1 <= which <= len(lines):
            self.free = True
            if word == "GOTO":
                self.go(self.line_of(lines[which - 1]))
            else:
                self.subroutine(lines[which - 1])

    def do_if(self):
        self.free = True
        condition = number(self.expression()) != 0
        if not (self.take("word", "THEN") or self.peek() == ("word", "GOTO")):
            raise BasicError(SYNTAX)
        if condition:
            self.branch()
            return
        depth = 0
        while self.peek()[0] != "end":
            token = self.peek()
            self.at += 1
            if token == ("word", "IF"):
                depth += 1
            elif token == ("word", "ELSE"):
                if depth == 0:
                    self.branch()
                    return
                depth -= 1

    def branch(self):
        if self.peek()[0] == "number":
            self.go(self.line_of(self.line_number()))

    # Loops.
    def do_for(self):
        kind, name = self.peek()
        self.at += 1
        if kind != "name" or name.endswith("$") or self.is_sign("("):
            raise BasicError(SYNTAX)
        self.need("sign", "=")
        self.variables[name] = self.fit(name, self.expression())
        self.need("word", "TO")
        limit = self.fit(name, self.expression())
        step = self.fit(name, self.expression()) if self.take("word", "STEP") else 1
        for index in self.open_entries():
            if self.stack[index][:2] == ("FOR", name):
                del self.stack[index:]
                break
        if self.beyond(name, limit, step):
            self.skip("FOR", "NEXT", FOR_NEXT)
            if self.take("sign", ","):
                self.do_next()
        else:
            self.stack.append(("FOR", name, limit, step, self.line, self.at))

    def open_entries(self):
        """Where the loops of this subroutine stand on the stack, the innermost first."""
        for index in range(len(self.stack) - 1, -1, -1):
            if self.stack[index][0] == "GOSUB":
                return
            yield index

    def beyond(self, name, limit, step):
        if step == 0:
            raise Unsettled("a loop of step 0")
        value = self.variables[name]
        return value > limit if step > 0 else value < limit

    def skip(self, opening, closing, error):
        """To behind the word that closes the loop in the text, and the name there."""
        line, at, depth = self.line, self.at, 1
        while depth:
            token = self.program[line][at]
            at += 1
            if token[0] == "end":
                line, at = line + 1, 0
                if line == len(self.program):
                    raise BasicError(error)
            depth += token == ("word", opening)
            if token == ("word", closing):
                depth -= 1
                while closing == "NEXT" and self.program[line][at][0] == "name":
                    at += 1
                    if not depth or self.program[line][at] != ("sign", ","):
                        break
                    at += 1
                    depth -= 1
        self.go(line, at)
        self.free, self.arrived = True, False

    def do_next(self):
        while True:
            name = None
            if self.peek()[0] == "name":
                name = self.peek()[1]
                self.at += 1
            if self.next_of(name):
                return
            if not self.take("sign", ","):
                return

    def next_of(self, name):
        """Whether the loop goes on."""
        for index in self.open_entries():
            if self.stack[index][0] == "FOR" and name in (None, self.stack[index][1]):
                break
        else:
            raise BasicError(FOR_NEXT)
        del self.stack[index + 1:]
        _, name, limit, step, line, at = self.stack[index]
        self.variables[name] = self.fit(name, rounded(self.variables[name] + step))
        if self.beyond(name, limit, step):
            self.stack.pop()
            return False
        self.go(line, at)
        self.free, self.arrived = True, False
        return True

    def do_while(self):
        line, at = self.statement_from
        for index in self.open_entries():
            if self.stack[index] == ("WHILE", line, at):
                del self.stack[index:]
                break
        if number(self.expression()):
            self.stack.append(("WHILE", line, at))
        else:
            self.skip("WHILE", "WEND", WHILE_WEND)

    def do_wend(self):
        for index in self.open_entries():
            if self.stack[index][0] == "WHILE":
                _, line, at = self.stack[index]
                del self.stack[index:]
                self.go(line, at)
                self.free, self.arrived = True, False
                return
        raise BasicError(WHILE_WEND)

    # Errors.
    def do_error(self):
        code = count(self.expression(), 1)
        raise BasicError(code)

    def do_resume(self):
        if self.failed is None:
            raise BasicError(NO_RESUME)
        line, at = self.failed
        self.free = True
        if self.take("word", "NEXT"):
            self.failed = None
            self.go(line, at)
            self.arrived = False
            self.behind()
        elif self.peek() == ("number", "0") or self.at_end():
            self.failed = None
            self.go(line, at)
            self.arrived = False
        else:
            target = self.line_of(self.line_number())
            self.failed = None
            self.go(target)

    def behind(self):
        """To the end of the statement here."""
        if self.peek() in (("word", "IF"), ("word", "FOR"), ("word", "WHILE"), ("word", "DEF")):
            raise Unsettled("what is behind such a statement")
        while not self.at_end():
            self.at += 1
