#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cmath>

#include "display/Palette.h"

namespace quoll {
namespace {

// T-states of a palette slot and of a border band.
constexpr int32_t kSlot = 245;
constexpr int32_t kBand = 218;

PortBytes Ports(int p0, int p1, int p2, int p3) {
  PortBytes ports{};
  ports[0x60] = static_cast<uint8_t>(p0);
  ports[0x61] = static_cast<uint8_t>(p1);
  ports[0x62] = static_cast<uint8_t>(p2);
  ports[0x63] = static_cast<uint8_t>(p3);
  return ports;
}

// Slots first to last of row p hold value.
void ExpectSlots(const Palette& palette, int p, int first, int last, int value) {
  for (int i = first; i <= last; ++i) ASSERT_EQ(palette.PalHistory[p][i], value) << p << " " << i;
}

TEST(Palette, StartsEmpty) {
  const Palette palette;
  EXPECT_EQ(palette.PalNextLine, 0);
  for (int p = 0; p < 4; ++p) ExpectSlots(palette, p, 0, 256, 0);
  for (const int32_t colour : palette.BorderLines) EXPECT_EQ(colour, 0);
}

TEST(PALSet, FillsUpToItsSlotWithTheOldPalette) {
  Palette palette;
  PALSet(palette, Ports(1, 2, 3, 4), 100 * kSlot + 244);
  for (int p = 0; p < 4; ++p) {
    ExpectSlots(palette, p, 0, 100, p + 1);
    ExpectSlots(palette, p, 101, 256, 0);
  }
  EXPECT_EQ(palette.PalNextLine, 100);
}

TEST(PALSet, TakesEffectFromItsOwnSlotOn) {
  Palette palette;
  PALSet(palette, Ports(1, 0, 0, 0), 10 * kSlot);
  PALSet(palette, Ports(9, 0, 0, 0), 20 * kSlot);
  ExpectSlots(palette, 0, 0, 9, 1);
  ExpectSlots(palette, 0, 10, 20, 9);  // the slot of the first write is filled once more
  EXPECT_EQ(palette.PalNextLine, 20);
}

TEST(PALSet, SlotZeroAtOnce) {
  Palette palette;
  PALSet(palette, Ports(5, 6, 7, 8), 0);
  ExpectSlots(palette, 0, 0, 0, 5);
  ExpectSlots(palette, 0, 1, 256, 0);
  EXPECT_EQ(palette.PalNextLine, 0);
}

// Three writes in slot e. Each fills up to e with what was in force before it; after the last, e holds the
// value before that, and the next fill puts the last value into e and all that follow.
TEST(PALSet, ThreeWritesInOneSlot) {
  Palette palette;
  PALSet(palette, Ports(0x11, 0, 0, 0), 50 * kSlot);  // 0x11 goes, 0x22 comes
  ExpectSlots(palette, 0, 0, 50, 0x11);
  PALSet(palette, Ports(0x22, 0, 0, 0), 50 * kSlot + 1);
  ExpectSlots(palette, 0, 0, 49, 0x11);
  ExpectSlots(palette, 0, 50, 50, 0x22);
  PALSet(palette, Ports(0x33, 0, 0, 0), 50 * kSlot + 244);
  ExpectSlots(palette, 0, 50, 50, 0x33);
  ExpectSlots(palette, 0, 51, 256, 0);
  PALComplete(palette, Ports(0x44, 0, 0, 0));
  ExpectSlots(palette, 0, 0, 49, 0x11);
  ExpectSlots(palette, 0, 50, 255, 0x44);
}

TEST(PALSet, LastSlots) {
  for (const auto& [frameClock, slot] :
       {std::pair{62500, 255}, std::pair{62719, 255}, std::pair{62720, 256}, std::pair{62964, 256}}) {
    Palette palette;
    PALSet(palette, Ports(7, 7, 7, 7), frameClock);
    EXPECT_EQ(palette.PalNextLine, slot);
    ExpectSlots(palette, 3, 0, slot, 7);
    ExpectSlots(palette, 3, slot + 1, 256, 0);
  }
}

TEST(PALSet, ClocksOutsideTheFrame) {
  for (const int32_t frameClock : {62965, 100000, INT_MAX}) {
    Palette palette;
    PALSet(palette, Ports(7, 8, 9, 10), frameClock);
    EXPECT_EQ(palette.PalNextLine, 256) << frameClock;
    for (int p = 0; p < 4; ++p) ExpectSlots(palette, p, 0, 256, 7 + p);
  }
  for (const int32_t frameClock : {-245, -1000, INT_MIN}) {
    Palette palette;
    palette.PalNextLine = 30;
    PALSet(palette, Ports(7, 8, 9, 10), frameClock);
    EXPECT_EQ(palette.PalNextLine, 0) << frameClock;
    for (int p = 0; p < 4; ++p) ExpectSlots(palette, p, 0, 256, 0);
  }
}

TEST(PALSet, ASlotBeforeTheLastOneFillsNothing) {
  Palette palette;
  PALSet(palette, Ports(1, 1, 1, 1), 200 * kSlot);
  PALSet(palette, Ports(2, 2, 2, 2), 10 * kSlot);  // the next frame, without a picture between
  ExpectSlots(palette, 0, 0, 200, 1);
  EXPECT_EQ(palette.PalNextLine, 10);
  PALSet(palette, Ports(3, 3, 3, 3), 20 * kSlot);
  ExpectSlots(palette, 0, 0, 9, 1);
  ExpectSlots(palette, 0, 10, 20, 3);
  ExpectSlots(palette, 0, 21, 200, 1);
}

TEST(PALSet, MirrorPortsHaveNoEffect) {
  PortBytes ports = Ports(1, 2, 3, 4);
  for (int p = 0x64; p < 0x70; ++p) ports[p] = 0x77;
  Palette palette;
  PALSet(palette, ports, 62500);
  for (int p = 0; p < 4; ++p) ExpectSlots(palette, p, 0, 255, p + 1);
}

TEST(PALSet, AnyNextLine) {
  for (const int32_t next : {INT_MIN, -1, 257, INT_MAX}) {
    Palette palette;
    palette.PalNextLine = next;
    PALSet(palette, Ports(6, 6, 6, 6), 62500);
    ExpectSlots(palette, 0, 0, 255, next < 0 ? 6 : 0);
    palette.PalNextLine = next;
    PALComplete(palette, Ports(9, 9, 9, 9));
    ExpectSlots(palette, 0, 0, 255, next < 0 ? 9 : 0);
  }
}

TEST(PALComplete, FillsToLine255AndNoFurther) {
  Palette palette;
  palette.PalNextLine = 40;
  PALComplete(palette, Ports(1, 2, 3, 4));
  for (int p = 0; p < 4; ++p) {
    ExpectSlots(palette, p, 0, 39, 0);
    ExpectSlots(palette, p, 40, 255, p + 1);
    ExpectSlots(palette, p, 256, 256, 0);
  }
  palette.PalNextLine = 256;
  PALComplete(palette, Ports(9, 9, 9, 9));
  ExpectSlots(palette, 0, 40, 255, 1);
}

TEST(PALchNull, StartsAgain) {
  Palette palette;
  PALSet(palette, Ports(1, 2, 3, 4), 100 * kSlot);
  const auto history = palette.PalHistory;
  PALchNull(palette);
  EXPECT_EQ(palette.PalNextLine, 0);
  EXPECT_EQ(palette.PalHistory, history);
}

constexpr int32_t Colour(int red, int green, int blue) { return red + 256 * green + 65536 * blue; }

constexpr int32_t kQB[16] = {
    Colour(0, 0, 0),       Colour(0, 0, 128),   Colour(0, 128, 0),   Colour(0, 128, 128),
    Colour(128, 0, 0),     Colour(128, 0, 128), Colour(128, 128, 0), Colour(192, 192, 192),
    Colour(128, 128, 128), Colour(0, 0, 255),   Colour(0, 255, 0),   Colour(0, 255, 255),
    Colour(255, 0, 0),     Colour(255, 0, 255), Colour(255, 255, 0), Colour(255, 255, 255)};

TEST(QBColor, SixteenColours) {
  for (int32_t i = 0; i < 16; ++i) EXPECT_EQ(QBColor(i), kQB[i]) << i;
}

TEST(BorderSet, NamedValues) {
  const std::pair<int32_t, int32_t> kValues[] = {
      {0x00, Colour(0, 0, 0)},       {0x02, Colour(0, 0, 128)},     {0x08, Colour(128, 0, 0)},
      {0x20, Colour(0, 128, 0)},     {0x2A, Colour(192, 192, 192)}, {0x80, Colour(128, 128, 128)},
      {0x82, Colour(0, 0, 255)},     {0x88, Colour(255, 0, 0)},     {0xA0, Colour(0, 255, 0)},
      {0xAA, Colour(255, 255, 255)}, {0x55, Colour(0, 0, 0)},       {0xFF, Colour(255, 255, 255)}};
  for (const auto& [value, colour] : kValues) {
    Palette palette;
    palette.BorderLines.fill(-1);
    BorderSet(palette, value, 0);
    for (const int32_t line : palette.BorderLines) ASSERT_EQ(line, colour) << value;
  }
}

TEST(BorderSet, EveryValue) {
  for (int32_t v = 0; v < 256; ++v) {
    Palette palette;
    BorderSet(palette, v, 0);
    const int32_t index = (v >> 1 & 1) * 1 + (v >> 3 & 1) * 4 + (v >> 5 & 1) * 2 + (v >> 7 & 1) * 8;
    EXPECT_EQ(palette.BorderLines[0], kQB[index]) << v;
  }
}

TEST(BorderSet, FromItsBandToTheEnd) {
  for (const int32_t band : {0, 1, 100, 286, 287}) {
    for (const int32_t frameClock : {band * kBand, band * kBand + 217}) {
      Palette palette;
      palette.BorderLines.fill(5);
      BorderSet(palette, 0xAA, frameClock);
      for (int32_t b = 0; b < 288; ++b)
        ASSERT_EQ(palette.BorderLines[b], b < band ? 5 : 0xFFFFFF) << frameClock << " " << b;
    }
  }
}

TEST(BorderSet, EndOfTheFrame) {
  Palette palette;
  BorderSet(palette, 0x88, 62500);  // band 286
  EXPECT_EQ(palette.BorderLines[285], 0);
  EXPECT_EQ(palette.BorderLines[286], 255);
  EXPECT_EQ(palette.BorderLines[287], 255);
  const Palette before = palette;
  for (const int32_t frameClock : {288 * kBand, 100000, INT_MAX}) BorderSet(palette, 0x02, frameClock);
  EXPECT_EQ(palette, before);
  for (const int32_t frameClock : {-1, -100000, INT_MIN}) {
    BorderSet(palette, frameClock == -1 ? 0x02 : 0x88, frameClock);
    for (const int32_t line : palette.BorderLines) ASSERT_EQ(line, frameClock == -1 ? 128 << 16 : 255);
  }
}

TEST(BorderSet, BandsOfOneFrame) {
  Palette palette;
  BorderSet(palette, 0x02, 10 * kBand);
  BorderSet(palette, 0x08, 20 * kBand);
  BorderSet(palette, 0x20, 30 * kBand);
  for (int32_t b = 0; b < 288; ++b) {
    const int32_t colour = b < 10 ? 0 : b < 20 ? 128 << 16 : b < 30 ? 128 : 128 << 8;
    ASSERT_EQ(palette.BorderLines[b], colour) << b;
  }
  BorderCarryOver(palette);
  for (const int32_t line : palette.BorderLines) ASSERT_EQ(line, 128 << 8);
}

TEST(ColourHelpers, TVCcolor) {
  const PortBytes ports = Ports(11, 22, 33, 244);
  EXPECT_EQ(TVCcolor(ports, 0), 11);
  EXPECT_EQ(TVCcolor(ports, 1), 22);
  EXPECT_EQ(TVCcolor(ports, 2), 33);
  EXPECT_EQ(TVCcolor(ports, 3), 244);
  for (const int32_t index : {INT_MIN, -1, 4, 5, 0x60, INT_MAX}) EXPECT_EQ(TVCcolor(ports, index), 0);
}

TEST(ColourHelpers, BWQBColor) {
  EXPECT_EQ(BWQBColor(0), 0);
  EXPECT_EQ(BWQBColor(1), 4369 + 1244112);
  EXPECT_EQ(BWQBColor(15), 65535 + 18661680);
  EXPECT_EQ(BWQBColor(255), 1114095 + 317248560);
  for (int v = 0; v < 256; ++v) EXPECT_EQ(BWQBColor(static_cast<uint8_t>(v)), v * 1248481) << v;
}

TEST(ColourHelpers, Channels) {
  EXPECT_EQ(SplitRed(0x7F123456), 0x56);
  EXPECT_EQ(SplitGreen(0x7F123456), 0x34);
  EXPECT_EQ(SplitBlue(0x7F123456), 0x12);
  EXPECT_EQ(SplitRed(-1), 255);
  EXPECT_EQ(SplitGreen(-1), 255);
  EXPECT_EQ(SplitBlue(-1), 255);
  EXPECT_EQ(SplitBlue(INT_MIN), 0);
}

TEST(ColourHelpers, SplitGrayRoundsTheMean) {
  for (int sum = 0; sum <= 765; ++sum) {
    const int red = std::min(sum, 255), green = std::min(sum - red, 255), blue = sum - red - green;
    EXPECT_EQ(SplitGray(Colour(red, green, blue)), static_cast<int>(std::nearbyint(sum / 3.0))) << sum;
  }
  EXPECT_EQ(SplitGray(Colour(1, 1, 0)), 1);
  EXPECT_EQ(SplitGray(Colour(0, 1, 0)), 0);
}

}  // namespace
}  // namespace quoll
