// The sound card: the input is writes to its ports, changes of its windows' boxes and sliders, and frames in
// between. Nothing may get out of the chips, and each sample has its range.
#include <algorithm>
#include <cstdlib>
#include <memory>

#include "forms/Forms.h"
#include "fuzz/Fuzz.h"
#include "loop/SoundFrame.h"
#include "machine/Machine.h"
#include "machine/MachineInit.h"
#include "machine/Ports.h"

namespace quoll {

namespace {

constexpr int kMostFrames = 40;
constexpr uint8_t kFrame = 0x00, kControl = 0x01, kRegisters = 0x02, kTimers = 0x03;  // else a port

struct Input {
  std::span<const uint8_t> bytes;

  uint8_t Next() {
    if (bytes.empty()) return 0;
    const uint8_t byte = bytes[0];
    bytes = bytes.subspan(1);
    return byte;
  }
};

constexpr const char* kChipForms[] = {"Fsaa", "FSN76489", "FYM3812", "FYM2413", "FSID", "T8910"};

void CheckRange(const FrameSamples& samples, int least, int most) {
  const auto [low, high] = std::minmax_element(samples.begin(), samples.end());
  if (*low < least || *high > most) std::abort();
}

// Registers may also be stored from outside, by a script, in any state; then only the chips' limits hold.
void CheckFrame(const SoundCard& card, bool stored) {
  CheckRange(card.saa.SaaOutL, 0, 120);
  CheckRange(card.saa.SaaOutR, 0, 120);
  CheckRange(card.opl.Ym3812Out, -126, 126);
  CheckRange(card.opll.Ym2413Out, -135, 135);
  CheckRange(card.ay.AyOut, -96, 96);
  if (!stored) CheckRange(card.sn.SnOut, -1200, 1200);
}

// What the user can do to a control, all but the recording and the files.
void UseControl(Machine& m, Input& input) {
  const Form& form = *FindForm(kChipForms[input.Next() % std::size(kChipForms)]);
  const Control& control = form.controls[input.Next() % form.controls.size()];
  const int index = input.Next() % std::max(1, control.count);
  const ControlRef ref{&form, &control, index};
  const uint8_t value = input.Next();
  switch (control.kind) {
    case ControlKind::Check: return SetTick(m, ref, (value & 1) != 0);
    case ControlKind::Option: return control.count > 0 ? SetTick(m, ref, true) : void();
    case ControlKind::Scroll: return SetScroll(m, ref, value * 5);
    case ControlKind::Text:
      SetText(m, ref, std::to_string(static_cast<int8_t>(value)));
      return PressEnter(m, ref);
    case ControlKind::Label: return Press(m, ref);
    case ControlKind::Button:
      return control.name == "Command1" && form.name == "Fsaa" ? void() : Press(m, ref);
    default: return;
  }
}

void StoreRegisters(SoundCard& card, Input& input) {
  const auto word = static_cast<int32_t>(input.Next() * 0x01030507U);
  card.sn.SN_Reg[input.Next() % card.sn.SN_Reg.size()] = word;
  card.ay.AY_Reg[input.Next() % card.ay.AY_Reg.size()] = word;
  card.sid.SID_Reg[input.Next() % card.sid.SID_Reg.size()] = word;
  card.saa.SAA_Freq[input.Next() % 6] = {input.Next(), input.Next()};
  card.saa.SAA_Amp[input.Next() % 12] = input.Next();
  card.saa.SAA_Env[input.Next() % 2].mode = input.Next();
  card.saa.SAA_Noise[input.Next() % 2] = input.Next();
}

}  // namespace

void Fuzz(std::span<const uint8_t> bytes) {
  static Host host;
  const auto m = std::make_unique<Machine>(host);
  m->screen.xio2 = true;
  MachineReset(*m);
  Input input{bytes};
  bool stored = false;
  for (int frames = 0; !input.bytes.empty() && frames < kMostFrames;) {
    const uint8_t what = input.Next();
    switch (what) {
      case kFrame:
        ++frames;
        SoundFrame(*m);
        if (m->mixer.FrameInBlock == kFramesPerBlock) m->mixer.FrameInBlock = 0;
        CheckFrame(m->card, stored);
        break;
      case kControl: UseControl(*m, input); break;
      case kRegisters:
        stored = true;
        StoreRegisters(m->card, input);
        break;
      case kTimers:
        for (const char* form : kChipForms) {
          const Control* timer = FindControl(form, "Timer1");
          timer->timer(*m, 0);
          const Control* scopes = FindControl(form, "Pic1");
          if (std::get<std::span<Trace>>(scopes->field(*m)).empty()) std::abort();
        }
        break;
      default: {
        int32_t value = input.Next();
        PortOut(*m, what, value);
      }
    }
  }
}

}  // namespace quoll
