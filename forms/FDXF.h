// FDXF: the sound output's window, its buttons and its oscilloscope, and the handler that gives the output
// its next block. The output itself is the host's.
#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "core/Form.h"

namespace quoll {

struct FDXF {
  FormState window;
  std::string TextR = "0";  // blocks delivered
  bool Check7 = false;      // "Osc": draws each block that is delivered
  Trace PL, PR;             // its left and right bytes, in a box 221 wide and 64 high

  bool operator==(const FDXF&) const = default;
};

// At the start, when a sound device opens: sets the output going.
void DXinit(Machine& m);
// At the start, when none does: the status label says so.
void TellNoSoundDevice(Machine& m);

// The handler, run once for each half of the output's buffer: the last block mixed becomes its data, and the
// machine may go on. data takes up to kBlockBytes.
void DirectSoundPlay_NeedWavData(Machine& m, std::span<uint8_t> data);

// The handler without an output: what the main window's Timer2 does where no sound device opens.
void ForceNeedWavData(Machine& m);

extern const Form kFDXF;

}  // namespace quoll
