#include "forms/FSN76489.h"

#include "core/FormTable.h"
#include "machine/Machine.h"

namespace quoll {

namespace {

using namespace std::chrono_literals;

constexpr int kTones = 3, kChannels = 4;

SnManual ManualOf(const FSN76489& form) {
  SnManual manual;
  for (int tone = 0; tone < kTones; ++tone) manual.period[tone] = form.HScroll3[tone].value;
  for (int channel = 0; channel < kChannels; ++channel)
    manual.attenuation[channel] = form.HScroll4[channel].value;
  manual.periodicNoise = form.Check2;
  return manual;
}

void HScroll3_Change(Machine& m, int index) {
  FSN76489& form = m.fsn76489;
  ShowNumber(form.Label6[index], SnHertz(1024 - form.HScroll3[index].value));
}

void HScroll4_Change(Machine& m, int index) {
  ShowNumber(m.fsn76489.Label7[index], m.fsn76489.HScroll4[index].value);
}

std::string NoiseText(const Sn76489& sn) {
  const int rate = sn.SN_Reg[9] & 3;
  return std::string(SnNoiseIsWhite(sn) ? "white" : "periodic") + ", rate " + std::to_string(rate);
}

// Lets the sliders play, and shows what the chip then says.
void Timer1_Timer(Machine& m) {
  FSN76489& form = m.fsn76489;
  Sn76489& sn = m.card.sn;
  if (form.Check3) SnManualWrite(sn, ManualOf(form));
  for (int channel = 0; channel < kChannels; ++channel) {
    const int32_t period = channel < kTones ? SnTonePeriod(sn, channel) : SnNoisePeriod(sn);
    ShowNumber(form.Label1[channel], SnHertz(period));
    ShowNumber(form.Label2[channel], period);
    ShowNumber(form.Label3[channel], SnAttenuation(sn, channel));
  }
  ShowText(form.Label4, NoiseText(sn));
}

constexpr On<&Machine::fsn76489> f;

constexpr std::array kControls{
    f.Check<&FSN76489::Check1>("Check1", "Circuit"),
    f.Check<&FSN76489::Check2>("Check2", "Periodic Noise "),
    f.Check<&FSN76489::Check3>("Check3", "Manual"),
    f.Scroll<&FSN76489::HScroll3>("HScroll3", "Pitch of tone 1|Pitch of tone 2|Pitch of tone 3",
                                  HScroll3_Change),
    f.Label<&FSN76489::Label6>("Label6", "Hertz of slider 1|Hertz of slider 2|Hertz of slider 3"),
    f.Scroll<&FSN76489::HScroll4>(
        "HScroll4",
        "Attenuation of tone 1|Attenuation of tone 2|Attenuation of tone 3|Attenuation of the noise",
        HScroll4_Change),
    f.Label<&FSN76489::Label7>("Label7",
                               "Attenuation 1|Attenuation 2|Attenuation 3|Attenuation of the noise"),
    f.Label<&FSN76489::Label1>("Label1", "Tone 1, hertz|Tone 2, hertz|Tone 3, hertz|Noise, hertz"),
    f.Label<&FSN76489::Label2>("Label2", "Tone 1, period|Tone 2, period|Tone 3, period|Noise, period"),
    f.Label<&FSN76489::Label3>(
        "Label3", "Tone 1, attenuation|Tone 2, attenuation|Tone 3, attenuation|Noise, attenuation"),
    f.Label<&FSN76489::Label4>("Label4", "Noise"),
    f.Scope<&FSN76489::Pic1>("Pic1", "Tone 1|Tone 2|Tone 3|Noise"),
    Timer("Timer1", 100ms, Timer1_Timer),
};

}  // namespace

SnControls ChipControls(const FSN76489& form) { return {.manual = form.Check3}; }

void DrawChip(FSN76489& form, const Sn76489& sn, bool scopes) {
  if (!scopes) return;
  for (int channel = 0; channel < kChannels; ++channel)
    DrawScope(form.Pic1[channel], [&](int i) { return SnScopeY(sn.voices[i][channel]); });
}

constexpr Form kFSN76489{"FSN76489", "SN76489", f.State, kControls};

}  // namespace quoll
