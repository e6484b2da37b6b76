// FDXF: the sound output's window, its buttons and its oscilloscope, and the handler that gives the output
// its next block. The output itself is the host's.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>

#include "core/Form.h"
#include "sound/Mixer.h"

namespace quoll {

struct Machine;

struct FDXF {
  std::string TextR = "0";  // blocks delivered
  bool Check7 = false;      // "Osc": draws each block that is delivered

  // The block that PL and PR show, left and right byte in turn.
  std::array<uint8_t, kBlockBytes> drawn{};
  uint32_t drawings = 0;  // how often one was drawn
};

// A point of the pictures PL and PR: for the byte at an even place k of the block, or the one after it.
struct ScopePoint {
  float x, y;
};
ScopePoint ScopePointAt(int k, uint8_t byte);

// At the start, when a sound device opens: sets the output going.
void DXinit(Machine& m);
// At the start, when none does: the status label says so.
void TellNoSoundDevice(Machine& m);

// The handler, run once for each half of the output's buffer: the last block mixed becomes its data, and the
// machine may go on. data takes up to kBlockBytes.
void DirectSoundPlay_NeedWavData(Machine& m, std::span<uint8_t> data);

// The handler without an output: what the main window's Timer2 does where no sound device opens.
void ForceNeedWavData(Machine& m);

// "Play": makes the output anew and lets it play. What goes wrong is told.
void FDXF_cmdStartPlay_Click(Machine& m);
// "Stop": the output stands, and the machine with it from the end of the present block.
void FDXF_Cstop_Click(Machine& m);

std::span<const Control> FDXFControls();

}  // namespace quoll
