#include <gtest/gtest.h>

#include <climits>
#include <cmath>

#include "devtools/ToolText.h"

namespace quoll {
namespace {

using Pieces = std::vector<std::string>;

TEST(ToolText, Hex) {
  EXPECT_EQ(Hex2(0), "00");
  EXPECT_EQ(Hex2(10), "0A");
  EXPECT_EQ(Hex2(255), "FF");
  EXPECT_EQ(Hex2(0x1AB), "1AB");
  EXPECT_EQ(Hex2(-1), "FFFFFFFF");
  EXPECT_EQ(Hex4(0), "0000");
  EXPECT_EQ(Hex4(0xBEEF), "BEEF");
  EXPECT_EQ(Hex4(0x12345), "12345");
  EXPECT_EQ(Hex4(INT_MIN), "80000000");
}

TEST(ToolText, SignedByte) {
  EXPECT_EQ(SignedByte(0), 0);
  EXPECT_EQ(SignedByte(127), 127);
  EXPECT_EQ(SignedByte(128), -128);
  EXPECT_EQ(SignedByte(255), -1);
}

TEST(ToolText, HexValue) {
  EXPECT_EQ(HexValue("0"), 0);
  EXPECT_EQ(HexValue("fF"), 255);
  EXPECT_EQ(HexValue("FFFF"), 65535);
  EXPECT_EQ(HexValue("7FFFFFFF"), INT_MAX);
  EXPECT_EQ(HexValue("FFFFFFFF"), -1);
  EXPECT_EQ(HexValue("00000000012"), 18);
  EXPECT_EQ(HexValue("12  "), 18);
  for (const char* bad : {"", " ", "G", "1G", "-1", "+1", "0x1", " 1", "1 2", "123456789"}) {
    EXPECT_EQ(HexValue(bad), std::nullopt) << bad;
  }
}

TEST(ToolText, NumberValue) {
  EXPECT_EQ(NumberValue("12"), 12);
  EXPECT_EQ(NumberValue(" \t12AB"), 12);
  EXPECT_EQ(NumberValue("-5"), -5);
  EXPECT_EQ(NumberValue("+5"), 5);
  EXPECT_EQ(NumberValue("1.5.5"), 1.5);
  EXPECT_EQ(NumberValue(".5"), 0.5);
  EXPECT_EQ(NumberValue("1E5"), 1);
  for (const char* none : {"", "  ", "A", "-", ".", "-.", "$5", "&H5", "\"5"})
    EXPECT_EQ(NumberValue(none), 0) << none;
  EXPECT_TRUE(std::isinf(NumberValue(std::string(400, '9'))));
}

TEST(ToolText, Rounding) {
  EXPECT_EQ(RoundedToInt32(0.5), 0);
  EXPECT_EQ(RoundedToInt32(1.5), 2);
  EXPECT_EQ(RoundedToInt32(2.5), 2);
  EXPECT_EQ(RoundedToInt32(-1.5), -2);
  EXPECT_EQ(RoundedToInt32(2147483647.4), INT_MAX);
  EXPECT_EQ(RoundedToInt32(2147483647.5), std::nullopt);
  EXPECT_EQ(RoundedToInt32(-2147483648.0), INT_MIN);
  EXPECT_EQ(RoundedToInt32(INFINITY), std::nullopt);
  EXPECT_EQ(RoundedToInt32(NAN), std::nullopt);
}

TEST(ToolText, ReplaceText) {
  EXPECT_EQ(ReplaceText("abcabc", "b", "XX"), "aXXcaXXc");
  EXPECT_EQ(ReplaceText("abcabc", "b", ""), "acac");
  EXPECT_EQ(ReplaceText("abcabc", "b", "X", 1, 1), "aXcabc");
  EXPECT_EQ(ReplaceText("abcabc", "b", "X", 3, -1), "abcaXc");
  EXPECT_EQ(ReplaceText("abcabc", "b", "X", 1, 0), "abcabc");
  EXPECT_EQ(ReplaceText("abc", "b", "X", 9, -1), "abc");
  EXPECT_EQ(ReplaceText("aaaa", "aa", "a"), "aa");  // what is put in is not looked at again
  EXPECT_EQ(ReplaceText("abc", "", "X"), "abc");
}

TEST(ToolText, SplitText) {
  EXPECT_EQ(SplitText("a,b,,c", ","), (Pieces{"a", "b", "", "c"}));
  EXPECT_EQ(SplitText("a,b,c", ",", 2), (Pieces{"a", "b,c"}));
  EXPECT_EQ(SplitText("a,b,c", ",", 1), (Pieces{"a,b,c"}));
  EXPECT_EQ(SplitText("a, b", ", "), (Pieces{"a", "b"}));
  EXPECT_EQ(SplitText("", ","), (Pieces{""}));
  EXPECT_EQ(SplitText("a,", ","), (Pieces{"a", ""}));
}

TEST(ToolText, Pieces) {
  EXPECT_EQ(Trim("  a b  "), "a b");
  EXPECT_EQ(Trim("\ta "), "\ta");
  EXPECT_EQ(Trim("   "), "");
  EXPECT_EQ(Mid("abcd", 2), "bcd");
  EXPECT_EQ(Mid("abcd", 2, 2), "bc");
  EXPECT_EQ(Mid("abcd", 4, 9), "d");
  EXPECT_EQ(Mid("abcd", 5), "");
  EXPECT_EQ(Mid("abcd", 99), "");
}

}  // namespace
}  // namespace quoll
