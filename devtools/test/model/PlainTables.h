// The instruction tables of the plain models, made from the processor's own order of opcodes: a byte's upper
// two bits choose the block, the next three and the last three the operands.
#pragma once

#include <string>
#include <vector>

namespace quoll::plain {

struct Row {
  std::string key;   // opcode digits without the displacement
  char letter;       // kind of operand, of the assembler's rows only
  std::string text;  // instruction
};

// Rows in the order of the tables, without the end line.
std::vector<Row> DisAsmRows();
std::vector<Row> AsmRows();

// The tables as the tools search them. Made once.
const std::string& DisAsmTable();
const std::string& AsmTable();

}  // namespace quoll::plain
