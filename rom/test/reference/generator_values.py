"""Random constants, expressions and conditions as text."""

NUMBERS = ["0", "1", "2", "3", "7", "10", "100", "255", "1000", "32767", "32768", "65536", "123456789", "0.5", ".1",
           "0.01",
           "2.5", "3.14159", "1E5", "1.5E-3", "99.99", "1E10", "1234567.89", "0.00001234", "9999999999",
           "4294967296.5", "1E38", "1E-38", "5E-6", "12345.678901", "&FF", "&7FFF", "&HFFFF"]
SIMPLE = ["A", "word", "Hello", "QUOLL", "x y", "", "12", "-3.5", "BASIC is fun", "zz top", "a,b", "(1)", "E"]


class Values:
    def __init__(self, randomness):
        self.r = randomness
        self.number_names = ["A", "B", "TOTAL", "X2", "N%"]
        self.string_names = ["A$", "B$", "NAME$"]
        self.functions, self.string_functions = [], []
        self.arrays, self.limit = False, 3
        self.busy = []

    def constant(self):
        if self.r.random() < 0.2:
            number = f"{self.r.random() * 10 ** self.r.randint(-6, 12):.{self.r.randint(2, 11)}g}"
            return number.upper().replace("E-0", "E-").replace("E+0", "E+")
        return self.r.choice(["", "", "", "-"]) + self.r.choice(NUMBERS)

    def constant_small(self):
        return str(self.r.choice([0, 1, 1, 2, 2, 3, 4, 1.5, 2.9, 255]))

    def literal(self):
        return '"' + self.r.choice(SIMPLE) + '"'

    def index(self):
        return f"ABS({self.small(1)}) MOD {self.limit + 1}"

    def number_place(self):
        if self.arrays and self.r.random() < 0.25:
            return self.r.choice([f"V({self.index()})", f"M({self.r.randint(0, 1)},{self.r.randint(0, 3)})"])
        return self.r.choice(self.number_names[:4])

    def string_place(self):
        if self.arrays and self.r.random() < 0.25:
            return f"T$({self.index()})"
        return self.r.choice(self.string_names)

    def small(self, depth):
        """A number that is surely within -32768 to 32767."""
        r = self.r
        if depth == 0:
            return r.choice(["1", "2", "5", "11", "-3", "&FF", "2.5",
                             f"LEN({r.choice(self.string_names)})"] + self.busy)
        a, b = self.small(depth - 1), self.small(depth - 1)
        return r.choice([f"{a}+{b}", f"{a}-{b}", f"({a} AND {b})", f"({a} OR {b})", f"({a} XOR {b})", a,
                         f"SGN({self.number(0)})",
                         f"(NOT {a})", f"INT({a}/2)", f"INSTR({self.string(0)},{self.literal()})", f"({a})"])

    def number(self, depth):
        r = self.r
        if depth == 0:
            kind = r.randint(0, 9)
            if kind < 4:
                return self.constant().replace("-", "-")
            if kind < 8 or not self.busy:
                return r.choice(self.number_names)
            return r.choice(self.busy)
        a, b = self.number(depth - 1), self.number(depth - 1)
        kind = r.randint(0, 30)
        if kind < 12:
            return f"{a}{r.choice(['+', '-', '*', '/', '+', '-', '*', ' + ', ' * '])}{b}"
        if kind < 14:
            return f"({a}{r.choice(['+', '-', '*'])}{b}){r.choice(['*', '/', '-'])}{self.number(0)}"
        if kind < 16:
            return f"({a}) MOD {r.choice(['7', '2.5', '-3', '10', '0.1'])}"
        if kind < 17:
            return f"{self.small(depth)}\\{r.choice(['2', '3', '-5', '2.6'])}"
        if kind < 21:
            name = r.choice(['ABS', 'INT', 'FIX', 'SGN'])
            return f"{name}({a})" if r.random() < .8 else f"{name} {r.choice(self.number_names)}"
        if kind < 22:
            return f"({self.small(depth - 1)})^{r.choice(['2', '3', '0', '1'])}"
        if kind < 23:
            return r.choice([f"INT(1000*{f}({self.small(depth - 1)})+.5)/1000" for f in ("SIN", "COS", "ATN")] +
                            [f"INT(1000*SQR(ABS({self.small(depth - 1)}))+.5)",
                             f"INT(100*LOG(ABS({self.small(depth - 1)})+1)+.5)"])
        if kind < 25:
            return r.choice([f"LEN({self.string(depth - 1)})", f'ASC({self.string(0)}+"x")',
                             f"VAL({self.string(depth - 1)})"])
        if kind < 26:
            return self.small(depth)
        if kind < 28 and self.functions:
            name, most = r.choice(self.functions)
            return f"FN{name}({','.join(self.number(0) for _ in range(most))})"
        if kind < 30 and self.arrays:
            return self.number_place()
        return f"-{r.choice(self.number_names)}"

    def string(self, depth):
        r = self.r
        if depth == 0:
            return r.choice(self.string_names) if r.random() < 0.6 else self.literal()
        a, b = self.string(depth - 1), self.string(depth - 1)
        kind = r.randint(0, 16)
        if kind < 3:
            return f"{a}+{b}"
        if kind < 5:
            return f"LEFT$({a},{r.randint(0, 6)})"
        if kind < 7:
            return f"RIGHT$({a},{r.randint(0, 6)})"
        if kind < 9:
            return f"MID$({a},{r.randint(1, 4)}{r.choice(['', ',2', ',0', ',9'])})"
        if kind < 10:
            return f"STR$({self.number(depth - 1)})"
        if kind < 11:
            return f"CHR$({r.randint(32, 126)})"
        if kind < 12:
            return r.choice([f"STRING$({r.randint(0, 5)},{r.choice(['42', self.literal_full()])})",
                             f"SPACE$({r.randint(0, 4)})"])
        if kind < 13:
            return f"HEX$({self.small(depth - 1)})"
        if kind < 15:
            return f"{r.choice(['UCASE$', 'LCASE$'])}({a})"
        if kind < 16 and self.string_functions:
            return f"FN{r.choice(self.string_functions)}({a})"
        return a

    def literal_full(self):
        return '"' + self.r.choice([s for s in SIMPLE if s]) + '"'

    def condition(self, depth):
        r = self.r
        if depth > 1 and r.random() < 0.4:
            return f"{self.condition(depth - 1)}{r.choice([' AND ', ' OR ', ' XOR '])}{self.condition(depth - 1)}"
        if r.random() < 0.1:
            return f"NOT {self.condition(0)}"
        sign = r.choice(["=", "<>", "<", ">", "<=", ">=", "=<"])
        if r.random() < 0.3:
            return f"{self.string(1)}{sign}{self.string(0)}"
        return f"{self.number(1)}{sign}{self.number(1)}"
