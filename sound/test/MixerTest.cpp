#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>

#include "sound/Mixer.h"
#include "sound/test/BlockBytes.h"

namespace quoll {
namespace {

constexpr int kFrameBytes = 2 * 441;

// A source of the mix with the parts of its weight that are heard left and right, in tenths.
struct Source {
  const char* name;
  FrameSamples* (*samples)(SoundCard&);  // nullptr: the tone generator
  int left, right;
};

constexpr Source kSources[] = {
    {"Ym3812Out", [](SoundCard& card) { return &card.opl.Ym3812Out; }, 5, 5},
    {"Ym2413Out", [](SoundCard& card) { return &card.opll.Ym2413Out; }, 5, 5},
    {"SaaOutL", [](SoundCard& card) { return &card.saa.SaaOutL; }, 10, 0},
    {"SaaOutR", [](SoundCard& card) { return &card.saa.SaaOutR; }, 0, 10},
    {"SnOut", [](SoundCard& card) { return &card.sn.SnOut; }, 1, 1},
    {"ToneOut", nullptr, 5, 5},
    {"SidOut", [](SoundCard& card) { return &card.sid.SidOut; }, 1, 1},
    {"AyOut", [](SoundCard& card) { return &card.ay.AyOut; }, 10, 10},
};

// What is mixed, and the mixer.
struct Mix {
  Mixer mixer;
  FrameSamples tone{};
  SoundCard card;

  FrameSamples& Of(const Source& source) { return source.samples != nullptr ? *source.samples(card) : tone; }
  void Frame() { MixFrame(mixer, tone, card); }
};

// Mixes sample 0 of frame 0 with one value in one source.
Pair MixOne(const Source& source, int value) {
  Mix mix;
  mix.Of(source)[0] = static_cast<int16_t>(value);
  mix.Frame();
  return At(mix.mixer, 0, 0);
}

// The byte of a sum given in tenths: rounded in whole numbers, ties to even, modulo 256.
int ByteOfTenths(int tenths) {
  int whole = tenths / 10;
  int rest = tenths % 10;
  if (rest < 0) {
    rest += 10;
    --whole;
  }
  if (rest > 5 || (rest == 5 && whole % 2 != 0)) ++whole;
  return ((whole % 256) + 256) % 256;
}

int ToneAlone(int tone) { return MixOne(kSources[5], tone).left; }

TEST(MixFrame, SilenceIs128) {
  Mix mix;
  mix.Frame();
  ExpectBlockFrame(mix.mixer, 0, 128);
}

TEST(MixFrame, WeightsAndSides) {
  for (const Source& source : kSources) {
    EXPECT_EQ(MixOne(source, 20), (Pair{128 + 2 * source.left, 128 + 2 * source.right})) << source.name;
    EXPECT_EQ(MixOne(source, -20), (Pair{128 - 2 * source.left, 128 - 2 * source.right})) << source.name;
  }
}

TEST(MixFrame, EverySourceAlone) {
  // A tenth of an odd multiple of 5 is a true tie in double, as is half of an odd number.
  for (const Source& source : kSources) {
    for (int value = -3000; value <= 3000; ++value) {
      const Pair expected = {ByteOfTenths(1280 + source.left * value),
                             ByteOfTenths(1280 + source.right * value)};
      ASSERT_EQ(MixOne(source, value), expected) << source.name << ' ' << value;
    }
  }
}

TEST(MixFrame, TiesGoToEven) {
  EXPECT_EQ(ToneAlone(1), 128);                  // 128.5
  EXPECT_EQ(ToneAlone(3), 130);                  // 129.5
  EXPECT_EQ(ToneAlone(5), 130);                  // 130.5
  EXPECT_EQ(ToneAlone(-1), 128);                 // 127.5
  EXPECT_EQ(ToneAlone(-3), 126);                 // 126.5
  EXPECT_EQ(MixOne(kSources[4], 5).left, 128);   // the SN76489 at a tenth: 128.5
  EXPECT_EQ(MixOne(kSources[4], 15).left, 130);  // 129.5
  EXPECT_EQ(MixOne(kSources[4], 6).left, 129);   // 128.6
  EXPECT_EQ(MixOne(kSources[4], 4).left, 128);   // 128.4
}

TEST(MixFrame, HalvesAreSummedBeforeRounding) {
  Mix mix;
  auto& [mixer, tone, card] = mix;
  card.opl.Ym3812Out[0] = 1;
  tone[0] = 1;
  card.opl.Ym3812Out[1] = card.opll.Ym2413Out[1] = tone[1] = 1;  // 129.5
  card.sn.SnOut[2] = 3;                                          // 128 + 0.3 + 0.3
  card.sid.SidOut[2] = 3;
  mix.Frame();
  EXPECT_EQ(At(mixer, 0, 0).left, 129);
  EXPECT_EQ(At(mixer, 0, 1).left, 130);
  EXPECT_EQ(At(mixer, 0, 2).left, 129);
}

TEST(MixFrame, SumsOutsideAByteWrap) {
  const Source& ay = kSources[7];
  EXPECT_EQ(MixOne(ay, 127).left, 255);
  EXPECT_EQ(MixOne(ay, 128).left, 0);
  EXPECT_EQ(MixOne(ay, 129).left, 1);
  EXPECT_EQ(MixOne(ay, -128).left, 0);
  EXPECT_EQ(MixOne(ay, -129).left, 255);
  EXPECT_EQ(MixOne(ay, -130).left, 254);
  EXPECT_EQ(ToneAlone(253), 254);   // 254.5
  EXPECT_EQ(ToneAlone(255), 0);     // 255.5 goes to 256
  EXPECT_EQ(ToneAlone(-257), 0);    // -0.5
  EXPECT_EQ(ToneAlone(-259), 254);  // -1.5 goes to -2
}

TEST(MixFrame, LoudestAndDeepestSums) {
  Mix mix;
  for (const Source& source : kSources) {
    mix.Of(source)[0] = 32767;
    mix.Of(source)[440] = -32768;
  }
  mix.Frame();
  // 3 x 16383.5 + 2 x 32767 + 2 x 3276.7 + 128 = 121365.9; 121366 less 474 x 256 is 22.
  EXPECT_EQ(At(mix.mixer, 0, 0), (Pair{22, 22}));
  // -3 x 16384 - 2 x 32768 - 2 x 3276.8 + 128 = -121113.6; -121114 and 474 x 256 is 230.
  EXPECT_EQ(At(mix.mixer, 0, 440), (Pair{230, 230}));
}

TEST(MixFrame, SaaIsTheOnlyStereoSource) {
  Mix mix;
  mix.card.saa.SaaOutL[7] = 11;
  mix.card.saa.SaaOutR[7] = -22;
  mix.tone[7] = 100;
  mix.card.ay.AyOut[7] = 3;
  mix.Frame();
  EXPECT_EQ(At(mix.mixer, 0, 7), (Pair{128 + 11 + 50 + 3, 128 - 22 + 50 + 3}));
  EXPECT_EQ(At(mix.mixer, 0, 8), (Pair{128, 128}));
}

TEST(MixFrame, EveryByteOfAFullMix) {
  Mix mix;
  auto& [mixer, tone, card] = mix;
  uint32_t seed = 99;
  for (int frame = 0; frame < 5; ++frame) {
    for (const Source& source : kSources) {
      for (int16_t& sample : mix.Of(source)) {
        seed = seed * 1664525U + 1013904223U;
        sample = static_cast<int16_t>(seed >> 16);
        if (frame < 3) sample = static_cast<int16_t>(sample / 256);
      }
    }
    mixer.FrameInBlock = frame;
    mix.Frame();
    for (int i = 0; i < 441; ++i) {
      for (const bool left : {true, false}) {
        const int saa = left ? card.saa.SaaOutL[i] : card.saa.SaaOutR[i];
        const double sum = 0.5 * card.opl.Ym3812Out[i] + 0.5 * card.opll.Ym2413Out[i] + saa +
                           0.1 * card.sn.SnOut[i] + 0.5 * tone[i] + 0.1 * card.sid.SidOut[i] +
                           card.ay.AyOut[i] + 128;
        double whole = std::floor(sum);
        const double rest = sum - whole;
        if (rest > 0.5 || (rest == 0.5 && std::fmod(whole, 2.0) != 0)) whole += 1;
        const double byte = whole - 256 * std::floor(whole / 256);
        const Pair pair = At(mixer, frame, i);
        ASSERT_EQ(left ? pair.left : pair.right, byte) << frame << ' ' << i << ' ' << left;
      }
    }
  }
}

TEST(MixFrame, EachFrameHasItsPlaceInTheBlock) {
  for (int frame = 0; frame < 5; ++frame) {
    Mix mix;
    Mixer& mixer = mix.mixer;
    mixer.BlockBuffer.fill(7);
    mixer.FrameInBlock = frame;
    mix.tone.fill(20);
    mix.Frame();
    for (int at = 0; at < 4410; ++at) {
      const bool within = at >= kFrameBytes * frame && at < kFrameBytes * (frame + 1);
      ASSERT_EQ(mixer.BlockBuffer[at], within ? 138 : 7) << frame << ' ' << at;
    }
    EXPECT_EQ(mixer.FrameInBlock, frame);
  }
}

TEST(MixFrame, FramesOutsideTheBlockAreNotMixed) {
  for (const int32_t frame :
       {-1, -5, 5, 6, 1000000, std::numeric_limits<int32_t>::min(), std::numeric_limits<int32_t>::max()}) {
    Mix mix;
    mix.mixer.BlockBuffer.fill(7);
    mix.mixer.FrameInBlock = frame;
    const Mixer before = mix.mixer;
    mix.Frame();
    EXPECT_EQ(mix.mixer, before) << frame;
  }
}

}  // namespace
}  // namespace quoll
