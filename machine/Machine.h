// The wiring diagram: every record of the machine, by value. Nothing mutable lives outside it, so a
// machine can be copied, compared and run twice side by side. About half a megabyte: keep it on the heap.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "cards/Floppy.h"
#include "cards/Printer.h"
#include "cards/Serial.h"
#include "core/Host.h"
#include "core/Random.h"
#include "core/RunState.h"
#include "display/Crtc.h"
#include "display/Keyboard.h"
#include "display/LightPen.h"
#include "display/Palette.h"
#include "display/Refresh.h"
#include "forms/Asse.h"
#include "forms/CPUmon.h"
#include "forms/ErrorSim.h"
#include "forms/FDXF.h"
#include "forms/FSID.h"
#include "forms/FSN76489.h"
#include "forms/FYM2413.h"
#include "forms/FYM3812.h"
#include "forms/FilePanel.h"
#include "forms/Fsaa.h"
#include "forms/T8910.h"
#include "forms/TFloppy.h"
#include "forms/TPrint.h"
#include "forms/TScreen.h"
#include "forms/TSerial.h"
#include "forms/TTape.h"
#include "forms/TTools.h"
#include "forms/TVCmon.h"
#include "machine/Memory.h"
#include "sound/BlockRecording.h"
#include "sound/Mixer.h"
#include "sound/SoundCard.h"
#include "sound/Tone.h"
#include "tape/Tape.h"
#include "z80/Z80State.h"

namespace quoll {

// What a machine is in. It can be compared as a whole.
struct MachineState {
  // Processor, its clock, its memory and its ports.
  Z80State z80{};
  RunState run;
  std::array<uint8_t, kMemImageSize> MemImage{};
  std::vector<MexPage> MexPages;  // empty, or 256 pages of the MEX4MB cartridge
  std::string CartName;           // file name of the cartridge, empty when there is none
  std::string cartFolder;         // where it was found; empty: the program folder
  PortBytes PortShadow{};
  bool VideoReadNoise = false;  // page 2 video reads damage bank 0

  // Devices.
  Random random;
  Crtc crtc;
  Palette palette;
  Keyboard keyboard;
  LightPen pen;
  Picture picture;
  Tone tone;
  SoundCard card;
  Mixer mixer;
  BlockRecording recording;
  Tape tape;
  Floppy floppy;
  Serial serial;
  Printer printer;

  // Forms.
  TScreen screen;
  FilePanel panel;
  BareForm frame2, fscreen;
  CPUmon cpumon;
  TVCmon tvcmon;
  Asse asse;
  TTape ttape;
  FDXF fdxf;
  Fsaa fsaa;
  FSN76489 fsn76489;
  FYM3812 fym3812;
  FYM2413 fym2413;
  FSID fsid;
  T8910 t8910;
  ErrorSim errorsim;
  TFloppy tfloppy;
  TSerial tserial;
  TPrint tprint;
  TTools tools;

  bool operator==(const MachineState&) const = default;
};

// The state and what it is worked with, which is no part of it.
struct Machine : MachineState {
  // Made, copied and ended in one place: so many records by value are much code, which every user would
  // repeat.
  explicit Machine(Host& hostOfMachine);
  Machine(const Machine& other);
  Machine& operator=(const Machine& other);
  ~Machine();

  Host* host;                 // never null
  std::string programFolder;  // where ROMs and cartridges are looked for; empty means the working directory
  PageMap pages;
  int loops = 0;            // run loops on the stack; at 0 the machine stands
  uint32_t IdlePasses = 0;  // passes without a T-state, counted for Host::Stalled
};

// Shows a message box with the stop icon, then ends the program by throwing ProgramEnd.
[[noreturn]] void EndProgram(Machine& m, std::string_view text, std::string_view title);

}  // namespace quoll
