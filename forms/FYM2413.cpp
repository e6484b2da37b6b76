#include "forms/FYM2413.h"

#include "core/FormTable.h"
#include "machine/Machine.h"

namespace quoll {

namespace {

using namespace std::chrono_literals;

void ShowCell(Machine& m, int cell) {
  const uint8_t value = m.card.opll.OPLL_Reg[cell];
  if (m.fym2413.hexadecimal[cell])
    ShowHex(m.fym2413.Label1[cell], value);
  else
    ShowNumber(m.fym2413.Label1[cell], value);
}

void Label1_Click(Machine& m, int cell) {
  bool& hexadecimal = m.fym2413.hexadecimal[cell];
  hexadecimal = !hexadecimal;
  ShowCell(m, cell);
}

void Timer1_Timer(Machine& m) {
  FYM2413& form = m.fym2413;
  for (int cell = 0; cell < FYM2413::kCells; ++cell) ShowCell(m, cell);
  const auto channels = OpllDecode(m.card.opll);
  for (int c = 0; c < kOpllChannels; ++c) {
    ShowText(form.Label2[c], kOpllInstruments[m.card.opll.OPLL_Reg[0x30 + c] >> 4]);
    ShowHertz(form.Label3[c], 2.0 * channels[c].frequency);  // steps are for half the sample rate
    ShowHertz(form.Label4[c], static_cast<double>(channels[c].volume));
    ShowText(form.Label5[c], channels[c].key != 0 ? "on" : "off");
  }
}

constexpr std::string_view kChannelNames = "1|2|3|4|5|6|7|8|9";

constexpr On<&Machine::fym2413> f;

constexpr std::array kControls{
    f.Check<&FYM2413::Check7>("Check7", kChannelNames),
    f.Label<&FYM2413::Label1>("Label1", kHexNumbers<FYM2413::kCells>, Label1_Click),
    f.Label<&FYM2413::Label2>("Label2", kChannelNames),
    f.Label<&FYM2413::Label3>("Label3", kChannelNames),
    f.Label<&FYM2413::Label4>("Label4", kChannelNames),
    f.Label<&FYM2413::Label5>("Label5", kChannelNames),
    f.Scope<&FYM2413::Pic1>("Pic1", kChannelNames),
    Timer("Timer1", 100ms, Timer1_Timer),
};

}  // namespace

OpllControls ChipControls(const FYM2413& form) { return {.Check7 = form.Check7}; }

void DrawChip(FYM2413& form, const Ym2413& opll, bool scopes) {
  if (!scopes) return;
  constexpr float kLoudest = 15;
  for (int c = 0; c < kOpllChannels; ++c)
    DrawScope(form.Pic1[c], [&](int i) { return kScopeMiddle - opll.work[c][i] * (kScopeReach / kLoudest); });
}

constexpr Form kFYM2413{"FYM2413", "YM2413", f.State, kControls};

}  // namespace quoll
