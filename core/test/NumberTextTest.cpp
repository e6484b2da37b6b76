#include <gtest/gtest.h>

#include <string>

#include "core/NumberText.h"

namespace quoll::test {
namespace {

TEST(NumberOfText, Cases) {
  for (const auto& [text, number] : {
           std::pair<std::string, int32_t>{"0", 0},
           {"1234", 1234},
           {"  65535", 65535},
           {"\t7", 7},
           {"&H1234", 0x1234},
           {"&hfFfF", 65535},
           {"  &Hab", 0xAB},
           {"007", 7},
           {"-5", -5},
           {"+5", 5},
           // The first stranger ends it.
           {"12x4", 12},
           {"12A", 12},
           {"12 34", 12},
           {"1.5", 1},
           {"&H12G4", 0x12},
           {"&H1 2", 1},
           // It does not run over.
           {"2147483647", 2147483647},
           {"2147483648", 2147483647},
           {std::string(1000, '9'), 2147483647},
           {"&H" + std::string(1000, 'F'), 2147483647},
           {"-" + std::string(1000, '9'), -2147483647},
       }) {
    EXPECT_EQ(NumberOfText(text), number) << text;
  }
}

TEST(NumberOfText, GivesZeroForABadText) {
  for (const char* text : {"", " ", "&", "&H", "&h ", "H12", "&12", "x", "-", "--5", "&O17", "$12"}) {
    EXPECT_EQ(NumberOfText(text), 0) << text;
  }
}

}  // namespace
}  // namespace quoll::test
