// FSID: the SID's window. Three scopes, filters behind the chip, a test sweep, and a player of register
// dumps.
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "core/Form.h"
#include "forms/ChipDrawing.h"
#include "sound/Sid6581.h"
#include "sound/SidTune.h"

namespace quoll {

struct FSID {
  // The sweep's picture: a point to the right for each 12 Hz, a point up for each of the level.
  static constexpr float kSweepHeight = 256;

  struct Dumps {
    SidTuneFormat format = SidTuneFormat::None;
    int32_t inWorkingFolder = 0;  // so many, from the first on; the rest is in the program folder

    bool operator==(const Dumps&) const = default;
  };

  FormState window;
  bool Check1 = false, Check2 = false, Check3 = false;  // "High Pass", "Low Pass", "Butterfly Pass"
  Scroll HScroll1{50, 0, 100}, HScroll2{50, 0, 100}, HScroll3{50, 0, 100};  // their strengths
  std::array<std::string, 3> Label1{"50", "50", "50"};                      // the strengths' numbers
  std::string Text1 = "1";                            // these filters run once more than this
  bool Check4 = false;                                // "Wobbler": the test sweep
  bool Check5 = false;                                // the sweep stands at 440 Hz
  std::string Label15;                                // hertz of the sweep
  Trace PIC2;                                         // level over frequency, as the sweep goes on
  bool Check6 = true, Check7 = true, Check10 = true;  // "ADSR On", "Filter On", "Ring On"
  std::array<bool, kSidVoices> Check9 = AllTicked<kSidVoices>();  // the voice is heard
  Scroll HScroll4{440, 1, 1200};                                  // time scale of attack and release
  Scroll HScroll5{440, 1, 1200};                                  // time scale of decay
  std::array<std::string, 2> Label2{"440", "440"};
  bool Check8 = false;  // "Exp": the extended part is shown

  std::string Text2 = "54272", Text3 = "0";  // poke: address of a register from 54272 on, value

  bool Option1 = true, Option2 = false, Option3 = false;  // "No File", "SIDX", "DMP"
  ListBox File1;                                          // the dumps
  Dumps dumps;                                            // which they are

  // What the registers say.
  std::array<std::string, kSidRegisters> Label3;  // the registers
  std::array<std::string, kSidVoices> Label4;     // hertz, as heard
  std::array<std::string, kSidVoices> Label5;     // wave
  std::array<std::string, kSidVoices> Label6;     // attack, decay, sustain, release
  std::array<std::string, kSidVoices> Label7;     // pulse width
  std::string Label8;                             // filter: mode and voices
  Scroll HScroll6{0, 0, 100};                     // cutoff in force
  std::string Label16, Label17;                   // the same in per cent; cutoff register
  std::string Label25 = "0", Label26 = "0";       // highest and lowest sample since a click on the first

  std::array<Trace, kSidVoices> Pic1;

  bool operator==(const FSID&) const = default;
};

SidControls ChipControls(const FSID& form);

// One frame of the chosen dump into the registers; the user is told of what a line should not have.
void FSID_PlayTune(Machine& m);

// Draws the chip's last frame, the scopes always.
void DrawChip(FSID& form, const Sid6581& sid, bool scopes);

extern const Form kFSID;

}  // namespace quoll
