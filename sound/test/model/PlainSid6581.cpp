#include "sound/test/model/PlainSid6581.h"

#include <cmath>

namespace quoll {
namespace {

constexpr double kAttackMs[16] = {2, 8, 16, 24, 38, 56, 68, 80, 100, 250, 500, 800, 1000, 3000, 5000, 8000};
constexpr double kDecayMs[16] = {6,   24,  48,   72,   114,  168,  204,   240,
                                 300, 750, 1500, 2400, 3000, 9000, 15000, 24000};

constexpr int kGateBit = 0x01, kSyncBit = 0x02, kRingBit = 0x04;
constexpr int kTriangle = 0x10, kSaw = 0x20, kPulse = 0x40, kNoise = 0x80;

enum { kAttack, kDecay, kSustain, kRelease };

using Samples = std::array<float, kFrameSamples>;

double Limit(double value, double low, double high) {
  if (value < low) return low;
  if (value > high) return high;
  return value;
}

// What 16 bits can't hold, which only the butterfly filter at its strongest makes, stays at their end.
int16_t Round16(double value) {
  return static_cast<int16_t>(Limit(std::nearbyint(value), -32768.0, 32767.0));
}

float EnvelopeStep(double milliseconds, int32_t slider) {
  return static_cast<float>(1.0 / (milliseconds / (20.0 / slider)));
}

void Decode(PlainSid6581& sid, const PlainSidControls& controls) {
  const auto reg = [&sid](int n) { return sid.SID_Reg[n]; };
  for (int v = 0; v < 3; ++v) {
    const int b = 7 * v;
    PlainSidVoice& voice = sid.SID_Voice[v];
    voice.frequency = static_cast<int32_t>(std::nearbyint((reg(b + 1) * 256 + reg(b)) / 8.66));
    voice.pulseWidth = (reg(b + 3) & 15) * 256 + reg(b + 2);
    voice.attack = (reg(b + 5) >> 4) & 15;
    voice.decay = reg(b + 5) & 15;
    voice.sustain = (reg(b + 6) >> 4) & 15;
    voice.release = reg(b + 6) & 15;
    voice.control = static_cast<uint8_t>(reg(b + 4));
    sid.SidGate[v] = voice.control & kGateBit;
    if (sid.SidGate[v] == 1 && sid.SidGateOld[v] == 0) {
      voice.attackStep = EnvelopeStep(kAttackMs[voice.attack], controls.attackSlider);
      voice.decayStep = EnvelopeStep(kDecayMs[voice.decay], controls.decaySlider);
      voice.sustainLevel = static_cast<float>(voice.sustain / 15.0);
      voice.releaseStep = EnvelopeStep(kDecayMs[voice.release], controls.attackSlider);
      voice.envelope = 0;
      sid.SidEnvState[v] = kAttack;
    }
    sid.SidGateOld[v] = sid.SidGate[v];
  }
  sid.SidCutoff = (reg(21) & 7) + reg(22) * 8;
  sid.SidRoute = static_cast<uint8_t>(reg(23) & 15);
  sid.SidResonance = static_cast<uint8_t>((reg(23) >> 4) & 15);
  sid.SidMode = static_cast<uint8_t>((reg(24) >> 4) & 15);
  sid.SidVolume = static_cast<float>(reg(24) & 15);
}

void Sweep(PlainSid6581& sid, const PlainSidControls& controls) {
  if (sid.SidTestFreq == 0) sid.SidTestFreq = 50;
  sid.SidTestFreq = static_cast<float>(sid.SidTestFreq * 1.05);
  if (controls.steady) sid.SidTestFreq = 440;
  if (sid.SidTestFreq > 11000) sid.SidTestFreq = 50;
  sid.SID_Voice[0].frequency = static_cast<int32_t>(sid.SidTestFreq);
  sid.SID_Voice[0].control = 0x11;
  sid.SID_Voice[0].pulseWidth = 0x800;
  sid.SID_Voice[1].control = 0;
  sid.SID_Voice[2].control = 0;
}

void StepEnvelope(PlainSid6581& sid, int v, bool adsr) {
  PlainSidVoice& voice = sid.SID_Voice[v];
  int32_t& state = sid.SidEnvState[v];
  if (!adsr) {
    voice.envelope = 1;
    return;
  }
  if (state == kAttack) {
    voice.envelope = voice.envelope + voice.attackStep;
    if (voice.envelope >= 1) {
      voice.envelope = 1;
      state = kDecay;
    }
    return;
  }
  if (state == kDecay) {
    if (voice.envelope > voice.sustainLevel) {
      voice.envelope = voice.envelope - voice.decayStep;
      if (voice.envelope < 0) voice.envelope = 0;
      return;
    }
    state = kSustain;
  }
  if (state == kSustain) {
    if ((voice.control & kGateBit) != 0) {
      voice.envelope = voice.sustainLevel;
      return;
    }
    state = kRelease;
  }
  voice.envelope = voice.envelope - voice.releaseStep;
  if (voice.envelope < 0) voice.envelope = 0;
}

// Oscillator sync of one voice during one frame.
struct Sync {
  bool on = false;
  double rate = 0;
  double sum = 0;

  void Apply(float& phase) {
    if (!on) return;
    sum = sum + rate;
    if (sum >= 1) {
      phase = 0;
      sum = 0;
    }
  }
};

void Advance(float& phase, double step, double wrapAt) {
  phase = static_cast<float>(phase + step);
  if (phase >= wrapAt) phase = phase - 2.0F;
}

void RenderVoice(PlainSid6581& sid, int v, const PlainSidControls& controls, Random& random) {
  const PlainSidVoice& voice = sid.SID_Voice[v];
  float& phase = sid.SidPhase[v];
  Sync sync;
  if (controls.ring) {
    sync.rate = sid.SID_Voice[(v + 2) % 3].frequency / 22050.0 / 4.0;
    sync.on = (voice.control & kSyncBit) != 0;
  }
  double step = voice.frequency / 22050.0;
  if ((voice.control & kNoise) != 0) step = Limit(voice.frequency / 11000.0 * 8, 0, 1);

  for (int i = 0; i < kFrameSamples; ++i) {
    float& out = sid.SidVoiceOut[i][v];
    if ((voice.control & kNoise) != 0) {
      phase = static_cast<float>(phase + step);
      if (phase >= 0) {
        phase = phase - 2.0F;
        sid.SidNoise[v] = static_cast<float>((std::floor(RandomNext(random) * 8) - 4) * 0.25);
      }
      out = sid.SidNoise[v];
    } else if ((voice.control & kPulse) != 0) {
      Advance(phase, step, voice.pulseWidth / 2048.0);
      sync.Apply(phase);
      out = phase < 0 ? -1.0F : 1.0F;
    } else if ((voice.control & kSaw) != 0) {
      Advance(phase, step, 1);
      sync.Apply(phase);
      out = phase;
    } else if ((voice.control & kTriangle) != 0) {
      Advance(phase, step, 1);
      sync.Apply(phase);
      out = static_cast<float>(2.0 * (std::fabs(phase) - 0.5));
    } else {
      Advance(phase, step, 1);
      out = 0;
      continue;
    }
    StepEnvelope(sid, v, controls.adsr);
    out = out * voice.envelope;
  }

  if (controls.voice[v]) return;
  for (int i = 0; i < kFrameSamples; ++i) {
    Advance(phase, step, 1);
    sid.SidVoiceOut[i][v] = 0;
  }
}

void Ring(PlainSid6581& sid) {
  for (int v = 0; v < 3; ++v) {
    const int both = kRingBit | kTriangle;
    if ((sid.SID_Voice[v].control & both) != both) continue;
    const int other = (v + 2) % 3;
    for (int i = 0; i < kFrameSamples; ++i) {
      sid.SidVoiceOut[i][v] = sid.SidVoiceOut[i][v] * sid.SidVoiceOut[i][other];
      sid.SidVoiceOut[i][other] = 0;
    }
  }
}

Samples VoiceSamples(const PlainSid6581& sid, int v) {
  Samples samples{};
  for (int i = 0; i < kFrameSamples; ++i) samples[i] = sid.SidVoiceOut[i][v];
  return samples;
}

void SetVoiceSamples(PlainSid6581& sid, int v, const Samples& samples) {
  for (int i = 0; i < kFrameSamples; ++i) sid.SidVoiceOut[i][v] = samples[i];
}

// Output of a filter: next gives an output from the last output, the last input and the input.
template <class Next>
Samples Filter(const Samples& input, PlainSidMemory& memory, Next next) {
  Samples output{};
  for (int i = 0; i < kFrameSamples; ++i) {
    output[i] = static_cast<float>(next(memory.output, memory.input, input[i]));
    memory.output = output[i];
    memory.input = input[i];
  }
  return output;
}

void ChipFilter(PlainSid6581& sid) {
  for (int v = 0; v < 3; ++v) {
    if (((sid.SidRoute >> v) & 1) == 0) continue;
    if ((sid.SidMode & 1) != 0) {
      const double a = Limit(sid.SidCutoff / 22000.0, 0.2, 1);
      sid.lowPassShown = a * 100;
      SetVoiceSamples(sid, v,
                      Filter(VoiceSamples(sid, v), sid.chipLowPass[v],
                             [a](double lastY, double, double x) { return (1 - a) * lastY + a * x; }));
    }
    if ((sid.SidMode & 4) != 0) {
      const double a = Limit(1 - sid.SidCutoff / 22000.0, 0, 0.8);
      // Whichever voice it was made of, the outcome is voice 1's.
      SetVoiceSamples(
          sid, 0,
          Filter(VoiceSamples(sid, v), sid.chipHighPass[v],
                 [a](double lastY, double lastX, double x) { return (x - lastX) * a + a * lastY; }));
    }
  }
}

Samples OutTimes(const PlainSid6581& sid, double scale) {
  Samples samples{};
  for (int i = 0; i < kFrameSamples; ++i) samples[i] = static_cast<float>(sid.SidOut[i] * scale);
  return samples;
}

void SetOut(PlainSid6581& sid, const Samples& samples, double divisor) {
  for (int i = 0; i < kFrameSamples; ++i) sid.SidOut[i] = Round16(samples[i] / divisor);
}

void PostFilters(PlainSid6581& sid, const PlainSidControls& controls) {
  for (int pass = 0; pass < controls.repeats + 1; ++pass) {
    if (controls.highPass) {
      const double a = 1 - controls.highPassSlider / 100.0;
      SetOut(sid,
             Filter(OutTimes(sid, 1), sid.postHighPass,
                    [a](double lastY, double lastX, double x) { return (x - lastX) * a + a * lastY; }),
             1);
    }
    if (controls.lowPass) {
      const double a = controls.lowPassSlider / 100.0;
      SetOut(sid,
             Filter(OutTimes(sid, 100), sid.postLowPass,
                    [a](double lastY, double, double x) { return (1 - a) * lastY + a * x; }),
             100);
    }
    if (controls.butterfly) {
      const double a = controls.butterflySlider / 100.0;
      SetOut(sid,
             Filter(OutTimes(sid, 2), sid.postButterfly,
                    [a](double lastY, double lastX, double x) {
                      const double y = (1 - a) * lastY + a * x - ((x - lastX) * a + a * lastY);
                      return Limit(y, -65000, 65000);
                    }),
             1);
    }
  }
}

// Text of one-based columns; shorter where the line ends.
std::string Columns(const std::string& line, size_t first, size_t last) {
  return first > line.size() ? "" : line.substr(first - 1, last - first + 1);
}

// The hexadecimal number in these columns; false for dots alone or nothing.
bool Field(const std::string& line, size_t first, size_t last, int32_t& value) {
  const std::string text = Columns(line, first, last);
  if (text.find_first_not_of('.') == std::string::npos) return false;
  value = 0;
  for (const char c : text) {
    const size_t digit = std::string("0123456789ABCDEFabcdef").find(c);
    if (digit == std::string::npos) break;
    value = value * 16 + static_cast<int32_t>(digit < 16 ? digit : digit - 6);
  }
  return true;
}

int32_t FilterTypeValue(const std::string& word) {
  if (word == "Low") return 16;
  if (word == "Bnd") return 32;
  if (word == "L+B") return 48;
  if (word == "L+H") return 80;
  if (word == "B+H") return 96;
  if (word == "LBH") return 112;
  return 0;
}

}  // namespace

void PlainSid6581::Reset() {
  SID_Reg.fill(0);
  SidEnvState.fill(0);
  SidGate.fill(0);
  SidGateOld.fill(0);
  SidPhase.fill(0);
  silent = 1;
}

void PlainSid6581::Write(int port, int value) {
  if (port % 2 == 0) {
    latch = static_cast<uint8_t>(value);
  } else if (latch <= 28) {
    SID_Reg[latch] = value;
  }
}

void PlainSid6581::WriteDirect(int port, int value) { SID_Reg[port - 0xE0] = value; }

void PlainSid6581::TakeSidxLine(const std::string& line) {
  int32_t value = 0;
  const auto byteField = [&](size_t first, size_t last, int reg) {
    if (Field(line, first, last, value)) SID_Reg[reg] = value;
  };
  const auto nibbleFields = [&](size_t column, int reg) {
    if (Field(line, column, column, value)) SID_Reg[reg] = (SID_Reg[reg] & 15) | value << 4;
    if (Field(line, column + 1, column + 1, value)) SID_Reg[reg] = (SID_Reg[reg] & 0xF0) | value;
  };
  constexpr size_t kVoiceColumn[3] = {11, 39, 67};
  for (int v = 0; v < 3; ++v) {
    const size_t column = kVoiceColumn[v];
    const int b = 7 * v;
    if (Field(line, column, column + 3, value)) {
      SID_Reg[b + 1] = value / 256;
      SID_Reg[b] = value % 256;
    }
    byteField(column + 14, column + 15, b + 4);
    nibbleFields(column + 17, b + 5);
    nibbleFields(column + 19, b + 6);
    byteField(column + 22, column + 22, b + 3);
    byteField(column + 23, column + 24, b + 2);
  }
  byteField(95, 96, 22);
  byteField(97, 98, 21);
  nibbleFields(100, 23);
  if (Field(line, 107, 107, value)) SID_Reg[24] = FilterTypeValue(Columns(line, 103, 105)) + value;
}

void PlainSid6581::TakeDmpRecord(const std::array<uint8_t, 25>& record) {
  for (int reg = 0; reg < 25; ++reg) SID_Reg[reg] = record[reg];
}

const FrameSamples& PlainSid6581::Render(const PlainSidControls& controls, Random& random) {
  Decode(*this, controls);
  if (SidVolume == 0) {
    silent = 1;
    SidOut = FrameSamples{};
    return SidOut;
  }
  silent = 0;
  if (controls.wobbler) Sweep(*this, controls);
  for (int v = 0; v < 3; ++v) RenderVoice(*this, v, controls, random);
  if (controls.ring) Ring(*this);
  if (controls.filter) ChipFilter(*this);
  for (int i = 0; i < kFrameSamples; ++i) {
    const double sum = static_cast<double>(SidVoiceOut[i][0]) + SidVoiceOut[i][1] + SidVoiceOut[i][2];
    SidOut[i] = Round16(sum * SidVolume * 8 * 2);
  }
  PostFilters(*this, controls);
  double total = 0;
  for (int i = 0; i < kFrameSamples; ++i) total = total + std::abs(SidOut[i]);
  mean = total / 440 * 2;
  return SidOut;
}

}  // namespace quoll
