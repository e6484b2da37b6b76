// The keyboard matrix: sixteen rows of eight keys, a set bit meaning a key held down. Rows 0 to 8 are
// wired; the host's keys reach them by Windows virtual key codes, by position and not by letter.
#pragma once

#include <array>
#include <cstdint>

namespace quoll {

struct Keyboard {
  std::array<uint8_t, 16> KeyMatrix{};
  std::array<uint8_t, 16> held{};  // bits of it that stay set until they are let go: keys held by a click

  bool operator==(const Keyboard&) const = default;
};

// Modifier bits of a key event.
inline constexpr int32_t kShiftKey = 1;
inline constexpr int32_t kCtrlKey = 2;
inline constexpr int32_t kAltKey = 4;

// What port 0x58 gives for a row (low four bits count): a pressed key reads 0.
int32_t KeyboardRow(const Keyboard& keyboard, int32_t row);

// Releases every key that is not held by a click: focus changes, a mouse press on the picture, reset.
void KeyboardClear(Keyboard& keyboard);

// Sets or clears the matrix bit of a virtual key code; false when the code is not wired. A held key stays
// down.
bool KeyboardPress(Keyboard& keyboard, int32_t keyCode, bool down);

// Holds a key down, or lets it go; false when the code is not wired.
bool KeyboardHold(Keyboard& keyboard, int32_t keyCode, bool down);

}  // namespace quoll
