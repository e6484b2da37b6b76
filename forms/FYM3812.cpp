#include "forms/FYM3812.h"

#include "core/FormTable.h"
#include "core/NumberText.h"
#include "core/Wrap.h"
#include "machine/Machine.h"
#include "machine/Ports.h"

namespace quoll {

namespace {

using namespace std::chrono_literals;

constexpr int32_t kAddressPort = 0x34, kDataPort = 0x35;
constexpr int kWaveSelectRegister = 1, kWaveSelectBit = 0x20;
constexpr int kLastCleared = 254;

// Where a control's bits lie: a register, or the group of an operator's or a channel's registers.
struct Bits {
  enum Kind { Operator, Channel, Chip } kind;
  int base;
  int shift;
  int mask;
};

constexpr std::array<Bits, FYM3812::kSettings> kSettingBits{
    Bits{Bits::Operator, 0x20, 0, 15}, Bits{Bits::Operator, 0x40, 0, 63}, Bits{Bits::Operator, 0x60, 4, 15},
    Bits{Bits::Operator, 0x60, 0, 15}, Bits{Bits::Operator, 0x80, 4, 15}, Bits{Bits::Operator, 0x80, 0, 15},
    Bits{Bits::Operator, 0xE0, 0, 3},  Bits{Bits::Channel, 0xC0, 1, 7},
};
constexpr int kWaveSetting = 6;
constexpr std::array<Bits, FYM3812::kSwitches> kSwitchBits{
    Bits{Bits::Operator, 0x20, 4, 1},
    Bits{Bits::Operator, 0x20, 7, 1},
    Bits{Bits::Operator, 0x20, 6, 1},
    Bits{Bits::Chip, 0xBD, 5, 1},
};

int RegisterOf(const FYM3812& form, const Bits& bits) {
  const int channel = form.HScroll2.value - 1;
  if (bits.kind == Bits::Chip) return bits.base;
  if (bits.kind == Bits::Channel) return bits.base + channel;
  return bits.base + (form.Option1[0] ? kOplModulatorOffset[channel] : kOplCarrierOffset[channel]);
}

int Read(const Machine& m, const Bits& bits) {
  return (m.card.opl.OPL_Reg[RegisterOf(m.fym3812, bits)] >> bits.shift) & bits.mask;
}

// The way of the machine's own writes, out to the computer's ports included.
void Write(Machine& m, int reg, int value) {
  int32_t address = reg, data = value;
  PortOut(m, kAddressPort, address);
  PortOut(m, kDataPort, data);
}

void Write(Machine& m, const Bits& bits, int value) {
  const int reg = RegisterOf(m.fym3812, bits);
  const int others = m.card.opl.OPL_Reg[reg] & ~(bits.mask << bits.shift);
  Write(m, reg, others | (value & bits.mask) << bits.shift);
}

void ShowOperator(Machine& m) {
  FYM3812& form = m.fym3812;
  for (int i = 0; i < FYM3812::kSettings; ++i) {
    StoreScroll(form.HScroll1[i], Read(m, kSettingBits[i]));
    ShowNumber(form.Label3[i], form.HScroll1[i].value);
  }
  for (int i = 0; i < FYM3812::kSwitches; ++i) form.Check2[i] = Read(m, kSwitchBits[i]) != 0;
}

void ShowCell(Machine& m, int cell) {
  FYM3812& form = m.fym3812;
  const std::string before = form.Label1[cell];
  ShowNumber(form.Label1[cell], m.card.opl.OPL_Reg[cell]);
  // What is being typed stays until the register changes.
  if (cell == form.cell && before != form.Label1[cell]) form.Text1 = form.Label1[cell];
}

void Label1_Click(Machine& m, int cell) {
  FYM3812& form = m.fym3812;
  form.cell = cell;
  ShowCell(m, cell);
  form.Text1 = form.Label1[cell];
  const std::string use = OplRegisterName(cell);
  form.Label2 = "Register " + std::to_string(cell) + (use.empty() ? "" : ": " + use);
}

void Text1_Enter(Machine& m) {
  Write(m, m.fym3812.cell, NumberOfText(m.fym3812.Text1));
  ShowCell(m, m.fym3812.cell);
  ShowOperator(m);
}

// Waves other than the sine are heard only with their selection switched on.
void HScroll1_Change(Machine& m, int setting) {
  if (setting == kWaveSetting)
    Write(m, kWaveSelectRegister, m.card.opl.OPL_Reg[kWaveSelectRegister] | kWaveSelectBit);
  Write(m, kSettingBits[setting], m.fym3812.HScroll1[setting].value);
  ShowOperator(m);
}

void Check2_Click(Machine& m, int number) { Write(m, kSwitchBits[number], m.fym3812.Check2[number] ? 1 : 0); }

void Command1_Click(Machine& m) {
  for (int reg = 0; reg <= kLastCleared; ++reg) Write(m, reg, 0);
}

void Timer1_Timer(Machine& m) {
  FYM3812& form = m.fym3812;
  for (int cell = 0; cell < FYM3812::kCells; ++cell) ShowCell(m, cell);
  ShowOperator(m);
  const auto channels = OplDecode(m.card.opl);
  for (int c = 0; c < kOplChannels; ++c) {
    ShowHertz(form.Label4[c], static_cast<double>(channels[c].frequency));
    ShowText(form.Label5[c], channels[c].keyOn != 0 ? "on" : "off");
  }
}

// Draws the scopes unless they are drawn already.
ControlField Pic1(Machine& m) {
  FYM3812& form = m.fym3812;
  if (form.Pic1[0].drawings != form.frames) {
    const OplTables tables = OplTablesOf(form.frame, kScopePoints);
    for (int c = 0; c < kOplChannels; ++c) {
      DrawScope(form.Pic1[c], [&](int i) { return kScopeMiddle - tables.carrier[c][i] * kScopeReach; });
      form.Pic1[c].drawings = form.frames;
    }
  }
  return AsSpan(form.Pic1);
}

constexpr std::string_view kChannelNames = "1|2|3|4|5|6|7|8|9";
constexpr std::string_view kSettingNames =
    "Multiplier|Level|Attack|Decay|Sustain|Release|Wave|Feedback of the channel";

constexpr On<&Machine::fym3812> f;

constexpr std::array kControls{
    f.Check<&FYM3812::Check1>("Check1", kChannelNames),
    f.Check<&FYM3812::Check3>("Check3", "Direct I/O port:"),
    f.Text<&FYM3812::Text2>("Text2", "Port for addresses"),
    f.Label<&FYM3812::Label1>("Label1", kHexNumbers<FYM3812::kCells>, Label1_Click),
    f.Label<&FYM3812::Label2>("Label2", "Chosen register"),
    f.Text<&FYM3812::Text1>("Text1", "Value of the chosen register").Enter(Text1_Enter),
    f.Scroll<&FYM3812::HScroll2>("HScroll2", "Channel to edit", ShowOperator),
    f.Option<&FYM3812::Option1>("Option1", "Modulator|Carrier", ShowOperator),
    f.Check<&FYM3812::Check2>("Check2", "KSR|tremolo|vibrato|drums", Check2_Click),
    f.Scroll<&FYM3812::HScroll1>("HScroll1", kSettingNames, HScroll1_Change),
    f.Label<&FYM3812::Label3>("Label3", kSettingNames),
    f.Label<&FYM3812::Label4>("Label4", kChannelNames),
    f.Label<&FYM3812::Label5>("Label5", kChannelNames),
    Button("Command1", "Clear all registers", Command1_Click),
    f.Scope<&FYM3812::Pic1>("Pic1", kChannelNames).With(&Control::field, Pic1),
    Timer("Timer1", 100ms, Timer1_Timer),
};

}  // namespace

OplControls ChipControls(const FYM3812& form) { return {.Check1 = form.Check1}; }

void DrawChip(FYM3812& form, const Ym3812& opl, bool scopes) {
  if (!scopes) return;
  form.frame = opl.sounding;
  ++form.frames;
}

void FYM3812_DirectOut(Machine& m, int32_t port, int32_t value) {
  FYM3812& form = m.fym3812;
  if (!form.Check3) return;
  const int32_t target = WrappingAdd(NumberOfText(form.Text2), port & 1);
  if (m.host->DirectOut(static_cast<uint16_t>(target), static_cast<uint16_t>(value))) return;
  form.Check3 = false;
  m.host->MessageBox(
      "Port " + std::to_string(static_cast<uint16_t>(target)) +
          " of this computer can't be written. Direct output is off; the emulated chip plays on.",
      "YM3812", MessageIcon::Exclamation);
}

constexpr Form kFYM3812{"FYM3812", "YM3812", f.State, kControls};

}  // namespace quoll
