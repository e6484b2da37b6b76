#include "forms/TVCmon.h"

#include <cstdio>

#include "core/FormTable.h"
#include "machine/Machine.h"
#include "machine/Ports.h"

namespace quoll {

namespace {

using namespace std::chrono_literals;

void Check1_Click(Machine& m) {
  if (m.tvcmon.Check1) {
    TapeStartRecording(m.tape, *m.host);
  } else {
    TapeStopRecording(m.tape);
  }
}

constexpr On<&Machine::tvcmon> f;

constexpr std::array kControls{
    f.Check<&TVCmon::Check1>("Check1", "Record", Check1_Click),
    f.Check<&TVCmon::Check2>("Check2", "Int enable"),
    f.Check<&TVCmon::Check3>("Check3", "Int enabled"),
    f.Label<&TVCmon::SoundIT>("SoundIT", "Sound IT"),
    f.Label<&TVCmon::Pitch>("Pitch", "Pitch"),
    f.Label<&TVCmon::Volume>("Volume", "Volume"),
    f.Label<&TVCmon::OutEnable>("OutEnable", " Out Enable"),
    f.Label<&TVCmon::Counter>("Counter", " Counter"),
    f.Lamp<&TVCmon::SoundLamp>("SoundLamp", "IRQ|ACTIVE"),
    Timer("Timer3", 100ms, TVCmon_redraw),
};

std::string OneOrZero(bool on) { return on ? "1" : "0"; }

}  // namespace

void TVCmon_redraw(Machine& m) {
  const PortBytes& ports = m.PortShadow;
  TVCmon& form = m.tvcmon;
  std::array<char, 8> pitch{};
  std::snprintf(pitch.data(), pitch.size(), "%03X", static_cast<unsigned>(TonePitch(ports)));
  form.SoundIT = OneOrZero(ToneInterrupts(ports));
  form.Pitch = pitch.data();
  form.Volume = std::to_string(ToneAmplitude(ports[6]));
  form.OutEnable = OneOrZero(ToneIsEnabled(ports));
  form.Counter = std::to_string(m.run.ToneItCounter);
  form.SoundLamp = {(ports[kStatusPort] & kCursorToneFlag) == 0, ToneIsOn(ports)};
}

constexpr Form kTVCmon{"TVCmon", "HW Monitor", f.State, kControls};

}  // namespace quoll
