// The machine's keyboard as the tools window draws it: where each key lies and what stands on it.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace quoll {

struct ToolKey {
  std::string_view control;  // of TTools: "Label1" or one of the larger keys
  uint8_t code;              // of the host key that it stands for
  // Its place in quarters of a plain key, from the drawing's top left corner.
  uint8_t x, y, width, height;
  std::string_view legend;      // what it gives alone; a letter as a capital
  std::string_view shift = {};  // what it gives with Shift, where that is no capital letter
  std::string_view alt = {};    // what it gives with Alt
};

inline constexpr int kToolKeysWidth = 78, kToolKeysHeight = 20;  // of the drawing
inline constexpr int kFirstKeyCode = 32;                         // of Label1's index 0

namespace toolkeys {

constexpr ToolKey Key(uint8_t code, uint8_t x, uint8_t y, std::string_view legend,
                      std::string_view shift = {}, std::string_view alt = {}) {
  return {"Label1", code, x, y, 4, 4, legend, shift, alt};
}

}  // namespace toolkeys

// Shift is there twice; both are one key.
inline constexpr std::array kToolKeys{
    toolkeys::Key('0', 0, 0, "0", "&"),
    toolkeys::Key('1', 4, 0, "1", "'", "~"),
    toolkeys::Key('2', 8, 0, "2", "\""),
    toolkeys::Key('3', 12, 0, "3", "+", "^"),
    toolkeys::Key('4', 16, 0, "4", "!"),
    toolkeys::Key('5', 20, 0, "5", "%"),
    toolkeys::Key('6', 24, 0, "6", "/"),
    toolkeys::Key('7', 28, 0, "7", "=", "`"),
    toolkeys::Key('8', 32, 0, "8", "("),
    toolkeys::Key('9', 36, 0, "9", ")"),
    toolkeys::Key(0xC0, 40, 0, "Ö"),
    toolkeys::Key(0xBF, 44, 0, "Ü"),
    toolkeys::Key(0xBB, 48, 0, "Ó"),
    toolkeys::Key(0x77, 52, 0, "^", "@"),
    ToolKey{"Label7", 0x08, 56, 0, 8, 4, "DEL"},

    ToolKey{"Label1", 0x2D, 0, 4, 5, 4, "INS"},
    toolkeys::Key('Q', 5, 4, "Q", "", "\\"),
    toolkeys::Key('W', 9, 4, "W", "", "|"),
    toolkeys::Key('E', 13, 4, "E"),
    toolkeys::Key('R', 17, 4, "R"),
    toolkeys::Key('T', 21, 4, "T"),
    toolkeys::Key('Z', 25, 4, "Z"),
    toolkeys::Key('U', 29, 4, "U"),
    toolkeys::Key('I', 33, 4, "I"),
    toolkeys::Key('O', 37, 4, "O"),
    toolkeys::Key('P', 41, 4, "P"),
    toolkeys::Key(0xDB, 45, 4, "Ő"),
    toolkeys::Key(0xDD, 49, 4, "Ú"),
    ToolKey{"Label1", 0x74, 53, 4, 5, 4, "<", "["},
    ToolKey{"Label3", 0x0D, 58, 4, 6, 8, "Enter"},

    ToolKey{"Label6", 0x14, 0, 8, 6, 4, "LOCK"},
    toolkeys::Key('A', 6, 8, "A"),
    toolkeys::Key('S', 10, 8, "S"),
    toolkeys::Key('D', 14, 8, "D"),
    toolkeys::Key('F', 18, 8, "F", "", "["),
    toolkeys::Key('G', 22, 8, "G", "", "]"),
    toolkeys::Key('H', 26, 8, "H"),
    toolkeys::Key('J', 30, 8, "J"),
    toolkeys::Key('K', 34, 8, "K"),
    toolkeys::Key('L', 38, 8, "L"),
    toolkeys::Key(0xBA, 42, 8, "É", "", "$"),
    toolkeys::Key(0xDE, 46, 8, "Á"),
    toolkeys::Key(0xDC, 50, 8, "Ű"),
    toolkeys::Key(0x75, 54, 8, ">", "]"),

    ToolKey{"Label2", 0x10, 0, 12, 4, 4, "SHIFT"},
    toolkeys::Key(0xE2, 4, 12, "Í", "", "<"),
    toolkeys::Key('Y', 8, 12, "Y", "", ">"),
    toolkeys::Key('X', 12, 12, "X", "", "#"),
    toolkeys::Key('C', 16, 12, "C", "", "&"),
    toolkeys::Key('V', 20, 12, "V", "", "@"),
    toolkeys::Key('B', 24, 12, "B", "", "{"),
    toolkeys::Key('N', 28, 12, "N", "", "}"),
    toolkeys::Key('M', 32, 12, "M"),
    toolkeys::Key(0xBC, 36, 12, ",", "?", ";"),
    toolkeys::Key(0xBE, 40, 12, ".", ":"),
    toolkeys::Key(0xBD, 44, 12, "-", "_", "*"),
    toolkeys::Key(0x76, 48, 12, ";", "$"),
    toolkeys::Key(0x78, 52, 12, "#", "{"),
    toolkeys::Key(0x79, 56, 12, "&", "}"),
    ToolKey{"Label2", 0x10, 60, 12, 4, 4, "SHIFT"},

    ToolKey{"Label4", 0x11, 0, 16, 6, 4, "CTRL"},
    ToolKey{"Label5", 0x12, 6, 16, 6, 4, "ALT"},
    ToolKey{"Label1", 0x20, 12, 16, 28, 4, " "},
    toolkeys::Key(0x6A, 40, 16, "*"),
    toolkeys::Key(0x6F, 44, 16, "/"),
    toolkeys::Key(0x6D, 48, 16, "-"),
    toolkeys::Key(0x6B, 52, 16, "+"),
    ToolKey{"Label1", 0x23, 56, 16, 8, 4, "ESC"},

    toolkeys::Key(0x26, 70, 8, "↑"),
    toolkeys::Key(0x25, 66, 12, "←"),
    toolkeys::Key(0x28, 70, 12, "↓"),
    toolkeys::Key(0x27, 74, 12, "→"),
};

}  // namespace quoll
