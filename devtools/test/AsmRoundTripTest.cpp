// What the disassembler prints goes back through the assembler.
#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

#include "devtools/DisAsm.h"
#include "devtools/OpcodeTables.h"
#include "devtools/test/AsmMachine.h"

namespace quoll {
namespace {

using Code = std::vector<uint8_t>;

// Operands that no row's text holds, so that their digits are found in the disassembler's text.
constexpr uint8_t kLow = 0xC6;
constexpr uint8_t kHigh = 0xB7;

// The instruction's text as a source: "$" before its numbers, a constant for the target of a relative jump.
std::string SourceOf(const Code& code) {
  const ByteReader read = [&](int32_t address) -> uint8_t {
    return static_cast<size_t>(address) < code.size() ? code[static_cast<size_t>(address)] : uint8_t{0};
  };
  std::string text = DisAsm(read, 0, 1, 0);
  if (text.starts_with("JR ") || text.starts_with("DJNZ ")) {
    const size_t at = text.find_last_of(" ,") + 1;
    return "T: EQU $" + text.substr(at) + "|" + text.substr(0, at) + "@T";
  }
  if (const size_t at = text.find("B7C6"); at != std::string::npos) return text.insert(at, "$");
  for (const char* number : {"C6", "B7"}) {
    if (const size_t at = text.find(number); at != std::string::npos) text.insert(at, "$");
  }
  return text;
}

TEST(AsmRoundTrip, EveryDocumentedInstruction) {
  std::multiset<std::string> others;
  int same = 0;
  const auto check = [&](const std::string& key, Code code) {
    const std::string row(OpcodeRow(key));
    if (row.empty() || row.ends_with('*')) return;
    code.push_back(row.find("PC+e") == std::string::npos ? kLow : 0x10);
    code.push_back(kHigh);
    const ByteReader read = [&](int32_t address) { return code[static_cast<size_t>(address)]; };
    if (key.size() == 6) code = {code[0], code[1], kLow, code[2]};
    const int32_t size = DisAsmSize(read, 0);
    code.resize(static_cast<size_t>(size));
    std::string want;
    for (const uint8_t byte : code) want += (want.empty() ? "" : " ") + Hex2(byte);

    const std::string source = SourceOf(code);
    if (AsmMachine().Outcome(source) == want) {
      ++same;
    } else {
      others.insert(source);
    }
  };
  for (int op = 0; op < 256; ++op) {
    const auto byte = static_cast<uint8_t>(op);
    if (op != 0xCB && op != 0xDD && op != 0xED && op != 0xFD) check(Hex2(op), {byte});
    for (const uint8_t prefix : Code{0xCB, 0xDD, 0xED, 0xFD}) {
      if ((prefix == 0xDD || prefix == 0xFD) && op == 0xCB) continue;
      check(Hex2(prefix) + Hex2(op), {prefix, byte});
    }
    for (const uint8_t prefix : Code{0xDD, 0xFD}) check(Hex2(prefix) + "CB" + Hex2(op), {prefix, 0xCB, byte});
  }

  const std::multiset<std::string> want = {"EX AF,AF\x92",  // the typographic apostrophe
                                                            // The lost comma, or the lost parenthesis.
                                           "LD (IX+$C6)B", "LD (IX+$C6)C", "LD (IX+$C6)D", "LD (IX+$C6)E",
                                           "LD (IX+$C6)H", "LD (IX+$C6)L", "LD (IX+$C6)A", "LD (IY+$C6)B",
                                           "LD (IY+$C6)C", "LD (IY+$C6)D", "LD (IY+$C6)E", "LD (IY+$C6)H",
                                           "LD (IY+$C6)L", "LD (IY+$C6)A", "LD IX+$C6),$B7", "LD IY+$C6),$B7",
                                           // Two encodings of one text: the shorter one is taken.
                                           "LD ($B7C6),HL", "LD HL,($B7C6)"};
  EXPECT_EQ(others, want);
  EXPECT_EQ(same, 698 - 19);  // documented instructions without those
}

}  // namespace
}  // namespace quoll
