// The main window's record: menu ticks and texts. The panels inside it have records of their own.
#pragma once

#include <string>
#include <string_view>

#include "core/Form.h"
#include "machine/PortLog.h"

namespace quoll {

inline constexpr std::string_view kProgramName = "QUOLLEMU";
// Status and caption after an instruction that the processor does not know, until the next reset.
inline constexpr std::string_view kUnknownOpcode = "Unknown Opcode!";

struct TScreen {
  FormState window{.visible = true, .raise = false, .caption = "QUOLL_EMU"};
  std::string Label1;     // status label
  std::string Text1;      // speed figure: hundred-thousandths of a second for the last frame
  float Shape4Width = 0;  // speed bar, the same figure
  PortLog List1;

  // Ticks of the menu items that have one.
  bool xio0 = false, xio1 = false, xio2 = false, xio3 = false;
  bool xScreenBW = false, xScreenDIB = true, xScreenNoise = false;
  bool xSound = true, xNoError = false, xUnDoc = true, x32KB = false, xBasic = true;
  bool xS1 = false, xS2 = false, xS3 = true, xS4 = false, xS5 = false, xS6 = false;

  bool focusPicD = false;  // a handler asked for the focus to go to the picture box; the window takes it

  bool operator==(const TScreen&) const = default;
};

// What has a window and nothing else: the About panel inside the main window, the full screen.
struct BareForm {
  FormState window;

  bool operator==(const BareForm&) const = default;
};

// Menu actions that other modules call too.
void xReset_Click(Machine& m);
void xReset2_Click(Machine& m);

extern const Form kTScreen;
extern const Form kFrame2;
extern const Form kFScreen;

}  // namespace quoll
