#include "forms/ChipDrawing.h"

#include <charconv>
#include <cmath>

namespace quoll {

void ShowText(std::string& label, std::string_view text) {
  if (label != text) label = text;
}

void ShowNumber(std::string& label, int64_t number) {
  std::array<char, 24> text{};
  const auto end = std::to_chars(text.data(), text.data() + text.size(), number);
  ShowText(label, {text.data(), end.ptr});
}

void ShowHertz(std::string& label, double hertz) { ShowNumber(label, std::llrint(hertz)); }

void ShowHex(std::string& label, uint8_t number) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  const std::array<char, 2> text{kDigits[number >> 4U], kDigits[number & 15U]};
  ShowText(label, {text.data(), text.size()});
}

}  // namespace quoll
