// The assembler's statements that are no instructions.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "devtools/AsmLine.h"

namespace quoll {

// Performs ORG, PMEM=, DB, DW, DS, INCBIN or a debugger command: bytes to add to AsmPC, or an AsmError;
// nothing when the line is none of them. Throws AsmFailure.
std::optional<int32_t> AsmDirective(const AsmPass& pass, const std::string& line, const std::string& raw);

// What sets a pass apart.
struct AsmSteps {
  // Enters a label or a constant: 0 or an AsmError; nothing when the line is neither.
  std::optional<int32_t> (*symbol)(Assembler& a, const std::string& line);
  // Bytes of an instruction, or an AsmError. Throws AsmFailure.
  int32_t (*instruction)(const AsmPass& pass, std::string line);
};

// One line of a pass: bytes to add to AsmPC, or an AsmError.
int32_t AsmStatement(const AsmPass& pass, const AsmSteps& steps, std::string line, std::string raw);

// The machine's code of a character of code page 1250: the Hungarian letters differ.
uint8_t TVCASC(uint8_t code);

}  // namespace quoll
