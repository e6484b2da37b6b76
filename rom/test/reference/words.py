"""The words of a program's line."""
import re

KEYWORDS = set("""RUN LIST DELETE CLEAR STOP END REM GOTO GOSUB RETURN ON IF THEN ELSE FOR TO STEP NEXT WHILE WEND
ERROR RESUME LET DIM ERASE SWAP DEF FN DEFSTR DEFINT DEFSNG DEFDBL DATA READ RESTORE INPUT LINE PRINT USING TAB SPC
MID$ TRON TROFF OPTION RANDOMIZE CLS LOCATE MOD NOT AND OR XOR ABS INT FIX SGN SQR EXP LOG SIN COS TAN ATN PI RND LEN
ASC VAL CHR$ STR$ HEX$ LEFT$ RIGHT$ INSTR STRING$ SPACE$ UCASE$ LCASE$ INPUT$ IN POS CSRLIN ERR ERL FRE INKEY$ TIME
TIMER TIME$ PEEK POKE POINT""".split())

TOKEN = re.compile(r"""
    (?P<blank>\ +)|(?P<string>"(?:[^"]|"")*"?)|(?P<hex>&H?[0-9A-F]+)|(?P<number>(?:\d+\.?\d*|\.\d+)(?:E[+-]?\d+)?)|
    (?P<word>[A-Z][A-Z0-9.]*[$%!\#]?)|(?P<sign><>|><|<=|=<|>=|=>|[-+*/^\\=<>(),;:?'])""", re.I | re.X)
DIGITS_MAY_FOLLOW = re.compile(r"(GOTO|GOSUB|RUN|RESTORE|ELSE|THEN|TO|STEP)(\d+)$", re.I)
SIGNS = {"><": "<>", "=<": "<=", "=>": ">="}


def data_items(text):
    """The items of DATA and where it ends. Each is (text, whether it stood in quotes)."""
    items, at = [], 0
    while True:
        match = re.compile(r' *(?:"([^"]*)"? *|([^,:]*))').match(text, at)
        quoted = match.group(1) is not None
        items.append((match.group(1) if quoted else match.group(2).strip(), quoted))
        at = match.end()
        if at >= len(text) or text[at] != ",":
            return items, at
        at += 1


def cut(text):
    """The tokens (kind, value) of a line: number, string, word (a keyword), name, sign, data; "end" is the last."""
    tokens, at = [], 0
    while at < len(text):
        match = TOKEN.match(text, at)
        assert match, text[at:]
        at = match.end()
        kind, value = match.lastgroup, match.group()
        if kind == "string":
            value = value[1:-1] if value.endswith('"') and len(value) > 1 else value[1:]
            tokens.append(("string", value.replace('""', '"')))
        elif kind in ("hex", "number"):
            tokens.append((kind, value))
        elif kind == "sign":
            if value == "'":
                break
            tokens.append(("word", "PRINT") if value == "?" else ("sign", SIGNS.get(value, value)))
        elif kind == "word":
            value = value.upper().rstrip("!#")
            joined = DIGITS_MAY_FOLLOW.match(value)
            if value.startswith("REM"):
                break
            if value == "DATA":
                items, length = data_items(text[at:])
                at += length
                tokens.append(("data", items))
            elif joined:
                tokens += [("word", joined.group(1)), ("number", joined.group(2))]
            elif value in KEYWORDS:
                tokens.append(("word", value))
            elif value.startswith("FN"):
                tokens += [("word", "FN"), ("name", value[2:])]
            else:
                tokens.append(("name", value))
    tokens.append(("end", None))
    return tokens
