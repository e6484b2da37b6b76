"""Expressions, worked out while they are read."""
from fractions import Fraction

import functions
import numbers40
from faults import BasicError, DIVISION, NO_FUNCTION, SUBSCRIPT, SYNTAX, TYPE, DIMENSIONED, Unsettled
from functions import bits, down, number, short, signed
from numbers40 import rounded, whole

COMPARISONS = {"=": lambda a, b: a == b, "<>": lambda a, b: a != b, "<": lambda a, b: a < b,
               ">": lambda a, b: a > b, "<=": lambda a, b: a <= b, ">=": lambda a, b: a >= b}
OWN = ("PI", "IN", "TIME")                    # variables as soon as they have a value
BITWISE = {"AND": lambda a, b: a & b, "OR": lambda a, b: a | b, "XOR": lambda a, b: a ^ b}


def divide(a, b):
    if b == 0:
        raise BasicError(DIVISION)
    return rounded(whole(Fraction(a) / b))


def add(a, b):
    if isinstance(a, str) and isinstance(b, str):
        return short(a + b)
    return rounded(number(a) + number(b))


# From those that bind weakest, with the kinds of token: {operator: function} for each step.
LEVELS = [{"XOR"}, {"OR"}, {"AND"}, "NOT", set(COMPARISONS), {"+", "-"}, {"MOD", "\\"}, {"*", "/"}, "sign"]


def apply(operator, a, b):
    if operator in COMPARISONS:
        if isinstance(a, str) != isinstance(b, str):
            raise BasicError(TYPE)
        return -1 if COMPARISONS[operator](a, b) else 0
    if operator == "+":
        return add(a, b)
    a, b = number(a), number(b)
    if operator in BITWISE:
        return signed(BITWISE[operator](bits(a), bits(b)))
    if operator == "-":
        return rounded(whole(a - b))
    if operator == "*":
        return rounded(whole(a * b))
    return {"/": divide, "MOD": functions.modulo, "\\": functions.quotient}[operator](a, b)


class Expressions:
    """Reads the tokens from self.at on; knows the variables."""

    def __init__(self):
        self.tokens, self.at = [], 0
        self.variables, self.arrays, self.defined = {}, {}, {}

    # Tokens.
    def peek(self):
        return self.tokens[self.at]

    def is_sign(self, sign):
        return self.peek() == ("sign", sign)

    def take(self, kind, value):
        """Whether the token is this one, which is then behind."""
        if self.peek() == (kind, value):
            self.at += 1
            return True
        return False

    def need(self, kind, value):
        if not self.take(kind, value):
            raise BasicError(SYNTAX)

    # Variables.
    @staticmethod
    def empty(name):
        return "" if name.endswith("$") else 0

    @staticmethod
    def fit(name, value):
        """The value as the variable keeps it."""
        if name.endswith("$"):
            return functions.string(value)
        return numbers40.integer(number(value)) if name.endswith("%") else number(value)

    def arguments(self):
        self.need("sign", "(")
        values = [self.expression()]
        while self.take("sign", ","):
            values.append(self.expression())
        self.need("sign", ")")
        return values

    def dimension(self, name, limits):
        if name in self.arrays:
            raise BasicError(DIMENSIONED)
        self.arrays[name] = (limits, {})

    def place(self):
        """The variable or element that is named here, as (store, key, name)."""
        kind, name = self.peek()
        if kind != "name" and (kind, name) not in [("word", own) for own in OWN]:
            raise BasicError(SYNTAX)
        self.at += 1
        if not self.is_sign("("):
            return self.variables, name, name
        indices = [down(number(value)) for value in self.arguments()]
        if name not in self.arrays:
            self.dimension(name, [10] * len(indices))
        limits, cells = self.arrays[name]
        if len(limits) != len(indices) or any(not 0 <= i <= n for i, n in zip(indices, limits)):
            raise BasicError(SUBSCRIPT)
        return cells, tuple(indices), name

    # Operators.
    def expression(self, level=0):
        if level == len(LEVELS):
            return self.power()
        operators = LEVELS[level]
        if operators == "NOT":
            if self.take("word", "NOT"):
                return signed(~bits(self.expression(level)) & 0xFFFF)
            return self.expression(level + 1)
        if operators == "sign":
            return self.signs()
        value = self.expression(level + 1)
        while self.peek()[0] in ("sign", "word") and self.peek()[1] in operators:
            operator = self.peek()[1]
            self.at += 1
            value = apply(operator, value, self.expression(level + 1))
        return value

    def signs(self):
        if self.take("sign", "-"):
            return -number(self.signs())
        if self.take("sign", "+"):
            return number(self.signs())
        return self.power()

    def power(self):
        value = self.operand()
        while self.take("sign", "^"):
            if self.take("sign", "-"):
                exponent = -number(self.operand())
            else:
                exponent = number(self.operand())
            value = functions.power(number(value), exponent)
        return value

    def operand(self):
        kind, value = self.peek()
        if kind == "string":
            self.at += 1
            return value
        if kind == "number":
            self.at += 1
            return numbers40.read(value)
        if kind == "hex":
            self.at += 1
            return signed(int(value.upper().lstrip("&H"), 16) & 0xFFFF if value.upper().lstrip("&H") else 0)
        if self.take("sign", "("):
            value = self.expression()
            self.need("sign", ")")
            return value
        if kind == "name":
            store, key, name = self.place()
            return store.get(key, self.empty(name))
        if kind == "word" and value in OWN and value in self.variables:
            self.at += 1
            return self.variables[value]
        if kind == "word":
            self.at += 1
            return self.function(value)
        raise BasicError(SYNTAX)

    def function(self, name):
        if name in functions.ONE:
            fitting, function = functions.ONE[name]
            return function(fitting(self.operand()))
        if name in functions.MANY:
            fewest, most, function = functions.MANY[name]
            values = self.arguments()
            if not fewest <= len(values) <= most:
                raise BasicError(SYNTAX)
            return function(*values)
        if name == "FN":
            return self.call()
        if name == "PI":
            return rounded(Fraction("3.14159265358979323846"))
        if name == "RND":
            return functions.random_number(*(self.arguments() if self.is_sign("(") else ()))
        return self.system(name)

    def call(self):
        name = self.peek()[1]
        self.at += 1
        values = self.arguments() if self.is_sign("(") else []
        if name not in self.defined:
            raise BasicError(NO_FUNCTION)
        parameters, tokens, at = self.defined[name]
        if len(parameters) != len(values):
            raise BasicError(SYNTAX)
        values = [self.fit(p, v) for p, v in zip(parameters, values)]
        before = {p: self.variables.get(p, self.empty(p)) for p in parameters}
        back = self.tokens, self.at
        self.variables.update(zip(parameters, values))
        self.tokens, self.at = tokens, at
        try:
            return self.fit(name, self.expression())
        except BasicError:
            raise Unsettled("an error inside a function")
        finally:
            self.variables.update(before)
            self.tokens, self.at = back
