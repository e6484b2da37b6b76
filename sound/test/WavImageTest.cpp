#include <gtest/gtest.h>

#include <algorithm>

#include "core/WaveHeader.h"
#include "sound/WavImage.h"

namespace quoll {
namespace {

using Bytes = std::vector<uint8_t>;

Bytes Header(const Bytes& image) { return {image.begin(), image.begin() + 44}; }

TEST(WavImage, ASecondOfSilence) {
  const Bytes image = BuildWavImage(1, 22050, 1.0);
  // 22050 is 0x5622, with 36 more it is 0x5646.
  const Bytes expected = {'R', 'I', 'F', 'F', 0x46, 0x56, 0,   0,   'W', 'A',  'V',  'E',  'f', 'm',  't',
                          ' ', 16,  0,   0,   0,    1,    0,   1,   0,   0x22, 0x56, 0,    0,   0x22, 0x56,
                          0,   0,   2,   0,   8,    0,    'd', 'a', 't', 'a',  0x22, 0x56, 0,   0};
  ASSERT_EQ(image.size(), 44U + 22050U);
  EXPECT_EQ(Header(image), expected);
  EXPECT_TRUE(std::all_of(image.begin() + 44, image.end(), [](uint8_t byte) { return byte == 128; }));
}

TEST(WavImage, TheBlockAlignStaysTwo) {
  const Bytes image = BuildWavImage(2, 100, 0.5);
  ASSERT_EQ(image.size(), 44U + 100U);
  EXPECT_EQ(image[22], 2);    // channels
  EXPECT_EQ(image[28], 200);  // bytes a second
  EXPECT_EQ(image[32], 2);
  EXPECT_EQ(image[40], 100);
}

TEST(WavImage, SamplesAreRoundedToEven) {
  EXPECT_EQ(BuildWavImage(1, 1, 2.5).size(), 46U);
  EXPECT_EQ(BuildWavImage(1, 1, 3.5).size(), 48U);
  EXPECT_EQ(BuildWavImage(1, 1, 2.6).size(), 47U);
  EXPECT_EQ(BuildWavImage(1, 22050, -1.0).size(), 44U);
}

TEST(WaveHeader, EachFieldInItsPlace) {
  const WaveFormat format{0x0102, 0x03040506, 0x0708090A, 0x0B0C, 0x0D0E};
  const auto header = WaveHeader(format, 0x10203040);
  const Bytes fields(header.begin() + 20, header.end());
  const Bytes expected = {1,  0,  2,  1,  6,   5,   4,   3,   10,   9,    8,    7,
                          12, 11, 14, 13, 'd', 'a', 't', 'a', 0x40, 0x30, 0x20, 0x10};
  EXPECT_EQ(fields, expected);
  const Bytes size(header.begin() + 4, header.begin() + 8);
  EXPECT_EQ(size, (Bytes{0x64, 0x30, 0x20, 0x10}));
}

}  // namespace
}  // namespace quoll
