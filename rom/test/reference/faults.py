"""Errors of BASIC programs, and what the document leaves open."""


class BasicError(Exception):
    """An error of the program, by its number."""

    def __init__(self, number):
        super().__init__(number)
        self.number = number


class Unsettled(Exception):
    """The program came to something of which the document doesn't tell what it does: nothing to compare."""


FOR_NEXT, SYNTAX, RETURN_GOSUB, NO_DATA, QUANTITY, OVERFLOW = 1, 2, 3, 4, 5, 6
NO_LINE, SUBSCRIPT, DIMENSIONED, DIVISION, TYPE, TOO_LONG = 8, 9, 10, 11, 13, 15
NO_FUNCTION, NO_RESUME, WHILE_WEND = 18, 20, 30

TEXTS = {
    FOR_NEXT: "FOR and NEXT don't match", SYNTAX: "Syntax error", RETURN_GOSUB: "RETURN without GOSUB",
    NO_DATA: "Out of data", QUANTITY: "Illegal quantity", OVERFLOW: "Overflow", 7: "Out of memory",
    NO_LINE: "No such line", SUBSCRIPT: "Bad subscript", DIMENSIONED: "Array already dimensioned",
    DIVISION: "Division by zero", 12: "Not in direct mode", TYPE: "Type mismatch", TOO_LONG: "String too long",
    16: "Expression too complex", 17: "Can't continue", NO_FUNCTION: "Undefined function",
    NO_RESUME: "RESUME without error", 23: "Line too long", 24: "Break", WHILE_WEND: "WHILE and WEND don't match",
    54: "Wrong kind of file", 57: "Tape error", 58: "Verify error",
}


def text_of(number):
    return TEXTS.get(number, "Unprintable error")
