// Text helpers of the plain models. Columns are counted from 1, and a range that runs past the text is
// shortened, so that the models can be read column by column.
#pragma once

#include <cstdint>
#include <string>

namespace quoll::plain {

// What ends a line function early: a conversion, a range or a file that fails.
struct RuntimeError {};

std::string Left(const std::string& text, int count);

// count characters from a column on; all that follow without a count.
std::string Mid(const std::string& text, int column, int count = 1 << 30);

// Column of the first hit at or behind a column, 0 for none.
int InStr(const std::string& text, const std::string& what, int from = 1);

bool Begins(const std::string& text, const std::string& what);

// Without the blanks at both ends; nothing but blanks is cut.
std::string Trim(const std::string& text);

// Writes over what stands from a column on; the text keeps its length.
void Overwrite(std::string& text, int column, const std::string& with);

// Every hit, from left to right; or the first one alone.
std::string ReplaceAll(const std::string& text, const std::string& from, const std::string& to);
std::string ReplaceFirst(const std::string& text, const std::string& from, const std::string& to);

std::string Hex(int32_t value, int digits);  // at least so many digits, capitals

std::string TabTrim(const std::string& text);
std::string Strim(const std::string& text);

// Hexadecimal digits, blanks behind them allowed; RuntimeError for anything else or above 32 bits.
int32_t HexValue(const std::string& text);

// The longest leading decimal number: blanks, a sign, digits, a fraction. 0 if there is none.
double Number(const std::string& text);

// To a 32-bit integer: to nearest with ties to even, or cut. RuntimeError if it does not fit.
int32_t Nearest(double value);
int32_t Cut(double value);

// A piece that begins with "$" becomes the decimal text of the digits behind it, at most so many.
std::string WithoutDollar(const std::string& text, int digits);

}  // namespace quoll::plain
