// The main window's record: menu ticks, texts and the log of unknown port accesses.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "core/Form.h"

namespace quoll {

struct Machine;

// The log List1 of accesses to ports without a function. It empties itself when it has grown past
// a limit: 35 lines on a write, 100 on a read. That costs time on a program that pokes such a port in
// a loop, and no memory.
struct PortLog {
  static constexpr uint32_t kWriteLimit = 35;
  static constexpr uint32_t kReadLimit = 100;

  struct Line {
    char kind = 0;  // 'W' or 'R'
    int32_t port = 0;
    bool operator==(const Line&) const = default;
  };
  std::array<Line, kReadLimit + 1> lines{};
  uint32_t count = 0;

  // Lines from 0 to count - 1 as shown: "W" or "R" and the decimal port.
  std::string Text(uint32_t line) const;
};

void LogPortWrite(PortLog& log, int32_t port);
void LogPortRead(PortLog& log, int32_t port);

struct TScreen {
  std::string Caption = "QUOLL_EMU";
  std::string Label1;     // status label
  std::string Text1;      // speed figure: hundred-thousandths of a second for the last frame
  float Shape4Width = 0;  // speed bar, the same figure
  PortLog List1;

  // Ticks of the menu items that have one.
  bool xio0 = false, xio1 = false, xio2 = false, xio3 = false;
  bool xScreenBW = false, xScreenDIB = false, xScreenNoise = false;
  bool xSound = true, xNoError = false, xUnDoc = true, x32KB = false, xBasic = true;
  bool xS1 = false, xS2 = false, xS3 = true, xS4 = false, xS5 = false, xS6 = false;

  bool focusPicD = false;  // a handler asked for the focus to go to the picture box; the window takes it
};

// One menu entry. An entry without a click handler does nothing when it is selected.
struct MenuItem {
  std::string_view menu;
  std::string_view name;
  std::string_view caption;
  bool TScreen::*tick = nullptr;
  void (*click)(Machine&) = nullptr;
};

// All menu entries in the order in which the menus show them.
std::span<const MenuItem> MenuItems();

// nullptr when there is none of that name.
const MenuItem* FindMenuItem(std::string_view name);

// Selects an entry as the user does.
void ClickMenu(Machine& m, const MenuItem& item);

// The controls of the form. Its menu items are among them: the field is the tick, a change selects the item.
std::span<const Control> TScreenControls();

// Menu actions that other modules call too.
void xReset_Click(Machine& m);
void xReset2_Click(Machine& m);

}  // namespace quoll
