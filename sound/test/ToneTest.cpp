#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <cstdlib>

#include "core/Host.h"
#include "machine/Machine.h"
#include "sound/Tone.h"
#include "testkit/TestMachine.h"

namespace quoll {
namespace {

constexpr int kToneOn = 0x10;

void SetPorts(PortBytes& ports, int enable, int pitch, int amplitude) {
  ports[4] = static_cast<uint8_t>(pitch & 0xFF);
  ports[5] = static_cast<uint8_t>(enable | (pitch >> 8));
  ports[6] = static_cast<uint8_t>(amplitude << 2);
}

// Hertz of a divider: 390625 / (2 n) rounded in whole numbers, ties to the even one, at most 11000.
int ModelHertz(int n) {
  const int whole = 390625 / (2 * n);
  const int twiceRest = 2 * (390625 % (2 * n));
  int hertz = whole;
  if (twiceRest > 2 * n || (twiceRest == 2 * n && whole % 2 == 1)) ++hertz;
  return hertz > 11000 ? 11000 : hertz;
}

// The generator told plainly, with a state of its own.
struct ToneModel {
  float phase = 0;
  int toggle = 0;
  int last = 0;

  FrameSamples Frame(const std::array<uint8_t, 441>& slots, int port4, int port5, int port6) {
    FrameSamples out{};
    const int pitch = (port5 % 16) * 256 + port4;
    const int amplitude = (port6 / 4) % 16;
    const bool enabled = (port5 / 16) % 2 == 1 && pitch < 4081;
    for (int i = 0; i < 441; ++i) {
      int sample = 0;
      if (enabled) {
        const double step = ModelHertz(4096 - pitch) / 11025.0;
        const double sum = static_cast<double>(phase) + step;
        phase = static_cast<float>(sum);
        if (!(phase < 1.0F)) {
          phase = static_cast<float>(static_cast<double>(phase) - 1.0);
          toggle = 1 - toggle;
        }
        sample = (toggle == 1 ? 1 : -1) * 7 * amplitude;
      } else {
        if (slots[i] >= 16) last = 5 * slots[i] - 80;
        sample = last;
      }
      out[i] = static_cast<int16_t>(sample);
    }
    return out;
  }
};

void ExpectFrame(Tone& tone, ToneModel& model, const PortBytes& ports) {
  const FrameSamples expected = model.Frame(tone.DacSlots, ports[4], ports[5], ports[6]);
  ToneFrame(tone, ports);
  EXPECT_EQ(tone.ToneOut, expected);
  EXPECT_EQ(tone.phase, model.phase);
  EXPECT_EQ(tone.toggle, model.toggle);
  EXPECT_EQ(tone.lastLevel, model.last);
  EXPECT_EQ(tone.DacSlots, (std::array<uint8_t, 441>{}));
}

int Flips(Tone& tone, const PortBytes& ports, int frames) {
  int flips = 0;
  int16_t before = -7;  // toggle is 0 before the first sample
  for (int frame = 0; frame < frames; ++frame) {
    ToneFrame(tone, ports);
    for (const int16_t sample : tone.ToneOut) {
      if (sample != before) ++flips;
      before = sample;
    }
  }
  return flips;
}

TEST(Tone, MachineStartsSilent) {
  const test::TestMachine machine;
  EXPECT_EQ(machine->tone.phase, 0.0F);
  EXPECT_EQ(machine->tone.toggle, 0);
  EXPECT_EQ(machine->tone.lastLevel, 0);
  ToneFrame(machine->tone, machine->PortShadow);
  EXPECT_EQ(machine->tone.ToneOut, FrameSamples{});
}

TEST(ToneMode, LowestPitchFlipsEvery230Samples) {
  // 195312.5 / 4096 is 47.7: 48 Hz. A half wave takes 11025 / 48 = 229.7 samples.
  Tone tone;
  PortBytes ports{};
  SetPorts(ports, kToneOn, 0, 15);
  ToneFrame(tone, ports);
  for (int i = 0; i < 441; ++i) EXPECT_EQ(tone.ToneOut[i], i < 229 ? -105 : 105) << i;
  // The second flip comes with sample 460 counted from the start, the third with sample 690.
  ToneFrame(tone, ports);
  for (int i = 0; i < 441; ++i) EXPECT_EQ(tone.ToneOut[i], i < 18 || i >= 248 ? 105 : -105) << i;
}

TEST(ToneMode, Pitch4080IsTheHighestToneAndLimited) {
  // 12207 Hz would flip more than once a sample; 11000 flips at all but one in 441.
  Tone tone;
  PortBytes ports{};
  SetPorts(ports, kToneOn, 4080, 15);
  ToneFrame(tone, ports);
  for (int i = 0; i < 440; ++i) EXPECT_EQ(tone.ToneOut[i], i % 2 == 0 ? -105 : 105) << i;
}

TEST(ToneMode, PitchLimitReadsAllTwelveBits) {
  for (int pitch = 0; pitch < 4096; ++pitch) {
    Tone tone;
    PortBytes ports{};
    SetPorts(ports, kToneOn, pitch, 15);
    ToneWriteSlot(tone, 3 << 2, 0);
    ToneFrame(tone, ports);
    if (pitch <= 4080) {
      EXPECT_EQ(tone.ToneOut[0], -105) << pitch;
      EXPECT_EQ(tone.lastLevel, 0) << pitch;
      EXPECT_EQ(std::abs(tone.ToneOut[440]), 105) << pitch;
    } else {
      EXPECT_EQ(tone.ToneOut[0], 15) << pitch;
      EXPECT_EQ(tone.ToneOut[440], 15) << pitch;
      EXPECT_EQ(tone.lastLevel, 15) << pitch;
      EXPECT_EQ(tone.phase, 0.0F) << pitch;
    }
  }
}

TEST(ToneMode, FrequenciesOfSomeDividers) {
  // 195312.5 by the divider: the model is held to values worked out by hand, the generator to the model.
  struct Row {
    int divider, hertz;
  };
  for (const Row row : {Row{4096, 48}, Row{2048, 95}, Row{1000, 195}, Row{100, 1953}, Row{25, 7812},
                        Row{18, 10851}, Row{17, 11000}, Row{16, 11000}}) {
    EXPECT_EQ(ModelHertz(row.divider), row.hertz) << row.divider;
    Tone tone;
    ToneModel model;
    PortBytes ports{};
    SetPorts(ports, kToneOn, 4096 - row.divider, 1);
    for (int frame = 0; frame < 20; ++frame) ExpectFrame(tone, model, ports);
  }
}

TEST(ToneMode, TiesOfTheFrequencyGoToTheEvenOne) {
  // Dividers 25, 125, 625 and 3125 leave exactly one half. One hertz more shows in the number of flips.
  struct Row {
    int divider, frames, flips;
  };
  for (const Row row : {Row{25, 51, 15936},    // 22491 x 7812 / 11025 = 15936.5; with 7813 it is 15938.5
                        Row{125, 101, 6310},   // 44541 x 1562 / 11025 = 6310.4; with 1563 it is 6314.5
                        Row{625, 101, 1260},   // 44541 x 312 / 11025 = 1260.5; with 313 it is 1264.5
                        Row{3125, 101, 250}})  // 44541 x 62 / 11025 = 250.5; with 63 it is 254.5
  {
    Tone tone;
    PortBytes ports{};
    SetPorts(ports, kToneOn, 4096 - row.divider, 1);
    EXPECT_EQ(Flips(tone, ports, row.frames), row.flips) << row.divider;
  }
}

TEST(ToneMode, OtherFrequenciesGoToTheNearest) {
  struct Row {
    int divider, frames, flips;
  };
  for (const Row row :
       {Row{1000, 100, 780},   // 195.3 Hz: 44100 x 195 / 11025 = 780; with 196 it is 784
        Row{300, 101, 2630},   // 651.04 Hz: 44541 x 651 / 11025 = 2630.04
        Row{299, 101, 2638},   // 653.2 Hz: 44541 x 653 / 11025 = 2638.1
        Row{301, 101, 2621}})  // 648.9 Hz: 44541 x 649 / 11025 = 2621.96; with 648 it is 2617.9
  {
    Tone tone;
    PortBytes ports{};
    SetPorts(ports, kToneOn, 4096 - row.divider, 1);
    EXPECT_NEAR(Flips(tone, ports, row.frames), row.flips, 1) << row.divider;
  }
}

TEST(ToneMode, EveryPitchFollowsTheModelOverFrames) {
  for (int pitch = 0; pitch <= 4080; ++pitch) {
    Tone tone;
    ToneModel model;
    PortBytes ports{};
    SetPorts(ports, kToneOn, pitch, 1 + pitch % 15);
    for (int frame = 0; frame < 3; ++frame) ExpectFrame(tone, model, ports);
    if (HasFailure()) FAIL() << "pitch " << pitch;
  }
}

TEST(ToneMode, PhaseIsKeptAsAFloat) {
  // 48 Hz: the double 48/11025 rounded to a float at each of the first samples, with no wrap between.
  Tone tone;
  PortBytes ports{};
  SetPorts(ports, kToneOn, 0, 1);
  ToneFrame(tone, ports);
  float kept = 0;
  double exact = 0;
  for (int i = 0; i < 441; ++i) {
    kept = static_cast<float>(kept + 48 / 11025.0);
    exact += 48 / 11025.0;
    if (kept >= 1.0F) kept -= 1.0F;
    if (exact >= 1.0) exact -= 1.0;
  }
  EXPECT_EQ(tone.phase, kept);
  EXPECT_NE(tone.phase, static_cast<float>(exact));
}

TEST(ToneMode, AmplitudeZeroIsSilentWithTheToggleRunning) {
  Tone tone;
  PortBytes ports{};
  SetPorts(ports, kToneOn, 0, 0);
  ToneFrame(tone, ports);
  EXPECT_EQ(tone.ToneOut, FrameSamples{});
  EXPECT_EQ(tone.toggle, 1);
}

TEST(ToneMode, AllAmplitudesSwingBySevenASide) {
  for (int amplitude = 0; amplitude < 16; ++amplitude) {
    Tone tone;
    PortBytes ports{};
    SetPorts(ports, kToneOn, 0, amplitude);
    ports[6] |= 0xC3;  // the border and printer bits are no part of it
    ToneFrame(tone, ports);
    EXPECT_EQ(tone.ToneOut[0], -7 * amplitude);
    EXPECT_EQ(tone.ToneOut[440], 7 * amplitude);
  }
}

TEST(ToneMode, OtherBitsOfPort5DoNotMatter) {
  Tone plain, noisy;
  PortBytes ports{};
  SetPorts(ports, kToneOn, 3000, 9);
  ToneFrame(plain, ports);
  ports[5] |= 0xE0;
  ToneFrame(noisy, ports);
  EXPECT_EQ(plain, noisy);
  // The interrupt bit alone does not sound.
  SetPorts(ports, 0xE0, 3000, 9);
  Tone off;
  ToneFrame(off, ports);
  EXPECT_EQ(off.ToneOut, FrameSamples{});
}

TEST(ToneMode, SlotsAreIgnoredAndEmptied) {
  Tone tone;
  PortBytes ports{};
  SetPorts(ports, kToneOn, 0, 2);
  for (int32_t clock = 0; clock < 62500; clock += 142) ToneWriteSlot(tone, 15 << 2, clock);
  ToneFrame(tone, ports);
  EXPECT_EQ(tone.ToneOut[0], -14);
  EXPECT_EQ(tone.lastLevel, 0);
  ToneFrame(tone, PortBytes{});
  EXPECT_EQ(tone.ToneOut, FrameSamples{});
}

TEST(SampleMode, AmplitudesAreOneSidedFiveAStep) {
  Tone tone;
  PortBytes ports{};
  for (int amplitude = 0; amplitude < 16; ++amplitude) ToneWriteSlot(tone, amplitude << 2, 142 * amplitude);
  ToneFrame(tone, ports);
  for (int i = 0; i < 441; ++i) EXPECT_EQ(tone.ToneOut[i], 5 * (i < 16 ? i : 15)) << i;
}

TEST(SampleMode, EmptySlotsHoldAcrossFrames) {
  Tone tone;
  PortBytes ports{};
  ToneWriteSlot(tone, 11 << 2, 142 * 100);
  ToneFrame(tone, ports);
  for (int i = 0; i < 441; ++i) EXPECT_EQ(tone.ToneOut[i], i < 100 ? 0 : 55) << i;
  ToneFrame(tone, ports);
  for (int i = 0; i < 441; ++i) EXPECT_EQ(tone.ToneOut[i], 55) << i;
}

TEST(SampleMode, AmplitudeZeroIsAWriteUnlikeAnEmptySlot) {
  Tone tone;
  PortBytes ports{};
  ToneWriteSlot(tone, 8 << 2, 0);
  ToneWriteSlot(tone, 0, 142 * 10);
  EXPECT_EQ(tone.DacSlots[10], 16);
  EXPECT_EQ(tone.DacSlots[9], 0);
  ToneFrame(tone, ports);
  for (int i = 0; i < 441; ++i) EXPECT_EQ(tone.ToneOut[i], i < 10 ? 40 : 0) << i;
}

TEST(SampleMode, ResumesFromTheLastLevelOfTheLastSampleMode) {
  Tone tone;
  PortBytes ports{};
  ToneWriteSlot(tone, 6 << 2, 0);
  ToneFrame(tone, ports);
  SetPorts(ports, kToneOn, 1000, 13);
  ToneFrame(tone, ports);
  const float phase = tone.phase;
  const int32_t toggle = tone.toggle;
  SetPorts(ports, 0, 1000, 13);
  ToneFrame(tone, ports);
  for (int i = 0; i < 441; ++i) EXPECT_EQ(tone.ToneOut[i], 30) << i;
  // The wave stands still meanwhile.
  EXPECT_EQ(tone.phase, phase);
  EXPECT_EQ(tone.toggle, toggle);
}

TEST(SampleMode, Port6AloneDoesNotSound) {
  Tone tone;
  PortBytes ports{};
  SetPorts(ports, 0, 0, 15);
  ToneFrame(tone, ports);
  EXPECT_EQ(tone.ToneOut, FrameSamples{});
}

TEST(SampleMode, SlotBytesThatNoWriteMakes) {
  Tone tone;
  PortBytes ports{};
  tone.DacSlots[1] = 255;  // 5 x 255 - 80
  tone.DacSlots[2] = 15;   // below 16: nothing was written
  tone.DacSlots[3] = 16;
  ToneFrame(tone, ports);
  EXPECT_EQ(tone.ToneOut[0], 0);
  EXPECT_EQ(tone.ToneOut[1], 1195);
  EXPECT_EQ(tone.ToneOut[2], 1195);
  EXPECT_EQ(tone.ToneOut[3], 0);
}

TEST(ToneFrame, MixedModesFollowTheModel) {
  Tone tone;
  ToneModel model;
  PortBytes ports{};
  uint32_t seed = 12345;
  const auto next = [&seed](uint32_t below) {
    seed = seed * 1664525U + 1013904223U;
    return static_cast<int>((seed >> 8) % below);
  };
  for (int frame = 0; frame < 300; ++frame) {
    ports[4] = static_cast<uint8_t>(next(256));
    ports[5] = static_cast<uint8_t>(next(256));
    ports[6] = static_cast<uint8_t>(next(256));
    if (frame % 7 == 0) ports[5] |= 0x1F;  // often in the highest pitches, where the limit lies
    if (frame % 7 == 0) ports[4] |= 0xE0;
    const int writes = next(600);
    for (int w = 0; w < writes; ++w) ToneWriteSlot(tone, next(256), next(63000));
    ExpectFrame(tone, model, ports);
  }
}

TEST(TonePeriod, SixteenTStatesAStepOfTheDivider) {
  PortBytes ports{};
  EXPECT_EQ(TonePeriod(ports), 65536);
  SetPorts(ports, 0, 4095, 0);
  EXPECT_EQ(TonePeriod(ports), 16);
  SetPorts(ports, 0, 0x123, 0);
  EXPECT_EQ(TonePeriod(ports), (16 - 1) * 4096 - 0x23 * 16);
  // Enable and interrupt bits and whatever stands above them are no part of the pitch.
  ports.fill(0xFF);
  ports[4] = 0;
  ports[5] = 0xF0;
  EXPECT_EQ(TonePeriod(ports), 65536);
}

TEST(TonePeriod, EveryPitch) {
  PortBytes ports{};
  for (int pitch = 0; pitch < 4096; ++pitch) {
    SetPorts(ports, 0x30, pitch, 5);
    ASSERT_EQ(TonePeriod(ports), 65536 - 16 * pitch) << pitch;
  }
}

}  // namespace
}  // namespace quoll
