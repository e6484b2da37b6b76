#include <gtest/gtest.h>

#include "core/NumberText.h"

namespace quoll::test {
namespace {

TEST(NumberOfText, ReadsDecimalAndHexadecimal) {
  EXPECT_EQ(NumberOfText("0"), 0);
  EXPECT_EQ(NumberOfText("1234"), 1234);
  EXPECT_EQ(NumberOfText("  65535"), 65535);
  EXPECT_EQ(NumberOfText("\t7"), 7);
  EXPECT_EQ(NumberOfText("&H1234"), 0x1234);
  EXPECT_EQ(NumberOfText("&hfFfF"), 65535);
  EXPECT_EQ(NumberOfText("  &Hab"), 0xAB);
  EXPECT_EQ(NumberOfText("007"), 7);
  EXPECT_EQ(NumberOfText("-5"), -5);
  EXPECT_EQ(NumberOfText("+5"), 5);
}

TEST(NumberOfText, StopsAtTheFirstStranger) {
  EXPECT_EQ(NumberOfText("12x4"), 12);
  EXPECT_EQ(NumberOfText("12A"), 12);
  EXPECT_EQ(NumberOfText("12 34"), 12);
  EXPECT_EQ(NumberOfText("1.5"), 1);
  EXPECT_EQ(NumberOfText("&H12G4"), 0x12);
  EXPECT_EQ(NumberOfText("&H1 2"), 1);
}

TEST(NumberOfText, GivesZeroForABadText) {
  for (const char* text : {"", " ", "&", "&H", "&h ", "H12", "&12", "x", "-", "--5", "&O17", "$12"}) {
    EXPECT_EQ(NumberOfText(text), 0) << text;
  }
}

TEST(NumberOfText, DoesNotRunOver) {
  EXPECT_EQ(NumberOfText("2147483647"), 2147483647);
  EXPECT_EQ(NumberOfText("2147483648"), 2147483647);
  EXPECT_EQ(NumberOfText(std::string(1000, '9')), 2147483647);
  EXPECT_EQ(NumberOfText("&H" + std::string(1000, 'F')), 2147483647);
  EXPECT_EQ(NumberOfText("-" + std::string(1000, '9')), -2147483647);
}

}  // namespace
}  // namespace quoll::test
