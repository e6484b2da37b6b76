"""The Z80's instructions as texts, made from the bits of their opcodes.

x = bits 7-6, y = bits 5-3, z = bits 2-0, p = bits 5-4, q = bit 3 of an opcode byte. In a text n is a byte,
nn a word, (PC+e) the target of a relative jump and d a displacement; a star marks what the manufacturer did
not document."""

R8 = ["B", "C", "D", "E", "H", "L", "(HL)", "A"]
RR = ["BC", "DE", "HL", "SP"]
PUSHED = ["BC", "DE", "HL", "AF"]
CONDITIONS = ["NZ", "Z", "NC", "C", "PO", "PE", "P", "M"]
ALU = ["ADD A,", "ADC A,", "SUB ", "SBC A,", "AND ", "XOR ", "OR ", "CP "]
SHIFTS = ["RLC", "RRC", "RL", "RR", "SLA", "SRA", "SLL", "SRL"]
BITS = [None, "BIT", "RES", "SET"]
PREFIXES = ["CB", "ED", "DD", "FD", "DDCB", "FDCB"]


def fields(opcode):
    return opcode >> 6, opcode >> 3 & 7, opcode & 7, opcode >> 4 & 3, opcode >> 3 & 1


def lower_quarter(y, z, p, q):
    """Unprefixed opcodes 00 to 3F."""
    if z == 0:
        # The typographic apostrophe of key 08 is code page 1250's.
        fixed = ["NOP", "EX AF,AF\x92", "DJNZ (PC+e)", "JR (PC+e)"]
        return fixed[y] if y < 4 else f"JR {CONDITIONS[y - 4]},(PC+e)"
    if z == 1:
        return f"ADD HL,{RR[p]}" if q else f"LD {RR[p]},nn"
    if z == 2:
        place = ["(BC)", "(DE)", "(nn)", "(nn)"][p]
        register = "HL" if p == 2 else "A"
        return f"LD {register},{place}" if q else f"LD {place},{register}"
    if z == 3:
        return f"{'DEC' if q else 'INC'} {RR[p]}"
    if z == 4:
        return f"INC {R8[y]}"
    if z == 5:
        return f"DEC {R8[y]}"
    if z == 6:
        return f"LD {R8[y]},n"
    return ["RLCA", "RRCA", "RLA", "RRA", "DAA", "CPL", "SCF", "CCF"][y]


def upper_quarter(y, z, p, q):
    """Unprefixed opcodes C0 to FF; None for the four prefixes."""
    if z == 0:
        return f"RET {CONDITIONS[y]}"
    if z == 1:
        return ["RET", "EXX", "JP (HL)", "LD SP,HL"][p] if q else f"POP {PUSHED[p]}"
    if z == 2:
        return f"JP {CONDITIONS[y]},nn"
    if z == 3:
        return ["JP nn", None, "OUT (n),A", "IN A,(n)", "EX (SP),HL", "EX DE,HL", "DI", "EI"][y]
    if z == 4:
        return f"CALL {CONDITIONS[y]},nn"
    if z == 5:
        return ["CALL nn", None, None, None][p] if q else f"PUSH {PUSHED[p]}"
    if z == 6:
        return f"{ALU[y]}n"
    return f"RST {8 * y:X}H"


def unprefixed(opcode):
    x, y, z, p, q = fields(opcode)
    if x == 0:
        return lower_quarter(y, z, p, q)
    if x == 1:
        return "HALT" if opcode == 0x76 else f"LD {R8[y]},{R8[z]}"
    if x == 2:
        return ALU[y] + R8[z]
    return upper_quarter(y, z, p, q)


def cb(opcode):
    x, y, z, _, _ = fields(opcode)
    if x == 0:
        return f"{SHIFTS[y]} {R8[z]}" + ("*" if y == 6 else "")
    return f"{BITS[x]} {y},{R8[z]}"


ED_ODD = {
    0x44: "NEG", 0x45: "RETN", 0x46: "IM 0", 0x47: "LD I,A", 0x4D: "RETI", 0x4F: "LD R,A", 0x56: "IM 1",
    0x57: "LD A,I", 0x5E: "IM 2", 0x5F: "LD A,R", 0x67: "RRD", 0x6F: "RLD",
    0x4E: "IM 0/1*", 0x66: "IM 0*", 0x6E: "IM 0/1*", 0x76: "IM 1*", 0x7E: "IM 2*",
    0x70: "IN F,(C)* / IN (C)*", 0x71: "OUT (C),0*",
    **{0x4C + 8 * i: "NEG*" for i in range(7)},
    **{key: "RETN*" for key in (0x55, 0x5D, 0x65, 0x6D, 0x75, 0x7D)},
}


def ed(opcode):
    """None for a key without a row."""
    if opcode in ED_ODD:
        return ED_ODD[opcode]
    x, y, z, p, q = fields(opcode)
    if x == 1 and z == 0:
        return f"IN {R8[y]},(C)"
    if x == 1 and z == 1:
        return f"OUT (C),{R8[y]}"
    if x == 1 and z == 2:
        return f"{'ADC' if q else 'SBC'} HL,{RR[p]}"
    if x == 1 and z == 3:
        return f"LD {RR[p]},(nn)" if q else f"LD (nn),{RR[p]}"
    if x == 2 and y >= 4 and z < 4:
        name = [["LD", "CP", "IN", "OUT"], ["LD", "CP", "IN", "OT"]][y >= 6][z]
        return name + ["I", "D", "IR", "DR"][y - 4]
    return None


def operands(text):
    name, _, rest = text.partition(" ")
    return name, rest.split(",") if rest else []


def index(opcode, register):
    """DD and FD rows: what touches HL, H, L or (HL); None for a key without a row."""
    text = unprefixed(opcode)
    if text is None or opcode in (0x76, 0xEB):
        return None
    if text == "JP (HL)":
        return f"JP ({register})"
    if "(HL)" in text:
        return text.replace("(HL)", f"({register}+d)")
    if "HL" in text:
        return text.replace("HL", register)
    name, halves = operands(text)
    if name in ("JP", "JR", "CALL", "RET") or not {"H", "L"} & set(halves):
        return None
    return f"{name} " + ",".join(register + h if h in ("H", "L") else h for h in halves) + "*"


def index_cb(opcode, register):
    x, y, z, _, _ = fields(opcode)
    place = f"({register}+d)"
    action = f"{SHIFTS[y]} {place}" if x == 0 else f"{BITS[x]} {y},{place}"
    if x == 1 or z == 6:
        return action + ("*" if z != 6 or (x == 0 and y == 6) else "")
    return f"LD {R8[z]},{action}*"


def rows():
    """(key, text) of every instruction, ascending by key."""
    made = {}
    for opcode in range(256):
        made[f"{opcode:02X}"] = unprefixed(opcode)
        made[f"CB{opcode:02X}"] = cb(opcode)
        made[f"ED{opcode:02X}"] = ed(opcode)
        for prefix, register in (("DD", "IX"), ("FD", "IY")):
            made[f"{prefix}{opcode:02X}"] = index(opcode, register)
            made[f"{prefix}CB{opcode:02X}"] = index_cb(opcode, register)
    for prefix in PREFIXES:
        made.pop(prefix, None)
    return [(key, made[key]) for key in sorted(made) if made[key] is not None]
