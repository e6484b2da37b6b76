"""Random structured programs: each ends, and prints what tells how it went."""
import random
import re

from generator_pieces import Pieces

LINE_ROOM = 150


def without_blanks(line):
    """A line as it may be typed with OPTION CRUNCH; texts, remarks and data stay."""
    number, text = line.split(" ", 1)
    if re.search(r"OPTION|REM|DATA|'", text, re.I):
        return line
    parts = text.split('"')
    # A hexadecimal number takes the first letters of the word behind it.
    parts[::2] = [re.sub(r"(&H?[0-9A-F]+ (?=[A-F]))|( +(?!E))", lambda m: m[1] or "", part, flags=re.I)
                  for part in parts[::2]]
    return number + " " + '"'.join(parts)


class Generator(Pieces):
    """One program. Lines are kept as text with @names for line numbers that are not known yet."""

    def __init__(self, seed):
        super().__init__(random.Random(seed))
        self.lines, self.labels, self.later = [], {}, []
        self.loop_names = ["I", "J", "K", "L%", "COUNT", "R.1"]
        self.answers = []
        self.depth = 0
        self.names = 0
        self.parameters = ["X", "Y", "Z"]
        self.crunch = self.r.random() < 0.08
        if self.crunch:                                       # names without a keyword inside, or with those beside them
            self.number_names, self.string_names = ["A", "B", "C", "Q2", "N%"], ["A$", "B$", "M$"]
            self.loop_names, self.parameters = ["I", "J", "K", "L%", "H", "R1"], ["P", "Y", "Z"]
            self.line("OPTION CRUNCH")

    def label(self):
        self.names += 1
        return f"@{self.names}@"

    def line(self, text, label=None):
        if label:
            self.labels[label] = len(self.lines)
        self.lines.append(text)

    # Whole programs.
    def program(self):
        """(lines, the same as they are typed, answers)"""
        self.head()
        for _ in range(self.r.randint(2, 6)):
            self.block()
        self.report()
        self.line("END")
        while self.later:
            self.later.pop()()
        step = self.r.choice([1, 5, 10, 10, 10, 100])
        numbers = [step * (i + 1) for i in range(len(self.lines))]
        where = {label: str(numbers[i]) for label, i in self.labels.items()}
        lines = []
        for n, text in zip(numbers, self.lines):
            for label, target in where.items():
                text = text.replace(label, target)
            lines.append(f"{n} {self.dress(text)}")
        return lines, [without_blanks(text) for text in lines] if self.crunch else lines, self.answers

    def dress(self, text):
        """Some of the ways to type the same."""
        if self.r.random() < 0.15:
            text = text if '"' in text or "DATA" in text else text.lower()
        if self.r.random() < 0.2 and '"' not in text:
            text = text.replace("PRINT ", "?")
        return text

    def head(self):
        if self.r.random() < 0.2:
            self.line(self.r.choice(["DEFINT A-Z", "OPTION BASE 1", "DEFDBL D:DEFSNG E-F", "RANDOMIZE 7", "REM title",
                                     "' title"]))
        names = self.r.sample(["F", "G", "CUBE", "MIX"], self.r.randint(0, 2))
        for name in names:
            parameters = self.r.sample(self.parameters, self.r.randint(1, 3))
            inside = self.number_names
            self.number_names = parameters + inside[:1]
            self.line(f"DEF FN{name}({','.join(parameters)})={self.number(2)}")
            self.number_names = inside
            self.functions.append((name, len(parameters)))
        if self.r.random() < 0.3:
            self.line('DEF FNS$(S$)=' + self.r.choice(['S$+"-"+S$', 'LEFT$(S$,3)+"."', 'MID$(S$,2)+LEFT$(S$,1)']))
            self.string_functions.append("S$")
        if self.r.random() < 0.5:
            size = self.r.randint(3, 12)
            self.line(f"DIM V({size}),T$({size}),M({size // 2},3)")
            self.limit = size
            self.arrays = True
        self.line(":".join(f"{name}={self.constant()}" for name in self.number_names[:3]))
        self.line(":".join(f'{name}={self.literal()}' for name in self.string_names[:2]))

    def report(self):
        self.line("PRINT " + ";".join(self.number_names[:4]))
        self.line("PRINT " + self.r.choice([";", '"/"']).join(self.string_names))
        if self.arrays:
            self.line(f"FOR I=0 TO {self.limit}:PRINT V(I);T$(I);:NEXT:PRINT")

    # Blocks: one or more lines.
    def block(self):
        r = self.r
        self.depth += 1
        kinds = [self.simple] * 3 + [self.printing] * 4 + [self.if_line] * 2 + [self.on_goto, self.goto_loop]
        if self.depth < 4:
            kinds += [self.for_block] * 3 + [self.while_block] * 2 + [self.if_block, self.subroutine, self.reading,
                                                                     self.trap, self.on_gosub, self.for_line]
        if self.crunch:
            kinds = [kind for kind in kinds if kind != self.trap]
        if self.depth == 1 and not self.crunch:
            kinds += [self.asking, self.asking] + self.pieces()
        r.choice(kinds)()
        self.depth -= 1

    def simple(self):
        self.line(self.statements())

    def statements(self):
        parts = [self.statement() for _ in range(self.r.randint(1, 3))]
        while len(":".join(parts)) > LINE_ROOM and len(parts) > 1:
            parts.pop()
        return self.r.choice([":", ":", " : "]).join(parts)

    def statement(self):
        r, kind = self.r, self.r.randint(0, 20)
        if kind < 8:
            return f"{r.choice(['', '', 'LET '])}{self.number_place()}={self.number(2)}"
        if kind < 10:
            return f"{r.choice(['N%', 'Q%'])}={self.small(2)}"
        if kind < 13:
            return f"{self.string_place()}=LEFT$({self.string(2)},{r.randint(5, 30)})"
        if kind < 14:
            return f"SWAP {','.join(r.sample(self.number_names, 2))}"
        if kind < 15:
            return f"SWAP {','.join(r.sample(self.string_names, 2))}"
        if kind < 16:
            name = r.choice(self.string_names)
            return f'{name}={name}+"##":MID$({name},{r.randint(1, 2)}{r.choice(["", ",2", ",1"])})={self.literal()}'
        return "PRINT " + self.print_items()

    def print_items(self):
        r, text = self.r, ""
        for _ in range(r.randint(1, 4)):
            kind = r.randint(0, 12)
            item = (self.number(2) if kind < 5 else self.string(2) if kind < 8 else self.literal() if kind < 9
                    else f"TAB({r.randint(0, 40)})" if kind < 10 else f"SPC({r.randint(0, 9)})" if kind < 11
                    else self.condition(1))
            text += item + r.choice([";", ";", ";", ",", ",", " ;"])
        return text if r.random() < 0.15 else text[:-1]

    def printing(self):
        r, kind = self.r, self.r.randint(0, 8)
        if kind < 5:
            self.line("PRINT " + self.print_items())
        elif kind < 7:
            self.line("PRINT USING " + self.using())
        elif kind < 8:
            self.line(f'PRINT "{r.choice(["a", "abc", ""])}";:PRINT POS;CSRLIN')
        else:
            self.line('PRINT "' + "=" * r.choice([15, 16, 17, 31, 32, 33, 63, 64, 65]) + '"' + r.choice(["", ";"]))

    def using(self):
        r, text, items = self.r, "", []
        for _ in range(r.randint(1, 3)):
            if r.random() < 0.7:
                lead = r.choice(["", "", "", "+", "$$", "**", "**$"])
                places = r.choice(["##", "###", "####", "##,###", "#,###,###"])
                behind = r.choice(["", "", ".#", ".##", ".###"])
                trail = "" if lead == "+" else r.choice(["", "", "", "-", "+"])
                if r.random() < 0.15:
                    lead, places, behind = r.choice(["", "+"]), r.choice(["##", "###"]), behind + "^^^^"
                    trail = ""
                text += lead + places + behind + trail + r.choice([" ", " | ", "x "])
                items.append(self.number(1))
            else:
                text += r.choice(["!", "&", "\\ \\", "\\   \\", "\\\\"]) + r.choice([" ", ",", "_! "])
                items.append(self.string(1))
        if r.random() < 0.2:
            items += items
        return f'"{r.choice(["", "<", "a: "])}{text}";' + ";".join(items) + r.choice(["", "", "", ";"])

    def loop_name(self):
        free = [n for n in self.loop_names if n not in self.busy]
        return self.r.choice(free)

    def bounds(self, name):
        r = self.r
        if name.endswith("%"):
            return r.choice(["1 TO 4", "3 TO 1 STEP -1", "0.5 TO 3.4", "5 TO 4", "-2 TO 2 STEP 2"])
        return r.choice(["1 TO 3", "1 TO 5 STEP 2", "3 TO 1 STEP -1", "1 TO 0", "0 TO 1 STEP .25", "10 TO 11 STEP 0.3",
                         f"{name}+1 TO {name}+3", "-1 TO -2 STEP -.5", "2 TO 2", f"1 TO {self.small(1)} MOD 5",
                         "1 TO 1.999 STEP 1/3"])

    def for_block(self):
        r, name = self.r, self.loop_name()
        self.busy.append(name)
        self.line(f"FOR {name}={self.bounds(name)}")
        inner = None
        if r.random() < 0.3 and len(self.busy) < 5:
            inner = self.loop_name()
            self.busy.append(inner)
            self.line(f"FOR {inner}={self.bounds(inner)}:PRINT {name};{inner};")
        for _ in range(r.randint(1, 2)):
            self.block()
        if r.random() < 0.2:
            out = self.label()
            self.line(f"IF {self.condition(1)} THEN {out}")
        else:
            out = None
        if inner:
            self.busy.remove(inner)
            self.line(r.choice([f"NEXT {inner},{name}", "NEXT:NEXT", f"NEXT {inner}:NEXT {name}"]))
        else:
            self.line(r.choice(["NEXT", f"NEXT {name}"]))
        self.line(f'PRINT "{name}";{name}', out)
        self.busy.remove(name)

    def for_line(self):
        name = self.loop_name()
        self.busy.append(name)
        self.line(f"FOR {name}={self.bounds(name)}:{self.statement()}:NEXT {name}:PRINT {name}")
        self.busy.remove(name)

    def while_block(self):
        r, name = self.r, self.loop_name()
        self.busy.append(name)
        start, step = r.randint(0, 6), r.choice(["1", "2", ".5", "1/3"])
        if name.endswith("%"):
            step = "1"
        self.line(f"{name}={start}" + r.choice(["", ":PRINT " + name]))
        self.line(f"WHILE {name}<{r.randint(2, 6)}{r.choice(['', '', ' AND ' + self.condition(1)])}")
        for _ in range(r.randint(1, 2)):
            self.block()
        self.line(f"{name}={name}+{step}:WEND")
        self.busy.remove(name)

    def if_line(self):
        r, kind = self.r, self.r.randint(0, 5)
        yes, no = self.statement(), self.statement()
        if kind < 2:
            text = f"IF {self.condition(2)} THEN {yes}"
        elif kind < 4:
            text = f"IF {self.condition(2)} THEN {yes} ELSE {no}"
        elif kind < 5:
            text = (f"IF {self.condition(1)} THEN IF {self.condition(1)} THEN {yes} ELSE {no}" +
                    r.choice(["", f" ELSE {self.statement()}"]))
        else:
            text = f"IF {self.number(1)} THEN {yes}:{self.statement()} ELSE {no}:{self.statement()}"
        if len(text) < 200:
            self.line(text)

    def if_block(self):
        r = self.r
        other, end = self.label(), self.label()
        self.line(f"IF {self.condition(2)} {r.choice(['THEN ', 'GOTO ', 'THEN', 'THEN GOTO '])}{other}" +
                  r.choice(["", " ELSE PRINT 1;"]))
        self.block()
        self.line(f"GOTO {end}")
        self.line('PRINT "other";', other)
        self.block()
        self.line(r.choice(["REM end", "' end", "PRINT", "REMARKABLE: PRINT 5"]), end)

    def goto_loop(self):
        name, start = self.loop_name(), self.label()
        self.line(f"{name}=0")
        self.line(f"{name}={name}+1:{self.statement()}", start)
        self.line(f"IF {name}<{self.r.randint(1, 4)} THEN {start}")

    def which(self):
        return self.r.choice([self.constant_small(), f"ABS({self.small(1)}) MOD 5"])

    def on_goto(self):
        ends = [self.label() for _ in range(self.r.randint(1, 3))]
        done = self.label()
        self.line(f"ON {self.which()} GOTO {','.join(ends)}")
        self.line('PRINT "none";')
        for end in ends:
            self.line(f'PRINT "{self.r.choice("abc")}";{self.number(1)}', end)
            if self.r.random() < 0.5:
                self.line(f"GOTO {done}")
        self.line("PRINT", done)

    def make_subroutine(self):
        start, busy = self.label(), list(self.busy)

        def write():
            self.busy, self.depth = list(busy), 3
            self.line("REM subroutine", start)
            if self.r.random() < 0.2:
                name = self.loop_name()
                self.busy.append(name)
                self.line(f"FOR {name}=1 TO 9:IF {name}>{self.r.randint(1, 4)} THEN RETURN")
                self.line(f"{self.statement()}:NEXT")
            else:
                for _ in range(self.r.randint(1, 2)):
                    self.block()
            self.line("RETURN")
            self.depth, self.busy = 0, []
        self.later.append(write)
        return start

    def subroutine(self):
        start = self.make_subroutine()
        self.line(f"GOSUB {start}" + self.r.choice(["", ":PRINT 8", ":GOSUB " + start]))

    def on_gosub(self):
        starts = [self.make_subroutine() for _ in range(self.r.randint(1, 2))]
        self.line(f"ON {self.which()} GOSUB {','.join(starts)}:PRINT 9")

    def reading(self):
        r, start = self.r, self.label()
        kinds = [r.random() < 0.5 for _ in range(r.randint(1, 6))]
        items = [r.choice(["5", "-2.5", "1E3", ".125", "12345678", "0.1"]) if k else
                 r.choice(["text", '"a, b"', '" x"', "two words", '"a:b"', "7"]) for k in kinds]
        self.later.append(lambda: self.line("DATA " + r.choice([",", ", "]).join(items), start))
        self.line(f"RESTORE {start}")
        names = [self.number_place() if k else self.string_place() for k in kinds]
        cut = r.randint(0, len(names))
        for part in (names[:cut], names[cut:]):
            if part:
                self.line("READ " + ",".join(part))
        if r.random() < 0.5:
            self.line(f"RESTORE {start}:FOR W=1 TO {len(items)}:READ W$:PRINT W$;\" \";:NEXT:PRINT")

    def asking(self):
        r = self.r
        text = r.choice(['', '"How many";', '"Value: ",', '"A question as long as the row is";'])
        if r.random() < 0.2:
            name = r.choice(self.string_names)
            self.line(f'LINE INPUT {text}{name}')
            self.answers.append(r.choice(["a line, with \"quotes\"", "x", "", "0123456789ABCDE"]) + "\r")
            return
        names = [r.choice(self.number_names[:3]) if r.random() < 0.6 else r.choice(self.string_names)
                 for _ in range(r.randint(1, 3))]
        self.line(f"INPUT {text}{','.join(names)}")
        if r.random() < 0.25:
            self.answers.append(r.choice(["1,2,3,4", "x y z,,,,", "1,2,3,4,5"]) + "\r")
        if r.random() < 0.15:
            self.answers.append("\r")
        else:
            self.answers.append(",".join(r.choice(["hello", "B", "12 men", "0123456789"]) if n.endswith("$") else
                                         r.choice(["5", "-7", "2.5", "1E2", "1234567890"]) for n in names) + "\r")

    def trap(self):
        r, handler, bad = self.r, self.label(), self.label()
        self.line(f"ON ERROR GOTO {handler}")
        failing = r.choice([
            "PRINT 1/0", "V=1/(V-V)", "PRINT LEFT$(\"a\",-1)", "PRINT ASC(\"\")", "PRINT SQR(-1)", "PRINT LOG(0)",
            "A=\"x\"", "A$=5", "N%=40000", "PRINT 1E38*10", "PRINT ZZ(11)", "ERROR 11", "ERROR 200", "GOTO 64999",
                            "RETURN",
            "NEXT", "WEND", "RESUME", "PRINT FNNONE(1)", "ON -1 GOTO 10", "PRINT CHR$(256)", "PRINT 5 MOD 0",
            "PRINT MID$(\"abc\",0)", "PRINT STRING$(300,\"*\")", "W$=STRING$(200,\"*\"):W$=W$+W$", "PRINT 1+\"a\"",
            "PRINT 7\\0", "PRINT 0^-1", "READ NODATA", "SWAP A,A$", "RESTORE 64999", "PRINT -\"a\"", "TAB 5",
                            "PRINT )"])
        self.line(f'PRINT "try ";:{failing}:PRINT "behind"')
        self.line("ON ERROR GOTO 0")
        resume = r.choice(["RESUME NEXT"] * 8 + [f"RESUME {bad}"] * 4 + ["ON ERROR GOTO 0", "PRINT 1/0", "ERROR 6",
                                                                         "END"])
        self.line("REM on", bad)
        self.later.append(lambda: self.line(f'PRINT "error";ERR:{resume}', handler))
        if r.random() < 0.05:
            self.line(failing)
