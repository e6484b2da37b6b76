"""Pieces of random programs, each for something of its own; they stand outside of loops."""
from generator_values import Values


class Pieces(Values):
    """Uses line, label, later, answers and loop_names of the generator."""

    def pieces(self):
        return [self.places, self.sorting, self.key, self.outer_next, self.out_of_loop, self.recursion, self.tracing,
                self.many_dimensions, self.numbers_table, self.random_check, self.failing, self.retry, self.own_names,
                self.defstr, self.else_ladder, self.string_walk, self.nested_functions, self.brackets]

    def places(self):
        r = self.r
        self.line("CLS")
        rows = r.sample(range(0, 18), r.randint(1, 4))
        for row in rows:
            self.line(f"LOCATE {row},{r.randint(0, 15)}:PRINT {self.r.choice([self.literal(), self.number(1)])}" +
                      r.choice(["", ";POS;CSRLIN", ";", ";:PRINT CSRLIN;"]))
        self.line("LOCATE 19,0")

    def sorting(self):
        r, n, name = self.r, self.r.randint(3, 8), self.r.choice(["S", "S$", "S%"])
        self.names += 1
        name = f"SORT{self.names}{name[1:]}"
        value = (f"CHR$(65+W*{r.randint(2, 30)} MOD 26)+STR$(W)" if "$" in name else
                 f"W*{r.randint(5, 99)} MOD {r.randint(5, 50)}{r.choice(['', '/4', '-7'])}")
        self.line(f"DIM {name}({n}):FOR W=0 TO {n}:{name}(W)={value}:NEXT")
        sign = r.choice("<>")
        self.line(f"FOR W1=1 TO {n}:FOR W2={n} TO W1 STEP -1")
        self.line(f"IF {name}(W2){sign}{name}(W2-1) THEN SWAP {name}(W2),{name}(W2-1)")
        self.line(r.choice(["NEXT W2,W1", "NEXT:NEXT", "NEXT W2:NEXT W1"]))
        again = f":ERASE {name}:DIM {name}(2):PRINT {name}(2)"
        self.line(f"FOR W=0 TO {n}:PRINT {name}(W);:NEXT:PRINT" + r.choice(["", again]))

    def key(self):
        n = self.r.randint(1, 3)
        self.line(f'PRINT "key";:W$=INPUT$({n}):PRINT W$;ASC(W$)')
        self.answers.append("".join(self.r.choice("aZ5 ,") for _ in range(n)))

    def outer_next(self):
        first, second = self.r.sample(self.loop_names, 2)
        self.line(f"FOR {first}=1 TO {self.r.randint(1, 3)}:FOR {second}=1 TO 5")
        self.line(f"PRINT {first}*{second};:IF {second}<{self.r.randint(1, 5)} THEN NEXT {second}")
        self.line(f"NEXT {first}:PRINT {first};{second}")

    def out_of_loop(self):
        name, out = self.loop_name(), self.label()
        self.line(f"FOR {name}=1 TO 9:PRINT {name};:IF {name}={self.r.randint(1, 9)} THEN {out}")
        self.line(f"NEXT:PRINT \"all\"")
        self.line(f"FOR {name}=1 TO 2:PRINT {name};:NEXT:PRINT", out)

    def recursion(self):
        start, depth = self.label(), self.r.randint(2, 7)
        self.line(f"D=0:GOSUB {start}:PRINT D")

        def write():
            self.line(f"D=D+1:PRINT D;:IF D<{depth} THEN GOSUB {start}", start)
            self.line(self.r.choice(["", "PRINT D;:"]) + "D=D-1:RETURN")
        self.later.append(write)

    def many_dimensions(self):
        n = self.r.randint(3, 6)
        self.names += 1
        name = f"DEEP{self.names}{self.r.choice(['', '%', '$'])}"
        at = [str(self.r.randint(0, 1)) for _ in range(n)]
        value = self.literal() if "$" in name else "6.6"
        zeros = ",".join(["0"] * n)
        element = f"{name}({','.join(at)})"
        self.line(f"DIM {name}({','.join(['1'] * n)}):{element}={value}:PRINT {element};{name}({zeros})")

    def numbers_table(self):
        r = self.r
        form = r.choice(["X*X", "X/7", "1/X", "X*X*X/3", "X^3", "SQR(X)*0+X", "X*1E9", "X*1E-7", "INT(X*100)/100",
                         "X-INT(X)", "X/10*10", "X MOD .7", "STR$(X/3)", "VAL(STR$(X/3))*3", "1E30*X*X", "1E-19/X/X",
                         "-X/9",
                         "HEX$(X)", "2^X"])
        low, step = r.choice([(1, "1"), (1, ".25"), (10, "-1.5"), (1, "1.1"), (3, "1/3"), (1000, "37.5"), (7, "0.1")])
        down = step.startswith("-")
        high = 1 if down else f"{low}+{r.randint(2, 12)}*{step}"
        self.line(f"FOR X={low} TO {high} STEP {step}:PRINT {form};\" \";:NEXT:PRINT:PRINT X")

    def retry(self):
        """RESUME: the statement that failed once more."""
        handler = self.label()
        self.line(f"ON ERROR GOTO {handler}:D=0")
        self.line(self.r.choice(["PRINT 6/D", "PRINT D;:A=7/D:PRINT A", "PRINT LOG(D)=0", "PRINT SQR(D-1)"]))
        self.line("ON ERROR GOTO 0")
        self.later.append(lambda: self.line(f"D=D+1:PRINT ERR;ERL;:{self.r.choice(['RESUME', 'RESUME 0'])}", handler))

    def own_names(self):
        r = self.r
        self.line(r.choice(["PI=3:PRINT PI", "IN=5:PRINT IN+1", "PRINT INT(PI*1000)", "A!=5:PRINT A", "A#=7:PRINT A",
                            "SCORE.1=5:SCORE.10=6:PRINT SCORE.1;SCORE.10", "FORX=1:PRINT FORX",
                            "TOTALIF=3:PRINT TOTALIF",
                            "E1=3:PRINT E1;1E1", "LONGNAMEA=1:LONGNAMEB=2:PRINT LONGNAMEA;LONGNAMEB",
                            'Z=5:Z%=6:Z$="7":Z(1)=8:Z%(1)=9:Z$(1)="10":PRINT Z;Z%;Z$;Z(1);Z%(1);Z$(1):ERASE Z,Z%,Z$']))

    def defstr(self):
        if not any("DEFSTR" in text for text in self.lines):
            self.line("DEFSTR U:U=\"text\":U1=U+U:PRINT U;LEN(U1);U1")

    def else_ladder(self):
        r, name = self.r, self.loop_name()
        one, two, three, four = (f'PRINT "{w}";' for w in ("one", "two", "three", "four"))
        self.line(f"FOR {name}=0 TO 5")
        kind = r.randint(0, 2)
        if kind == 0:
            self.line(f"IF {name}=1 THEN {one} ELSE IF {name}=2 THEN {two} ELSE IF {name}=3 THEN {three} ELSE {four}")
        elif kind == 1:
            self.line(f"IF {name}>1 THEN IF {name}>2 THEN IF {name}>3 THEN {one} ELSE {two} ELSE {three} ELSE {four}")
        else:
            self.line(f"IF {name} MOD 2 THEN FOR W=1 TO 2:PRINT W;:NEXT ELSE IF {name} THEN {two}:{three}")
        self.line("NEXT:PRINT")

    def string_walk(self):
        r = self.r
        source = r.choice(['"QUOLL"', '"a,b,,c"', "A$", 'STRING$(20,"xy")', 'STR$(1/7)', '"The quick brown fox"'])
        body = r.choice(['W$=MID$(X$,W,1)+W$', 'IF MID$(X$,W,1)>"a" THEN W$=W$+MID$(X$,W,1)',
                         "W$=W$+HEX$(ASC(MID$(X$,W)))",
                         'W$=W$+CHR$(32+(ASC(MID$(X$,W,1))+W) MOD 90)', "MID$(X$,W,1)=CHR$(65+W):W$=X$",
                         'W$=LEFT$(X$,W)+RIGHT$(W$,W)', 'W$=STR$(INSTR(W,X$,MID$(X$,W,1)))+W$'])
        self.line(f'X$={source}:W$="":FOR W=1 TO LEN(X$):{body}:NEXT:PRINT W$;LEN(W$)')

    def nested_functions(self):
        self.names += 1
        n = self.names
        self.line(f"DEF FNP{n}(X)=X*2+{self.r.randint(1, 5)}:DEF FNQ{n}(X,Y)=FNP{n}(Y)-FNP{n}(X)+X")
        self.line(f"X={self.r.randint(1, 9)}:PRINT FNQ{n}(FNP{n}(X),X);X;FNP{n}(FNP{n}(1))")
        self.line(f"DEF FNR{n}%(X)=X/{self.r.randint(2, 7)}:PRINT FNR{n}%(X);FNR{n}%(-X)")

    def brackets(self):
        self.line("PRINT " + self.number(self.r.randint(3, 5)) + ";" + self.condition(3))

    def tracing(self):
        self.line("TRON")
        self.line("PRINT 1" + self.r.choice(["", ";", ":PRINT 2"]))
        self.line("FOR W=1 TO 2:PRINT W;")
        self.line("NEXT:TROFF")
        self.line("PRINT")

    def random_check(self):
        r = self.r
        self.line(r.choice([
            "FOR W=1 TO 9:X=RND(6):IF X<1 OR X>6 OR X<>INT(X) THEN PRINT \"bad\"",
            "FOR W=1 TO 9:X=RND:IF X<0 OR X>=1 THEN PRINT \"bad\"",
            "FOR W=1 TO 9:X=RND(1):IF X<0 OR X>=1 THEN PRINT \"bad\"",
            f"RANDOMIZE {r.randint(1, 99)}:FOR W=1 TO 3:X=INT(RND*1):PRINT X;"]))
        self.line("NEXT:PRINT \"done\";W")

    def failing(self):
        """Mostly nothing; else the program ends here."""
        if self.r.random() < 0.15:
            self.line(self.r.choice(["STOP", "PRINT 5;:STOP", "PRINT 1/0", "PRINT \"x\";LEFT$(A$,-1)", "A=A$",
                                     "GOTO 65000",
                                     "IF A=A THEN END ELSE STOP", "NEXT ZZ", "READ ZZ,ZZ,ZZ,ZZ,ZZ,ZZ,ZZ,ZZ,ZZ,ZZ,ZZ,ZZ",
                                     "ERROR 250", "ERROR 2", "PRINT ZZ(1,2);ZZ(1)", "DIM ZZ(3),ZZ(3)"]))
