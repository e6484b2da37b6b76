// The three opcode tables, which are all that the development tools know about the instruction set. They are
// plain text in code page 1250 with lines ended by carriage return and line feed; tables/generate.py writes
// them.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace quoll {

// The disassembler's table: ">", key in 12 columns, instruction. Placeholders n, nn, (PC+e), IX+d and IY+d; a
// star at the end marks an undocumented instruction.
std::string_view OpcodeText();

// The assembler's table: ">", key in 6 columns, a blank, letter of the operand, four blanks, what remains of
// a source line once its number has been cut out.
std::string_view AsmOpcodeText();

// The help table: flags "|" size "|" clock cycles "|" description ">" instruction in small letters "<".
std::string_view OpcodeInfoText();

// Text behind the key's ">" in OpcodeText, without blanks around; empty when the table has no such key.
std::string_view OpcodeRow(std::string_view key);

struct AsmRow {
  std::array<uint8_t, 3> key{};  // the opcode's bytes; DDCB and FDCB rows without the displacement
  int32_t keyBytes = 0;          // 1 to 3
  char type = ' ';               // letter of the operand: n m e d x y, or blank for none
};

// The first row of AsmOpcodeText with exactly this text; nullptr when there is none.
const AsmRow* FindAsmRow(std::string_view text);

}  // namespace quoll
