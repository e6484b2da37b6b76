#include "devtools/TVCmon.h"

#include <array>

#include "core/Machine.h"

namespace quoll {

namespace {

void Record(Machine& m, int) {
  if (m.tvcmon.Check1) {
    TapeStartRecording(m);
  } else {
    TapeStopRecording(m);
  }
}

constexpr std::array kControls{
    Control{"Check1", ControlKind::Check, [](Machine& m) -> ControlField { return &m.tvcmon.Check1; },
            Record},
    Control{"Check2", ControlKind::Check, [](Machine& m) -> ControlField { return &m.tvcmon.Check2; }},
    Control{"Check3", ControlKind::Check, [](Machine& m) -> ControlField { return &m.tvcmon.Check3; }},
};

}  // namespace

std::span<const Control> TVCmonControls() { return kControls; }

}  // namespace quoll
