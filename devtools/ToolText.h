// Text helpers of the development tools. Columns count from 1; text is single bytes, code page 1250.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quoll {

// Hexadecimal in capitals with at least two or four digits. Larger values keep all their digits, negative
// ones are the eight digits of their 32 bits.
std::string Hex2(int32_t value);
std::string Hex4(int32_t value);

// A byte as a signed value: less 256 from 128 on.
constexpr int32_t SignedByte(int32_t value) { return value >= 128 ? value - 256 : value; }

// Value of up to 32 bits of hexadecimal digits, blanks behind them allowed; nothing for any other text.
std::optional<int32_t> HexValue(std::string_view text);

// The longest number that the text begins with, blanks before it skipped: a sign, digits, a point, digits.
// 0 when there is none; infinite when it is beyond all bounds.
double NumberValue(std::string_view text);

// Nearest whole number, ties to the even one; nothing when 32 bits can't hold it.
std::optional<int32_t> RoundedToInt32(double value);

// Replaces count hits of from, searched from column start on; all of them when count is -1.
std::string ReplaceText(std::string_view text, std::string_view from, std::string_view to, int32_t start = 1,
                        int32_t count = -1);

// Cuts at every separator, or into no more than limit pieces. An empty text gives one empty piece.
std::vector<std::string> SplitText(std::string_view text, std::string_view separator, int32_t limit = -1);

// Without the blanks around it; tabs stay.
std::string_view Trim(std::string_view text);

// The text from this column on, at most length characters; empty when it begins behind the end.
std::string_view Mid(std::string_view text, size_t column, size_t length = std::string_view::npos);

}  // namespace quoll
