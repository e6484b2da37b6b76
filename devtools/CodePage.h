// Code page 1250, in which the development tools keep their text: one byte a character.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace quoll {

// Large and small letters, the accented ones too.
std::string UpperCase(std::string_view text);
std::string LowerCase(std::string_view text);

// Place of the first hit, counted from 0, letters large or small; npos when there is none.
size_t FindIgnoringCase(std::string_view text, std::string_view what, size_t from = 0);

// The text in code page 1250; nothing when it is no UTF-8. A mark at the beginning is dropped, characters
// that the code page lacks become "?".
std::optional<std::string> Cp1250FromUtf8(std::string_view utf8);
std::string Utf8FromCp1250(std::string_view text);

}  // namespace quoll
