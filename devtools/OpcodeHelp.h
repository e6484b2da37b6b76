// What the source editor shows about instructions while one types.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quoll {

// A record of the help table.
struct OpcodeRecord {
  std::string flags;  // six characters: C, N, P/V, H, Z, S
  std::string size;   // bytes
  std::string clock;  // clock cycles, two numbers parted by "/" when a condition counts
  std::string description;
  bool operator==(const OpcodeRecord&) const = default;
};

// The record of an instruction as the help list names it; nothing when there is none.
std::optional<OpcodeRecord> FindOpcodeRecord(std::string_view instruction);

// Rows of OpcodeText that begin like this text, letters large or small; those with a star only if they are
// wanted.
std::vector<std::string> OpcodesBeginningWith(std::string_view text, bool undocumented);

// Where the line of a caret begins and how long it is, both in characters; no more than 255.
struct SourceLine {
  size_t start = 0;
  size_t length = 0;
};
SourceLine LineOfCaret(std::string_view source, size_t caret);

// The list of the help for a caret, counted from 0: the rows that begin like its line or, when there are
// none, that hold what stands before the caret. Nothing when the list stays as it is: at the source's start
// and on empty lines.
std::optional<std::vector<std::string>> OpcodeHelpList(std::string_view source, size_t caret,
                                                       bool undocumented);

// What a flag character says. An empty word leaves the one that is shown; no colour leaves the slot's own.
struct FlagWord {
  std::string_view word;
  std::optional<uint32_t> colour;  // red in the low byte
};
inline constexpr uint32_t kFlagSlotColour = 65535;
FlagWord WordOfFlag(char flag);

}  // namespace quoll
