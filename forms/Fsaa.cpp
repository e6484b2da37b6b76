#include "forms/Fsaa.h"

#include "core/FormTable.h"
#include "machine/Machine.h"

namespace quoll {

namespace {

using namespace std::chrono_literals;

constexpr int kEnvelopes = 2;

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

SaaManual ManualOf(const Fsaa& form) {
  SaaManual manual;
  for (int c = 0; c < kSaaChannels; ++c) {
    manual.channel[c] = {.tone = form.Check1[c],
                         .noise = form.Check3[c],
                         .left = form.HScroll1[c].value,
                         .right = form.HScroll2[c].value,
                         .frequency = form.HScroll3[c].value,
                         .octave = form.HScroll4[c].value};
  }
  for (int e = 0; e < kEnvelopes; ++e) {
    manual.envelope[e] = {.enable = form.Check7[e],
                          .invertRight = form.Check4[e],
                          .externalClock = form.Check6[e],
                          .threeBit = form.Check5[e],
                          .mode = form.HScroll6[e].value};
  }
  manual.soundEnable = form.Check8;
  manual.reset = form.Check9;
  return manual;
}

std::string_view EnableText(const Saa1099::Enable& enable) {
  if (enable.tone != 0) return enable.noise != 0 ? "tone+noise" : "tone";
  return enable.noise != 0 ? "noise" : "off";
}

std::string FlagsText(const Saa1099::Envelope& envelope) {
  std::string text = envelope.enable != 0 ? "on" : "off";
  if (envelope.invertRight != 0) text += ", inverse R";
  if (envelope.threeBit != 0) text += ", 3 bit";
  if (envelope.externalClock != 0) text += ", external";
  return text;
}

// Lets the controls play, and shows what the chip then says.
void Timer1_Timer(Machine& m) {
  Fsaa& form = m.fsaa;
  Saa1099& saa = m.card.saa;
  if (form.Check2) SaaManualWrite(saa, ManualOf(form));
  for (int c = 0; c < kSaaChannels; ++c) {
    ShowNumber(form.Label1[c], saa.SAA_Amp[c]);
    ShowNumber(form.Label2[c], saa.SAA_Amp[c + kSaaChannels]);
    ShowNumber(form.Label3[c], saa.SAA_Freq[c].frequency);
    ShowNumber(form.Label4[c], saa.SAA_Freq[c].octave);
    ShowNumber(form.Label5[c], SaaHertz(saa, c));
    ShowText(form.Label6[c], EnableText(saa.SAA_Enable[c]));
  }
  for (int e = 0; e < kEnvelopes; ++e) {
    ShowNumber(form.Label7[e], saa.SAA_Noise[e]);
    ShowText(form.Label10[e], FlagsText(saa.SAA_Env[e]));
  }
  ShowText(form.Label12, saa.soundEnable != 0 ? "on" : "off");
}

constexpr std::string_view kChannels = "Channel 0|Channel 1|Channel 2|Channel 3|Channel 4|Channel 5";

constexpr On<&Machine::fsaa> f;

constexpr std::array kControls{
    f.Check<&Fsaa::Check2>("Check2", "Manual"),
    f.Check<&Fsaa::Check10>("Check10", "Circuit"),
    f.Check<&Fsaa::Check11>("Check11", "patch"),
    f.Check<&Fsaa::Check12>("Check12", "patch"),
    f.Check<&Fsaa::Check1>("Check1",
                           "Enable Freq|Enable Freq|Enable Freq|Enable Freq|Enable Freq|Enable Freq"),
    f.Check<&Fsaa::Check3>("Check3",
                           "Enable Noise|Enable Noise|Enable Noise|Enable Noise|Enable Noise|Enable Noise"),
    f.Scroll<&Fsaa::HScroll1>("HScroll1", "Left 0|Left 1|Left 2|Left 3|Left 4|Left 5"),
    f.Scroll<&Fsaa::HScroll2>("HScroll2", "Right 0|Right 1|Right 2|Right 3|Right 4|Right 5"),
    f.Scroll<&Fsaa::HScroll3>("HScroll3",
                              "Frequency 0|Frequency 1|Frequency 2|Frequency 3|Frequency 4|Frequency 5"),
    f.Scroll<&Fsaa::HScroll4>("HScroll4", "Octave 0|Octave 1|Octave 2|Octave 3|Octave 4|Octave 5"),
    f.Check<&Fsaa::Check4>("Check4", "Inverse R|Inverse R"),
    f.Check<&Fsaa::Check5>("Check5", "3 Bit|3 Bit"),
    f.Check<&Fsaa::Check6>("Check6", "External clock|External clock"),
    f.Check<&Fsaa::Check7>("Check7", "Enable envelope|Enable envelope"),
    f.Scroll<&Fsaa::HScroll6>("HScroll6", "Mode of envelope 0|Mode of envelope 1"),
    f.Check<&Fsaa::Check8>("Check8", "All out enable"),
    f.Check<&Fsaa::Check9>("Check9", "Reset"),
    Button("Command1", "Record", Command1_Click).Looks(f.Look<&Fsaa::Command1Look>),
    f.Label<&Fsaa::Label1>("Label1", "Left 0|Left 1|Left 2|Left 3|Left 4|Left 5"),
    f.Label<&Fsaa::Label2>("Label2", "Right 0|Right 1|Right 2|Right 3|Right 4|Right 5"),
    f.Label<&Fsaa::Label3>("Label3",
                           "Frequency 0|Frequency 1|Frequency 2|Frequency 3|Frequency 4|Frequency 5"),
    f.Label<&Fsaa::Label4>("Label4", "Octave 0|Octave 1|Octave 2|Octave 3|Octave 4|Octave 5"),
    f.Label<&Fsaa::Label5>("Label5", "Hertz 0|Hertz 1|Hertz 2|Hertz 3|Hertz 4|Hertz 5"),
    f.Label<&Fsaa::Label6>("Label6", kChannels),
    f.Label<&Fsaa::Label7>("Label7", "Clock of noise 0|Clock of noise 1"),
    f.Label<&Fsaa::Label8>("Label8", "Envelope 0"),
    f.Label<&Fsaa::Label9>("Label9", "Envelope 1"),
    f.Label<&Fsaa::Label10>("Label10", "Flags of envelope 0|Flags of envelope 1"),
    f.Label<&Fsaa::Label11>("Label11", "Frames in the block"),
    f.Label<&Fsaa::Label12>("Label12", "Sound"),
    f.Scope<&Fsaa::Pic1>("Pic1", kChannels),
    Timer("Timer1", 100ms, Timer1_Timer),
};

}  // namespace

SaaControls ChipControls(const Fsaa& form) {
  return {.manual = form.Check2, .patch2 = form.Check11, .patch5 = form.Check12};
}

void DrawChip(Fsaa& form, const Saa1099& saa, bool scopes) {
  ShowText(form.Label8, SaaEnvelopePicture(saa.SAA_Env[0].mode));
  ShowText(form.Label9, SaaEnvelopePicture(saa.SAA_Env[1].mode));
  if (!scopes) return;
  for (int c = 0; c < kSaaChannels; ++c)
    DrawScope(form.Pic1[c], [&](int i) { return SaaScopeY(saa.SaaRight[c][i]); });
}

constexpr Form kFsaa{"Fsaa", "SAA1099P", f.State, kControls};

}  // namespace quoll
