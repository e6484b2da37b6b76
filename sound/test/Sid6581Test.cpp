#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include "sound/Sid6581.h"

namespace quoll {
namespace {

using VoiceFrame = std::array<float, kFrameSamples>;

struct Bench {
  Sid6581 chip;
  SidControls controls;
  Random random;

  Bench() { Set(24, 0x0F); }
  void Set(int reg, int value) {
    SidWrite(chip, 0x38, static_cast<uint8_t>(reg));
    SidWrite(chip, 0x39, static_cast<uint8_t>(value));
  }
  // A voice at full, constant level: no attack worth the name, full sustain.
  void Play(int voice, int frequency, int control, int width = 0x800) {
    const int base = 7 * voice;
    Set(base, frequency & 0xFF);
    Set(base + 1, frequency >> 8);
    Set(base + 2, width & 0xFF);
    Set(base + 3, width >> 8);
    Set(base + 4, control);
    Set(base + 6, 0xF0);
  }
  void Render() { SidRender(chip, controls, random); }
  VoiceFrame& Out(int voice) { return chip.SidVoiceOut[voice]; }
};

// Envelopes off, for tests of the waves alone.
struct WaveBench : Bench {
  WaveBench() { controls.Check6 = false; }
};

TEST(Sid6581, EvenPortsLatchOddPortsWriteUpTo28) {
  Bench b;
  for (int reg = 0; reg < 256; ++reg) b.Set(reg, 255 - reg);
  for (int reg = 0; reg < 29; ++reg) EXPECT_EQ(b.chip.SID_Reg[reg], 255 - reg);
  EXPECT_EQ(b.chip.latch, 255);
}

TEST(Sid6581, OlderCardWritesDirectly) {
  Sid6581 chip;
  for (int port = 0; port < 256; ++port) {
    SidWriteDirect(chip, static_cast<uint8_t>(port), static_cast<uint8_t>(port));
  }
  for (int reg = 0; reg < 29; ++reg) EXPECT_EQ(chip.SID_Reg[reg], reg < 25 ? 0xE0 + reg : 0);
}

TEST(Sid6581, ResetKeepsTheRest) {
  Bench b;
  b.Play(0, 0x4000, 0x81);
  b.Render();
  EXPECT_NE(b.chip.SidNoise[0], 0.0F);
  const Sid6581 before = b.chip;
  SidReset(b.chip);
  EXPECT_EQ(b.chip.SID_Reg, (std::array<int32_t, 29>{}));
  EXPECT_EQ(b.chip.SidEnvState, (std::array<int32_t, 3>{}));
  EXPECT_EQ(b.chip.SidGate, (std::array<int32_t, 3>{}));
  EXPECT_EQ(b.chip.SidGateOld, (std::array<int32_t, 3>{}));
  EXPECT_EQ(b.chip.SidPhase, (std::array<float, 3>{}));
  EXPECT_EQ(b.chip.silent, 1);
  EXPECT_EQ(b.chip.SidNoise, before.SidNoise);
  EXPECT_EQ(b.chip.SID_Voice, before.SID_Voice);
}

TEST(SidDecode, VoiceRegisters) {
  for (int v = 0; v < 3; ++v) {
    Bench b;
    const int values[] = {0x34, 0x12, 0x56, 0xF7, 0x40, 0x9A, 0xBC};
    for (int r = 0; r < 7; ++r) b.Set(7 * v + r, values[r]);
    SidDecode(b.chip, b.controls);
    const SidVoice& voice = b.chip.SID_Voice[v];
    EXPECT_EQ(voice.frequency, 538);  // 4660 / 8.66 = 538.1
    EXPECT_EQ(voice.pulseWidth, 0x756);
    EXPECT_EQ(voice.control, 0x40);
    const std::array envelope{voice.attack, voice.decay, voice.sustain, voice.release};
    EXPECT_EQ(std::vector<int>(envelope.begin(), envelope.end()), (std::vector{9, 10, 11, 12}));
  }
}

TEST(SidDecode, FrequencyIsTheNearestWholeHertz) {
  // In hundredths: 100 r / 866 has no half for any r up to 65535 but at odd multiples of 433 / 100, which is
  // no whole number.
  for (int reg = 0; reg < 65536; ++reg) {
    Bench b;
    b.chip.SID_Reg[7] = reg & 0xFF;
    b.chip.SID_Reg[8] = reg >> 8;
    SidDecode(b.chip, b.controls);
    ASSERT_EQ(b.chip.SID_Voice[1].frequency, (100 * reg + 433) / 866) << reg;
  }
}

TEST(SidDecode, FilterRegisters) {
  Bench b;
  b.Set(21, 0xFD);
  b.Set(22, 0x81);
  b.Set(23, 0xA6);
  b.Set(24, 0x5C);
  SidDecode(b.chip, b.controls);
  EXPECT_EQ(b.chip.SidCutoff, 5 + 0x81 * 8);
  EXPECT_EQ(b.chip.SidRoute, 6);
  EXPECT_EQ(b.chip.SidResonance, 10);
  EXPECT_EQ(b.chip.SidMode, 5);
  EXPECT_EQ(b.chip.SidVolume, 12.0F);
}

struct EnvelopeRow {
  int nibble, attackMs, decayMs;
};
const EnvelopeRow kEnvelopeRows[] = {
    {0, 2, 6},        {1, 8, 24},       {2, 16, 48},       {3, 24, 72},      {4, 38, 114},    {5, 56, 168},
    {6, 68, 204},     {7, 80, 240},     {8, 100, 300},     {9, 250, 750},    {10, 500, 1500}, {11, 800, 2400},
    {12, 1000, 3000}, {13, 3000, 9000}, {14, 5000, 15000}, {15, 8000, 24000}};

TEST(SidEnvelope, EveryRateAtItsSlider) {
  for (const auto& row : kEnvelopeRows) {
    Bench b;
    b.controls.HScroll4 = 440;
    b.controls.HScroll5 = 100;
    b.Set(5, row.nibble * 16 + row.nibble);
    b.Set(6, row.nibble * 16 + row.nibble);
    b.Set(4, 0x11);
    SidDecode(b.chip, b.controls);
    const SidVoice& voice = b.chip.SID_Voice[0];
    // At a slider of S a millisecond is S / 20 samples.
    EXPECT_FLOAT_EQ(voice.attackStep, 1.0F / static_cast<float>(row.attackMs * 22)) << row.nibble;
    EXPECT_FLOAT_EQ(voice.decayStep, 1.0F / static_cast<float>(row.decayMs * 5)) << row.nibble;
    EXPECT_FLOAT_EQ(voice.releaseStep, 1.0F / static_cast<float>(row.decayMs * 22)) << row.nibble;
    EXPECT_EQ(voice.sustainLevel, static_cast<float>(row.nibble / 15.0)) << row.nibble;
  }
}

TEST(SidEnvelope, RunsThroughAttackDecaySustainAndRelease) {
  Bench b;
  b.controls.HScroll4 = b.controls.HScroll5 = 320;  // 16 samples a millisecond
  b.Set(5, 0x00);                                   // 32 samples up, 96 down
  b.Set(6, 0x80);                                   // sustain 8 / 15, release 96 samples from the top
  b.Set(3, 0x08);
  b.Set(4, 0x41);  // a pulse without frequency stays at +1 from phase 0 on
  b.Render();
  const VoiceFrame& out = b.Out(0);
  for (int i = 0; i < 32; ++i) EXPECT_EQ(out[i], static_cast<float>(i + 1) / 32.0F) << i;
  const int steps = 45;  // 7 / 15 of 96 is 44.8
  for (int i = 0; i < steps; ++i) EXPECT_NEAR(out[32 + i], 1.0 - (i + 1) / 96.0, 1e-5) << i;
  for (int i = 32 + steps; i < kFrameSamples; ++i) EXPECT_EQ(out[i], static_cast<float>(8 / 15.0)) << i;
  EXPECT_EQ(b.chip.SidEnvState[0], SidSustain);
  b.Set(4, 0x40);
  b.Render();
  EXPECT_EQ(b.chip.SidEnvState[0], SidRelease);
  for (int i = 0; i < 51; ++i)
    EXPECT_NEAR(out[i], 8 / 15.0 - (i + 1) / 96.0, 1e-5) << i;  // 8 / 15 of 96 is 51.2
  for (int i = 51; i < kFrameSamples; ++i) EXPECT_EQ(out[i], 0.0F) << i;
}

TEST(SidEnvelope, AShortGateRunsToTheEnd) {
  Bench b;
  b.Set(5, 0x80);  // 2200 samples up
  b.Set(6, 0xF0);
  b.Set(4, 0x41);
  b.Render();
  b.Set(4, 0x40);
  for (int frame = 0; frame < 3; ++frame) b.Render();
  EXPECT_EQ(b.chip.SidEnvState[0], SidAttack);
  EXPECT_NEAR(b.chip.SID_Voice[0].envelope, 4 * 441 / 2200.0, 1e-3);
  b.Render();
  EXPECT_EQ(b.chip.SidEnvState[0], SidRelease);
}

TEST(SidEnvelope, StepsAreTakenAtTheRisingGateOnly) {
  Bench b;
  b.Set(5, 0x80);
  b.Set(4, 0x41);
  b.Render();
  const float step = b.chip.SID_Voice[0].attackStep;
  b.Set(5, 0x00);
  b.Render();
  EXPECT_EQ(b.chip.SID_Voice[0].attackStep, step);
  b.Set(4, 0x40);
  b.Render();
  b.Set(4, 0x41);
  b.Render();
  EXPECT_FLOAT_EQ(b.chip.SID_Voice[0].attackStep, 1.0F / 44.0F);
}

TEST(SidEnvelope, AGateWithinAFrameIsNotSeen) {
  Bench b;
  b.Set(4, 0x41);
  b.Set(4, 0x40);
  b.Render();
  EXPECT_EQ(b.chip.SidGateOld[0], 0);
  EXPECT_EQ(b.chip.SID_Voice[0].attackStep, 0.0F);
}

TEST(SidEnvelope, OffMeansFullLevel) {
  WaveBench b;
  b.Play(0, 0, 0x40);
  b.Render();
  EXPECT_EQ(b.chip.SID_Voice[0].envelope, 1.0F);
  for (const float sample : b.Out(0)) EXPECT_EQ(sample, 1.0F);
}

// Phases of a voice that wraps at the limit, worked out by their rule.
VoiceFrame Phases(double step, double limit, float phase = 0.0F) {
  VoiceFrame phases;
  for (float& out : phases) {
    phase = static_cast<float>(phase + step);
    if (phase >= limit) phase = static_cast<float>(phase - 2.0);
    out = phase;
  }
  return phases;
}

constexpr int kRegister1000Hz = 8660;
constexpr double kStep1000Hz = 1000 / 22050.0;

TEST(SidWave, SawIsThePhase) {
  WaveBench b;
  b.Play(0, kRegister1000Hz, 0x20);
  b.Render();
  EXPECT_EQ(b.Out(0), Phases(kStep1000Hz, 1.0));
}

TEST(SidWave, Triangle) {
  WaveBench b;
  b.Play(0, kRegister1000Hz, 0x10);
  b.Render();
  const VoiceFrame phases = Phases(kStep1000Hz, 1.0);
  for (int i = 0; i < kFrameSamples; ++i) {
    EXPECT_EQ(b.Out(0)[i], static_cast<float>(2.0 * (std::fabs(static_cast<double>(phases[i])) - 0.5))) << i;
  }
}

TEST(SidWave, PulseWidthIsTheHighShare) {
  for (const int width : {0, 1, 0x400, 0x800, 0xC00, 0xFFF}) {
    WaveBench b;
    b.Play(0, kRegister1000Hz, 0x40, width);
    b.Render();
    const VoiceFrame phases = Phases(kStep1000Hz, width / 2048.0);
    int high = 0;
    for (int i = 0; i < kFrameSamples; ++i) {
      EXPECT_EQ(b.Out(0)[i], phases[i] < 0.0F ? -1.0F : 1.0F) << width << " " << i;
      if (b.Out(0)[i] > 0) ++high;
    }
    EXPECT_NEAR(high, 441 * width / 4096.0, 22) << width;
  }
}

TEST(SidWave, NoiseTakesANumberAtEachWrap) {
  WaveBench b;
  b.Play(0, kRegister1000Hz, 0x80);
  b.Play(1, 4330, 0x80);
  Random random = b.random;
  b.Render();
  for (int v = 0; v < 2; ++v) {
    const double step = (v == 0 ? 1000 : 500) / 11000.0 * 8.0;
    float phase = 0.0F;
    double noise = 0.0;
    for (int i = 0; i < kFrameSamples; ++i) {
      phase = static_cast<float>(phase + step);
      if (phase >= 0.0F) {
        phase -= 2.0F;
        noise = (std::floor(RandomNext(random) * 8.0) - 4.0) * 0.25;
      }
      ASSERT_EQ(b.Out(v)[i], static_cast<float>(noise)) << v << " " << i;
    }
  }
  EXPECT_EQ(b.random, random);
}

TEST(SidWave, NoiseStepIsAtMostOne) {
  WaveBench b;
  b.Play(0, 0xFFFF, 0x80);
  Random random = b.random;
  b.Render();
  // From 0 to -1, then every second sample wraps: samples 0, 2, ... 440.
  for (int i = 0; i < 221; ++i) RandomNext(random);
  EXPECT_EQ(b.random, random);
}

TEST(SidWave, TheHighestBitAlone) {
  for (const auto& [all, one] : {std::pair{0x30, 0x20}, {0x50, 0x40}, {0x70, 0x40}, {0xF0, 0x80}}) {
    WaveBench a;
    WaveBench b;
    a.Play(0, kRegister1000Hz, all);
    b.Play(0, kRegister1000Hz, one);
    a.Render();
    b.Render();
    EXPECT_EQ(a.Out(0), b.Out(0)) << all;
  }
}

TEST(SidWave, WithoutABitThePhaseRunsAndTheEnvelopeWaits) {
  Bench b;
  b.Play(0, kRegister1000Hz, 0x03);
  b.Render();
  EXPECT_EQ(b.Out(0), VoiceFrame{});
  EXPECT_EQ(b.chip.SidPhase[0], Phases(kStep1000Hz, 1.0)[440]);
  EXPECT_EQ(b.chip.SID_Voice[0].envelope, 0.0F);
}

TEST(SidWave, NoFrequencyStandsStill) {
  WaveBench b;
  b.Play(0, 0, 0x20);
  b.chip.SidPhase[0] = 0.375F;
  b.Render();
  for (const float sample : b.Out(0)) EXPECT_EQ(sample, 0.375F);
}

TEST(SidWave, PulseOfNoWidthWrapsAtZero) {
  WaveBench b;
  b.Play(0, kRegister1000Hz, 0x40, 0);
  b.Render();
  for (const float sample : b.Out(0)) EXPECT_EQ(sample, -1.0F);
  EXPECT_LT(b.chip.SidPhase[0], 0.0F);
}

TEST(SidWave, AMutedVoiceMovesTwice) {
  WaveBench b;
  b.Play(1, kRegister1000Hz, 0x20);
  b.controls.Check9[1] = false;
  b.Render();
  EXPECT_EQ(b.Out(1), VoiceFrame{});
  EXPECT_EQ(b.chip.SidPhase[1], Phases(kStep1000Hz, 1.0, Phases(kStep1000Hz, 1.0)[440])[440]);
}

TEST(SidSync, TheVoiceBeforeRestartsThePhase) {
  for (const int control : {0x12, 0x22, 0x42, 0x82, 0x02}) {
    for (int v = 0; v < 3; ++v) {
      WaveBench b;
      b.Play((v + 2) % 3, 8660, 0x00);
      b.Play(v, 0x1000, control);
      b.Render();
      const double rate = 1000 / 22050.0 / 4.0;
      float phase = 0.0F;
      double turns = 0.0;
      const int frequency = 473;  // 4096 / 8.66
      const bool noise = control == 0x82;
      const double step = noise ? frequency / 11000.0 * 8.0 : frequency / 22050.0;
      for (int i = 0; i < kFrameSamples; ++i) {
        phase = static_cast<float>(phase + step);
        if (phase >= (noise ? 0.0F : 1.0F)) phase -= 2.0F;
        if (noise || control == 0x02) continue;
        turns += rate;
        if (turns >= 1.0) phase = 0.0F, turns = 0.0;
      }
      EXPECT_EQ(b.chip.SidPhase[v], phase) << control << " " << v;
    }
  }
}

TEST(SidSync, NotWithTheBoxClear) {
  WaveBench b;
  b.controls.Check10 = false;
  b.Play(2, 8660, 0x00);
  b.Play(0, kRegister1000Hz, 0x22);
  b.Render();
  EXPECT_EQ(b.Out(0), Phases(kStep1000Hz, 1.0));
}

TEST(SidRing, MultipliesAndSilencesTheVoiceBefore) {
  for (int v = 0; v < 3; ++v) {
    WaveBench b;
    const int before = (v + 2) % 3;
    b.Play(v, kRegister1000Hz, 0x14);
    b.Play(before, 4330, 0x20);
    b.Render();
    const VoiceFrame own = Phases(kStep1000Hz, 1.0);
    const VoiceFrame other = Phases(500 / 22050.0, 1.0);
    for (int i = 0; i < kFrameSamples; ++i) {
      const float triangle = 2.0F * (std::fabs(own[i]) - 0.5F);
      EXPECT_EQ(b.Out(v)[i], triangle * other[i]) << v << " " << i;
      EXPECT_EQ(b.Out(before)[i], 0.0F);
    }
  }
}

TEST(SidRing, NeedsBothBitsAndTheBox) {
  for (const int control : {0x04, 0x24, 0x10, 0x44}) {
    WaveBench b;
    b.Play(1, kRegister1000Hz, control);
    b.Play(0, 4330, 0x20);
    b.Render();
    EXPECT_EQ(b.Out(0), Phases(500 / 22050.0, 1.0)) << control;
  }
  WaveBench b;
  b.controls.Check10 = false;
  b.Play(1, kRegister1000Hz, 0x14);
  b.Play(0, 4330, 0x20);
  b.Render();
  EXPECT_EQ(b.Out(0), Phases(500 / 22050.0, 1.0));
}

TEST(SidSum, VolumeScalesTheVoices) {
  for (int volume = 1; volume < 16; ++volume) {
    WaveBench b;
    b.Set(24, volume);
    for (int v = 0; v < 3; ++v) b.Play(v, 0, 0x40);
    b.Render();
    EXPECT_EQ(b.chip.silent, 0);
    for (const int16_t sample : b.chip.SidOut) EXPECT_EQ(sample, 48 * volume);
    EXPECT_DOUBLE_EQ(SidMean(b.chip), 441 * 48 * volume / 440.0 * 2.0);
  }
}

TEST(SidSilent, VolumeNoneKeepsThePhases) {
  Bench b;
  b.Play(0, kRegister1000Hz, 0x21);
  b.Render();
  const auto phase = b.chip.SidPhase;
  b.Set(24, 0xF0);
  b.controls.Check1 = b.controls.Check4 = true;
  b.Render();
  EXPECT_EQ(b.chip.silent, 1);
  EXPECT_EQ(b.chip.SidOut, FrameSamples{});
  EXPECT_EQ(b.chip.SidPhase, phase);
  EXPECT_EQ(b.chip.SidTestFreq, 0.0F);
  EXPECT_EQ(b.chip.postHighPass, SidMemory{});
  b.Set(24, 1);
  b.controls = {};
  b.Render();
  EXPECT_EQ(b.chip.silent, 0);
}

TEST(SidSweep, RisesFrom50AndRestarts) {
  WaveBench b;
  b.controls.Check4 = true;
  b.Play(1, kRegister1000Hz, 0x20);
  float hertz = 50.0F;
  for (int frame = 0; frame < 120; ++frame) {
    b.Render();
    hertz = static_cast<float>(hertz * 1.05);
    const bool restarts = hertz > 11000.0F;
    if (restarts) hertz = 50.0F;
    EXPECT_EQ(b.chip.SidTestFreq, hertz);
    EXPECT_EQ(b.chip.sweepRestarted, restarts);
    EXPECT_EQ(b.chip.SID_Voice[0].frequency, static_cast<int>(hertz));
    EXPECT_EQ(b.chip.SID_Voice[0].control, 0x11);
    EXPECT_EQ(b.chip.SID_Voice[0].pulseWidth, 0x800);
    EXPECT_EQ(b.chip.SID_Voice[1].control, 0);
    EXPECT_EQ(b.Out(1), VoiceFrame{});
  }
  b.controls.Check5 = true;
  b.Render();
  EXPECT_EQ(b.chip.SidTestFreq, 440.0F);
  b.controls.Check4 = false;
  b.Render();
  EXPECT_EQ(b.chip.SID_Voice[0].control, 0);
  EXPECT_EQ(b.chip.SidTestFreq, 440.0F);
}

TEST(SidFilter, LowPassOnRoutedVoices) {
  for (const auto& [cutoff, a] : {std::pair{0, 0.2}, {2047, 0.2}}) {
    WaveBench b;
    b.Set(21, cutoff & 7);
    b.Set(22, cutoff >> 3);
    b.Set(23, 0x05);
    b.Set(24, 0x1F);
    for (int v = 0; v < 3; ++v) b.Play(v, kRegister1000Hz, 0x20);
    b.Render();
    const VoiceFrame in = Phases(kStep1000Hz, 1.0);
    float y = 0.0F;
    for (int i = 0; i < kFrameSamples; ++i) {
      y = static_cast<float>((1.0 - a) * y + a * in[i]);
      EXPECT_EQ(b.Out(0)[i], y) << i;
      EXPECT_EQ(b.Out(2)[i], y) << i;
    }
    EXPECT_EQ(b.Out(1), in);
    EXPECT_EQ(b.chip.cutoffPercent, 20);
    EXPECT_EQ(b.chip.lowPass[2], (SidMemory{y, in[440]}));
    EXPECT_EQ(b.chip.lowPass[1], SidMemory{});
  }
}

TEST(SidFilter, HighPassGoesToVoice1) {
  for (int v = 0; v < 3; ++v) {
    WaveBench b;
    b.Set(23, 1 << v);
    b.Set(24, 0x4F);
    b.Play(v, kRegister1000Hz, 0x20);
    b.Render();
    const VoiceFrame in = Phases(kStep1000Hz, 1.0);
    SidMemory m;
    for (int i = 0; i < kFrameSamples; ++i) {
      const auto y = static_cast<float>((in[i] - static_cast<double>(m.input)) * 0.8 + 0.8 * m.output);
      m = {y, in[i]};
      EXPECT_EQ(b.Out(0)[i], y) << v << " " << i;
    }
    if (v > 0) {
      EXPECT_EQ(b.Out(v), in);
    }
    EXPECT_EQ(b.chip.highPass[v], m);
  }
}

TEST(SidFilter, BoxBitsAndRoutesDecide) {
  for (const int mode : {0x2F, 0x8F, 0x0F}) {
    WaveBench b;
    b.Set(23, 0x07);
    b.Set(24, mode);
    b.Play(0, kRegister1000Hz, 0x20);
    b.Render();
    EXPECT_EQ(b.Out(0), Phases(kStep1000Hz, 1.0)) << mode;
  }
  WaveBench b;
  b.controls.Check7 = false;
  b.Set(23, 0x07);
  b.Set(24, 0x5F);
  b.Play(0, kRegister1000Hz, 0x20);
  b.Render();
  EXPECT_EQ(b.Out(0), Phases(kStep1000Hz, 1.0));
}

enum Post { HighPass, LowPass, Butterfly };

// One run of a post filter over samples in whole numbers.
FrameSamples Filtered(const FrameSamples& in, Post which, double a, SidMemory& m) {
  FrameSamples out;
  for (int i = 0; i < kFrameSamples; ++i) {
    const double scale = which == LowPass ? 100.0 : which == Butterfly ? 2.0 : 1.0;
    const double x = in[i] * scale;
    const double low = (1.0 - a) * m.output + a * x;
    const double high = (x - m.input) * a + a * m.output;
    double y = which == LowPass ? low : high;
    if (which == Butterfly) y = std::min(std::max(low - high, -65000.0), 65000.0);
    m = {static_cast<float>(y), static_cast<float>(x)};
    const double value = which == LowPass ? m.output / 100.0 : m.output;
    out[i] = static_cast<int16_t>(std::nearbyint(std::min(std::max(value, -32768.0), 32767.0)));
  }
  return out;
}

TEST(SidPost, FiltersInOrderOnceMoreThanTheBox) {
  for (int boxes = 0; boxes < 8; ++boxes) {
    for (const int repeats : {-5, -1, 0, 1, 3}) {
      WaveBench plain;
      WaveBench b;
      plain.Play(0, kRegister1000Hz, 0x20);
      b.Play(0, kRegister1000Hz, 0x20);
      b.controls.Check1 = (boxes & 1) != 0;
      b.controls.Check2 = (boxes & 2) != 0;
      b.controls.Check3 = (boxes & 4) != 0;
      b.controls.HScroll1 = 30;
      b.controls.HScroll2 = 25;
      b.controls.HScroll3 = 40;
      b.controls.Text1 = repeats;
      std::array<SidMemory, 3> memory{};
      for (int frame = 0; frame < 2; ++frame) {
        plain.Render();
        b.Render();
        FrameSamples expected = plain.chip.SidOut;
        for (int round = 0; round <= repeats; ++round) {
          if ((boxes & 1) != 0) expected = Filtered(expected, HighPass, 1.0 - 30 / 100.0, memory[0]);
          if ((boxes & 2) != 0) expected = Filtered(expected, LowPass, 25 / 100.0, memory[1]);
          if ((boxes & 4) != 0) expected = Filtered(expected, Butterfly, 40 / 100.0, memory[2]);
        }
        EXPECT_EQ(b.chip.SidOut, expected) << boxes << " " << repeats;
      }
    }
  }
}

TEST(SidPost, AResonatingButterflyStaysInRange) {
  WaveBench b;
  b.controls.Check3 = true;
  b.controls.HScroll3 = 100;
  b.controls.Text1 = 1 << 30;
  for (int v = 0; v < 3; ++v) b.Play(v, 0xFFFF, 0x40);
  for (int frame = 0; frame < 3; ++frame) b.Render();
  EXPECT_LE(std::fabs(b.chip.postButterfly.output), 65000.0F);
}

TEST(Sid6581, ControlsAtTheStart) {
  const SidControls controls;
  EXPECT_TRUE(controls.Check6 && controls.Check7 && controls.Check10);
  EXPECT_EQ(controls.Check9, (std::array<bool, 3>{true, true, true}));
  EXPECT_FALSE(controls.Check1 || controls.Check2 || controls.Check3 || controls.Check4 || controls.Check5);
  EXPECT_EQ(controls.Text1, 1);
  EXPECT_EQ(controls.HScroll4, 440);
  EXPECT_EQ(controls.HScroll5, 440);
}

}  // namespace
}  // namespace quoll
