// Sources between a file's bytes and an editor's lines: nothing that is not edited changes.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

namespace quoll {

enum class SourceCode { Utf8, Utf8WithMark, Cp1250 };

// A file's text as UTF-8, without the mark that may stand before it, and how it stood there. What is no
// UTF-8 is taken for code page 1250.
struct SourceContent {
  std::string text;
  SourceCode code = SourceCode::Utf8;
};
SourceContent ReadSource(std::string_view bytes);

// The file's bytes again. Where code page 1250 lacks a character of the text, the code becomes UTF-8.
std::string SourceBytes(std::string_view text, SourceCode& code);

// Lines end in carriage return, line feed or both; behind the last line end stands one more line, which may
// be empty. They are counted from 0.
size_t CountLines(std::string_view text);

struct LinePlace {
  size_t start = 0;   // in bytes
  size_t length = 0;  // without the line end
};
// The place behind the text's end for a line that it does not have.
LinePlace PlaceOfLine(std::string_view text, size_t line);
// The line in which a place lies.
size_t LineOfPlace(std::string_view text, size_t place);

// The line end that new lines get: the text's first one, a line feed when it has none.
std::string_view LineEndOf(std::string_view text);

// Each line end as this one.
std::string WithLineEnd(std::string_view text, std::string_view end);

// Puts other lines in the place of count ones. Those that were there before keep their line ends.
void ReplaceLines(std::string& text, size_t first, size_t count, std::span<const std::string> with);

// In large or small letters, characters that code page 1250 lacks as they are. The text is UTF-8.
std::string UpperCaseUtf8(std::string_view text);
std::string LowerCaseUtf8(std::string_view text);

}  // namespace quoll
