// Random assembler sources: every instruction with numbers in all their forms, labels and references,
// directives, comments, odd spacing, and lines that are wrong in one place.
#pragma once

#include <cstdint>
#include <string>

namespace quoll::plain {

struct SourceShape {
  int lines = 100;    // about so many; a few statements take more than one
  double odd = 0.02;  // share of lines that compile though nobody would write them
  double bad = 0.0;   // share of lines that have been damaged
};

// A source with CR LF between its lines. The same seed gives the same source.
std::string RandomSource(uint64_t seed, const SourceShape& shape);

// Name of a file that the sources include, and what is in it.
inline constexpr const char* kRandomSourceFile = "Data.bin";
std::string RandomSourceFileBytes();

}  // namespace quoll::plain
