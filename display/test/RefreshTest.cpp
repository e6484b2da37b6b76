// The picture against a slow builder that makes every pixel by itself, over modes, pages, starts, sizes.
#include <gtest/gtest.h>

#include <tuple>

#include "display/Refresh.h"
#include "display/test/SlowPicture.h"
#include "loop/Redraw.h"
#include "testkit/TestMachine.h"

namespace quoll::test {
namespace {

struct Drawn {
  TestMachine machine;
  SlowPicture slow;

  Machine& m() const { return *machine; }

  // Builds both pictures and compares both arrays, also the one that was not drawn.
  void Check(const std::string& what) {
    SlowRefresh(slow, m());
    redraw(m());
    PALchNull(m().palette);
    EXPECT_EQ(FirstDifference(slow.ScreenBits, m().picture.ScreenBits), "") << what << ", ScreenBits";
    EXPECT_EQ(FirstDifference(slow.DibBits, m().picture.DibBits), "") << what << ", DibBits";
    EXPECT_EQ(m().picture.DibWidth, slow.dibWidth) << what;
    EXPECT_EQ(m().picture.DibHeight, slow.dibHeight) << what;
    EXPECT_EQ(m().picture.shownFromDib, m().screen.xScreenDIB) << what;
  }
};

std::string Text(const char* what, int a, int b) {
  return std::string(what) + " " + std::to_string(a) + ", " + std::to_string(b);
}

// Mode, page, DIB.
class RefreshModes : public testing::TestWithParam<std::tuple<int, int, bool>> {
 protected:
  void SetUp() override {
    const auto [mode, page, dib] = GetParam();
    FillMemory(d.m(), 7 + static_cast<uint32_t>(page));
    d.m().PortShadow[6] = static_cast<uint8_t>(0xBC | mode);
    d.m().PortShadow[0x0F] = static_cast<uint8_t>(0xCF | (page << 4));
    d.m().screen.xScreenDIB = dib;
    SetPalettePorts(d.m(), 0x00, 0x55, 0x14, 0x41);
  }

  Drawn d;
};

TEST_P(RefreshModes, Starts) {
  constexpr int kStarts[][2] = {{0x00, 0x00}, {0x00, 0x01}, {0x07, 0xFE}, {0x0F, 0xF0}, {0x10, 0x00},
                                {0x1F, 0xFF}, {0x20, 0x01}, {0x2A, 0x55}, {0x3F, 0xFF}};
  for (const auto& start : kStarts) {
    SetCrtc(d.m(), 64, 60, start[0], start[1]);
    d.Check(Text("start", start[0], start[1]));
  }
}

// One machine goes through all sizes, so what is left of an earlier picture in gaps, in rows that are
// not fully doubled and in arrays that keep their contents is compared too.
TEST_P(RefreshModes, Sizes) {
  constexpr int kSizes[][2] = {{64, 60},   {60, 64}, {80, 60},  {64, 63}, {64, 64}, {64, 127}, {63, 30},
                               {65, 30},   {3, 5},   {1, 127},  {0, 60},  {64, 0},  {40, 25},  {33, 7},
                               {255, 127}, {80, 20}, {20, 127}, {1, 1},   {64, 60}};
  for (const auto& size : kSizes) {
    SetCrtc(d.m(), size[0], size[1], 0x02, 0x40);
    d.Check(Text("size", size[0], size[1]));
  }
}

TEST_P(RefreshModes, PaletteChangesOnGivenLines) {
  SetCrtc(d.m(), 64, 60, 0, 0);
  constexpr int kChanges[][3] = {{1, 0, 0x55},   {2, 1, 0x01},  {3, 2, 0x10},   {50, 3, 0x04},
                                 {50, 0, 0x51},  {51, 1, 0x40}, {120, 2, 0xFF}, {121, 3, 0x00},
                                 {239, 0, 0x15}, {240, 1, 0x45}};
  for (const auto& change : kChanges) {
    PALSet(d.m().palette, d.m().PortShadow, change[0] * 245);
    d.m().PortShadow[0x60 + change[1]] = static_cast<uint8_t>(change[2]);
  }
  d.Check("palette changes");
}

TEST_P(RefreshModes, PaletteChangesEveryLine) {
  SetCrtc(d.m(), 64, 127, 0, 0);  // 508 screen rows, the history has lines up to 255
  for (int line = 0; line < 256; ++line) {
    PALSet(d.m().palette, d.m().PortShadow, line * 245);
    for (int p = 0; p < 4; ++p) d.m().PortShadow[0x60 + p] = static_cast<uint8_t>(line * 37 + p * 85);
  }
  d.Check("a palette a line");
}

TEST_P(RefreshModes, NoiseTouchesTheTwoColourModeOnly) {
  SetCrtc(d.m(), 64, 60, 0, 0);
  d.m().screen.xScreenNoise = true;
  RandomSeed(d.m().random, 12345);
  const Random before = d.m().random;
  const auto memory = d.m().MemImage;
  d.Check("noise");
  EXPECT_EQ(d.m().MemImage, memory);
  const bool twoColours = std::get<0>(GetParam()) == 0;
  EXPECT_EQ(d.m().random == before, !twoColours);
  if (!twoColours) return;
  Random drawn = before;
  for (int i = 0; i < 64 * 240; ++i) RandomNext(drawn);  // one number a byte
  EXPECT_EQ(d.m().random, drawn);
}

// Scripts can leave any number in a register.
TEST_P(RefreshModes, AnyNumbersInTheRegisters) {
  constexpr int32_t kLowest = INT32_MIN, kHighest = INT32_MAX;
  constexpr int32_t kStarts[][2] = {
      {0, -1},        {-1, 0},          {kHighest, kHighest}, {kLowest, 0}, {0, kHighest}, {0, kLowest},
      {0, 1'000'000}, {0x7FFF, 0x7FFF}, {0x800000, -70000},   {-700, 300},  {0x80000, 0},  {0, -65536 - 7}};
  for (const auto& start : kStarts) {
    SetCrtc(d.m(), 64, 9, start[0], start[1]);
    d.Check(Text("start", start[0], start[1]));
    SetCrtc(d.m(), 80, 9, start[0], start[1]);
    d.Check(Text("80 columns, start", start[0], start[1]));
  }
  SetCrtc(d.m(), 0x7FFFFF40, -128 + 30, 0, 0);  // 64 and 30 in the bits that count
  d.Check("large sizes");
  EXPECT_EQ(d.m().picture.Width, 512);
  EXPECT_EQ(d.m().picture.Height, 240);
  SetCrtc(d.m(), 80 + 256, 30, 0, 0);
  d.Check("80 columns in the bits that count");
}

TEST_P(RefreshModes, EightyColumns) {
  constexpr int kStarts[][2] = {{0, 0}, {0x3F, 0xFF}, {0x10, 0x05}, {0x20, 0x00}};
  for (const auto& start : kStarts) {
    SetCrtc(d.m(), 80, 60, start[0], start[1]);
    d.Check(Text("start", start[0], start[1]));
  }
}

INSTANTIATE_TEST_SUITE_P(All, RefreshModes,
                         testing::Combine(testing::Range(0, 4), testing::Range(0, 4), testing::Bool()));

// Switching between the paths keeps each array for itself.
TEST(Refresh, SwitchingPathsAndModes) {
  Drawn d;
  FillMemory(d.m(), 99);
  SetPalettePorts(d.m(), 0x40, 0x55, 0x11, 0x54);
  SetCrtc(d.m(), 64, 60, 0, 0);
  for (int step = 0; step < 16; ++step) {
    d.m().screen.xScreenDIB = (step & 1) != 0;
    d.m().PortShadow[6] = static_cast<uint8_t>(step >> 2);
    d.Check(Text("step", step, 0));
  }
  EXPECT_EQ(d.m().picture.shown, 16U);
}

// With frames that are not drawn the history goes on from its old place and keeps what was in it.
TEST(Refresh, SkippedFramesKeepTheOldHistory) {
  Drawn d;
  FillMemory(d.m(), 5);
  SetCrtc(d.m(), 64, 60, 0, 0);
  SetPalettePorts(d.m(), 0x01, 0x04, 0x10, 0x55);
  PALSet(d.m().palette, d.m().PortShadow, 200 * 245);
  SetPalettePorts(d.m(), 0x15, 0x51, 0x05, 0x44);
  PALSet(d.m().palette, d.m().PortShadow, 10 * 245);  // the next frame, no picture between
  SetPalettePorts(d.m(), 0x41, 0x50, 0x14, 0x45);
  PALSet(d.m().palette, d.m().PortShadow, 20 * 245);
  d.Check("skipped frame");
}

}  // namespace
}  // namespace quoll::test
