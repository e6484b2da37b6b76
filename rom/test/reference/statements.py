"""The statements that print, ask, and keep data."""
import numbers40
import words
from expressions import Expressions
from faults import BasicError, NO_DATA, QUANTITY, SYNTAX, TYPE, Unsettled
from functions import count, number, string
from using import Using


class Ended(Exception):
    """The program is over."""


class Statements(Expressions):
    # Printing.
    def do_print(self):
        if self.take("word", "USING"):
            self.print_using()
            return
        stay = False
        while not self.at_end():
            stay = True
            if self.take("sign", ","):
                self.screen.comma()
            elif self.take("word", "TAB"):
                self.screen.tab(count(self.arguments()[0]))
                stay = False
            elif self.take("word", "SPC"):
                self.screen.write(" " * count(self.arguments()[0]))
                stay = False
            elif not self.take("sign", ";"):
                value = self.expression()
                self.screen.write(value if isinstance(value, str) else numbers40.printed(value))
                stay = False
        if not stay:
            self.screen.newline()

    def print_using(self):
        text = string(self.expression())
        self.need("sign", ";")
        using = Using(text)
        while True:
            self.screen.write(using.item(self.expression()))
            if self.at_end():
                self.screen.write(using.rest())
                self.screen.newline()
                return
            if not (self.take("sign", ";") or self.take("sign", ",")):
                raise BasicError(SYNTAX)
            if self.at_end():
                self.screen.write(using.rest())
                return

    def do_cls(self):
        self.screen.clear()

    def do_locate(self):
        row = count(self.expression())
        self.need("sign", ",")
        column = count(self.expression())
        if row > 23 or column >= self.screen.width:
            raise BasicError(QUANTITY)
        self.screen.locate(row, column)

    def do_option(self):
        while not self.at_end():
            self.at += 1

    def do_defstr(self):
        """The names that begin so get their $ in the whole program."""
        letters = set()
        while True:
            first = self.peek()[1]
            self.at += 1
            letters.add(first)
            if not self.take("sign", ","):
                break
        for tokens in self.program:
            for index, (kind, name) in enumerate(tokens):
                if kind == "name" and name[0] in letters and name[-1] not in "$%":
                    tokens[index] = kind, name + "$"

    do_defint = do_defsng = do_defdbl = do_option

    def do_clear(self):
        if self.stack:
            raise Unsettled("CLEAR inside of loops")
        self.variables, self.arrays, self.defined, self.next_item = {}, {}, {}, 0
        raise Unsettled("what CLEAR keeps")

    def do_tron(self):
        self.trace = True

    def do_troff(self):
        self.trace = False

    # Asking.
    def question(self, mark):
        """The text in front of the variables, and the mark behind it."""
        text = ""
        if self.peek()[0] == "string":
            text = self.peek()[1]
            self.at += 1
            if self.take("sign", ","):
                mark = ""
            else:
                self.need("sign", ";")
        return text + mark

    def answer(self, question):
        self.screen.write(question)
        if self.used == len(self.answers):
            raise Unsettled("no answer left")
        text = self.answers[self.used].rstrip("\r")
        self.used += 1
        self.screen.write(text)
        self.screen.newline()
        return text

    def do_input(self):
        question = self.question("? ")
        start, again = self.at, False
        while True:
            text = self.answer(question)
            if again and not text:
                raise Unsettled("Enter alone behind an answer that didn't fit")
            self.at, again = start, True
            places = [self.place()]
            while self.take("sign", ","):
                places.append(self.place())
            values = self.fitting(text, places)
            if values:
                break
            self.screen.write("Again, please")
            self.screen.newline()
        for place, value in zip(places, values):
            if value is not None:
                self.store(place, value)

    @staticmethod
    def fitting(text, places):
        """The values of an answer; None when they don't fit, among them for what stays as it is."""
        if not text:
            return ["" if name.endswith("$") else None for _, _, name in places]
        items, end = words.data_items(text)
        if end != len(text) or len(items) != len(places):
            return None
        values = []
        for (item, quoted), (_, _, name) in zip(items, places):
            if name.endswith("$"):
                values.append(item)
                continue
            sign = -1 if item.startswith("-") else 1
            body = item[1:] if item[:1] in ("-", "+") else item
            if quoted or not numbers40.NUMBER.fullmatch(body):
                return None
            values.append(sign * numbers40.read(body))
        return values

    def do_line(self):
        self.need("word", "INPUT")
        question = self.question("")
        place = self.place()
        self.store(place, self.answer(question))

    # Variables.
    def do_dim(self):
        while True:
            kind, name = self.peek()
            self.at += 1
            self.dimension(name, [count(value, 0, 8191) for value in self.arguments()])
            if not self.take("sign", ","):
                return

    def do_erase(self):
        while True:
            name = self.peek()[1]
            self.at += 1
            if name not in self.arrays:
                raise Unsettled("ERASE of what is no array")
            del self.arrays[name]
            if not self.take("sign", ","):
                return

    def do_swap(self):
        first = self.place()
        self.need("sign", ",")
        second = self.place()
        if kind_of(first) != kind_of(second):
            raise BasicError(TYPE)
        a, b = (store.get(key, self.empty(name)) for store, key, name in (first, second))
        self.store(first, b)
        self.store(second, a)

    def do_mid(self):
        self.need("sign", "(")
        store, key, name = self.place()
        self.need("sign", ",")
        start = count(self.expression(), 1)
        most = count(self.expression()) if self.take("sign", ",") else 255
        self.need("sign", ")")
        self.need("sign", "=")
        value = string(self.expression())
        text = store.get(key, "")
        if start > len(text):
            raise Unsettled("MID$ behind the end of the variable")
        length = min(most, len(value), len(text) - start + 1)
        store[key] = text[:start - 1] + value[:length] + text[start - 1 + length:]

    def do_def(self):
        self.need("word", "FN")
        name = self.peek()[1]
        self.at += 1
        parameters = []
        if self.take("sign", "("):
            while True:
                parameters.append(self.peek()[1])
                self.at += 1
                if not self.take("sign", ","):
                    break
            self.need("sign", ")")
        self.need("sign", "=")
        self.defined[name] = parameters, self.tokens, self.at
        while not self.at_end():
            self.at += 1

    # Data.
    def do_read(self):
        while True:
            place = self.place()
            if self.next_item == len(self.data):
                raise BasicError(NO_DATA)
            text, quoted = self.data[self.next_item][1]
            values = [text] if place[2].endswith("$") else self.fitting(text, [place])
            if not values or (quoted and not place[2].endswith("$")):
                raise BasicError(TYPE)
            if values[0] is None:
                raise Unsettled("an empty item for a number")
            self.next_item += 1
            self.store(place, values[0])
            if not self.take("sign", ","):
                return

    def do_restore(self):
        line = self.line_number() if self.peek()[0] == "number" else 0
        if line:
            self.line_of(line)
        self.next_item = sum(number < line for number, _ in self.data)

    def do_randomize(self):
        if not self.at_end():
            number(self.expression())

    # Ends.
    def do_end(self):
        raise Ended

    def do_stop(self):
        self.screen.fresh()
        self.screen.write(f"Break in {self.numbers[self.line]}")
        self.screen.newline()
        raise Ended

    def system(self, name):
        """The functions that ask the machine."""
        if name == "INPUT$":
            wanted = count(self.arguments()[0])
            if self.used == len(self.answers) or len(self.answers[self.used]) != wanted:
                raise Unsettled("no answer left")
            self.used += 1
            return self.answers[self.used - 1]
        if name == "ERR":
            return self.err
        if name == "ERL":
            return self.erl
        if name in ("POS", "CSRLIN"):
            if self.screen.column == self.screen.width:
                raise Unsettled("the cursor behind a full row")
            return self.screen.column if name == "POS" else self.screen.row
        raise BasicError(SYNTAX)


def kind_of(place):
    """The kind of variable: whole number, string or other."""
    name = place[2]
    return name[-1] if name[-1] in "$%" else ""
