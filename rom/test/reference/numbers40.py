"""Numbers of BASIC: an int when whole, otherwise a Fraction with 40 binary digits; and how they are written."""
import re
from fractions import Fraction

from faults import BasicError, OVERFLOW, Unsettled

DIGITS = 40
LARGEST = 2 ** 127
SMALLEST = Fraction(1, 2 ** 128)
MOST_STEP = 13  # a constant's power of ten up to which reading it rounds once
NUMBER = re.compile(r"(\d+\.?\d*|\.\d+)(E[+-]?\d+)?", re.I)


class Constants:
    """One that was read may be the number next to it; else what is printed is known in every digit."""
    doubtful = False


def whole(value):
    """A Fraction without a denominator as an int."""
    return value if isinstance(value, int) or value.denominator != 1 else value.numerator


def exponent_of(value):
    """e with 2^e <= |value| < 2^(e+1); value is not 0."""
    value = abs(Fraction(value))
    e = value.numerator.bit_length() - value.denominator.bit_length()
    return e if value >= Fraction(2) ** e else e - 1


def rounded(value):
    """To the nearest number of 40 binary digits, half-way to the even one."""
    if value == 0 or (isinstance(value, int) and abs(value) < 2 ** DIGITS):
        return value
    scale = Fraction(2) ** (exponent_of(value) - DIGITS + 1)
    result = round(Fraction(value) / scale) * scale
    if abs(result) >= LARGEST:
        raise BasicError(OVERFLOW)
    return 0 if abs(result) < SMALLEST else whole(result)


def decimal(value, digits):
    """The value as (whole number of so many digits, power of ten of its first digit), rounded half-way up."""
    value = abs(Fraction(value))
    power = 0
    while value >= Fraction(10) ** (power + 1):
        power += 1
    while value < Fraction(10) ** power:
        power -= 1
    scaled = value * Fraction(10) ** (digits - 1 - power)
    number = int(scaled + Fraction(1, 2))
    return (number // 10, power + 1) if number == 10 ** digits else (number, power)


def written(value):
    """As STR$ gives it: ten digits, half-way up, plain from 0.00001 to 9999999999."""
    if value == 0:
        return "0"
    if Constants.doubtful and decimal(value, 12)[0] % 100 in (49, 50, 51):
        raise Unsettled("a number half-way between two, from one that may be next to what was typed")
    number, power = decimal(value, 10)
    digits = str(number).rstrip("0")
    if power < -5 or power > 9:
        body = digits[0] + ("." + digits[1:] if digits[1:] else "") + f"E{power:+d}"
    elif power < 0:
        body = "0." + "0" * (-power - 1) + digits
    elif len(digits) <= power + 1:
        body = digits + "0" * (power + 1 - len(digits))
    else:
        body = digits[:power + 1] + "." + digits[power + 1:]
    return ("-" if value < 0 else "") + body


def printed(value):
    """As PRINT shows it."""
    return ("" if value < 0 else " ") + written(value) + " "


def read(text):
    """The number that such a text stands for; the text fits NUMBER."""
    digits, _, exponent = text.upper().partition("E")
    behind = len(digits.partition(".")[2])
    if abs(int(exponent or 0) - behind) > MOST_STEP or int(digits.replace(".", "")) >= 2 ** DIGITS:
        Constants.doubtful = True
    return rounded(whole(Fraction(text.upper())))


def integer(value):
    """What a whole-number variable keeps: the nearest, half-way up."""
    result = (Fraction(value) + Fraction(1, 2)).__floor__()
    if not -32768 <= result <= 32767:
        raise BasicError(OVERFLOW)
    return result


def down(value):
    return value if isinstance(value, int) else value.__floor__()
