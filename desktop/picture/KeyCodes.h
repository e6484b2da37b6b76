// From the host's keys to Windows virtual key codes, in which the machine's keyboard is wired.
#pragma once

#include <array>
#include <cstdint>

class QKeyEvent;

namespace quoll {

// A key that has no virtual key code here.
inline constexpr int32_t kNoVirtualKey = 0xFF;

// Keys whose sign depends on the country, in the order of their codes.
inline constexpr std::array kOemCodes{0xBA, 0xBB, 0xBC, 0xBD, 0xBE, 0xBF, 0xC0, 0xDB, 0xDC, 0xDD, 0xDE, 0xE2};

// How the host numbers its keys' positions.
enum class ScanCodes {
  None,     // no positions are told
  X11,      // X11 and Wayland: the kernel's key number plus 8
  Windows,  // set 1, extended keys plus 0x100
};

// Of the platform that Qt runs on.
ScanCodes HostScanCodes();

// Virtual key code of a key: by its position where scanCode tells it (0: it doesn't), else by Qt's name of
// the key. qtKey is a Qt::Key; keypad tells that it lies on the numeric pad.
int32_t VirtualKey(ScanCodes codes, uint32_t scanCode, int qtKey, bool keypad);

// The same of a key event, with the host's kind of scan codes.
int32_t VirtualKey(const QKeyEvent& event);

// Modifier bits of a key event as the machine counts them: with the key of the event itself, when it is a
// modifier that goes down. AltGr counts as Ctrl and Alt.
int32_t ShiftState(const QKeyEvent& event);

}  // namespace quoll
