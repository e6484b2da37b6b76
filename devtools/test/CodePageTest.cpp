#include <gtest/gtest.h>

#include "devtools/CodePage.h"

namespace quoll {
namespace {

TEST(CodePage, Letters) {
  EXPECT_EQ(UpperCase("az AZ 09 {|}"), "AZ AZ 09 {|}");
  EXPECT_EQ(LowerCase("az AZ 09 [\\]"), "az az 09 [\\]");
  const std::string_view small = "\xE1\xE9\xED\xF3\xF6\xF5\xFA\xFC\xFB\x9A\xB3\xB9\xBA\xBE\xBF";
  const std::string_view large = "\xC1\xC9\xCD\xD3\xD6\xD5\xDA\xDC\xDB\x8A\xA3\xA5\xAA\xBC\xAF";
  EXPECT_EQ(UpperCase(small), large);
  EXPECT_EQ(LowerCase(large), small);
  EXPECT_EQ(UpperCase("\xF7\xFF\xDF"), "\xF7\xFF\xDF");  // division sign, dot, sharp s
  EXPECT_EQ(LowerCase("\xD7\xDF"), "\xD7\xDF");
}

TEST(CodePage, Finding) {
  EXPECT_EQ(FindIgnoringCase("Hello World", "WORLD"), 6U);
  EXPECT_EQ(FindIgnoringCase("Hello World", "o", 5), 7U);
  EXPECT_EQ(FindIgnoringCase("\xC1", "\xE1"), 0U);
  EXPECT_EQ(FindIgnoringCase("Hello", "x"), std::string_view::npos);
  EXPECT_EQ(FindIgnoringCase("Hello", "Hello!"), std::string_view::npos);
  EXPECT_EQ(FindIgnoringCase("Hello", "", 5), 5U);
  EXPECT_EQ(FindIgnoringCase("Hello", "", 6), std::string_view::npos);
}

TEST(CodePage, EveryCodeComesBackFromUtf8) {
  for (int code = 0; code < 256; ++code) {
    const std::string text(1, static_cast<char>(code));
    EXPECT_EQ(Cp1250FromUtf8(Utf8FromCp1250(text)), text) << code;
  }
}

TEST(CodePage, Utf8) {
  EXPECT_EQ(Utf8FromCp1250("\xF5\xFB\x92\x80"),
            "\xC5\x91\xC5\xB1\xE2\x80\x99\xE2\x82\xAC");  // o and u with double
                                                          // acute, quote, euro
  EXPECT_EQ(Cp1250FromUtf8("\xEF\xBB\xBF\xC3\x81"), "\xC1");
  EXPECT_EQ(Cp1250FromUtf8("\xE3\x81\x82\xF0\x9F\x98\x80."), "??.");
  EXPECT_EQ(Cp1250FromUtf8(""), "");
  for (const char* bad : {"\xE1", "\xC3", "\xC3(", "\xC0\x80", "\xE0\x80\x80", "\xED\xA0\x80",
                          "\xF5\x80\x80\x80", "\xF4\x90\x80\x80", "a\x80", "\xFF"}) {
    EXPECT_EQ(Cp1250FromUtf8(bad), std::nullopt);
  }
}

}  // namespace
}  // namespace quoll
