// Steps that both passes of the plain assembler take.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "devtools/test/model/PlainAssembler.h"
#include "devtools/test/model/PlainText.h"

namespace quoll::plain {

inline constexpr int32_t kSyntaxError = -1;
inline constexpr int32_t kOverflowError = -2;
inline constexpr int32_t kExistingName = -4;
inline constexpr int32_t kInternalError = -10;

// A pass over a line, and what becomes of an error in the middle of it.
template <class Pass>
int32_t Guarded(Pass pass) {
  try {
    return pass();
  } catch (const RuntimeError&) {
    return kInternalError;
  }
}

// The comment is cut off line and raw line; the line whose apostrophe is no comment gets it back.
void CutComment(std::string& line, std::string& raw);

// "ORG ": sets AsmPC.
int32_t Org(Assembler& assembler, const std::string& line);

// "DB ", "DW ", "DS ": write their bytes. Strings are stored in the machine's characters if told so.
int32_t DefineBytes(const Assembler& assembler, const Bus& bus, const std::string& line,
                    const std::string& raw, bool machineCharacters);
int32_t DefineWords(const Assembler& assembler, const Bus& bus, const std::string& line);
int32_t DefineSpace(const Assembler& assembler, const Bus& bus, const std::string& raw);

// Contents of the file that an "INCBIN " line names, or why not.
struct Included {
  int32_t result;
  std::string bytes;
};
Included IncludedFile(const Bus& bus, const std::string& line, const std::string& raw);

// "RST $10" becomes the row's "RST 10H".
std::string RewriteRst(const std::string& line);

// The row whose text the line is.
struct Found {
  std::string key;
  char letter;
};
std::optional<Found> Lookup(const std::string& line);

// Column from which on a line's operand is looked for.
int SearchColumn(const std::string& line);

// One "$" number, everywhere it stands in the line, becomes decimal; kSyntaxError if there are no digits.
int32_t DollarStep(std::string& line);

// The first run of digits leaves the line and is the operand; without one the operand stays.
void CutNumber(std::string& line, int column, const std::string& digits, int32_t& operand);

}  // namespace quoll::plain
