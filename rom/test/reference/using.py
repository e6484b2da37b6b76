"""PRINT USING."""
import re
from fractions import Fraction

from faults import BasicError, QUANTITY, TYPE, Unsettled
from numbers40 import decimal

NUMERIC = re.compile(r"""(?P<plus>\+?)(?P<lead>\*\*\$|\*\*|\$\$)?(?P<places>(?:\#[\#,]*|(?<=[*$])[\#,]+)?)
                         (?P<point>\.(?P<behind>\#*))?(?P<exponent>\^\^\^\^)?(?P<trail>[+-]?)""", re.X)
TEXT = re.compile(r"!|&|\\( *)\\")


def pieces(text):
    """The text as a list of ("text", string), ("string", match) and ("number", match)."""
    parts, at = [], 0
    while at < len(text):
        if text[at] == "_" and at + 1 < len(text):
            parts.append(("text", text[at + 1]))
            at += 2
            continue
        match, kind = TEXT.match(text, at), "string"
        if not match:
            match, kind = NUMERIC.match(text, at), "number"
            if not (match.group("places").startswith("#") or match.group("lead") or match.group("behind")):
                parts.append(("text", text[at]))
                at += 1
                continue
        parts.append((kind, match))
        at = match.end()
    return parts


def number_in(field, value):
    if field.group("exponent"):
        return with_exponent(field, value)
    behind = len(field.group("behind") or "")
    lead = field.group("lead") or ""
    places = len(field.group("places")) + len(lead) + len(field.group("plus"))
    if field.group("plus") and field.group("trail"):
        raise Unsettled("signs on both sides of a field")
    if value:
        digits, power = decimal(value, 12)
        exact = Fraction(digits) * Fraction(10) ** (power - 11)
    else:
        exact = Fraction(0)
    scaled = int(exact * 10 ** behind + Fraction(1, 2))
    if value < 0 and scaled == 0:
        raise Unsettled("the sign of what is rounded to 0")
    if scaled >= 10 ** 11:
        raise Unsettled("USING with more digits than 40 bits hold for sure")
    before, fraction = divmod(scaled, 10 ** behind)
    size = f"{before:,}" if "," in field.group("places") else str(before)
    negative = value < 0
    sign = "-" if negative and not field.group("trail") else "+" if field.group("plus") else ""
    body = sign + ("$" if "$" in lead else "") + size
    if len(body) > places and before == 0:
        raise Unsettled("a field without a place for the 0 before the point")
    over = len(body) > places
    text = body if over else body.rjust(places, "*" if "*" in lead else " ")
    if field.group("point"):
        text += "." + (f"{fraction:0{behind}d}" if behind else "")
    if field.group("trail"):
        text += "-" if negative else "+" if field.group("trail") == "+" else " "
    return ("%" if over else "") + text


def with_exponent(field, value):
    """A field with ^^^^: all its places are filled, but for the first when it is the sign's."""
    signs = field.group("plus") or field.group("trail")
    if field.group("lead") or "," in field.group("places") or (field.group("plus") and field.group("trail")):
        raise Unsettled("a field with an exponent and more")
    before = len(field.group("places")) - (not signs)
    behind = len(field.group("behind") or "")
    if before < 1:
        raise Unsettled("a field with an exponent and no place before the point")
    mark = "-" if value < 0 else "+" if signs else " "
    digits, power = decimal(value, 12) if value else (0, before - 1)
    places = before + behind
    number = (digits * 10 ** places * 2 + 10 ** 12) // (2 * 10 ** 12)
    if number == 10 ** places:
        number, power = number // 10, power + 1
    if not value and before > 1:
        raise Unsettled("0 with an exponent and more than one place")
    power -= before - 1
    if abs(power) > 99:
        raise Unsettled("an exponent of three digits")
    text = f"{number:0{places}d}"
    text = text[:before] + ("." + text[before:] if field.group("point") else "")
    text += "E" + ("-" if power < 0 else "+") + f"{abs(power):02d}"
    if field.group("trail"):
        return text + (mark if mark == "-" or field.group("trail") == "+" else " ")
    return mark + text


def string_in(field, value):
    if field.group() == "&":
        return value
    if field.group() == "!":
        if not value:
            raise Unsettled("! with an empty string")
        return value[0]
    return value[:len(field.group())].ljust(len(field.group()))


class Using:
    """One PRINT USING: item by item."""

    def __init__(self, text):
        self.parts = pieces(text)
        self.at = 0
        if all(kind == "text" for kind, _ in self.parts):
            raise BasicError(QUANTITY)

    def literal(self):
        """What stands before the next field, or to the end."""
        text = ""
        while self.at < len(self.parts) and self.parts[self.at][0] == "text":
            text += self.parts[self.at][1]
            self.at += 1
        return text

    def item(self, value):
        text = self.literal()
        if self.at == len(self.parts):
            self.at = 0
            text += self.literal()
        kind, field = self.parts[self.at]
        if (kind == "string") != isinstance(value, str):
            raise BasicError(TYPE)
        self.at += 1
        text += string_in(field, value) if kind == "string" else number_in(field, value)
        return text

    def rest(self):
        return self.literal()
