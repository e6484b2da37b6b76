// Texts as key presses: which keys, and how long each is held on a system that is known and on one that
// isn't.
#include <gtest/gtest.h>

#include <string>

#include "testkit/TestMachine.h"
#include "typing/Paste.h"
#include "typing/ScreenText.h"

namespace quoll::test {
namespace {

std::vector<int> Codes(std::string_view text) {
  std::vector<int> codes;
  for (const TypedKey& key : KeysOfText(text).keys) codes.push_back(key.code);
  return codes;
}

TEST(Paste, EveryLineEndIsOneEnter) {
  EXPECT_EQ(Codes("a\nb\r\nc\rd"), (std::vector<int>{'A', 13, 'B', 13, 'C', 13, 'D'}));
  EXPECT_EQ(Codes("\r\n\r\n"), (std::vector<int>{13, 13}));
  EXPECT_EQ(Codes(""), std::vector<int>());
}

TEST(Paste, WhatNoKeyGivesIsReplacedOrLeftOut) {
  EXPECT_EQ(KeysOfText("\t“”…").keys, KeysOfText(" \"\"...").keys);
  EXPECT_EQ(KeysOfText("çß").keys, KeysOfText("css").keys);
  EXPECT_EQ(KeysOfText("€漢\x01").leftOut, 3U);
  EXPECT_EQ(KeysOfText("€a").keys.size(), 1U);
  EXPECT_EQ(KeysOfText("\xC3").leftOut, 1U);  // cut in the midst of a character
}

TEST(Paste, KeysOfTheThreeLevels) {
  EXPECT_EQ(KeyOfCharacter("q"), (TypedKey{'Q', false, false}));
  EXPECT_EQ(KeyOfCharacter("Q"), (TypedKey{'Q', true, false}));
  EXPECT_EQ(KeyOfCharacter("\\"), (TypedKey{'Q', false, true}));
}

// A system that takes a key into its queue some frames after it went down, and out of it some frames later
// still.
struct QueueSystem {
  TestMachine machine;
  Machine& m = *machine;
  std::string taken;
  size_t most = 0;
  int delay = 0;

  explicit QueueSystem(bool known) {
    const std::string_view name = "QUOLL BASIC";
    if (known) std::ranges::copy(name, m.MemImage.begin() + 0x18000);
  }
  uint8_t& Head() { return m.MemImage[0x0B1D]; }
  uint8_t& Tail() { return m.MemImage[0x0B1E]; }

  // Types the text; the machine needs so many frames to see a key, and works for so many on an Enter.
  int Run(std::string_view text, int seeing, int working) {
    Paste paste = StartPaste(m, text);
    std::array<uint8_t, 16> last{};
    int frames = 0, busy = 0, held = 0;
    for (; PasteFrame(paste, m) && frames < 100'000; ++frames) {
      const auto now = m.keyboard.KeyMatrix;
      held = now == last ? held + 1 : 0;
      last = now;
      if (now != decltype(now){} && held == seeing) {
        EXPECT_LT((Tail() - Head()) & 15, 15) << "full";
        Tail() = (Tail() + 1) & 15;
        for (size_t row = 0; row < 9; ++row) {
          for (int bit = 0; bit < 8; ++bit) {
            const bool modifier = (row == 6 && bit == 3) || (row == 7 && (bit == 4 || bit == 0));
            if (!modifier && (now[row] >> bit & 1) != 0)
              taken += std::to_string(row * 8 + static_cast<size_t>(bit)) + " ";
          }
        }
      }
      if (busy > 0) {
        --busy;
      } else if (Head() != Tail()) {
        Head() = (Head() + 1) & 15;
        busy = working;
      }
    }
    return frames;
  }
};

TEST(Paste, TheQueueSetsThePace) {
  for (const int working : {0, 3, 40}) {
    QueueSystem system(true);
    system.Run("abba", 1, working);
    // a is bit 6 of row 4, b bit 0 of row 6.
    EXPECT_EQ(system.taken, "38 48 48 38 ") << working;
    EXPECT_EQ(system.m.keyboard, Keyboard());
  }
}

TEST(Paste, AnotherSystemIsGivenTime) {
  QueueSystem system(false);
  const int frames = system.Run("ab\nc", 1, 0);
  EXPECT_EQ(system.taken, "38 48 44 49 ");
  EXPECT_GT(frames, 20);
  EXPECT_EQ(system.m.keyboard, Keyboard());
}

TEST(Paste, AKeyThatIsNeverTakenDoesNotStopIt) {
  QueueSystem system(true);
  const int frames = system.Run("ab", 1000, 0);
  EXPECT_GT(frames, 40);
  EXPECT_LT(frames, 100);
}

TEST(Paste, StoppedItLetsTheKeysGo) {
  TestMachine m;
  Paste paste = StartPaste(*m, "Q");
  EXPECT_TRUE(PasteFrame(paste, *m));
  EXPECT_NE(m->keyboard.KeyMatrix[6], 0);
  StopPaste(paste, *m);
  EXPECT_EQ(m->keyboard, Keyboard());
  EXPECT_FALSE(PasteFrame(paste, *m));
}

TEST(ScreenText, NothingWithoutAFont) {
  TestMachine m;
  EXPECT_EQ(ScreenText(*m), "");
}

}  // namespace
}  // namespace quoll::test
