#include "core/NumberText.h"

#include <limits>
#include <string_view>

namespace quoll {

namespace {

// Value of a digit in this base, -1 for any other character.
int32_t Digit(char c, int32_t base) {
  int32_t value = -1;
  if (c >= '0' && c <= '9') value = c - '0';
  if (c >= 'A' && c <= 'F') value = c - 'A' + 10;
  if (c >= 'a' && c <= 'f') value = c - 'a' + 10;
  return value < base ? value : -1;
}

}  // namespace

int32_t NumberOfText(const std::string& text) {
  std::string_view rest = text;
  while (!rest.empty() && (rest.front() == ' ' || rest.front() == '\t')) rest.remove_prefix(1);

  bool negative = false;
  if (!rest.empty() && (rest.front() == '-' || rest.front() == '+')) {
    negative = rest.front() == '-';
    rest.remove_prefix(1);
  }
  int32_t base = 10;
  if (rest.starts_with("&H") || rest.starts_with("&h")) {
    base = 16;
    rest.remove_prefix(2);
  }

  constexpr int64_t kMost = std::numeric_limits<int32_t>::max();
  int64_t value = 0;
  for (const char c : rest) {
    const int32_t digit = Digit(c, base);
    if (digit < 0) break;
    value = value * base + digit;
    if (value > kMost) value = kMost;  // also keeps a long text from running over
  }
  return static_cast<int32_t>(negative ? -value : value);
}

}  // namespace quoll
