#!/usr/bin/env python3
"""Writes the three opcode tables: generate.py [FOLDER]

OpcodeText.txt      what the disassembler and the opcode help search
AsmOpcodeText.txt   what the assembler searches
OpcodeInfoText.txt  what the help panel shows about an instruction

Only key columns and texts count for those who search; order and slips of the rows are part of the tables, since
the first hit wins. With --check nothing is written: the status is 1 unless the files there have these bytes."""

import pathlib
import sys

import describe
import z80

LINE_END = "\r\n"

# The row of DDCBFB bears a key of five digits, which no opcode gives.
MISPRINTED = {"DDCBFB": "DDCBB"}


def opcode_text(rows):
    lines = [f">{key:12}{text}" for key, text in [(p, p) for p in z80.PREFIXES]]
    lines += [f">{MISPRINTED.get(key, key):12}{text}" for key, text in rows]
    return LINE_END.join(lines + [">end of file"]) + "\0\0\0"


# What the assembler's table calls otherwise.
ASM_TEXTS = {"08": "EX AF,AF'", "ED70": "IN (C)*"}
# These rows stand behind others of the same text, so nobody finds them; they lack their letter.
ASM_WITHOUT_LETTER = {"FDCB61", "FDCB64", "FDCB65"}
# Slips of the second FD block: they are shadowed or equal no line.
ASM_SLIPS = [
    ("FD29", " ", "ADD IY,IY"),
    ("FD29", " ", "ADD IY,IY"),
    ("FD2A", "n", "LD IY,()"),
    ("FD34", " ", "INC (IY+d)"),
    ("FD35", " ", "DEC (IY+d)"),
    ("FD36", "x", "LD (IY+),"),
    ("FD46", " ", "LD B,(IY+d)"),
]


def asm_row(key, text):
    """(key, letter, text without what a number fills)."""
    letters = {"DD36": "x", "FD36": "y"}
    for hole, letter in (("(PC+e)", "e"), ("nn", "m"), ("+d", "d"), ("n", "n")):
        if hole in text:
            letter = letters.get(key, letter)
            text = text.replace(hole, "+" if hole == "+d" else "")
            if key in letters:
                text = text.replace("n", "")
            break
    else:
        letter = " "
    if key in ASM_WITHOUT_LETTER:
        letter = " "
    return key, letter, ASM_TEXTS.get(key, text)


def asm_rows(rows):
    made = [(p, " ", p) for p in z80.PREFIXES]
    made += [asm_row(key, text) for key, text in rows if not text.endswith("*")]
    starred = [asm_row(key, text) for key, text in rows if text.endswith("*")]
    for prefix, digits in (("CB", 4), ("DD", 4), ("DDCB", 6), ("ED", 4), ("FD", 4), ("FDCB", 6)):
        block = [row for row in starred if row[0].startswith(prefix) and len(row[0]) == digits]
        if (prefix, digits) == ("FD", 4):
            block = sorted(block + ASM_SLIPS, key=lambda row: row[0])
        made += block
    return made


def asm_opcode_text(rows):
    lines = [f">{key:6} {letter}    {text}" for key, letter, text in asm_rows(rows)]
    return LINE_END.join(lines + [">end of file"]) + LINE_END


def opcode_info_text(rows):
    out = ""
    for number, (key, text) in enumerate(rows, 1):
        flags, size, clock, words, name = describe.record(key, text)
        out += f"{flags}|{size}|{clock}|{words}>{name}<{LINE_END}"
        if number % 16 == 0:
            out += LINE_END * (2 if number >= 32 * 16 else 1)
    return out


def main(arguments):
    check = "--check" in arguments
    folders = [a for a in arguments if a != "--check"]
    folder = pathlib.Path(folders[0]) if folders else pathlib.Path(__file__).parent
    rows = z80.rows()
    tables = {
        "OpcodeText.txt": opcode_text(rows),
        "AsmOpcodeText.txt": asm_opcode_text(rows),
        "OpcodeInfoText.txt": opcode_info_text(rows),
    }
    status = 0
    for name, text in tables.items():
        content = text.encode("latin-1")
        if not check:
            (folder / name).write_bytes(content)
        elif (folder / name).read_bytes() != content:
            print(f"{folder / name}: not what generate.py writes")
            status = 1
    return status


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
