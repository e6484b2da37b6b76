// The chips against their plain models, to the last sample and the last bit of what they keep.
#include <string>
#include <string_view>
#include <vector>

#include "sound/SidTune.h"
#include "sound/test/ChipTwins.h"

namespace quoll::test {

namespace {

template <class Twins>
struct ChipTwinsTest : testing::Test {};

using AllTwins = testing::Types<SnTwins, AyTwins, SaaTwins, OplTwins, OpllTwins, SidTwins>;
TYPED_TEST_SUITE(ChipTwinsTest, AllTwins);

TYPED_TEST(ChipTwinsTest, RandomRegisters) {
  constexpr int kScripts = 9, kFrames = 300;
  int sounding = 0;
  for (int script = 0; script < kScripts; ++script) {
    Dice dice;
    RandomSeed(dice.source, static_cast<uint64_t>(script) + 1);
    const auto twins = std::make_unique<TypeParam>();
    for (int frame = 0; frame < kFrames; ++frame) {
      SCOPED_TRACE(testing::Message() << "script " << script << " frame " << frame);
      if (dice.Once(100)) twins->Reset();
      // Some scripts write much, others let the chip go on by itself for a while.
      const int most = script % 3 == 0 ? 3 : 40;
      for (int writes = dice.Once(3) ? 0 : dice.Roll(most); writes > 0; --writes) twins->WriteAny(dice);
      twins->RenderChip();
      twins->RenderModel();
      twins->ExpectEqual();
      if (this->HasFailure()) return;
      sounding += twins->chip.silent == 0 ? 1 : 0;
    }
  }
  EXPECT_GT(sounding, kScripts * kFrames / 3);
}

TYPED_TEST(ChipTwinsTest, AToneHeldFor10000Frames) {
  const auto twins = std::make_unique<TypeParam>();
  twins->HoldTone();
  for (int frame = 0; frame < 10000; ++frame) {
    twins->RenderChip();
    twins->RenderModel();
    // Were anything to drift apart, it would stay so: the end tells, and some looks on the way.
    if (frame % 500 != 0 && frame != 9999) continue;
    SCOPED_TRACE(testing::Message() << "frame " << frame);
    twins->ExpectEqual();
    ASSERT_EQ(twins->chip.silent, 0);
    if (this->HasFailure()) return;
  }
}

// Lines of a dump with fields of digits, of dots, and of dots within.
TEST(SidTwinsTest, RandomSidxLines) {
  constexpr std::array kWords{"Low", "Bnd", "L+B", "L+H", "B+H", "LBH", "Off", "Hi ", "...", "Typ", "---"};
  constexpr std::string_view kDigits = "0123456789ABCDEFabcdef";
  struct Field {
    size_t column, count;
  };
  std::vector<Field> fields{{94, 2}, {96, 2}, {99, 1}, {100, 1}, {106, 1}};
  for (const size_t voice : {10U, 38U, 66U}) {
    for (const Field field : {Field{0, 4}, {14, 2}, {17, 1}, {18, 1}, {19, 1}, {20, 1}, {22, 1}, {23, 2}})
      fields.push_back({voice + field.column, field.count});
  }
  SidTwins twins;
  Dice dice;
  for (int line = 0; line < 5000; ++line) {
    std::string text(112, ' ');
    for (const Field& field : fields) {
      const bool dots = dice.Once(3);
      for (size_t i = 0; i < field.count; ++i)
        text[field.column + i] = dots ? '.' : kDigits[static_cast<size_t>(dice.Roll(22))];
    }
    text.replace(102, 3, kWords[static_cast<size_t>(dice.Roll(kWords.size()))]);
    ASSERT_EQ(SidxLine(text, twins.chip), "");
    twins.model.TakeSidxLine(text);
    ASSERT_EQ(twins.chip.SID_Reg, twins.model.SID_Reg) << text;
  }
}

}  // namespace

}  // namespace quoll::test
