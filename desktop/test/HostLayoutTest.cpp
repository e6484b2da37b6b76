// Keyboard layouts of several countries: every key of the machine has one of the host's.
#include <gtest/gtest.h>

#include <algorithm>
#include <string_view>

#include "desktop/picture/HostLayout.h"
#include "desktop/picture/KeyCodes.h"

namespace quoll {
namespace {

// The four rows of a layout, from the key left of the 1 on; the last one begins with the key between Shift
// and the first letter.
PlainSigns Layout(std::u32string_view digits, std::u32string_view upper, std::u32string_view home,
                  std::u32string_view lower) {
  PlainSigns signs{};
  const auto put = [&](size_t first, std::u32string_view row) {
    for (size_t i = 0; i < row.size(); ++i) signs[first + 8 + i] = row[i];
  };
  signs[41 + 8] = digits[0];
  put(2, digits.substr(1));
  put(16, upper);
  put(30, home);
  signs[86 + 8] = lower[0];
  put(44, lower.substr(1));
  return signs;
}

const PlainSigns kAmerican = Layout(U"`1234567890-=", U"qwertyuiop[]", U"asdfghjkl;'", U"<zxcvbnm,./");
const PlainSigns kDvorak = Layout(U"`1234567890[]", U"',.pyfgcrl/=", U"aoeuidhtns-", U"<;qjkxbmwvz");
const PlainSigns kFrench = Layout(U"²&é\"'(-è_çà)=", U"azertyuiop^$", U"qsdfghjklmù", U"<wxcvbn,;:!");
const PlainSigns kHungarian = Layout(U"0123456789öüó", U"qwertzuiopőú", U"asdfghjkléá", U"íyxcvbnm,.-");
const PlainSigns kRussian = Layout(U"ё1234567890-=", U"йцукенгшщзхъ", U"фывапролджэ", U"/ячсмитьбю.");

int32_t At(const LayoutCodes& codes, size_t kernel) { return codes[kernel + 8]; }

TEST(HostLayout, EveryLetterAndEveryOemKeyOnce) {
  for (const PlainSigns* layout : {&kAmerican, &kDvorak, &kFrench, &kHungarian}) {
    const LayoutCodes codes = CodesOfLayout(*layout);
    for (int32_t letter = 'A'; letter <= 'Z'; ++letter)
      EXPECT_EQ(std::ranges::count(codes, letter), 1) << char(letter);
    for (int32_t digit = '0'; digit <= '9'; ++digit)
      EXPECT_EQ(std::ranges::count(codes, digit), 1) << char(digit);
    for (const int32_t oem : kOemCodes) EXPECT_EQ(std::ranges::count(codes, oem), 1) << oem;
  }
}

TEST(HostLayout, SignsAtPlacesOfLetters) {
  const LayoutCodes dvorak = CodesOfLayout(kDvorak);
  EXPECT_EQ(At(dvorak, 17), 0xBC);  // the comma by its name
  EXPECT_EQ(At(dvorak, 18), 0xBE);
  EXPECT_EQ(At(dvorak, 44), 0xBA);
  EXPECT_EQ(At(dvorak, 16), 0xBD);  // the apostrophe's own place has the minus: it gets what is left
  EXPECT_EQ(At(dvorak, 45), 'Q');
  EXPECT_EQ(At(dvorak, 40), 0xDE);
  const LayoutCodes french = CodesOfLayout(kFrench);
  EXPECT_EQ(At(french, 50), 0xBA);  // the comma where others have the M
  EXPECT_EQ(At(french, 39), 'M');
  EXPECT_EQ(At(french, 16), 'A');
  EXPECT_EQ(At(french, 2), '1');
}

TEST(HostLayout, TheTwoHomesOfZero) {
  EXPECT_EQ(At(CodesOfLayout(kHungarian), 41), '0');
  EXPECT_EQ(At(CodesOfLayout(kHungarian), 11), 0xC0);
  EXPECT_EQ(At(CodesOfLayout(kAmerican), 11), '0');
  EXPECT_EQ(At(CodesOfLayout(kAmerican), 41), 0xC0);
}

TEST(HostLayout, OtherAlphabetsByPlace) {
  const LayoutCodes codes = CodesOfLayout(kRussian);
  EXPECT_EQ(At(codes, 16), 'Q');
  EXPECT_EQ(At(codes, 21), 'Z');  // as on a Hungarian keyboard
  EXPECT_EQ(At(codes, 50), 'M');
  EXPECT_EQ(At(codes, 51), 0xBC);
}

TEST(HostLayout, KeysWithoutASignCountByTheirPlace) {
  const LayoutCodes codes = CodesOfLayout(kAmerican);
  EXPECT_EQ(At(codes, 28), 0x0D);
  EXPECT_EQ(At(codes, 59), 0x70);
  EXPECT_EQ(At(codes, 103), 0x26);
  EXPECT_EQ(At(codes, 200), kNoVirtualKey);
}

}  // namespace
}  // namespace quoll
