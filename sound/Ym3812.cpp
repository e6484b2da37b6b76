#include "sound/Ym3812.h"

#include "sound/Ym3812Sound.h"

namespace quoll {
namespace {

constexpr int kKeyOn = 0x20;
constexpr int kWaveSelectEnable = 0x20;  // in register 1
constexpr int kAddModulators = 0xC9;     // register whose bit 0 lets the modulators of all channels be heard
constexpr double kFrequencyScale = 21.23;

OplOperator DecodeOperator(const std::array<uint8_t, 256>& reg, int offset) {
  const auto part = [&](int base, int shift, int mask) {
    return static_cast<uint8_t>((reg[base + offset] >> shift) & mask);
  };
  const bool waveSelect = (reg[1] & kWaveSelectEnable) != 0;
  return {.multiplier = part(0x20, 0, 15),
          .level = part(0x40, 0, 63),
          .attack = part(0x60, 4, 15),
          .decay = part(0x60, 0, 15),
          .sustain = part(0x80, 4, 15),
          .release = part(0x80, 0, 15),
          .wave = part(0xE0, 0, waveSelect ? 3 : 0)};
}

// Eight keys add up to 256, which is 0 in the sum's 8 bits: exactly eight channels are as silent as none.
bool KeysAddUpToNone(const Ym3812& chip) {
  int sum = 0;
  for (const OplChannel& channel : chip.OPL_Chan) sum += channel.keyOn;
  return (sum & 0xFF) == 0;
}

}  // namespace

void OplWrite(Ym3812& chip, uint8_t port, uint8_t value) {
  if ((port & 1) == 0) {
    chip.latch = value;
  } else {
    chip.OPL_Reg[chip.latch] = value;
  }
}

void OplReset(Ym3812& chip) {
  chip.OPL_Reg.fill(0);
  chip.silent = 1;
}

std::array<OplChannel, kOplChannels> OplDecode(const Ym3812& chip) {
  std::array<OplChannel, kOplChannels> channels;
  for (int c = 0; c < kOplChannels; ++c) {
    const int high = chip.OPL_Reg[0xB0 + c];
    const int number = chip.OPL_Reg[0xA0 + c] + (high & 3) * 256;
    const int block = (high >> 2) & 7;
    channels[c] = {.keyOn = static_cast<uint8_t>(high & kKeyOn),
                   .feedback = static_cast<uint8_t>((chip.OPL_Reg[0xC0 + c] >> 1) & 7),
                   .frequency = static_cast<float>((number << block) / kFrequencyScale),
                   .modulator = DecodeOperator(chip.OPL_Reg, kOplModulatorOffset[c]),
                   .carrier = DecodeOperator(chip.OPL_Reg, kOplCarrierOffset[c])};
  }
  return channels;
}

void OplRender(Ym3812& chip, const OplControls& controls) {
  chip.OPL_Chan = OplDecode(chip);
  chip.silent = KeysAddUpToNone(chip) ? 1 : 0;
  if (chip.silent != 0) {
    chip.Ym3812Out.fill(0);
    return;
  }
  chip.sounding.phases = chip.phases;
  chip.sounding.channels = chip.OPL_Chan;
  std::array<bool, kOplChannels>& heard = chip.sounding.heard;
  for (int c = 0; c < kOplChannels; ++c) heard[c] = chip.OPL_Chan[c].keyOn != 0 && controls.Check1[c];
  const bool addModulators = (chip.OPL_Reg[kAddModulators] & 1) != 0;
  OplFrame(chip.OPL_Chan, heard, addModulators, chip.phases, chip.Ym3812Out);
}

std::string OplRegisterName(int index) {
  struct Group {
    int base;
    const char* name;
  };
  for (const Group& group :
       {Group{0x20, "flags and multiplier"}, Group{0x40, "scaling and level"},
        Group{0x60, "attack and decay"}, Group{0x80, "sustain and release"}, Group{0xE0, "wave"}}) {
    for (int c = 0; c < kOplChannels; ++c) {
      const std::string channel = std::string(group.name) + ", channel " + std::to_string(c + 1);
      if (index == group.base + kOplModulatorOffset[c]) return channel + " modulator";
      if (index == group.base + kOplCarrierOffset[c]) return channel + " carrier";
    }
  }
  for (const Group& group :
       {Group{0xA0, "frequency low"}, Group{0xB0, "key, octave, frequency high"}, Group{0xC0, "feedback"}}) {
    if (index >= group.base && index < group.base + kOplChannels) {
      return std::string(group.name) + ", channel " + std::to_string(index - group.base + 1);
    }
  }
  if (index == 1) return "wave select enable";
  if (index == 0xBD) return "tremolo, vibrato, drums";
  if (index == kAddModulators) return "modulators heard";
  return {};
}

}  // namespace quoll
