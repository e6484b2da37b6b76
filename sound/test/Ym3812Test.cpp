#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

#include "core/Random.h"
#include "sound/FastSine.h"
#include "sound/Ym3812.h"

namespace quoll {
namespace {

constexpr int kModulator0 = 0, kCarrier0 = 3;

void Set(Ym3812& chip, int reg, int value) {
  OplWrite(chip, 0x34, static_cast<uint8_t>(reg));
  OplWrite(chip, 0x35, static_cast<uint8_t>(value));
}

void Key(Ym3812& chip, int channel, int number, int block) {
  Set(chip, 0xA0 + channel, number & 0xFF);
  Set(chip, 0xB0 + channel, 0x20 | block << 2 | number >> 8);
}

// Rendered plainly, sample by sample, from the values that the window shows.
FrameSamples SumOfTables(const Ym3812& chip) {
  const OplTables tables = OplTablesOf(chip.sounding);
  FrameSamples out;
  for (int i = 0; i < kFrameSamples; ++i) {
    double sum = 0.0;
    for (int c = 0; c < 9; ++c) {
      if ((chip.OPL_Reg[0xC9] & 1) != 0) sum += tables.modulator[c][i];
      sum += tables.carrier[c][i];
    }
    out[i] = static_cast<int16_t>(std::nearbyint(std::clamp(sum * 20.0, -126.0, 126.0)));
  }
  return out;
}

TEST(FastSine, StaysWithinItsError) {
  // Steps of less than 2^-17 turns, at places that are not round; the difference turns too slowly to hide
  // more than a hundredth of the bound between two of them.
  double worst = 0.0;
  for (float turn = -33.0F; turn < 2.1F; turn += 7.1e-6F) {
    const Quad turns{turn, turn + 1.1e-6F, turn + 3.3e-6F, turn + 5.7e-6F};
    const Quad sines = FastSine(turns);
    for (int k = 0; k < 4; ++k) {
      const double exact = std::sin(2.0 * std::numbers::pi * static_cast<double>(turns[k]));
      worst = std::max(worst, std::fabs(sines[k] - exact));
    }
  }
  EXPECT_LT(worst, kFastSineError);
}

TEST(Ym3812, EvenPortsLatchOddPortsWrite) {
  Ym3812 chip;
  for (int reg = 0; reg < 256; ++reg) Set(chip, reg, 255 - reg);
  for (int reg = 0; reg < 256; ++reg) EXPECT_EQ(chip.OPL_Reg[reg], 255 - reg);
  EXPECT_EQ(chip.latch, 255);
}

TEST(Ym3812, ResetClearsRegistersOnly) {
  Ym3812 chip;
  Key(chip, 0, 500, 4);
  OplRender(chip, {});
  const OplPhases phases = chip.phases;
  EXPECT_NE(phases, OplPhases{});
  OplReset(chip);
  EXPECT_EQ(chip.OPL_Reg, (std::array<uint8_t, 256>{}));
  EXPECT_EQ(chip.silent, 1);
  EXPECT_EQ(chip.phases, phases);
  EXPECT_EQ(chip.latch, 0xB0);
}

struct OperatorRow {
  int channel, modulator, carrier;
};
const OperatorRow kOperatorRows[] = {{0, 0, 3},   {1, 1, 4},   {2, 2, 5},   {3, 8, 11}, {4, 9, 12},
                                     {5, 10, 13}, {6, 16, 19}, {7, 17, 20}, {8, 18, 21}};

TEST(Ym3812Decode, EveryOperatorHasItsRegisters) {
  for (const auto& row : kOperatorRows) {
    Ym3812 chip;
    Set(chip, 1, 0x20);
    const auto operatorOf = [&](int offset) {
      Set(chip, 0x20 + offset, 0xF9);
      Set(chip, 0x40 + offset, 0xD5);
      Set(chip, 0x60 + offset, 0x12);
      Set(chip, 0x80 + offset, 0x34);
      Set(chip, 0xE0 + offset, 0xFE);
    };
    const OplOperator expected{9, 0x15, 1, 2, 3, 4, 2};
    operatorOf(row.modulator);
    chip.OPL_Chan = OplDecode(chip);
    EXPECT_EQ(chip.OPL_Chan[row.channel].modulator, expected) << row.channel;
    EXPECT_EQ(chip.OPL_Chan[row.channel].carrier, OplOperator{}) << row.channel;
    operatorOf(row.carrier);
    chip.OPL_Chan = OplDecode(chip);
    EXPECT_EQ(chip.OPL_Chan[row.channel].carrier, expected) << row.channel;
  }
}

TEST(Ym3812Decode, FrequencyFromNumberAndBlock) {
  for (int block = 0; block < 8; ++block) {
    Ym3812 chip;
    Key(chip, 5, 0x2A7, block);
    chip.OPL_Chan = OplDecode(chip);
    EXPECT_EQ(chip.OPL_Chan[5].frequency, static_cast<float>(679.0 * (1 << block) / 21.23)) << block;
    EXPECT_EQ(chip.OPL_Chan[5].keyOn, 0x20);
    EXPECT_EQ(chip.OPL_Chan[4].keyOn, 0);
  }
}

TEST(Ym3812Silent, NoKeyAndExactlyEightKeys) {
  for (int keys = 0; keys <= 9; ++keys) {
    Ym3812 chip;
    for (int c = 0; c < keys; ++c) Key(chip, c, 500, 4);
    chip.Ym3812Out.fill(7);
    OplRender(chip, {});
    const bool silent = keys == 0 || keys == 8;  // eight times 0x20 is 0 in 8 bits
    EXPECT_EQ(chip.silent, silent ? 1 : 0) << keys;
    EXPECT_EQ(chip.Ym3812Out == FrameSamples{}, silent) << keys;
    EXPECT_EQ(chip.phases == OplPhases{}, silent) << keys;
  }
}

TEST(Ym3812Phase, EveryMultiplier) {
  const double multipliers[] = {0.5, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 10, 11, 11, 12, 12};
  for (int m = 0; m < 16; ++m) {
    Ym3812 chip;
    Key(chip, 0, 500, 5);
    Set(chip, 0x20 + kModulator0, 0xF0 | m);
    OplRender(chip, {});
    const double step = static_cast<float>(500 * 32 / 21.23) / 2.0 * multipliers[m] / 11025.0;
    EXPECT_EQ(OplTablesOf(chip.sounding).modulator[0][0], static_cast<float>(step)) << m;
  }
}

TEST(Ym3812Phase, StepIsLimited) {
  Ym3812 chip;
  Key(chip, 0, 1023, 7);
  Set(chip, 0x20 + kModulator0, 15);  // 6168 / 2 * 12 = 37007 Hz
  OplRender(chip, {});
  const OplTables tables = OplTablesOf(chip.sounding);
  EXPECT_EQ(tables.modulator[0][0], static_cast<float>(11000.0 / 11025.0));
  for (const float value : tables.modulator[0]) EXPECT_LT(value, 1.0F);
}

TEST(Ym3812Phase, EveryFeedbackIsAConstantStep) {
  const double feedbacks[] = {0, 0.0625, 0.125, 0.25, 0.5, 1, 2, 4};
  for (int f = 0; f < 8; ++f) {
    Ym3812 chip;
    Key(chip, 0, 0, 0);
    Set(chip, 0xC0, f << 1);
    OplRender(chip, {});
    const OplTables tables = OplTablesOf(chip.sounding);
    float phase = 0.0F;
    for (int i = 0; i < 10; ++i) {
      phase = static_cast<float>(phase + std::sin(feedbacks[f] * 6.283185));
      if (phase >= 1.0F) phase -= 1.0F;
      EXPECT_EQ(tables.modulator[0][i], phase) << f << " " << i;
    }
  }
  // From index 5 on the sine is a little below 0, and so are the phases.
  EXPECT_LT(std::sin(6.283185), 0.0);
}

TEST(Ym3812Phase, StandsStillWhileOffAndIsKeptAtKeyOn) {
  Ym3812 chip;
  Key(chip, 0, 500, 4);
  Key(chip, 1, 333, 3);
  OplRender(chip, {});
  const OplPhases before = chip.phases;
  Set(chip, 0xB0, 0x10);
  OplRender(chip, {});
  EXPECT_EQ(chip.phases.carrier[0], before.carrier[0]);
  EXPECT_EQ(chip.phases.modulator[0], before.modulator[0]);
  EXPECT_NE(chip.phases.carrier[1], before.carrier[1]);
  EXPECT_EQ(OplTablesOf(chip.sounding).carrier[0], (std::array<float, kFrameSamples>{}));
  Key(chip, 0, 0, 0);
  OplRender(chip, {});
  EXPECT_EQ(chip.phases.carrier[0], before.carrier[0]);
}

TEST(Ym3812, NoFrequencyNoFeedbackIsConstant) {
  Ym3812 chip;
  Key(chip, 0, 500, 4);
  OplRender(chip, {});
  Key(chip, 0, 0, 0);
  OplRender(chip, {});
  for (const int16_t sample : chip.Ym3812Out) EXPECT_EQ(sample, chip.Ym3812Out[0]);
  const double turn = std::sin(chip.phases.modulator[0] * 6.28318530718) + chip.phases.carrier[0];
  EXPECT_EQ(chip.Ym3812Out[0], std::nearbyint(20.0 * static_cast<float>(std::sin(turn * 6.28318530718))));
}

TEST(Ym3812Level, OneOverLevelPlusOne) {
  for (int level = 0; level < 64; ++level) {
    Ym3812 chip;
    Key(chip, 0, 500, 5);
    Set(chip, 0x40 + kModulator0, 0xC0 | (63 - level));
    Set(chip, 0x40 + kCarrier0, 0xC0 | level);
    OplRender(chip, {});
    const OplTables tables = OplTablesOf(chip.sounding);
    const double step = static_cast<float>(500 * 32 / 21.23) / 2.0 * 0.5 / 11025.0;
    const auto phase = static_cast<float>(step);
    const double turn = 1.0 / (64 - level) * std::sin(phase * 6.28318530718) + phase;
    const double expected = 1.0 / (level + 1) * std::sin(turn * 6.28318530718);
    EXPECT_EQ(tables.carrier[0][0], static_cast<float>(expected)) << level;
  }
}

// A modulator by its own wave, phases of one slow turn in 441 samples and more.
TEST(Ym3812Wave, ModulatorShapes) {
  for (int wave = 0; wave < 4; ++wave) {
    Ym3812 chip;
    Set(chip, 1, 0x20);
    Key(chip, 0, 500, 3);
    Set(chip, 0xE0 + kModulator0, wave);
    OplRender(chip, {});
    const OplTables tables = OplTablesOf(chip.sounding);
    const double step = static_cast<float>(500 * 8 / 21.23) / 2.0 * 0.5 / 11025.0;
    float phase = 0.0F;
    for (int i = 0; i < kFrameSamples; ++i) {
      phase = static_cast<float>(phase + step);
      if (phase >= 1.0F) phase -= 1.0F;
      if (wave >= 2 && phase >= 0.5F) phase -= 0.5F;
      float expected = phase;
      if (wave == 1 && phase > 0.5F) expected = 0.0F;
      if (wave == 3 && phase > 0.25F) expected = 0.0F;
      ASSERT_EQ(tables.modulator[0][i], expected) << wave << " " << i;
    }
    EXPECT_EQ(chip.phases.modulator[0], phase) << wave;
    // The half is taken from what is kept.
    if (wave >= 2) {
      EXPECT_LT(chip.phases.modulator[0], 0.5F);
    }
  }
}

TEST(Ym3812Wave, CarrierShapes) {
  std::array<OplTables, 4> tables;
  for (int wave = 0; wave < 4; ++wave) {
    Ym3812 chip;
    Set(chip, 1, 0x20);
    Key(chip, 0, 500, 5);
    Set(chip, 0xE0 + kCarrier0, wave);
    OplRender(chip, {});
    EXPECT_EQ(chip.Ym3812Out, SumOfTables(chip)) << wave;
    tables[wave] = OplTablesOf(chip.sounding);
  }
  const double step = static_cast<float>(500 * 32 / 21.23) / 2.0 * 0.5 / 11025.0;
  float phase = 0.0F;
  int muted = 0;
  for (int i = 0; i < kFrameSamples; ++i) {
    phase = static_cast<float>(phase + step);
    if (phase >= 1.0F) phase -= 1.0F;
    double turn = std::sin(tables[0].modulator[0][i] * 6.28318530718) + phase;
    if (turn >= 1.0) turn -= 1.0;
    const bool quiet = (turn > 0.25 && turn < 0.5) || (turn > 0.75 && turn < 1.0);
    const float sine = tables[0].carrier[0][i];
    EXPECT_EQ(tables[1].carrier[0][i], std::min(sine, 0.0F)) << i;
    EXPECT_EQ(tables[2].carrier[0][i], std::fabs(sine)) << i;
    EXPECT_EQ(tables[3].carrier[0][i], quiet ? 0.0F : std::fabs(sine)) << i;
    if (quiet) ++muted;
  }
  EXPECT_GT(muted, 50);
}

TEST(Ym3812Wave, IgnoredWithoutItsEnable) {
  Ym3812 plain;
  Ym3812 waved;
  for (Ym3812* chip : {&plain, &waved}) Key(*chip, 0, 500, 5);
  Set(waved, 0xE0 + kModulator0, 3);
  Set(waved, 0xE0 + kCarrier0, 3);
  Set(waved, 1, 0xDF);
  OplRender(plain, {});
  OplRender(waved, {});
  EXPECT_EQ(waved.Ym3812Out, plain.Ym3812Out);
  EXPECT_EQ(waved.phases, plain.phases);
}

TEST(Ym3812Sum, LimitedTo126EitherWay) {
  Ym3812 chip;
  for (int c = 0; c < 9; ++c) Key(chip, c, 500, 5);
  OplRender(chip, {});
  EXPECT_EQ(*std::max_element(chip.Ym3812Out.begin(), chip.Ym3812Out.end()), 126);
  EXPECT_EQ(*std::min_element(chip.Ym3812Out.begin(), chip.Ym3812Out.end()), -126);
}

TEST(Ym3812Sum, ModulatorsAreHeardByTheLowBitOfRegisterC9Alone) {
  for (const int value : {0x00, 0xFE, 0x01, 0xFF}) {
    Ym3812 chip;
    Key(chip, 0, 500, 5);
    Set(chip, 0xC0, 1);  // the channel's own connection bit
    Set(chip, 0xC9, value);
    OplRender(chip, {});
    const OplTables tables = OplTablesOf(chip.sounding);
    for (int i = 0; i < kFrameSamples; ++i) {
      const double added = (value & 1) != 0 ? tables.modulator[0][i] : 0.0;
      EXPECT_EQ(chip.Ym3812Out[i], std::nearbyint(20.0 * (added + tables.carrier[0][i])))
          << value << " " << i;
    }
  }
}

TEST(Ym3812Sum, AClearedBoxTakesItsChannelOut) {
  for (int c = 0; c < 9; ++c) {
    Ym3812 chip;
    Key(chip, c, 500, 5);
    OplControls controls;
    controls.Check1[c] = false;
    OplRender(chip, controls);
    EXPECT_EQ(chip.silent, 0);
    EXPECT_EQ(chip.Ym3812Out, FrameSamples{});
    EXPECT_EQ(OplTablesOf(chip.sounding).modulator[c], (std::array<float, kFrameSamples>{}));
    EXPECT_NE(chip.phases.carrier[c], 0.0F);
    OplRender(chip, {});
    EXPECT_NE(chip.Ym3812Out, FrameSamples{}) << c;
  }
}

// Fast sines and plain ones give the same samples whatever is in the registers.
TEST(Ym3812Sum, RandomRegistersGiveThePlainSamples) {
  Random random;
  const auto number = [&](int below) { return static_cast<int>(RandomNext(random) * below); };
  Ym3812 chip;
  OplControls controls;
  for (int frame = 0; frame < 400; ++frame) {
    for (int i = number(12); i > 0; --i) Set(chip, number(256), number(256));
    for (int c = 0; c < 9; ++c) {
      if (number(4) != 0) chip.OPL_Reg[0xB0 + c] |= 0x20;
      controls.Check1[c] = number(8) != 0;
    }
    chip.OPL_Reg[1] = static_cast<uint8_t>(number(2) * 0x20);
    OplRender(chip, controls);
    if (chip.silent == 0) {
      ASSERT_EQ(chip.Ym3812Out, SumOfTables(chip)) << frame;
    }
  }
}

// Constant sums near a rounding border: no channel moves, and every sample is as unsure as the first.
TEST(Ym3812Sum, StandingPhasesGiveThePlainSamples) {
  for (int level = 0; level < 64; ++level) {
    Ym3812 chip;
    Key(chip, 0, 0, 0);
    Set(chip, 0x40 + kCarrier0, level);
    chip.phases.carrier[0] = 0.25F;  // a sine of 1: level 7 makes 2.5, level 39 hardly more than a half
    OplRender(chip, {});
    EXPECT_EQ(chip.Ym3812Out, SumOfTables(chip)) << level;
    EXPECT_EQ(chip.Ym3812Out[0], std::nearbyint(20.0 * static_cast<float>(1.0 / (level + 1)))) << level;
  }
}

TEST(Ym3812, PhasesFilledFromOutsideDoNoHarm) {
  Ym3812 chip;
  for (int c = 0; c < 9; ++c) Key(chip, c, 500, 5);
  chip.phases.modulator.fill(1e30F);
  chip.phases.carrier.fill(std::nanf(""));
  OplRender(chip, {});
  for (int c = 0; c < 9; ++c) {
    EXPECT_GE(chip.phases.carrier[c], 0.0F);
    EXPECT_LT(chip.phases.modulator[c], 1.0F);
  }
}

TEST(Ym3812, RegisterNames) {
  EXPECT_EQ(OplRegisterName(0x40), "scaling and level, channel 1 modulator");
  EXPECT_EQ(OplRegisterName(0xF5), "wave, channel 9 carrier");
  EXPECT_EQ(OplRegisterName(0xB8), "key, octave, frequency high, channel 9");
  EXPECT_EQ(OplRegisterName(0xC9), "modulators heard");
  EXPECT_EQ(OplRegisterName(0x26), "");
  EXPECT_EQ(OplRegisterName(-1), "");
}

}  // namespace
}  // namespace quoll
