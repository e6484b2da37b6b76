// Which keys of a Hungarian keyboard, whose places the machine's own keys take, give a character.
#pragma once

#include <cstdint>
#include <string_view>

namespace quoll {

struct TypedKey {
  int32_t code = 0;  // virtual key code, 0 for none
  bool shift = false;
  bool altGr = false;  // comes as Ctrl and Alt together

  bool operator==(const TypedKey&) const = default;
};

inline constexpr int32_t kShiftCode = 0x10, kCtrlCode = 0x11, kAltCode = 0x12;

// The first character of a text, UTF-8, at least one byte of it. The text must not be empty.
std::string_view FirstCharacter(std::string_view text);

// code is 0 when no key gives the character. A line feed is the Enter key.
TypedKey KeyOfCharacter(std::string_view character);

}  // namespace quoll
