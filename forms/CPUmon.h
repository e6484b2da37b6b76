// The Z80 monitor's record: the window from which the processor is run, stopped, stepped and changed.
#pragma once

#include <cstdint>
#include <string>

#include "core/Form.h"

namespace quoll {

struct CPUmon {
  FormState window;
  Look Command1Look{.back = kButtonFace};  // "Run"; red while the loop stands
  bool Check2 = false;                     // "Address": stop at the address in Text5
  std::string Text5;                       // breakpoint address, decimal or "&H" and hexadecimal
  bool Check3 = false;                     // "Instcount"; read by nothing
  std::string Text6;                       // instruction count; read by nothing
  bool Check4 = false;                     // "Debug": tests the breakpoint at each pass
  bool Check5 = true;                      // "Screen": build pictures while running
  bool Check6 = true;                      // "Border": paint the border
  bool Check7 = false;                     // "Int", with the next two beside the breakpoint; read by nothing
  bool Check8 = false;                     // "Nmi"
  bool Check9 = false;                     // "Reset"
  std::string Text12, Text13;              // "Poke": address and value, numbers as in Text5
  Scroll HScroll1{2, -32768, 32767};       // speed, set by the menu, read by nothing
  uint32_t redraws = 0;                    // how often the window was asked to show the state anew

  bool operator==(const CPUmon&) const = default;
};

// Asks the window to show the processor's state anew.
inline void CPUmon_redraw(CPUmon& form) { ++form.redraws; }

// "Run": zeroes the cycle counts and runs the loop; returns when the loop ends.
void CPUmon_Command1_Click(Machine& m);
// "Stop": ends the running loop at the end of its pass and zeroes the cycle counts.
void CPUmon_Command6_Click(Machine& m);
// "Step": performs one pass.
void CPUmon_Command7_Click(Machine& m);

extern const Form kCPUmon;

}  // namespace quoll
