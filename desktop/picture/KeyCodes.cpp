#include "desktop/picture/KeyCodes.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <algorithm>
#include <array>

#include "display/Keyboard.h"

namespace quoll {

namespace {

constexpr uint32_t kX11Offset = 8;

struct Position {
  uint8_t kernel;    // key number of the Linux kernel
  uint16_t windows;  // scan code on Windows
  uint8_t code;      // virtual key code at that place of a Hungarian keyboard
};

// Letters count by what is printed on them; their places here serve the signs that they give with AltGr. The
// 0 has two homes, see below.
constexpr std::array kPositions{
    Position{1, 0x01, 0x1B},  // Escape
    Position{2, 0x02, '1'},     Position{3, 0x03, '2'},     Position{4, 0x04, '3'},   Position{5, 0x05, '4'},
    Position{6, 0x06, '5'},     Position{7, 0x07, '6'},     Position{8, 0x08, '7'},   Position{9, 0x09, '8'},
    Position{10, 0x0A, '9'},    Position{12, 0x0C, 0xBF},    // right of the 0 of most layouts: OEM_2
    Position{13, 0x0D, 0xBB},                                // left of Backspace: OEM_PLUS
    Position{14, 0x0E, 0x08},                                // Backspace
    Position{15, 0x0F, 0x09},                                // Tab
    Position{26, 0x1A, 0xDB},                                // right of the P: OEM_4
    Position{27, 0x1B, 0xDD},                                // OEM_6
    Position{28, 0x1C, 0x0D},   Position{96, 0x11C, 0x0D},   // Enter, that of the numeric pad
    Position{29, 0x1D, 0x11},   Position{97, 0x11D, 0x11},   // Ctrl
    Position{39, 0x27, 0xBA},                                // right of the L: OEM_1
    Position{40, 0x28, 0xDE},                                // OEM_7
    Position{42, 0x2A, 0x10},   Position{54, 0x36, 0x10},    // Shift
    Position{43, 0x2B, 0xDC},                                // left of or above Enter: OEM_5
    Position{51, 0x33, 0xBC},   Position{52, 0x34, 0xBE},    // comma, period
    Position{53, 0x35, 0xBD},                                // left of the right Shift: OEM_MINUS
    Position{55, 0x37, 0x6A},                                // numeric pad *
    Position{56, 0x38, 0x12},   Position{100, 0x138, 0x12},  // Alt, AltGr
    Position{57, 0x39, 0x20},                                // Space
    Position{58, 0x3A, 0x14},                                // Caps Lock
    Position{59, 0x3B, 0x70},   Position{60, 0x3C, 0x71},   Position{61, 0x3D, 0x72},  // F1 to F3
    Position{62, 0x3E, 0x73},   Position{63, 0x3F, 0x74},   Position{64, 0x40, 0x75},  // F4 to F6
    Position{65, 0x41, 0x76},   Position{66, 0x42, 0x77},   Position{67, 0x43, 0x78},  // F7 to F9
    Position{68, 0x44, 0x79},   Position{87, 0x57, 0x7A},   Position{88, 0x58, 0x7B},  // F10 to F12
    Position{74, 0x4A, 0x6D},   Position{78, 0x4E, 0x6B},                              // numeric pad - and +
    Position{98, 0x135, 0x6F},                                                         // numeric pad /
    Position{86, 0x56, 0xE2},                                // right of the left Shift: OEM_102
    Position{102, 0x147, 0x24}, Position{107, 0x14F, 0x23},  // Home, End
    Position{103, 0x148, 0x26}, Position{108, 0x150, 0x28},  // Up, Down
    Position{105, 0x14B, 0x25}, Position{106, 0x14D, 0x27},  // Left, Right
    Position{104, 0x149, 0x21}, Position{109, 0x151, 0x22},  // Page Up, Page Down
    Position{110, 0x152, 0x2D}, Position{111, 0x153, 0x2E},  // Insert, Delete
    Position{16, 0x10, 'Q'},    Position{17, 0x11, 'W'},    Position{18, 0x12, 'E'},  Position{19, 0x13, 'R'},
    Position{20, 0x14, 'T'},    Position{21, 0x15, 'Z'},    Position{22, 0x16, 'U'},  Position{23, 0x17, 'I'},
    Position{24, 0x18, 'O'},    Position{25, 0x19, 'P'},    Position{30, 0x1E, 'A'},  Position{31, 0x1F, 'S'},
    Position{32, 0x20, 'D'},    Position{33, 0x21, 'F'},    Position{34, 0x22, 'G'},  Position{35, 0x23, 'H'},
    Position{36, 0x24, 'J'},    Position{37, 0x25, 'K'},    Position{38, 0x26, 'L'},  Position{44, 0x2C, 'Y'},
    Position{45, 0x2D, 'X'},    Position{46, 0x2E, 'C'},    Position{47, 0x2F, 'V'},  Position{48, 0x30, 'B'},
    Position{49, 0x31, 'N'},    Position{50, 0x32, 'M'},
};

// Same numbers in both countings.
constexpr uint32_t kKeyAfter9 = 11;
constexpr uint32_t kKeyBefore1 = 41;

struct Name {
  int key;  // Qt::Key; letters in their capital form
  uint8_t code;
};

// For hosts that tell no positions. Signs stand for the key on which a Hungarian keyboard or, where that has
// none, an American one bears them, with and without Shift.
constexpr std::array kNames{
    Name{Qt::Key_Escape, 0x1B},       Name{Qt::Key_Tab, 0x09},
    Name{Qt::Key_Backtab, 0x09},      Name{Qt::Key_Backspace, 0x08},
    Name{Qt::Key_Return, 0x0D},       Name{Qt::Key_Enter, 0x0D},
    Name{Qt::Key_Shift, 0x10},        Name{Qt::Key_Control, 0x11},
    Name{Qt::Key_Alt, 0x12},          Name{Qt::Key_AltGr, 0x12},
    Name{Qt::Key_CapsLock, 0x14},     Name{Qt::Key_Space, 0x20},
    Name{Qt::Key_PageUp, 0x21},       Name{Qt::Key_PageDown, 0x22},
    Name{Qt::Key_End, 0x23},          Name{Qt::Key_Home, 0x24},
    Name{Qt::Key_Left, 0x25},         Name{Qt::Key_Up, 0x26},
    Name{Qt::Key_Right, 0x27},        Name{Qt::Key_Down, 0x28},
    Name{Qt::Key_Insert, 0x2D},       Name{Qt::Key_Delete, 0x2E},
    Name{Qt::Key_Odiaeresis, 0xC0},   Name{Qt::Key_Udiaeresis, 0xBF},
    Name{Qt::Key_Oacute, 0xBB},       Name{0x150, 0xDB},
    Name{Qt::Key_Uacute, 0xDD},       Name{Qt::Key_Eacute, 0xBA},
    Name{Qt::Key_Aacute, 0xDE},       Name{0x170, 0xDC},
    Name{Qt::Key_Iacute, 0xE2},       Name{Qt::Key_section, '0'},
    Name{Qt::Key_QuoteLeft, 0xC0},    Name{Qt::Key_AsciiTilde, 0xC0},
    Name{Qt::Key_Minus, 0xBD},        Name{Qt::Key_Underscore, 0xBD},
    Name{Qt::Key_Equal, 0xBB},        Name{Qt::Key_Plus, 0xBB},
    Name{Qt::Key_BracketLeft, 0xDB},  Name{Qt::Key_BraceLeft, 0xDB},
    Name{Qt::Key_BracketRight, 0xDD}, Name{Qt::Key_BraceRight, 0xDD},
    Name{Qt::Key_Semicolon, 0xBA},    Name{Qt::Key_Colon, 0xBA},
    Name{Qt::Key_Apostrophe, 0xDE},   Name{Qt::Key_QuoteDbl, 0xDE},
    Name{Qt::Key_Backslash, 0xDC},    Name{Qt::Key_Bar, 0xDC},
    Name{Qt::Key_Comma, 0xBC},        Name{Qt::Key_Less, 0xBC},
    Name{Qt::Key_Period, 0xBE},       Name{Qt::Key_Greater, 0xBE},
    Name{Qt::Key_Slash, 0xBF},        Name{Qt::Key_Question, 0xBF},
    Name{Qt::Key_Exclam, '1'},        Name{Qt::Key_At, '2'},
    Name{Qt::Key_NumberSign, '3'},    Name{Qt::Key_Dollar, '4'},
    Name{Qt::Key_Percent, '5'},       Name{Qt::Key_AsciiCircum, '6'},
    Name{Qt::Key_Ampersand, '7'},     Name{Qt::Key_Asterisk, '8'},
    Name{Qt::Key_ParenLeft, '9'},     Name{Qt::Key_ParenRight, '0'},
};

constexpr std::array kPadNames{
    Name{Qt::Key_Asterisk, 0x6A}, Name{Qt::Key_Plus, 0x6B},   Name{Qt::Key_Minus, 0x6D},
    Name{Qt::Key_Slash, 0x6F},    Name{Qt::Key_Period, 0x6E}, Name{Qt::Key_Comma, 0x6E},
};

template <size_t kCount>
int32_t ByName(const std::array<Name, kCount>& names, int key) {
  const auto found = std::ranges::find(names, key, &Name::key);
  return found != names.end() ? found->code : kNoVirtualKey;
}

bool IsLetter(int key) { return key >= Qt::Key_A && key <= Qt::Key_Z; }
bool IsDigit(int key) { return key >= Qt::Key_0 && key <= Qt::Key_9; }

// Digits of the numeric pad have codes of their own; without Num Lock its keys are cursor keys.
int32_t ByName(int key, bool keypad) {
  constexpr int32_t kPad0 = 0x60;
  constexpr int32_t kF1 = 0x70;
  if (keypad && IsDigit(key)) return kPad0 + (key - Qt::Key_0);
  if (keypad) {
    const int32_t pad = ByName(kPadNames, key);
    if (pad != kNoVirtualKey) return pad;
  }
  if (IsLetter(key) || IsDigit(key)) return key;
  if (key >= Qt::Key_F1 && key <= Qt::Key_F12) return kF1 + (key - Qt::Key_F1);
  return ByName(kNames, key);
}

int32_t ByPosition(ScanCodes codes, uint32_t position, int key) {
  // The 0 is the last of the digits on most layouts, and the first key of the row on the Hungarian one. The
  // place that it leaves free there is that of OEM_3. All signs of the Hungarian keys count, whatever is
  // held.
  if (position == kKeyAfter9)
    return key == Qt::Key_Odiaeresis || key == Qt::Key_Dead_Doubleacute ? 0xC0 : '0';
  if (position == kKeyBefore1)
    return key == Qt::Key_0 || key == Qt::Key_section || key == Qt::Key_notsign ? '0' : 0xC0;
  const auto found = codes == ScanCodes::Windows ? std::ranges::find(kPositions, position, &Position::windows)
                                                 : std::ranges::find(kPositions, position, &Position::kernel);
  return found != kPositions.end() ? found->code : kNoVirtualKey;
}

}  // namespace

ScanCodes HostScanCodes() {
  const QString platform = QGuiApplication::platformName();
  if (platform == QLatin1String("windows")) return ScanCodes::Windows;
  return platform == QLatin1String("cocoa") ? ScanCodes::None : ScanCodes::X11;
}

int32_t VirtualKey(ScanCodes codes, uint32_t scanCode, int qtKey, bool keypad) {
  const uint32_t offset = codes == ScanCodes::X11 ? kX11Offset : 0;
  const bool positionKnown = codes != ScanCodes::None && scanCode > offset;
  if (positionKnown && !IsLetter(qtKey)) {
    const int32_t code = ByPosition(codes, scanCode - offset, qtKey);
    if (code != kNoVirtualKey) return code;
  }
  return ByName(qtKey, keypad);
}

int32_t VirtualKey(const QKeyEvent& event) {
  return VirtualKey(HostScanCodes(), event.nativeScanCode(), event.key(),
                    event.modifiers().testFlag(Qt::KeypadModifier));
}

int32_t ShiftState(const QKeyEvent& event) {
  const Qt::KeyboardModifiers held = event.modifiers();
  const bool down = event.type() == QEvent::KeyPress;
  int32_t shift = 0;
  if (held.testFlag(Qt::ShiftModifier) || (down && event.key() == Qt::Key_Shift)) shift |= kShiftKey;
  if (held.testFlag(Qt::ControlModifier) || (down && event.key() == Qt::Key_Control)) shift |= kCtrlKey;
  if (held.testFlag(Qt::AltModifier) || (down && event.key() == Qt::Key_Alt)) shift |= kAltKey;
  if (held.testFlag(Qt::GroupSwitchModifier) || (down && event.key() == Qt::Key_AltGr))
    shift |= kCtrlKey | kAltKey;
  return shift;
}

}  // namespace quoll
