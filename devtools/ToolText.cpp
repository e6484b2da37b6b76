#include "devtools/ToolText.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <limits>

namespace quoll {

namespace {

std::string Hex(int32_t value, size_t digits) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  std::string text;
  for (uint32_t rest = static_cast<uint32_t>(value); rest != 0 || text.size() < digits; rest /= 16) {
    text.insert(text.begin(), kDigits[rest % 16]);
  }
  return text;
}

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

}  // namespace

std::string Hex2(int32_t value) { return Hex(value, 2); }

std::string Hex4(int32_t value) { return Hex(value, 4); }

std::optional<int32_t> HexValue(std::string_view text) {
  while (text.ends_with(' ')) text.remove_suffix(1);
  uint32_t value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value, 16);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return static_cast<int32_t>(value);
}

double NumberValue(std::string_view text) {
  size_t at = text.find_first_not_of(" \t");
  if (at == std::string_view::npos) return 0;
  const size_t start = at;
  if (text[at] == '-' || text[at] == '+') ++at;
  while (at < text.size() && IsDigit(text[at])) ++at;
  if (at < text.size() && text[at] == '.') ++at;
  while (at < text.size() && IsDigit(text[at])) ++at;
  return std::strtod(std::string(text.substr(start, at - start)).c_str(), nullptr);
}

std::optional<int32_t> RoundedToInt32(double value) {
  const double rounded = std::nearbyint(value);
  if (!(rounded >= std::numeric_limits<int32_t>::min() && rounded <= std::numeric_limits<int32_t>::max())) {
    return std::nullopt;
  }
  return static_cast<int32_t>(rounded);
}

std::string ReplaceText(std::string_view text, std::string_view from, std::string_view to, int32_t start,
                        int32_t count) {
  std::string result;
  size_t copied = 0;
  size_t at = start < 1 ? 0 : static_cast<size_t>(start - 1);
  for (; count != 0 && !from.empty(); count -= count > 0 ? 1 : 0) {
    at = text.find(from, at);
    if (at == std::string_view::npos) break;
    result.append(text.substr(copied, at - copied)).append(to);
    at += from.size();
    copied = at;
  }
  return result.append(text.substr(copied));
}

std::vector<std::string> SplitText(std::string_view text, std::string_view separator, int32_t limit) {
  std::vector<std::string> pieces;
  while (limit < 0 || pieces.size() + 1 < static_cast<size_t>(limit)) {
    const size_t at = separator.empty() ? std::string_view::npos : text.find(separator);
    if (at == std::string_view::npos) break;
    pieces.emplace_back(text.substr(0, at));
    text.remove_prefix(at + separator.size());
  }
  pieces.emplace_back(text);
  return pieces;
}

std::string_view Trim(std::string_view text) {
  while (text.starts_with(' ')) text.remove_prefix(1);
  while (text.ends_with(' ')) text.remove_suffix(1);
  return text;
}

std::string_view Mid(std::string_view text, size_t column, size_t length) {
  return column > text.size() ? std::string_view() : text.substr(column - 1, length);
}

}  // namespace quoll
