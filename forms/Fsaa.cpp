#include "forms/Fsaa.h"

#include "core/FormTable.h"
#include "machine/Machine.h"

namespace quoll {

namespace {

// Begins or ends a recording.
void Command1_Click(Machine& m) {
  Look& look = m.fsaa.Command1Look;
  if (look.back == kRed) {
    look.back = kWhite;
    StopBlockRecording(m.recording);
    return;
  }
  StartBlockRecording(m.recording, m.programFolder);
  look.back = kRed;
}

constexpr On<&Machine::fsaa> f;

constexpr std::array kControls{
    Button("Command1", "Record", Command1_Click).Looks(f.Look<&Fsaa::Command1Look>),
    f.Label<&Fsaa::Label11>("Label11", "Frames in the block"),
};

}  // namespace

constexpr Form kFsaa{"Fsaa", "SAA1099P", f.State, kControls};

}  // namespace quoll
