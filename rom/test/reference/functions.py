"""The functions of BASIC that need nothing but their arguments."""
import math
import random
from fractions import Fraction

import numbers40
from faults import BasicError, DIVISION, QUANTITY, TOO_LONG, TYPE, Unsettled
from numbers40 import down, rounded, whole


def number(value):
    if isinstance(value, str):
        raise BasicError(TYPE)
    return value


def string(value):
    if not isinstance(value, str):
        raise BasicError(TYPE)
    return value


def count(value, low=0, high=255):
    value = down(number(value))
    if not -32768 <= value <= 32767:
        raise Unsettled("which error a large count is")
    if not low <= value <= high:
        raise BasicError(QUANTITY)
    return value


def short(text):
    if len(text) > 255:
        raise BasicError(TOO_LONG)
    return text


def bits(value):
    value = down(number(value))
    if not -32768 <= value <= 65535:
        raise Unsettled("which error a large number of AND is")
    return value & 0xFFFF


def signed(value):
    return value - 0x10000 if value >= 0x8000 else value


def modulo(x, y):
    if y == 0:
        raise BasicError(DIVISION)
    return rounded(whole(Fraction(x) - y * (Fraction(x) / y).__floor__()))


def quotient(x, y):
    """Of x \\ y."""
    x, y = ((Fraction(v) + Fraction(1, 2)).__floor__() for v in (x, y))
    if y == 0:
        raise BasicError(DIVISION)
    result = abs(x) // abs(y)
    return rounded(-result if (x < 0) != (y < 0) else result)


def power(x, y):
    if y == 0:
        return 1
    if isinstance(y, int) and abs(y) <= 64 and x != 0:
        return rounded(whole(Fraction(x) ** y))
    if x < 0:
        raise BasicError(QUANTITY)
    if x == 0:
        raise Unsettled("0^y")
    return real(math.pow(x, y))


def real(value):
    return rounded(whole(Fraction(value)))


def value_of(text):
    """VAL."""
    text = text.lstrip(" ")
    sign = -1 if text[:1] == "-" else 1
    if text[:1] in ("-", "+"):
        text = text[1:]
    match = numbers40.NUMBER.match(text)
    return sign * numbers40.read(match.group()) if match else 0


def middle(text, start, length=255):
    start, length = count(start, 1), count(length)
    return string(text)[start - 1:start - 1 + length]


def find(*arguments):
    start = count(arguments[0], 1) if len(arguments) == 3 else 1
    text, wanted = string(arguments[-2]), string(arguments[-1])
    if not wanted:
        return start if start <= len(text) else 0
    return text.find(wanted, start - 1) + 1


def repeat(times, what):
    times = count(times)
    if isinstance(what, str):
        if not what:
            raise BasicError(QUANTITY)
        return what[0] * times
    return character(what) * times


def character(code):
    code = count(code)
    if not 32 <= code < 127:
        raise Unsettled("characters that are not ASCII")
    return chr(code)


def code(text):
    if not string(text):
        raise BasicError(QUANTITY)
    return ord(text[0])


def positive(x):
    if x <= 0:
        raise BasicError(QUANTITY)
    return x


def root(x):
    if x < 0:
        raise BasicError(QUANTITY)
    top = Fraction(x) * 4 ** 60
    return rounded(whole(Fraction(math.isqrt(top.numerator // top.denominator), 2 ** 60)))


def random_number(n=1):
    n = down(number(n))
    return random.randint(1, n) if n > 1 else Fraction(random.getrandbits(30), 2 ** 30)


ONE = {  # name: (kind of its argument, function)
    "ABS": (number, abs), "INT": (number, down), "FIX": (number, lambda x: -down(-x) if x < 0 else down(x)),
    "SGN": (number, lambda x: (x > 0) - (x < 0)), "SQR": (number, root),
    "EXP": (number, lambda x: real(math.exp(x))), "LOG": (number, lambda x: real(math.log(positive(x)))),
    "SIN": (number, lambda x: real(math.sin(x))), "COS": (number, lambda x: real(math.cos(x))),
    "TAN": (number, lambda x: real(math.tan(x))), "ATN": (number, lambda x: real(math.atan(x))),
    "LEN": (string, len), "ASC": (string, code), "VAL": (string, value_of), "CHR$": (number, character),
    "STR$": (number, numbers40.written), "HEX$": (number, lambda x: "%X" % bits(x)),
    "SPACE$": (number, lambda x: " " * count(x)), "UCASE$": (string, str.upper), "LCASE$": (string, str.lower),
}
MANY = {  # name: (fewest, most arguments, function)
    "LEFT$": (2, 2, lambda s, n: string(s)[:count(n)]),
    "RIGHT$": (2, 2, lambda s, n: string(s)[max(0, len(string(s)) - count(n)):]),
    "MID$": (2, 3, middle), "INSTR": (2, 3, find), "STRING$": (2, 2, repeat),
}
