#include "devtools/test/model/PlainTables.h"

#include <array>
#include <functional>

#include "devtools/test/model/PlainText.h"

namespace quoll::plain {
namespace {

constexpr std::array<const char*, 8> kRegister = {"B", "C", "D", "E", "H", "L", "(HL)", "A"};
constexpr std::array<const char*, 4> kPair = {"BC", "DE", "HL", "SP"};
constexpr std::array<const char*, 4> kStackPair = {"BC", "DE", "HL", "AF"};
constexpr std::array<const char*, 8> kCondition = {"NZ", "Z", "NC", "C", "PO", "PE", "P", "M"};
constexpr std::array<const char*, 8> kSum = {"ADD A,", "ADC A,", "SUB ", "SBC A,",
                                             "AND ",   "XOR ",   "OR ",  "CP "};
constexpr std::array<const char*, 8> kShift = {"RLC ", "RRC ", "RL ", "RR ", "SLA ", "SRA ", "SLL ", "SRL "};

struct Fields {
  int x, y, z;
  int p() const { return y / 2; }
  bool q() const { return y % 2 == 1; }
};

Fields Split(int opcode) { return {opcode / 64, opcode / 8 % 8, opcode % 8}; }

bool Holds(const std::string& text, const std::string& what) { return InStr(text, what) > 0; }

std::string Digit(int number) { return std::to_string(number); }

// 00 to 3F.
std::string FirstQuarter(const Fields& f) {
  const std::string pair = kPair[f.p()];
  switch (f.z) {
    case 0:
      if (f.y == 0) return "NOP";
      if (f.y == 1) return "EX AF,AF\x92";
      if (f.y == 2) return "DJNZ (PC+e)";
      if (f.y == 3) return "JR (PC+e)";
      return std::string("JR ") + kCondition[f.y - 4] + ",(PC+e)";
    case 1: return f.q() ? "ADD HL," + pair : "LD " + pair + ",nn";
    case 2: {
      constexpr std::array<const char*, 8> kLoads = {"LD (BC),A",  "LD A,(BC)",  "LD (DE),A", "LD A,(DE)",
                                                     "LD (nn),HL", "LD HL,(nn)", "LD (nn),A", "LD A,(nn)"};
      return kLoads[f.y];
    }
    case 3: return (f.q() ? "DEC " : "INC ") + pair;
    case 4: return std::string("INC ") + kRegister[f.y];
    case 5: return std::string("DEC ") + kRegister[f.y];
    case 6: return std::string("LD ") + kRegister[f.y] + ",n";
    default: {
      constexpr std::array<const char*, 8> kAccumulator = {"RLCA", "RRCA", "RLA", "RRA",
                                                           "DAA",  "CPL",  "SCF", "CCF"};
      return kAccumulator[f.y];
    }
  }
}

// C0 to FF; nothing for the four prefix bytes.
std::string LastQuarter(const Fields& f) {
  const std::string condition = kCondition[f.y];
  switch (f.z) {
    case 0: return "RET " + condition;
    case 1: {
      constexpr std::array<const char*, 4> kOthers = {"RET", "EXX", "JP (HL)", "LD SP,HL"};
      return f.q() ? kOthers[f.p()] : std::string("POP ") + kStackPair[f.p()];
    }
    case 2: return "JP " + condition + ",nn";
    case 3: {
      constexpr std::array<const char*, 8> kOthers = {"JP nn",      "",         "OUT (n),A", "IN A,(n)",
                                                      "EX (SP),HL", "EX DE,HL", "DI",        "EI"};
      return kOthers[f.y];
    }
    case 4: return "CALL " + condition + ",nn";
    case 5:
      if (!f.q()) return std::string("PUSH ") + kStackPair[f.p()];
      return f.p() == 0 ? "CALL nn" : "";
    case 6: return std::string(kSum[f.y]) + "n";
    default: return "RST " + Hex(f.y * 8, 1) + "H";
  }
}

std::string PlainOpcode(int opcode) {
  const Fields f = Split(opcode);
  if (f.x == 0) return FirstQuarter(f);
  if (f.x == 3) return LastQuarter(f);
  if (opcode == 0x76) return "HALT";
  if (f.x == 1) return std::string("LD ") + kRegister[f.y] + "," + kRegister[f.z];
  return std::string(kSum[f.y]) + kRegister[f.z];
}

std::string BitOperation(const Fields& f) {
  if (f.x == 0) return kShift[f.y];
  constexpr std::array<const char*, 4> kNames = {"", "BIT ", "RES ", "SET "};
  return kNames[f.x] + Digit(f.y) + ",";
}

std::string CbOpcode(int opcode) {
  const Fields f = Split(opcode);
  return BitOperation(f) + kRegister[f.z] + (f.x == 0 && f.y == 6 ? "*" : "");
}

std::string IndexCbOpcode(int opcode, const std::string& index) {
  const Fields f = Split(opcode);
  const std::string place = BitOperation(f) + "(" + index + "+d)";
  if (f.z == 6) return place + (f.x == 0 && f.y == 6 ? "*" : "");
  if (f.x == 1) return place + "*";
  return std::string("LD ") + kRegister[f.z] + "," + place + "*";
}

// 80 to BF: the block instructions.
std::string EdBlock(const Fields& f) {
  if (f.y < 4 || f.z > 3) return "";
  constexpr std::array<const char*, 4> kLead = {"LD", "CP", "IN", "OT"};
  constexpr std::array<const char*, 4> kTail = {"I", "D", "IR", "DR"};
  if (f.z == 3 && f.y < 6) return std::string("OUT") + kTail[f.y - 4];
  return std::string(kLead[f.z]) + kTail[f.y - 4];
}

std::string EdOpcode(int opcode) {
  const Fields f = Split(opcode);
  if (f.x == 2) return EdBlock(f);
  if (f.x != 1) return "";
  const std::string pair = kPair[f.p()];
  switch (f.z) {
    case 0: return f.y == 6 ? "IN F,(C)* / IN (C)*" : std::string("IN ") + kRegister[f.y] + ",(C)";
    case 1: return f.y == 6 ? "OUT (C),0*" : std::string("OUT (C),") + kRegister[f.y];
    case 2: return (f.q() ? "ADC HL," : "SBC HL,") + pair;
    case 3: return f.q() ? "LD " + pair + ",(nn)" : "LD (nn)," + pair;
    case 4: return f.y == 0 ? "NEG" : "NEG*";
    case 5: return f.y == 0 ? "RETN" : f.y == 1 ? "RETI" : "RETN*";
    case 6: {
      constexpr std::array<const char*, 8> kModes = {"IM 0",  "IM 0/1*", "IM 1",  "IM 2",
                                                     "IM 0*", "IM 0/1*", "IM 1*", "IM 2*"};
      return kModes[f.y];
    }
    default: {
      constexpr std::array<const char*, 8> kOthers = {"LD I,A", "LD R,A", "LD A,I", "LD A,R",
                                                      "RRD",    "RLD",    "",       ""};
      return kOthers[f.y];
    }
  }
}

// The index pages hold what the plain page does with HL, H or L and the index register can do.
std::string IndexOpcode(int opcode, const std::string& index) {
  const Fields f = Split(opcode);
  const std::string text = PlainOpcode(opcode);
  if (opcode == 0xEB) return "";
  if (text == "JP (HL)") return "JP (" + index + ")";
  if (Holds(text, "(HL)")) return ReplaceFirst(text, "(HL)", "(" + index + "+d)");
  if (Holds(text, "HL")) return ReplaceAll(text, "HL", index);

  const auto half = [&](int number) {
    return number == 4 || number == 5 ? index + kRegister[number] : std::string(kRegister[number]);
  };
  const bool left = f.y == 4 || f.y == 5;
  const bool right = f.z == 4 || f.z == 5;
  if (f.x == 0 && left && f.z == 4) return "INC " + half(f.y) + "*";
  if (f.x == 0 && left && f.z == 5) return "DEC " + half(f.y) + "*";
  if (f.x == 0 && left && f.z == 6) return "LD " + half(f.y) + ",n*";
  if (f.x == 1 && (left || right)) return "LD " + half(f.y) + "," + half(f.z) + "*";
  if (f.x == 2 && right) return kSum[f.y] + half(f.z) + "*";
  return "";
}

using Namer = std::function<std::string(int opcode)>;

// All rows of a page, from opcode to opcode.
void AddPage(std::vector<Row>& rows, const std::string& prefix, int from, int to, const Namer& name) {
  for (int opcode = from; opcode <= to; ++opcode) {
    const std::string text = name(opcode);
    if (!text.empty()) rows.push_back({prefix + Hex(opcode, 2), ' ', text});
  }
}

void AddIndexPages(std::vector<Row>& rows, const std::string& prefix, const std::string& index) {
  const Namer name = [&](int opcode) { return IndexOpcode(opcode, index); };
  AddPage(rows, prefix, 0x00, 0xCA, name);
  AddPage(rows, prefix + "CB", 0x00, 0xFF, [&](int opcode) { return IndexCbOpcode(opcode, index); });
  AddPage(rows, prefix, 0xCC, 0xFF, name);
}

// The right keys everywhere.
std::vector<Row> AllRows() {
  std::vector<Row> rows;
  for (const char* prefix : {"CB", "ED", "DD", "FD", "DDCB", "FDCB"}) rows.push_back({prefix, ' ', prefix});
  for (int opcode = 0; opcode <= 0xFF; ++opcode) {
    switch (opcode) {
      case 0xCB: AddPage(rows, "CB", 0, 0xFF, CbOpcode); break;
      case 0xDD: AddIndexPages(rows, "DD", "IX"); break;
      case 0xED: AddPage(rows, "ED", 0, 0xFF, EdOpcode); break;
      case 0xFD: AddIndexPages(rows, "FD", "IY"); break;
      default: rows.push_back({Hex(opcode, 2), ' ', PlainOpcode(opcode)});
    }
  }
  return rows;
}

bool Starred(const Row& row) { return row.text.back() == '*'; }

// The row as the assembler knows it: the operand cut out and told by a letter.
Row AsmRow(Row row) {
  std::string& text = row.text;
  if (row.key == "08") text = "EX AF,AF'";
  if (row.key == "ED70") text = "IN (C)*";
  const auto cut = [&](const std::string& hole, const std::string& rest, char letter) {
    if (!Holds(text, hole)) return;
    text = ReplaceFirst(text, hole, rest);
    row.letter = letter;
  };
  cut("+d", "+", 'd');
  cut("nn", "", 'm');
  cut("(PC+e)", "", 'e');
  cut("n", "", row.letter == 'd' ? 'x' : 'n');
  if (row.key == "FD36") row.letter = 'y';
  if (row.key == "FDCB61" || row.key == "FDCB64" || row.key == "FDCB65") row.letter = ' ';
  return row;
}

// Slips that stand behind the row of the same key, in the block of starred FD rows.
std::vector<Row> SecondFdBlock(const std::vector<Row>& starred) {
  std::vector<Row> slips = {{"FD29", ' ', "ADD IY,IY"},  {"FD29", ' ', "ADD IY,IY"},
                            {"FD2A", 'n', "LD IY,()"},   {"FD34", ' ', "INC (IY+d)"},
                            {"FD35", ' ', "DEC (IY+d)"}, {"FD36", 'x', "LD (IY+),"},
                            {"FD46", ' ', "LD B,(IY+d)"}};
  std::vector<Row> block;
  size_t next = 0;
  for (const Row& row : starred) {
    while (next < slips.size() && slips[next].key < row.key) block.push_back(slips[next++]);
    block.push_back(row);
  }
  return block;
}

std::string Padded(const std::string& text, size_t width) {
  return text.size() < width ? text + std::string(width - text.size(), ' ') : text;
}

std::string MakeDisAsmTable() {
  std::string table;
  for (const Row& row : DisAsmRows()) table += ">" + Padded(row.key, 12) + row.text + "\r\n";
  return table + ">end of file" + std::string(3, '\0');
}

std::string MakeAsmTable() {
  std::string table;
  for (const Row& row : AsmRows()) {
    table += ">" + Padded(row.key, 6) + " " + row.letter + "    " + row.text + "\r\n";
  }
  return table + ">end of file\r\n";
}

}  // namespace

std::vector<Row> DisAsmRows() {
  std::vector<Row> rows = AllRows();
  for (Row& row : rows) {
    if (row.key == "DDCBFB") row.key = "DDCBB";
  }
  return rows;
}

std::vector<Row> AsmRows() {
  const std::vector<Row> all = AllRows();
  std::vector<Row> rows;
  for (const Row& row : all) {
    if (!Starred(row)) rows.push_back(AsmRow(row));
  }
  const auto add = [&](const std::string& prefix, size_t digits) {
    std::vector<Row> starred;
    for (const Row& row : all) {
      if (Starred(row) && Begins(row.key, prefix) && row.key.size() == digits) starred.push_back(AsmRow(row));
    }
    if (prefix == "FD") starred = SecondFdBlock(starred);
    rows.insert(rows.end(), starred.begin(), starred.end());
  };
  add("CB", 4);
  add("DD", 4);
  add("DDCB", 6);
  add("ED", 4);
  add("FD", 4);
  add("FDCB", 6);
  return rows;
}

const std::string& DisAsmTable() {
  static const std::string table = MakeDisAsmTable();
  return table;
}

const std::string& AsmTable() {
  static const std::string table = MakeAsmTable();
  return table;
}

}  // namespace quoll::plain
