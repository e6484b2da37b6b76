// The picture's edge cases, worked out by hand.
#include <gtest/gtest.h>

#include <algorithm>
#include <climits>

#include "display/Refresh.h"
#include "display/test/SlowPicture.h"
#include "loop/Redraw.h"
#include "testkit/TestMachine.h"

namespace quoll::test {
namespace {

using Bytes = std::vector<int>;

struct PictureCase : testing::Test {
  TestMachine machine;
  Machine& m = *machine;

  void SetUp() override {
    SetCrtc(m, 64, 60, 0, 0);
    m.screen.xScreenDIB = false;
  }

  void Draw(int mode) {
    m.PortShadow[6] = static_cast<uint8_t>(mode);
    PALchNull(m.palette);
    redraw(m);
  }

  // Red, green, blue of a device pixel as shown, for pictures of any size.
  Bytes At(int x, int y) const {
    const std::vector<uint8_t> pixels = PicturePixels(m.picture);
    const size_t at = (static_cast<size_t>(y) * m.picture.Width + x) * 3;
    return {pixels.at(at), pixels.at(at + 1), pixels.at(at + 2)};
  }
};

const Bytes kBlack{0, 0, 0};

TEST_F(PictureCase, PlacedByTheCrtc) {
  m.crtc.CrtcRegs[2] = 79;
  m.crtc.CrtcRegs[5] = 2;
  m.crtc.CrtcRegs[7] = 68;
  redraw(m);
  EXPECT_EQ(m.picture.Left, 32);                     // (83 - 79) x 8
  EXPECT_EQ(m.picture.Top, (2 - 68 * 4) * 2 + 572);  // 32
  EXPECT_EQ(m.picture.Width, 512);
  EXPECT_EQ(m.picture.Height, 480);

  m.crtc.CrtcRegs[2] = 255;
  m.crtc.CrtcRegs[5] = 0;
  m.crtc.CrtcRegs[7] = 127;
  SetCrtc(m, 40, 25, 0, 0);
  redraw(m);
  EXPECT_EQ(m.picture.Left, -1376);
  EXPECT_EQ(m.picture.Top, -444);
  EXPECT_EQ(m.picture.Width, 320);
  EXPECT_EQ(m.picture.Height, 200);
}

TEST_F(PictureCase, PlaceWrapsForAnyNumbers) {
  m.crtc.CrtcRegs[2] = INT_MIN;  // 83 x 8, the rest is a multiple of 2 to the 32nd
  m.crtc.CrtcRegs[5] = INT_MAX;  // twice it is -2
  m.crtc.CrtcRegs[7] = INT_MIN;
  redraw(m);
  EXPECT_EQ(m.picture.Left, 664);
  EXPECT_EQ(m.picture.Top, 570);
}

TEST_F(PictureCase, AfterResetNothingIsShown) {
  CrtcReset(m.crtc);
  for (int mode = 0; mode < 4; ++mode) {
    for (const bool dib : {false, true}) {
      m.screen.xScreenDIB = dib;
      Draw(mode);
      EXPECT_EQ(m.picture.Width, 0);
      EXPECT_EQ(m.picture.Height, 0);
      EXPECT_TRUE(PicturePixels(m.picture).empty());
    }
  }
  EXPECT_EQ(m.picture.shown, 8U);
}

TEST_F(PictureCase, TwoColourPixels) {
  SetPalettePorts(m, 0x40, 0x55, 0x15, 0x15);
  m.MemImage[0x10000] = 0x81;
  Draw(0);
  EXPECT_EQ(At(0, 0), (Bytes{248, 224, 254}));
  for (int x = 1; x < 7; ++x) EXPECT_EQ(At(x, 0), kBlack);  // bright black is black
  EXPECT_EQ(At(7, 0), (Bytes{248, 224, 254}));
  SetPalettePorts(m, 0x40, 0x15, 0, 0);
  Draw(0);
  EXPECT_EQ(At(0, 0), (Bytes{124, 112, 127}));
  SetPalettePorts(m, 0x00, 0xAA, 0, 0);  // the bits between are nothing
  Draw(0);
  EXPECT_EQ(At(0, 0), kBlack);
}

TEST_F(PictureCase, FourColourPixels) {
  SetPalettePorts(m, 0x40, 0x55, 0x04, 0x41);
  // Pixels 0, 1, 2, 3 from the left: high nibble 0101 gives the low index bits, low nibble 0011 the high
  // ones.
  m.MemImage[0x10000] = 0x53;
  for (const bool dib : {false, true}) {
    m.screen.xScreenDIB = dib;
    Draw(1);
    const Bytes expected[4] = {kBlack, {254, 254, 254}, {127, 0, 0}, {0, 0, 254}};
    for (int x = 0; x < 8; ++x) EXPECT_EQ(At(x, 0), expected[x / 2]) << x;
  }
  SetPalettePorts(m, 0x15, 0x10, 0x01, 0x51);
  Draw(1);
  EXPECT_EQ(At(0, 0), (Bytes{127, 127, 127}));
  EXPECT_EQ(At(2, 0), (Bytes{0, 127, 0}));
  EXPECT_EQ(At(4, 0), (Bytes{0, 0, 127}));
  EXPECT_EQ(At(6, 0), (Bytes{0, 254, 254}));
}

TEST_F(PictureCase, SixteenColourPixels) {
  struct Case {
    int byte;
    Bytes left, right;
  };
  const Case kCases[] = {
      {0x01, kBlack, {0, 0, 128}},     {0x02, {0, 0, 128}, kBlack},     {0x04, kBlack, {128, 0, 0}},
      {0x08, {128, 0, 0}, kBlack},     {0x10, kBlack, {0, 128, 0}},     {0x20, {0, 128, 0}, kBlack},
      {0x40, kBlack, kBlack},          {0x80, kBlack, kBlack},          {0xC0, kBlack, kBlack},
      {0x15, kBlack, {192, 192, 192}}, {0x55, kBlack, {255, 255, 255}}, {0xAA, {255, 255, 255}, kBlack},
      {0x82, {0, 0, 255}, kBlack},     {0x44, kBlack, {255, 0, 0}},     {0xA0, {0, 255, 0}, kBlack},
      {0x14, kBlack, {128, 128, 0}},
  };
  for (const bool dib : {false, true}) {
    m.screen.xScreenDIB = dib;
    for (const Case& c : kCases) {
      m.MemImage[0x10000] = static_cast<uint8_t>(c.byte);
      for (const int mode : {2, 3}) {
        Draw(mode);
        for (int x = 0; x < 8; ++x) EXPECT_EQ(At(x, 0), x < 4 ? c.left : c.right) << c.byte << " " << x;
      }
    }
  }
}

TEST_F(PictureCase, ThePaletteDoesNotTouchSixteenColours) {
  FillMemory(m, 1);
  Draw(2);
  const auto before = m.picture.ScreenBits;
  SetPalettePorts(m, 0x55, 0x55, 0x55, 0x55);
  Draw(2);
  EXPECT_EQ(m.picture.ScreenBits, before);
}

TEST_F(PictureCase, GapsOfThePlainPathAndDoubledRowsOfTheOther) {
  std::fill(m.MemImage.begin() + 0x10000, m.MemImage.begin() + 0x14000, uint8_t{0xFF});
  Draw(2);
  EXPECT_FALSE(m.picture.shownFromDib);
  for (int y = 0; y < 480; y += 53) EXPECT_EQ(At(100, y), (y % 2 == 0 ? Bytes{255, 255, 255} : kBlack)) << y;
  m.screen.xScreenDIB = true;
  Draw(2);
  EXPECT_TRUE(m.picture.shownFromDib);
  for (int y = 0; y < 480; y += 53) EXPECT_EQ(At(100, y), (Bytes{255, 255, 255})) << y;
}

// The first row of both paths shows palette line 1, row n line n.
TEST_F(PictureCase, RowsTakeTheLineOfTheirNumber) {
  SetPalettePorts(m, 0x04, 0, 0, 0);
  m.palette.PalNextLine = 0;
  PALSet(m.palette, m.PortShadow, 1 * 245);  // lines 0 and 1 red ...
  m.PortShadow[0x60] = 0x10;
  PALSet(m.palette, m.PortShadow, 3 * 245);  // ... then from 1 on green, up to 3
  m.PortShadow[0x60] = 0x01;
  m.PortShadow[6] = 0;
  redraw(m);
  EXPECT_EQ(m.palette.PalHistory[0][0], 0x04);
  EXPECT_EQ(At(0, 0), (Bytes{0, 112, 0}));
  EXPECT_EQ(At(0, 2), (Bytes{0, 112, 0}));
  EXPECT_EQ(At(0, 4), (Bytes{0, 0, 127}));
  EXPECT_EQ(At(0, 478), (Bytes{0, 0, 127}));
}

TEST_F(PictureCase, RowsPastTheHistoryTakeItsLastLine) {
  SetCrtc(m, 64, 127, 0, 0);
  SetPalettePorts(m, 0x01, 0, 0, 0);
  PALSet(m.palette, m.PortShadow, 255 * 245);
  m.PortShadow[0x60] = 0x04;
  redraw(m);
  EXPECT_EQ(At(0, 2 * 253), (Bytes{0, 0, 127}));  // row 254
  for (const int row : {255, 256, 257, 400, 508}) EXPECT_EQ(At(0, 2 * (row - 1)), (Bytes{124, 0, 0})) << row;
}

TEST_F(PictureCase, PageWrap) {
  m.MemImage[0x13FFF] = 0x55;  // the right pixel white
  m.MemImage[0x10000] = 0xAA;  // the left pixel white
  m.MemImage[0x14000] = 0x04;  // must not be seen
  SetCrtc(m, 64, 60, 0x3F, 0xFF);
  for (const bool dib : {false, true}) {
    m.screen.xScreenDIB = dib;
    Draw(2);
    EXPECT_EQ(At(7, 0), (Bytes{255, 255, 255}));
    EXPECT_EQ(At(8, 0), (Bytes{255, 255, 255}));
    EXPECT_EQ(At(12, 0), kBlack);
  }
}

TEST_F(PictureCase, FourPages) {
  constexpr int32_t kBases[4] = {0x10000, 0x20000, 0x24000, 0x28000};
  const Bytes kColours[4] = {{0, 0, 128}, {128, 0, 0}, {0, 128, 0}, {128, 0, 128}};
  constexpr uint8_t kBytes[4] = {0x03, 0x0C, 0x30, 0x0F};
  for (int page = 0; page < 4; ++page) m.MemImage[kBases[page]] = kBytes[page];
  for (int page = 0; page < 4; ++page) {
    m.PortShadow[0x0F] = static_cast<uint8_t>(page * 16 + 0xC5);
    Draw(2);
    EXPECT_EQ(At(0, 0), kColours[page]);
    EXPECT_EQ(m.picture.page, page * 16);
  }
}

TEST_F(PictureCase, StartFactors) {
  SetPalettePorts(m, 0x00, 0x01, 0x00, 0x00);
  SetCrtc(m, 64, 60, 0x10, 0x00);
  m.MemImage[0x10000] = 0xF0;
  Draw(1);  // base + 0x4000 is one page too far and becomes base
  EXPECT_EQ(At(0, 0), (Bytes{0, 0, 127}));
  EXPECT_EQ(At(7, 0), (Bytes{0, 0, 127}));

  // Two colours: base + 0x8000 comes down to base + 0x4000, outside the page. The first byte is read
  // there; then the page wrap takes another 16384 off, so that base + 1 follows.
  m.MemImage[0x10000] = 0x00;
  m.MemImage[0x10001] = 0x0F;
  m.MemImage[0x14000] = 0xF0;
  m.MemImage[0x14001] = 0xFF;
  Draw(0);
  for (int x = 0; x < 16; ++x) EXPECT_EQ(At(x, 0), (x < 4 || x >= 12 ? Bytes{0, 0, 127} : kBlack)) << x;
}

// The furthest start a program can give, 16383 x 8 - 16384 = 114680 above the base: each byte comes 16383
// lower until the seventh, 114680 - 6 x 16383 = 16382, lies in the page.
TEST_F(PictureCase, StartFarAboveThePage) {
  SetPalettePorts(m, 0x00, 0x01, 0x00, 0x00);
  SetCrtc(m, 64, 60, 0x3F, 0xFF);
  for (const int32_t offset : {114680, 81914, 49148, 16382, 0}) m.MemImage[0x10000 + offset] = 0xFF;
  Draw(0);
  // The bytes between, at 98297, 65531, 32765 and 16383, are 0; after 16383 comes the page's start.
  for (int i = 0; i < 10; ++i)
    EXPECT_EQ(At(i * 8, 0), (i < 9 && i % 2 == 0 ? Bytes{0, 0, 127} : kBlack)) << i;
}

TEST_F(PictureCase, ModeIsReadOnceAPicture) {
  FillMemory(m, 6);
  SetPalettePorts(m, 0x00, 0x55, 0x14, 0x41);
  Draw(0);
  const auto two = m.picture.ScreenBits;
  m.PortShadow[6] = 1;  // written in the frame: the whole next picture has it
  EXPECT_EQ(m.picture.ScreenBits, two);
  redraw(m);
  SlowPicture slow;
  PALchNull(m.palette);
  SlowRefresh(slow, m);
  EXPECT_EQ(FirstDifference(slow.ScreenBits, m.picture.ScreenBits), "");
}

// 80 columns: row 1 switches by +192 at column 65, row 14 reads 32 before the address, nothing wraps.
TEST_F(PictureCase, EightyColumnPlaces) {
  SetCrtc(m, 80, 60, 0x10, 0x00);
  m.screen.xScreenDIB = true;
  m.MemImage[0x11000 + 63] = 0x03;
  m.MemImage[0x11000 + 64 + 192] = 0x0C;
  m.MemImage[0x11000 + 13 * 80 - 32] = 0x30;
  m.MemImage[0x11000 + 16 * 80] = 0x0F;  // row 17 is the first of the next sixteen
  Draw(2);
  EXPECT_EQ(At(63 * 8, 0), (Bytes{0, 0, 128}));
  EXPECT_EQ(At(64 * 8, 0), (Bytes{128, 0, 0}));
  EXPECT_EQ(At(639, 1), kBlack);
  EXPECT_EQ(At(0, 26), (Bytes{0, 128, 0}));
  EXPECT_EQ(At(0, 27), (Bytes{0, 128, 0}));
  EXPECT_EQ(At(0, 32), (Bytes{128, 0, 128}));
}

TEST_F(PictureCase, EightyColumnsRunOutOfThePage) {
  SetCrtc(m, 80, 60, 0x3F, 0xFF);
  m.screen.xScreenDIB = true;
  m.MemImage[0x13FFF] = 0x03;
  m.MemImage[0x14000] = 0x0C;
  m.MemImage[0x10000] = 0x30;
  Draw(2);
  EXPECT_EQ(At(0, 0), (Bytes{0, 0, 128}));
  EXPECT_EQ(At(8, 0), (Bytes{128, 0, 0}));
}

// A narrow plain picture of 64 x 480 has room for 122880 bytes; a screen row and its gap take 2304.
TEST_F(PictureCase, NarrowPlainPictureLosesItsEnd) {
  SetCrtc(m, 8, 60, 0, 0);
  std::fill(m.MemImage.begin() + 0x10000, m.MemImage.begin() + 0x14000, uint8_t{0xFF});
  Draw(2);
  const auto& bits = m.picture.ScreenBits;
  ASSERT_EQ(bits.size(), 122880U);
  for (size_t i = 0; i < bits.size(); ++i) ASSERT_EQ(bits[i], i % 2304 < 256 && i % 4 != 3 ? 255 : 0) << i;
}

// In the 2- and 4-colour modes only 512 of the 640 pixels are doubled.
TEST_F(PictureCase, WideDibRowsAreDoubledInPart) {
  SetCrtc(m, 80, 60, 0, 0);
  m.screen.xScreenDIB = true;
  SetPalettePorts(m, 0x01, 0, 0, 0);
  for (const int mode : {0, 1}) {
    m.picture.DibBits.assign(m.picture.DibBits.size(), 0);
    Draw(mode);
    EXPECT_EQ(At(639, 0), (Bytes{0, 0, 127}));
    EXPECT_EQ(At(511, 1), (Bytes{0, 0, 127}));
    EXPECT_EQ(At(512, 1), kBlack);
  }
}

TEST_F(PictureCase, ShearedPixelsOfAnotherWidth) {
  SetCrtc(m, 32, 60, 0, 0);  // 256 pixels: 1024 bytes a row, then a gap of 2048
  std::fill(m.MemImage.begin() + 0x10000, m.MemImage.begin() + 0x14000, uint8_t{0xFF});
  Draw(2);
  for (int y = 0; y < 12; ++y) EXPECT_EQ(At(17, y), (y % 3 == 0 ? Bytes{255, 255, 255} : kBlack)) << y;
}

TEST_F(PictureCase, PixelsOfAnOddRecord) {
  Picture picture;
  EXPECT_TRUE(PicturePixels(picture).empty());
  picture.Width = 2;
  picture.Height = 1;
  EXPECT_EQ(PicturePixels(picture), std::vector<uint8_t>(6));  // nothing drawn yet
  picture.ScreenBits = {1, 2, 3, 9, 4, 5, 6, 9};
  EXPECT_EQ(PicturePixels(picture), (std::vector<uint8_t>{3, 2, 1, 6, 5, 4}));
  // An array wider than the box: the box shows its left part; a lower one leaves the rest black.
  picture.shownFromDib = true;
  picture.DibWidth = 4;
  picture.DibHeight = 2;
  picture.Height = 3;
  picture.DibBits.resize(24);
  for (uint8_t i = 0; i < 24; ++i) picture.DibBits[i] = i;
  EXPECT_EQ(PicturePixels(picture),
            (std::vector<uint8_t>{2, 1, 0, 5, 4, 3, 14, 13, 12, 17, 16, 15, 0, 0, 0, 0, 0, 0}));
  picture.Width = -5;
  EXPECT_TRUE(PicturePixels(picture).empty());
}

TEST_F(PictureCase, ScreenUntickedFreezesThePictureAndNotTheBorder) {
  FillMemory(m, 2);
  Draw(2);
  const Picture before = m.picture;
  const Palette history = m.palette;
  m.cpumon.Check5 = false;
  SetCrtc(m, 40, 20, 3, 3);
  m.crtc.CrtcRegs[2] = 7;
  FillMemory(m, 8);
  SetPalettePorts(m, 1, 2, 3, 4);
  BorderSet(m.palette, 0x88, 0);
  redraw(m);
  EXPECT_EQ(m.picture.ScreenBits, before.ScreenBits);
  EXPECT_EQ(m.picture.Width, 512);
  EXPECT_EQ(m.picture.Height, 480);
  EXPECT_EQ(m.picture.Left, before.Left);
  EXPECT_EQ(m.picture.shown, 1U);
  EXPECT_EQ(m.palette.PalHistory, history.PalHistory);
  EXPECT_EQ(m.picture.borders, 2U);
  EXPECT_EQ(m.picture.Border, std::vector<int32_t>(288, 255));
}

TEST_F(PictureCase, BorderPaintedAndCarriedOver) {
  BorderSet(m.palette, 0x02, 0);
  BorderSet(m.palette, 0xAA, 100 * 218);
  redraw(m);
  EXPECT_EQ(m.picture.borders, 1U);
  ASSERT_EQ(m.picture.Border.size(), 288U);
  for (size_t b = 0; b < 288; ++b) EXPECT_EQ(m.picture.Border[b], b < 100 ? 128 << 16 : 0xFFFFFF) << b;
  for (const int32_t line : m.palette.BorderLines) ASSERT_EQ(line, 0xFFFFFF);
  redraw(m);
  EXPECT_EQ(m.picture.borders, 2U);
  EXPECT_EQ(m.picture.Border, std::vector<int32_t>(288, 0xFFFFFF));
}

TEST_F(PictureCase, BorderUntickedKeepsTheOldBands) {
  BorderSet(m.palette, 0x02, 0);
  redraw(m);
  m.cpumon.Check6 = false;
  BorderSet(m.palette, 0x08, 100 * 218);
  redraw(m);
  EXPECT_EQ(m.picture.borders, 1U);
  EXPECT_EQ(m.picture.Border, std::vector<int32_t>(288, 128 << 16));
  EXPECT_EQ(m.palette.BorderLines[99], 128 << 16);  // collected all the same, not carried over
  EXPECT_EQ(m.palette.BorderLines[100], 128);
  EXPECT_EQ(m.picture.shown, 2U);
}

}  // namespace
}  // namespace quoll::test
