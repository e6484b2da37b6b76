"""What the help panel shows about an instruction: flags, size, clock cycles, description and the key by which it
is found."""

import re

import z80

# Flags in the order C N P/V H Z S: - unaffected, + as defined, P parity, V overflow, 0 and 1, blank unknown,
# * exceptional.
UNAFFECTED = "------"
ARITHMETIC = "++V+++"
FLAGS_OF_NAME = {
    "neg": ARITHMETIC, "add": ARITHMETIC, "adc": ARITHMETIC, "sub": ARITHMETIC, "sbc": ARITHMETIC, "cp": ARITHMETIC,
    "and": "00P1++", "or": "00P0++", "xor": "00P0++",
    "rlca": "+0-0--", "rrca": "+0-0--", "rla": "+0-0--", "rra": "+0-0--",
    **{name.lower(): "+0P0++" for name in z80.SHIFTS},
    "rrd": "-0P0++", "rld": "-0P0++", "bit": "-0 1+ ",
    "daa": "+-P+++", "cpl": "-1-1--", "scf": "10-0--", "ccf": "+0-+--",
    "ldi": "-0*0--", "ldd": "-0*0--", "ldir": "-000--", "lddr": "-000--",
    "cpi": "-1*+++", "cpd": "-1*+++", "cpir": "-1*+++", "cpdr": "-1*+++",
    "ini": "-1  + ", "ind": "-1  + ", "outi": "-1  + ", "outd": "-1  + ",
    "inir": "-1  1 ", "indr": "-1  1 ", "otir": "-1  1 ", "otdr": "-1  1 ",
}


def is_pair(operand):
    return operand in ("bc", "de", "hl", "sp", "ix", "iy", "af")


def flags(name, operands):
    first = operands[0] if operands else ""
    if name in ("inc", "dec"):
        return UNAFFECTED if is_pair(first) else "-+V+++"
    if name == "add" and is_pair(first):
        return "++-+--"
    if name == "in" and operands[1] == "(c)":
        return "-0P0++"
    if name == "ld" and operands in (["a", "i"], ["a", "r"]):
        return "-0*0++"
    if operands == ["af", "af'"] or (name == "pop" and first == "af"):
        return "++++++"
    return FLAGS_OF_NAME.get(name, UNAFFECTED)


def size(key, name):
    length = 4 if len(key) == 6 else len(key) // 2
    holes = re.findall(r"nn|\+d|\+e|\bn\b", name)
    if len(key) == 6:
        holes = []
    return length + sum(2 if hole == "nn" else 1 for hole in holes)


def plain_clock(name, operands):
    """Clock cycles of an unprefixed instruction on HL."""
    if name in ("jr", "ret", "call") and len(operands) == (1 if name == "ret" else 2):
        return {"jr": "12/7", "ret": "11/5", "call": "17/10"}[name]
    fixed = {"jr": 12, "djnz": "13/8", "jp": 10, "call": 17, "ret": 10, "rst": 11, "push": 11, "pop": 10, "in": 11,
             "out": 11}
    if operands == ["(hl)"] and name == "jp":
        return 4
    if name in fixed:
        return fixed[name]
    if name == "ex" and "(sp)" in operands:
        return 19
    if name == "add" and operands[0] == "hl":
        return 11
    if name in ("inc", "dec"):
        return 11 if operands == ["(hl)"] else 6 if is_pair(operands[0]) else 4
    if name == "ld":
        if "(nn)" in operands:
            return 16 if "hl" in operands else 13
        if operands == ["sp", "hl"]:
            return 6
        if "nn" in operands or operands == ["(hl)", "n"]:
            return 10
    memory = {"n", "(hl)", "(bc)", "(de)"} & set(operands)
    return 7 if memory else 4


def ed_clock(name, operands):
    if name in ("in", "out"):
        return 12
    if name in ("sbc", "adc"):
        return 15
    if name in ("retn", "reti"):
        return 14
    if name in ("rrd", "rld"):
        return 18
    if name == "ld":
        return 20 if "(nn)" in operands else 9
    if name in ("neg", "im"):
        return 8
    return "21/16" if name.endswith("r") else 16


def clock(key, text, name, operands):
    if len(key) == 6:
        return 20 if name == "bit" else 23
    if key.startswith("CB") and len(key) == 4:
        if operands[-1] != "(hl)":
            return 8
        return 12 if name == "bit" else 15
    if key.startswith("ED") and len(key) == 4:
        return ed_clock(name, operands)
    if len(key) == 4:
        if "+d)" in text:
            return 23 if name in ("inc", "dec") else 19
        plain = [re.sub(r"i[xy][hl]?", lambda m: "hl" if len(m[0]) == 2 else m[0][2], o) for o in operands]
        return plain_clock(name, plain) + 4
    return plain_clock(name, operands)


def thing(operand):
    """An operand in words."""
    if operand in ("n", "nn"):
        return f"the value {operand}"
    if operand == "(n)":
        return "port n"
    if operand == "(c)":
        return "port c"
    if operand.startswith("("):
        place = operand[1:-1].replace("+d", " plus d")
        return f"the memory location pointed to by {place}" if place != "nn" else "the memory location nn"
    return operand


CONDITION_WORDS = {
    "nz": "the zero flag is reset", "z": "the zero flag is set", "nc": "the carry flag is reset",
    "c": "the carry flag is set", "po": "the parity is odd", "pe": "the parity is even",
    "p": "the sign flag is reset", "m": "the sign flag is set",
}

WITHOUT_OPERAND = {
    "nop": "No operation is performed.",
    "halt": "Suspends the processor until an interrupt or reset occurs.",
    "rlca": "Rotates a left one bit. Bit 7 goes to the carry flag and to bit 0.",
    "rrca": "Rotates a right one bit. Bit 0 goes to the carry flag and to bit 7.",
    "rla": "Rotates a left one bit through the carry flag.",
    "rra": "Rotates a right one bit through the carry flag.",
    "daa": "Adjusts a after an addition or subtraction of packed decimal digits.",
    "cpl": "Inverts all bits of a.",
    "scf": "Sets the carry flag.",
    "ccf": "Inverts the carry flag. The half carry flag takes its former value.",
    "exx": "Exchanges bc, de and hl with the second set bc', de' and hl'.",
    "di": "Disables the maskable interrupts.",
    "ei": "Enables the maskable interrupts.",
    "ret": "Pops the top of the stack into pc.",
    "retn": "Returns from a non-maskable interrupt: pops the top of the stack into pc and restores the "
            "interrupt enable.",
    "reti": "Returns from a maskable interrupt: pops the top of the stack into pc.",
    "neg": "Replaces a by zero minus a.",
    "rrd": "Moves the low digit of a to the high digit of (hl), that to the low digit of (hl), and that to a.",
    "rld": "Moves the low digit of a to the low digit of (hl), that to the high digit of (hl), and that to a.",
    "ldi": "Copies the byte at (hl) to (de), then increments hl and de and decrements bc.",
    "ldd": "Copies the byte at (hl) to (de), then decrements hl, de and bc.",
    "cpi": "Compares a with the byte at (hl), then increments hl and decrements bc.",
    "cpd": "Compares a with the byte at (hl), then decrements hl and bc.",
    "ini": "Reads port c into (hl), then increments hl and decrements b.",
    "ind": "Reads port c into (hl), then decrements hl and b.",
    "outi": "Decrements b and writes the byte at (hl) to port c, then increments hl.",
    "outd": "Decrements b and writes the byte at (hl) to port c, then decrements hl.",
}
REPEATED = {"ldir": ("ldi", "bc is zero"), "lddr": ("ldd", "bc is zero"),
            "cpir": ("cpi", "bc is zero or the bytes are equal"), "cpdr": ("cpd", "bc is zero or the bytes are equal"),
            "inir": ("ini", "b is zero"), "indr": ("ind", "b is zero"),
            "otir": ("outi", "b is zero"), "otdr": ("outd", "b is zero")}

SHIFT_WORDS = {
    "rlc": "Rotates {} left one bit. Bit 7 goes to the carry flag and to bit 0.",
    "rrc": "Rotates {} right one bit. Bit 0 goes to the carry flag and to bit 7.",
    "rl": "Rotates {} left one bit through the carry flag.",
    "rr": "Rotates {} right one bit through the carry flag.",
    "sla": "Shifts {} left one bit. Bit 7 goes to the carry flag and bit 0 becomes zero.",
    "sra": "Shifts {} right one bit. Bit 0 goes to the carry flag and bit 7 keeps its value.",
    "sll": "Shifts {} left one bit. Bit 7 goes to the carry flag and bit 0 becomes one.",
    "srl": "Shifts {} right one bit. Bit 0 goes to the carry flag and bit 7 becomes zero.",
}

FROM_START = " The jump is measured from the start of the instruction opcode."


def bit_words(name, operands):
    """Shifts and bit instructions; the undocumented ones also load a register."""
    if name in SHIFT_WORDS:
        words = SHIFT_WORDS[name].format(thing(operands[0]))
        copy = operands[1:]
    else:
        action = {"bit": "Tests", "res": "Resets", "set": "Sets"}[name]
        words = f"{action} bit {operands[0]} of {thing(operands[1])}."
        copy = operands[2:]
    return words + (f" The result is also stored in {copy[0]}." if copy else "")


def jump_words(name, operands):
    condition = CONDITION_WORDS[operands[0]] if len(operands) == 2 or name == "ret" else None
    if name == "djnz":
        return "The b register is decremented, and if not zero, the signed value n is added to pc." + FROM_START
    if name == "jr":
        action = "the signed value n is added to pc."
        return (f"If {condition}, {action}" if condition else action[0].upper() + action[1:]) + FROM_START
    if name == "jp" and operands[0].startswith("("):
        return f"Loads the value of {operands[0][1:-1]} into pc."
    action = {
        "jp": "nn is copied to pc.",
        "call": "the address of the next instruction is pushed onto the stack and nn is copied to pc.",
        "ret": "the top of the stack is popped into pc.",
    }[name]
    return f"If {condition}, {action}" if condition else action[0].upper() + action[1:]


def two_operand_words(name, operands):
    first, second = thing(operands[0]), thing(operands[1])
    return {
        "ld": f"Loads {second} into {first}.",
        "add": f"Adds {second} to {first}.",
        "adc": f"Adds {second} and the carry flag to {first}.",
        "sbc": f"Subtracts {second} and the carry flag from {first}.",
        "ex": f"Exchanges {first} with {second}.",
        "in": f"Reads a byte from {second} into {first}.",
        "out": f"Writes {second} to {first}.",
    }[name]


def description(name, operands):
    if name in WITHOUT_OPERAND and not operands:
        return WITHOUT_OPERAND[name]
    if name in REPEATED:
        once, end = REPEATED[name]
        return f"{WITHOUT_OPERAND[once][:-1]}. Repeats until {end}."
    if name in SHIFT_WORDS or name in ("bit", "res", "set"):
        return bit_words(name, operands)
    if name in ("jp", "jr", "djnz", "call", "ret"):
        return jump_words(name, operands)
    if operands == ["f", "(c)"]:
        return "Reads a byte from port c and sets the flags by it; the byte is not stored."
    if name == "ex" and operands[0] == "af":
        return "Exchanges af with the second set af'."
    if name == "im":
        return f"Sets the interrupt mode {operands[0].replace('/', ' or ')}."
    if name == "rst":
        return f"Pushes the address of the next instruction onto the stack and jumps to {operands[0]}."
    if len(operands) == 2:
        return two_operand_words(name, operands)
    what = thing(operands[0])
    return {
        "inc": f"Adds one to {what}.",
        "dec": f"Subtracts one from {what}.",
        "sub": f"Subtracts {what} from a.",
        "and": f"Bitwise and of a with {what}; the result goes to a.",
        "or": f"Bitwise or of a with {what}; the result goes to a.",
        "xor": f"Bitwise exclusive or of a with {what}; the result goes to a.",
        "cp": f"Subtracts {what} from a and sets the flags; a keeps its value.",
        "push": f"Pushes {what} onto the stack.",
        "pop": f"Pops the top of the stack into {what}.",
    }[name]


# Keys that differ from the row's text.
NAMES = {"08": "ex af,af'", "C7": "rst 00h", "CF": "rst 08h", "ED70": "in f,(c)"}


def name_of(key, text):
    name = NAMES.get(key, text.rstrip("*").lower())
    loads_too = re.fullmatch(r"ld (.),(\S+ .*)", name)
    if len(key) == 6 and loads_too:
        return f"{loads_too[2]},{loads_too[1]}"
    return name


def record(key, text):
    """flags, size, clock cycles, description, key of the help."""
    full = name_of(key, text)
    name, operands = z80.operands(full)
    return flags(name, operands), size(key, full), clock(key, full, name, operands), description(name, operands), full
