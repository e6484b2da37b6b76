#include "sound/Saa1099.h"

#include "sound/Round.h"
#include "sound/Saat.h"

namespace quoll {
namespace {

uint8_t Bit(uint8_t value, int bit) { return static_cast<uint8_t>((value >> bit) & 1); }

void WriteEnvelope(Saa1099::Envelope& envelope, uint8_t value) {
  envelope = {.enable = Bit(value, 7),
              .invertRight = Bit(value, 0),
              .externalClock = Bit(value, 5),
              .mode = static_cast<uint8_t>((value >> 1) & 7),
              .threeBit = Bit(value, 4)};
}

void WriteData(Saa1099& saa, uint8_t value) {
  const int reg = saa.latch;
  const auto low = static_cast<uint8_t>(value & 15);
  const auto high = static_cast<uint8_t>(value >> 4);
  switch (reg) {
    case 0:
    case 1:
    case 2:
    case 3:
    case 4:
    case 5:
      saa.SAA_Amp[reg] = low;
      saa.SAA_Amp[reg + kSaaChannels] = high;
      break;
    case 8:
    case 9:
    case 10:
    case 11:
    case 12:
    case 13: saa.SAA_Freq[reg - 8].frequency = value; break;
    case 16:
    case 17:
    case 18:
      saa.SAA_Freq[2 * (reg - 16)].octave = low & 7;
      saa.SAA_Freq[2 * (reg - 16) + 1].octave = high & 7;
      break;
    case 20:
      for (int c = 0; c < kSaaChannels; ++c) saa.SAA_Enable[c].tone = Bit(value, c);
      break;
    case 21:
      for (int c = 0; c < kSaaChannels; ++c) saa.SAA_Enable[c].noise = Bit(value, c);
      break;
    case 22: saa.SAA_Noise = {static_cast<uint8_t>(low & 3), static_cast<uint8_t>(high & 3)}; break;
    case 24:
    case 25: WriteEnvelope(saa.SAA_Env[reg - 24], value); break;
    case 28:
      saa.soundEnable = Bit(value, 0);
      saa.resetRequest = Bit(value, 1);
      break;
    default: break;
  }
}

}  // namespace

void SaaReset(Saa1099& saa) {
  saa.SAA_Env = {};
  saa.SAA_Enable = {};
  saa.SAA_Freq = {};
  saa.SAA_Amp = {};
  saa.latch = 0;
  saa.silent = 1;
}

void SaaWrite(Saa1099& saa, const SaaControls& controls, uint8_t port, uint8_t value) {
  if (!controls.manual) SaaRegisterWrite(saa, port, value);
}

void SaaRegisterWrite(Saa1099& saa, uint8_t port, uint8_t value) {
  if ((port & 1) != 0) {
    saa.latch = value & 31;
  } else {
    WriteData(saa, value);
  }
}

void SaaManualWrite(Saa1099& saa, const SaaManual& manual) {
  const auto write = [&saa](int reg, int value) {
    SaaRegisterWrite(saa, 0x33, static_cast<uint8_t>(reg));
    SaaRegisterWrite(saa, 0x32, static_cast<uint8_t>(value));
  };
  int tones = 0, noises = 0;
  for (int c = 0; c < kSaaChannels; ++c) {
    const SaaManual::Channel& channel = manual.channel[c];
    write(c, (channel.left & 15) | (channel.right & 15) << 4);
    write(8 + c, channel.frequency);
    tones |= channel.tone ? 1 << c : 0;
    noises |= channel.noise ? 1 << c : 0;
  }
  for (int pair = 0; pair < 3; ++pair)
    write(16 + pair, (manual.channel[2 * pair].octave & 7) | (manual.channel[2 * pair + 1].octave & 7) << 4);
  write(20, tones);
  write(21, noises);
  for (int e = 0; e < 2; ++e) {
    const SaaManual::Envelope& envelope = manual.envelope[e];
    write(24 + e, (envelope.enable ? 0x80 : 0) | (envelope.externalClock ? 0x20 : 0) |
                      (envelope.threeBit ? 0x10 : 0) | (envelope.mode & 7) << 1 |
                      (envelope.invertRight ? 1 : 0));
  }
  write(28, (manual.soundEnable ? 1 : 0) | (manual.reset ? 2 : 0));
}

int32_t SaaHertz(const Saa1099& saa, int channel) {
  const Saa1099::Pitch& pitch = saa.SAA_Freq[channel];
  return SAAT[(pitch.octave & 7) * 256 + pitch.frequency];
}

const char* SaaEnvelopePicture(int mode) {
  static constexpr std::array<const char*, 8> kPictures{"_________",      "---------",  "\\________",
                                                        "\\|\\|\\|\\|\\", "/\\_______", "/\\/\\/\\/\\/",
                                                        "/|_______",      "/|/|/|/|/"};
  return kPictures[mode & 7];
}

int32_t SaaScopeY(uint8_t sample) { return RoundEven(sample / 10.0) + 32; }

}  // namespace quoll
