#include "forms/TVCmon.h"

#include <array>
#include <cstdio>

#include "machine/Machine.h"
#include "machine/Ports.h"

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

SoundFields ReadSoundFields(const Machine& m) {
  const PortBytes& ports = m.PortShadow;
  std::array<char, 8> pitch{};
  std::snprintf(pitch.data(), pitch.size(), "%03X", static_cast<unsigned>((ports[5] & 15) * 256 + ports[4]));
  SoundFields fields;
  fields.SoundIT = (ports[5] & 0x20) != 0 ? "1" : "0";
  fields.Pitch = pitch.data();
  fields.Volume = std::to_string((ports[6] >> 2) & 15);
  fields.OutEnable = (ports[5] & 0x10) != 0 ? "1" : "0";
  fields.Counter = std::to_string(m.run.ToneItCounter);
  fields.irq = (ports[kStatusPort] & kCursorToneFlag) == 0;
  fields.active = ToneIsOn(ports);
  return fields;
}

std::span<const Control> TVCmonControls() { return kControls; }

}  // namespace quoll
