#include "devtools/test/model/PlainText.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <limits>

namespace quoll::plain {
namespace {

bool IsHexDigit(char c) { return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'F') || (c >= 'a' && c <= 'f'); }

// Capital of a letter in code page 1250, which is what the editor's text is in.
char Capital(char c) {
  const int code = static_cast<unsigned char>(c);
  if (c >= 'a' && c <= 'z') return static_cast<char>(code - 32);
  if (code >= 0xE0 && code <= 0xFE && code != 0xF7) return static_cast<char>(code - 32);
  if (code == 0x9A || (code >= 0x9C && code <= 0x9F) || code == 0xB3 || code == 0xBF) {
    return static_cast<char>(code - 16);
  }
  if (code == 0xB9) return static_cast<char>(0xA5);
  if (code == 0xBA) return static_cast<char>(0xAA);
  if (code == 0xBE) return static_cast<char>(0xBC);
  return c;
}

int32_t Fitting(double value) {
  if (!(value >= std::numeric_limits<int32_t>::min() && value <= std::numeric_limits<int32_t>::max())) {
    throw RuntimeError{};
  }
  return static_cast<int32_t>(value);
}

}  // namespace

std::string Left(const std::string& text, int count) { return Mid(text, 1, count); }

std::string Mid(const std::string& text, int column, int count) {
  if (column > static_cast<int>(text.size()) || count <= 0) return "";
  return text.substr(static_cast<size_t>(column - 1), static_cast<size_t>(count));
}

int InStr(const std::string& text, const std::string& what, int from) {
  const size_t hit = text.find(what, static_cast<size_t>(from - 1));
  return hit == std::string::npos ? 0 : static_cast<int>(hit) + 1;
}

bool Begins(const std::string& text, const std::string& what) {
  return Left(text, static_cast<int>(what.size())) == what;
}

std::string Trim(const std::string& text) {
  std::string result = text;
  while (!result.empty() && result.front() == ' ') result.erase(0, 1);
  while (!result.empty() && result.back() == ' ') result.pop_back();
  return result;
}

void Overwrite(std::string& text, int column, const std::string& with) {
  for (size_t i = 0; i < with.size(); ++i) {
    const size_t at = static_cast<size_t>(column - 1) + i;
    if (at < text.size()) text[at] = with[i];
  }
}

std::string ReplaceAll(const std::string& text, const std::string& from, const std::string& to) {
  std::string result;
  for (int column = 1;;) {
    const int hit = InStr(text, from, column);
    if (hit == 0) return result + Mid(text, column);
    result += Mid(text, column, hit - column) + to;
    column = hit + static_cast<int>(from.size());
    if (column > static_cast<int>(text.size())) return result;
  }
}

std::string ReplaceFirst(const std::string& text, const std::string& from, const std::string& to) {
  const int hit = InStr(text, from);
  if (hit == 0) return text;
  return Left(text, hit - 1) + to + Mid(text, hit + static_cast<int>(from.size()));
}

std::string Hex(int32_t value, int digits) {
  char buffer[16];
  std::snprintf(buffer, sizeof buffer, "%0*X", digits, static_cast<uint32_t>(value));
  return buffer;
}

std::string TabTrim(const std::string& text) { return ReplaceAll(text, "\t", " "); }

std::string Strim(const std::string& text) {
  std::string result = text;
  for (char& c : result) c = Capital(c);
  result = Trim(result);
  while (InStr(result, "  ") > 0) result = ReplaceAll(result, "  ", " ");
  result = ReplaceAll(result, ", ", ",");
  return ReplaceAll(result, " ,", ",");
}

int32_t HexValue(const std::string& text) {
  std::string digits = text;
  while (!digits.empty() && digits.back() == ' ') digits.pop_back();
  if (digits.empty()) throw RuntimeError{};
  uint64_t value = 0;
  for (const char c : digits) {
    if (!IsHexDigit(c)) throw RuntimeError{};
    value = value * 16 + static_cast<uint64_t>(c <= '9' ? c - '0' : (c | 32) - 'a' + 10);
    if (value > 0xFFFFFFFFU) throw RuntimeError{};
  }
  return static_cast<int32_t>(static_cast<uint32_t>(value));
}

double Number(const std::string& text) {
  size_t at = 0;
  const auto digit = [&] { return at < text.size() && text[at] >= '0' && text[at] <= '9'; };
  while (at < text.size() && (text[at] == ' ' || text[at] == '\t')) ++at;
  const bool minus = at < text.size() && text[at] == '-';
  if (minus || (at < text.size() && text[at] == '+')) ++at;
  double value = 0;
  for (; digit(); ++at) value = value * 10 + (text[at] - '0');
  if (at < text.size() && text[at] == '.') {
    double weight = 0.1;
    for (++at; digit(); ++at, weight /= 10) value += weight * (text[at] - '0');
  }
  return minus ? -value : value;
}

int32_t Nearest(double value) { return Fitting(std::nearbyint(value)); }

int32_t Cut(double value) { return Fitting(std::trunc(value)); }

std::string WithoutDollar(const std::string& text, int digits) {
  if (!Begins(text, "$")) return text;
  return std::to_string(HexValue(Mid(text, 2, digits)));
}

}  // namespace quoll::plain
