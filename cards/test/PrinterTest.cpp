#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <string>

#include "cards/Printer.h"

namespace quoll {
namespace {

int Printed(int byte) {
  Printer printer;
  Senddata(printer, static_cast<uint8_t>(byte));
  EXPECT_EQ(printer.printed.size(), 1U) << byte;
  return static_cast<uint8_t>(printer.printed.at(0));
}

TEST(Printer, StartsEmpty) { EXPECT_EQ(Printer{}.printed, ""); }

TEST(Printer, BytesBelow7FStay) {
  for (int byte = 0; byte < 0x7F; ++byte) EXPECT_EQ(Printed(byte), byte);
}

TEST(Printer, LettersAndFramesAreTranslated) {
  constexpr int kPairs[][2] = {
      {0x7F, 0xDB}, {0x87, 0x9A}, {0x8F, 0xC6}, {0x97, 0x81},  //
      {0x80, 0xB5}, {0x88, 0xEB}, {0x90, 0xA0}, {0x98, 0xFB},  //
      {0x81, 0x90}, {0x89, 0xDA}, {0x91, 0x82}, {0x99, 0xBF},  //
      {0x82, 0x92}, {0x8A, 0xC0}, {0x92, 0x8C}, {0x9A, 0xD9},  //
      {0x83, 0xE0}, {0x8B, 0xB3}, {0x93, 0xA2}, {0x9B, 0xC4},  //
      {0x84, 0x99}, {0x8C, 0xC3}, {0x94, 0x94}, {0x9C, 0xB4},  //
      {0x85, 0x8A}, {0x8D, 0xC2}, {0x95, 0x8B}, {0x9D, 0xC1},  //
      {0x86, 0xE9}, {0x8E, 0xC5}, {0x96, 0xA3}, {0x9E, 0xAC},  //
      {0x9F, 0xE6},
  };
  std::array<int, 256> seen{};
  for (const auto& pair : kPairs) {
    EXPECT_EQ(Printed(pair[0]), pair[1]) << std::hex << pair[0];
    ++seen[pair[0]];
  }
  for (int byte = 0x7F; byte <= 0x9F; ++byte) EXPECT_EQ(seen[byte], 1) << std::hex << byte;
}

TEST(Printer, BytesAbove9FAreFullStops) {
  for (int byte = 0xA0; byte < 0x100; ++byte) EXPECT_EQ(Printed(byte), '.') << std::hex << byte;
}

TEST(Printer, TextGrowsAtItsEnd) {
  Printer printer;
  for (const uint8_t byte : std::array<uint8_t, 6>{0x41, 0x90, 0x0D, 0x0A, 0x00, 0xFF})
    Senddata(printer, byte);
  EXPECT_EQ(printer.printed, std::string("A\xA0\r\n\0.", 6));
  printer.printed = "edited";
  Senddata(printer, '!');
  EXPECT_EQ(printer.printed, "edited!");
}

}  // namespace
}  // namespace quoll
