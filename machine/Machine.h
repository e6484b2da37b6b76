// The wiring diagram: every record of the machine, by value. Nothing mutable lives outside it, so a
// machine can be copied, compared and run twice side by side. About half a megabyte: keep it on the heap.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "cards/Printer.h"
#include "forms/TTools.h"
#include "core/Host.h"
#include "machine/Memory.h"
#include "core/Random.h"
#include "core/RunState.h"
#include "forms/CPUmon.h"
#include "forms/TVCmon.h"
#include "display/Crtc.h"
#include "forms/ErrorSim.h"
#include "forms/FilePanel.h"
#include "display/Keyboard.h"
#include "display/LightPen.h"
#include "display/Palette.h"
#include "display/Refresh.h"
#include "forms/TScreen.h"
#include "display/Windows.h"
#include "forms/TTape.h"
#include "tape/Tape.h"
#include "forms/FDXF.h"
#include "forms/Fsaa.h"
#include "sound/Mixer.h"
#include "sound/Tone.h"
#include "z80/Z80State.h"

namespace quoll {

struct Machine {
  explicit Machine(Host& hostOfMachine) : host(&hostOfMachine) {}

  Host* host;                 // never null
  std::string programFolder;  // where ROMs and cartridges are looked for; empty means the working directory

  // Processor, its clock, its memory and its ports.
  Z80State z80{};
  RunState run;
  std::array<uint8_t, kMemImageSize> MemImage{};
  std::vector<MexPage> MexPages;  // empty, or 256 pages of the MEX4MB cartridge
  std::string CartName;           // file name of the cartridge, empty when there is none
  std::string cartFolder;         // where it was found; empty: the program folder
  std::array<uint8_t, 256> PortShadow{};
  bool VideoReadNoise = false;  // page 2 video reads damage bank 0
  PageMap pages;
  uint32_t IdlePasses =
      0;  // passes without a T-state, counted for Host::Stalled; no part of the machine's state

  // Devices.
  Random random;
  Crtc crtc;
  Palette palette;
  Keyboard keyboard;
  LightPen pen;
  Picture picture;
  Tone tone;
  Mixer mixer;
  Tape tape;

  // Forms.
  TScreen screen;
  FilePanel panel;
  Windows windows;
  CPUmon cpumon;
  TVCmon tvcmon;
  TTape ttape;
  FDXF fdxf;
  Fsaa fsaa;
  ErrorSim errorsim;
  TPrint printer;
  TTools tools;
};

// Shows a message box with the stop icon, then ends the program by throwing ProgramEnd.
[[noreturn]] void EndProgram(Machine& m, std::string_view text, std::string_view title);

}  // namespace quoll
