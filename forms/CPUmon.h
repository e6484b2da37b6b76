// The Z80 monitor's record: the window from which the processor is run, stopped, stepped and changed. Its
// texts are worked out when somebody looks, from the machine as it is then.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>

#include "core/Form.h"

namespace quoll {

// What the window shows of the machine. Boxes that can be typed into hold the user's text until the next
// time.
struct CPUmonShown {
  using ShownOnly = void;

  uint32_t redraws = 0;                 // how often the texts were asked to follow the machine
  std::optional<uint32_t> redrawsDone;  // how often they had been asked when they last did
  uint32_t stops = 0;                   // how often the loop asked for that, which it does as it ends
  std::array<std::string, 8> TextA;     // bits of A, from the left
  std::array<std::string, 14> Text1;    // registers of eight bits
  std::array<std::string, 16> Text2;    // flags
  std::array<std::string, 6> Text3;     // IX, SP, IY, PC, I, R
  std::array<std::string, 3> Text4;     // IFF1, IFF2, IM
  std::string Picture1, Picture4;       // disassembly from PC on, and of the last ten instructions
  std::string Picture2, Picture3;       // memory and ports, bytes as characters in code page 852
  std::string Text8;                    // T-states run
  Look Label7Look, Label8Look;          // "Halt ON", "INT ON": red while they are
  Scroll Shape2{0, 0, 65535}, Shape4{0, 0, 255};  // bars: PC, R

  bool operator==(const CPUmonShown&) const = default;
};

struct CPUmon {
  FormState window;
  Look Command1Look{.back = kButtonFace};  // "Run"; red while the loop stands
  bool Check2 = false;                     // "Address": stop at the address in Text5
  std::string Text5;                       // breakpoint address, decimal or "&H" and hexadecimal
  bool Check3 = false;                     // "Instcount"; read by nothing
  std::string Text6;                       // instruction count; read by nothing
  bool Check4 = false;                     // "Debug": tests the breakpoint at each pass
  Look Frame8Look{.visible = false};  // the frame of the breakpoint's controls, seen while Check4 is ticked
  bool Check5 = true;                 // "Screen": build pictures while running
  bool Check6 = true;                 // "Border": paint the border
  bool Check7 = false;                // "Int", with the next two beside the breakpoint; read by nothing
  bool Check8 = false;                // "Nmi"
  bool Check9 = false;                // "Reset"
  std::string Text12, Text13;         // "Poke": address and value, numbers as in Text5
  Scroll HScroll1{2, -32768, 32767};  // speed, set by the menu, read by nothing
  ListBox File1;                      // files for "Load Bin"
  std::string folder;                 // that is listed: the file panel's when the window was asked for

  std::string Text10 = "0", Text11 = "0";  // first address of the two views below, decimal
  Scroll VScroll1{0, 0, 65535}, VScroll2{0, 0, 255};

  std::string Text7, Label5;   // T-states per millisecond, MHz
  std::string Label3 = "Mhz";  // what Label5 counts
  int64_t countedBefore = 0;   // TotalCycles at Timer1's last tick
  CPUmonShown shown;

  bool operator==(const CPUmon&) const = default;
};

// Asks for the texts to follow the machine, before the next look at them: by the loop at a breakpoint and at
// its end.
inline void CPUmon_redraw(CPUmon& form) {
  ++form.shown.redraws;
  ++form.shown.stops;
}

// "Run": zeroes the cycle counts and runs the loop; returns when the loop ends.
void CPUmon_Command1_Click(Machine& m);
// "Stop": ends the running loop at the end of its pass and zeroes the cycle counts.
void CPUmon_Command6_Click(Machine& m);
// "Step": performs one pass.
void CPUmon_Command7_Click(Machine& m);

// Shows the window, its list of files filled from the file panel's folder.
void CPUmon_Show(Machine& m);

extern const Form kCPUmon;

}  // namespace quoll
