#include "forms/T8910.h"

#include "core/FormTable.h"
#include "machine/Machine.h"

namespace quoll {

namespace {

using namespace std::chrono_literals;

constexpr int kTones = 3;

// Two turns of each envelope, as players draw them.
constexpr std::array<std::string_view, 16> kShapes{
    "\\_______", "\\_______", "\\_______",        "\\_______", "/_______",     "/_______",
    "/_______",  "/_______",  "\\\\\\\\\\\\\\\\", "\\_______", "\\/\\/\\/\\/", "\\-------",
    "////////",  "/-------",  "/\\/\\/\\/\\",     "/_______"};

// What register 7 lets through of a channel: its bits are low active.
std::string_view MixerText(int32_t mixer, int tone) {
  const bool toneOn = ((mixer >> tone) & 1) == 0, noiseOn = ((mixer >> (tone + 3)) & 1) == 0;
  if (toneOn) return noiseOn ? "tone+noise" : "tone";
  return noiseOn ? "noise" : "off";
}

void Timer1_Timer(Machine& m) {
  T8910& form = m.t8910;
  const Ay38910& ay = m.card.ay;
  for (size_t i = 0; i < form.Label1.size(); ++i) ShowNumber(form.Label1[i], ay.AY_Reg[i]);
  for (int tone = 0; tone < kTones; ++tone) {
    const int32_t level = ay.AY_Reg[8 + tone];
    ShowHertz(form.Label2[tone], AyToneHertz(ay, tone));
    if ((level & 16) != 0)
      ShowText(form.Label3[tone], "env");
    else
      ShowNumber(form.Label3[tone], level & 15);
    ShowText(form.Label4[tone], MixerText(ay.AY_Reg[7], tone));
  }
  ShowHertz(form.Label5, AyNoiseHertz(ay));
  ShowHertz(form.Label6, AyEnvelopeHertz(ay));
  ShowNumber(form.Label7, ay.AY_Reg[13] & 15);
  ShowText(form.Label8, kShapes[ay.AY_Reg[13] & 15]);
}

constexpr On<&Machine::t8910> f;

constexpr std::array kControls{
    f.Label<&T8910::Label1>(
        "Label1",
        "Tone A, fine|Tone A, coarse|Tone B, fine|Tone B, coarse|Tone C, fine|Tone C, coarse|"
        "Noise period|Mixer|Level A|Level B|Level C|Envelope, fine|Envelope, coarse|"
        "Envelope shape|Port A|Port B"),
    f.Label<&T8910::Label2>("Label2", "Tone A, hertz|Tone B, hertz|Tone C, hertz"),
    f.Label<&T8910::Label3>("Label3", "Level A|Level B|Level C"),
    f.Label<&T8910::Label4>("Label4", "Channel A|Channel B|Channel C"),
    f.Label<&T8910::Label5>("Label5", "Noise, hertz"),
    f.Label<&T8910::Label6>("Label6", "Envelope, hertz"),
    f.Label<&T8910::Label7>("Label7", "Envelope shape"),
    f.Label<&T8910::Label8>("Label8", "Envelope"),
    f.Scope<&T8910::Pic1>("Pic1", "Channel A|Channel B|Channel C|Noise|Envelope"),
    Timer("Timer1", 100ms, Timer1_Timer),
};

}  // namespace

void DrawChip(T8910& form, const Ay38910& ay, bool scopes) {
  if (!scopes) return;
  for (size_t column = 0; column < form.Pic1.size(); ++column) {
    DrawScope(form.Pic1[column],
              [&](int i) { return AyScopeY(static_cast<int>(column), ay.AY_Rows[i][column]); });
  }
}

constexpr Form kT8910{"T8910", "AY-3-8910", f.State, kControls};

}  // namespace quoll
