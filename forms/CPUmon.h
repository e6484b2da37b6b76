// The Z80 monitor's record: the window from which the processor is run, stopped, stepped and changed.
#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "core/Form.h"

namespace quoll {

struct Machine;

struct CPUmon {
  static constexpr int32_t kButtonFace = 0xC0C0C0;  // the system's colour of an idle button
  static constexpr int32_t kRed = 0xFF;

  int32_t Command1Color = kButtonFace;  // back colour of "Run"; red while the loop stands
  bool Check2 = false;                  // "Address": stop at the address in Text5
  std::string Text5;                    // breakpoint address, decimal or "&H" and hexadecimal
  bool Check3 = false;                  // "Instcount"; read by nothing
  std::string Text6;                    // instruction count; read by nothing
  bool Check4 = false;                  // "Debug": tests the breakpoint at each pass
  bool Check5 = true;                   // "Screen": build pictures while running
  bool Check6 = true;                   // "Border": paint the border
  bool Check7 = false;                  // "Int", with the next two beside the breakpoint; read by nothing
  bool Check8 = false;                  // "Nmi"
  bool Check9 = false;                  // "Reset"
  std::string Text12, Text13;           // "Poke": address and value, numbers as in Text5
  int32_t HScroll1 = 2;                 // speed, set by the menu, read by nothing
  int32_t redraws = 0;                  // how often the window was asked to show the state anew
};

// "Run": zeroes the cycle counts and runs the loop; returns when the loop ends.
void CPUmon_Command1_Click(Machine& m);
// "Stop": ends the running loop at the end of its pass and zeroes the cycle counts.
void CPUmon_Command6_Click(Machine& m);
// "Step": performs one pass.
void CPUmon_Command7_Click(Machine& m);

// Asks the window to show the processor's state anew.
void CPUmon_redraw(Machine& m);

// An instruction the processor doesn't know: status label and caption say so, PC moves on by one.
void MissingOP(Machine& m);

std::span<const Control> CPUmonControls();

}  // namespace quoll
