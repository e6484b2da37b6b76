#include "display/Keyboard.h"

namespace quoll {

namespace {

// Host keys of the nine wired rows, bit 7 first, as virtual key codes; 0 is a place without a key. The
// places are those of a Hungarian keyboard, where the OEM codes are the accented letters.
constexpr std::array<std::array<uint8_t, 8>, 9> kHostKeys{{
    {'4', '1', 0xE2, '6', '0', '2', '3', '5'},        // 0xE2 OEM_102
    {'7', 0xC0, 0xBB, 0x6A, 0xBF, '9', '8', 0x6D},    // OEM_3, OEM_PLUS, numpad *, OEM_2, numpad -
    {'R', 'Q', 0x75, 'Z', 0x74, 'W', 'E', 'T'},       // F6, F5
    {'U', 'P', 0xDD, 0x76, 0xDB, 'O', 'I', 0x77},     // OEM_6, F7, OEM_4, F8
    {'F', 'A', 0x6B, 'H', 0x6F, 'S', 'D', 'G'},       // numpad +, numpad /
    {'J', 0xBA, 0xDC, 0x0D, 0xDE, 'L', 'K', 0x08},    // OEM_1, OEM_5, Enter, OEM_7, Backspace
    {'V', 'Y', 0x14, 'N', 0x10, 'X', 'C', 'B'},       // Caps Lock, Shift
    {'M', 0xBD, 0x20, 0x11, 0x23, 0xBE, 0xBC, 0x12},  // OEM_MINUS, Space, Ctrl, End, ., comma, Alt
    {0, 0x25, 0x27, 0x79, 0x78, 0x28, 0x26, 0x2D},    // Left, Right, F10, F9, Down, Up, Insert
}};

struct Wire {
  uint8_t row = 0;
  uint8_t bit = 0;  // 0: not wired
};

// The same table by key code.
constexpr std::array<Wire, 256> MakeWires() {
  std::array<Wire, 256> wires{};
  for (uint32_t row = 0; row < kHostKeys.size(); ++row) {
    for (uint32_t place = 0; place < 8; ++place) {
      const uint8_t code = kHostKeys[row][place];
      if (code != 0) wires[code] = {static_cast<uint8_t>(row), static_cast<uint8_t>(0x80U >> place)};
    }
  }
  return wires;
}
constexpr std::array<Wire, 256> kWires = MakeWires();

Wire WireOf(int32_t keyCode) { return keyCode >= 0 && keyCode <= 255 ? kWires[keyCode] : Wire{}; }

}  // namespace

int32_t KeyboardRow(const Keyboard& keyboard, int32_t row) {
  constexpr int32_t kRows = 11;  // the rows from here on lead nowhere
  const int32_t selected = row & 0x0F;
  return selected < kRows ? 255 - keyboard.KeyMatrix[selected] : 255;
}

void KeyboardClear(Keyboard& keyboard) { keyboard.KeyMatrix = keyboard.held; }

bool KeyboardPress(Keyboard& keyboard, int32_t keyCode, bool down) {
  const Wire wire = WireOf(keyCode);
  uint8_t& keys = keyboard.KeyMatrix[wire.row];
  keys = static_cast<uint8_t>(down ? keys | wire.bit
                                   : (keys & ~wire.bit) | (keyboard.held[wire.row] & wire.bit));
  return wire.bit != 0;
}

bool KeyboardHold(Keyboard& keyboard, int32_t keyCode, bool down) {
  const Wire wire = WireOf(keyCode);
  uint8_t& keys = keyboard.held[wire.row];
  keys = static_cast<uint8_t>(down ? keys | wire.bit : keys & ~wire.bit);
  return KeyboardPress(keyboard, keyCode, down);
}

}  // namespace quoll
