// What both passes do with the text of one line.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "devtools/Assembler.h"
#include "devtools/OpcodeTables.h"

namespace quoll {

// A conversion or a file that fails in the middle of a line. Pass1Line and Pass2Line make it kAsmInternal.
struct AsmFailure {};

// A pass while it works on a line.
struct AsmPass {
  Assembler& a;
  const AsmHost& host;
  int32_t number;  // 1 or 2
};

// Each tab becomes a blank.
std::string TabTrim(std::string_view text);

// In capitals, without blanks around it and around commas, other blanks single. Quotes don't protect a text.
std::string Strim(std::string_view text);

// Cuts line and raw line at an apostrophe behind the first column and puts back the one that belongs to
// "EX AF,AF'". False when no statement is left.
bool CutComment(std::string& line, std::string& raw);

// Stores a byte so many bytes behind AsmPC; beyond kAsmAddressEnd nothing happens.
void AsmStore(const AsmPass& pass, int64_t offset, uint8_t value);

// Moves AsmPC on. Throws AsmFailure when it would pass 32 bits.
void AsmAdvance(const AsmPass& pass, int32_t bytes);

// The value, rounded. Throws AsmFailure for what 32 bits can't hold.
int32_t AsmWhole(double value);

// A number as it stands in the source: decimal, or "$" and then what so many characters hold. Throws
// AsmFailure when those are not hexadecimal.
double AsmNumber(std::string_view text, size_t hexDigits);

// Makes the line's first "$" with its hexadecimal digits decimal, each time that it stands there. False when
// no digit follows the "$".
bool DecimalForHex(std::string& line);

// Column from which a number is looked for: behind the bit number if there is one.
size_t NumberColumn(std::string_view line);

// "LD r,BIT b,..." and the like.
bool LoadsAndHandlesBit(std::string_view line);

// Cuts the first run of these digits out of the line; its value, 0 when there is none. Throws AsmFailure for
// what 32 bits can't hold.
int32_t CutNumber(std::string& line, size_t column, std::string_view digits);

// "RST $8" and the others become the texts of the table.
void RewriteRst(std::string& line);

// Bytes of a row with this operand, or kAsmOverflow. Rows that take none give 0.
int32_t OperandSize(const AsmRow& row, int32_t operand);

}  // namespace quoll
