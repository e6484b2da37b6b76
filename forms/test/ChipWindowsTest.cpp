// What the tables of the six chips' windows hold, and how the main window's menu shows them.
#include "forms/test/ChipBench.h"

namespace quoll::test {

namespace {

struct ChipWindowsTest : ChipBench {};

struct Row {
  const char* form;
  const char* name;
  ControlKind kind;
  int count;
  const char* caption;  // of the first one of an array; nullptr: any
};

constexpr Row kRows[] = {
    {"Fsaa", "Check2", ControlKind::Check, 0, "Manual"},
    {"Fsaa", "Check10", ControlKind::Check, 0, "Circuit"},
    {"Fsaa", "Check11", ControlKind::Check, 0, "patch"},
    {"Fsaa", "Check12", ControlKind::Check, 0, "patch"},
    {"Fsaa", "Check1", ControlKind::Check, 6, "Enable Freq"},
    {"Fsaa", "Check3", ControlKind::Check, 6, "Enable Noise"},
    {"Fsaa", "HScroll1", ControlKind::Scroll, 6, nullptr},
    {"Fsaa", "HScroll2", ControlKind::Scroll, 6, nullptr},
    {"Fsaa", "HScroll3", ControlKind::Scroll, 6, nullptr},
    {"Fsaa", "HScroll4", ControlKind::Scroll, 6, nullptr},
    {"Fsaa", "Check4", ControlKind::Check, 2, "Inverse R"},
    {"Fsaa", "Check5", ControlKind::Check, 2, "3 Bit"},
    {"Fsaa", "Check6", ControlKind::Check, 2, "External clock"},
    {"Fsaa", "Check7", ControlKind::Check, 2, "Enable envelope"},
    {"Fsaa", "HScroll6", ControlKind::Scroll, 2, nullptr},
    {"Fsaa", "Check8", ControlKind::Check, 0, "All out enable"},
    {"Fsaa", "Check9", ControlKind::Check, 0, "Reset"},
    {"Fsaa", "Command1", ControlKind::Button, 0, "Record"},
    {"Fsaa", "Label8", ControlKind::Label, 0, nullptr},
    {"Fsaa", "Label9", ControlKind::Label, 0, nullptr},
    {"Fsaa", "Label11", ControlKind::Label, 0, nullptr},
    {"Fsaa", "Pic1", ControlKind::Scope, 6, nullptr},
    {"Fsaa", "Timer1", ControlKind::Timer, 0, nullptr},
    {"FSN76489", "Check1", ControlKind::Check, 0, "Circuit"},
    {"FSN76489", "Check2", ControlKind::Check, 0, "Periodic Noise "},
    {"FSN76489", "Check3", ControlKind::Check, 0, "Manual"},
    {"FSN76489", "HScroll3", ControlKind::Scroll, 3, nullptr},
    {"FSN76489", "HScroll4", ControlKind::Scroll, 4, nullptr},
    {"FSN76489", "Label6", ControlKind::Label, 3, nullptr},
    {"FSN76489", "Pic1", ControlKind::Scope, 4, nullptr},
    {"FSN76489", "Timer1", ControlKind::Timer, 0, nullptr},
    {"FYM3812", "Check1", ControlKind::Check, 9, nullptr},
    {"FYM3812", "Check2", ControlKind::Check, 4, "KSR"},
    {"FYM3812", "Check3", ControlKind::Check, 0, "Direct I/O port:"},
    {"FYM3812", "Text2", ControlKind::Text, 0, nullptr},
    {"FYM3812", "Label1", ControlKind::Label, 246, "00"},
    {"FYM3812", "Text1", ControlKind::Text, 0, nullptr},
    {"FYM3812", "HScroll1", ControlKind::Scroll, 8, nullptr},
    {"FYM3812", "Command1", ControlKind::Button, 0, nullptr},
    {"FYM3812", "Pic1", ControlKind::Scope, 9, nullptr},
    {"FYM3812", "Timer1", ControlKind::Timer, 0, nullptr},
    {"FYM2413", "Check7", ControlKind::Check, 9, nullptr},
    {"FYM2413", "Label1", ControlKind::Label, 64, "00"},
    {"FYM2413", "Pic1", ControlKind::Scope, 9, nullptr},
    {"FYM2413", "Timer1", ControlKind::Timer, 0, nullptr},
    {"FSID", "Check1", ControlKind::Check, 0, "High Pass"},
    {"FSID", "Check2", ControlKind::Check, 0, "Low Pass"},
    {"FSID", "Check3", ControlKind::Check, 0, "Butterfly Pass"},
    {"FSID", "HScroll1", ControlKind::Scroll, 0, nullptr},
    {"FSID", "HScroll2", ControlKind::Scroll, 0, nullptr},
    {"FSID", "HScroll3", ControlKind::Scroll, 0, nullptr},
    {"FSID", "Text1", ControlKind::Text, 0, nullptr},
    {"FSID", "Check4", ControlKind::Check, 0, "Wobbler"},
    {"FSID", "Check5", ControlKind::Check, 0, nullptr},
    {"FSID", "Label15", ControlKind::Label, 0, nullptr},
    {"FSID", "PIC2", ControlKind::Scope, 0, nullptr},
    {"FSID", "Check6", ControlKind::Check, 0, "ADSR On"},
    {"FSID", "Check7", ControlKind::Check, 0, "Filter On"},
    {"FSID", "Check8", ControlKind::Check, 0, "Exp"},
    {"FSID", "Check9", ControlKind::Check, 3, nullptr},
    {"FSID", "Check10", ControlKind::Check, 0, "Ring On"},
    {"FSID", "HScroll4", ControlKind::Scroll, 0, nullptr},
    {"FSID", "HScroll5", ControlKind::Scroll, 0, nullptr},
    {"FSID", "HScroll6", ControlKind::Scroll, 0, nullptr},
    {"FSID", "Option1", ControlKind::Option, 0, "No File"},
    {"FSID", "Option2", ControlKind::Option, 0, "SIDX"},
    {"FSID", "Option3", ControlKind::Option, 0, "DMP"},
    {"FSID", "File1", ControlKind::List, 0, nullptr},
    {"FSID", "Text2", ControlKind::Text, 0, nullptr},
    {"FSID", "Text3", ControlKind::Text, 0, nullptr},
    {"FSID", "Command1", ControlKind::Button, 0, nullptr},
    {"FSID", "Label25", ControlKind::Label, 0, nullptr},
    {"FSID", "Label26", ControlKind::Label, 0, nullptr},
    {"FSID", "Pic1", ControlKind::Scope, 3, nullptr},
    {"T8910", "Label1", ControlKind::Label, 16, nullptr},
    {"T8910", "Pic1", ControlKind::Scope, 5, nullptr},
};

TEST_F(ChipWindowsTest, EveryControlIsInItsTable) {
  for (const Row& row : kRows) {
    SCOPED_TRACE(testing::Message() << row.form << '.' << row.name);
    const ControlRef ref = TheControl(row.form, row.name);
    EXPECT_EQ(ref.control->kind, row.kind);
    EXPECT_EQ(ref.control->count, row.count);
    if (row.caption != nullptr) {
      EXPECT_EQ(CaptionOf(ref), row.caption);
    }
    // What the user can reach has a name for those who can't see it.
    const bool shown = row.kind != ControlKind::Timer;
    for (int i = 0; i < std::max(1, row.count); ++i)
      EXPECT_EQ(CaptionOf({ref.form, ref.control, i}).empty(), !shown) << i;
  }
}

TEST_F(ChipWindowsTest, BoxesAtTheStart) {
  const auto ticked = [this](const char* form, const char* name, int index = 0) {
    return *FieldOf<bool>(m, TheControl(form, name, index));
  };
  for (const Row& row : kRows) {
    if (row.kind != ControlKind::Check && row.kind != ControlKind::Option) continue;
    const std::string name = std::string(row.form) + '.' + row.name;
    const bool expected = name == "FYM3812.Check1" || name == "FYM2413.Check7" || name == "FSID.Check9" ||
                          name == "FSID.Check6" || name == "FSID.Check7" || name == "FSID.Check10" ||
                          name == "FSID.Option1";
    for (int i = 0; i < std::max(1, row.count); ++i)
      EXPECT_EQ(ticked(row.form, row.name, i), expected) << name << ' ' << i;
  }
}

TEST_F(ChipWindowsTest, BoxesCanBeTicked) {
  for (const Row& row : kRows) {
    if (row.kind != ControlKind::Check) continue;
    SCOPED_TRACE(testing::Message() << row.form << '.' << row.name);
    for (int i = 0; i < std::max(1, row.count); ++i) {
      for (const bool on : {true, false, true}) {
        Tick(row.form, row.name, on, i);
        EXPECT_EQ(*FieldOf<bool>(m, TheControl(row.form, row.name, i)), on) << i;
      }
    }
  }
}

TEST_F(ChipWindowsTest, SlidersStayInTheirRanges) {
  struct Range {
    const char* form;
    const char* name;
    int index, first, start, last;
  };
  constexpr Range kRanges[] = {
      {"Fsaa", "HScroll1", 5, 0, 0, 15},      {"Fsaa", "HScroll2", 0, 0, 0, 15},
      {"Fsaa", "HScroll3", 3, 0, 0, 255},     {"Fsaa", "HScroll4", 2, 0, 0, 7},
      {"Fsaa", "HScroll6", 1, 0, 0, 7},       {"FSN76489", "HScroll3", 2, 0, 0, 1023},
      {"FSN76489", "HScroll4", 3, 0, 15, 15}, {"FYM3812", "HScroll1", 0, 0, 0, 15},
      {"FYM3812", "HScroll1", 1, 0, 0, 63},   {"FYM3812", "HScroll1", 6, 0, 0, 3},
      {"FYM3812", "HScroll1", 7, 0, 0, 7},    {"FYM3812", "HScroll2", 0, 1, 1, 9},
      {"FSID", "HScroll1", 0, 0, 50, 100},    {"FSID", "HScroll2", 0, 0, 50, 100},
      {"FSID", "HScroll3", 0, 0, 50, 100},    {"FSID", "HScroll4", 0, 1, 440, 1200},
      {"FSID", "HScroll5", 0, 1, 440, 1200},
  };
  for (const Range& range : kRanges) {
    SCOPED_TRACE(testing::Message() << range.form << '.' << range.name << ' ' << range.index);
    const Scroll& scroll = *FieldOf<Scroll>(m, TheControl(range.form, range.name, range.index));
    EXPECT_EQ(scroll, (Scroll{range.start, range.first, range.last}));
    Slide(range.form, range.name, range.last + 1, range.index);
    EXPECT_EQ(scroll.value, range.last);
    Slide(range.form, range.name, range.first - 1, range.index);
    EXPECT_EQ(scroll.value, range.first);
  }
}

TEST_F(ChipWindowsTest, TheViewMenuOpensThem) {
  struct Entry {
    const char* item;
    const char* itemCaption;
    const char* form;
    const char* formCaption;
  };
  constexpr Entry kEntries[] = {
      {"xsaa", "SAA1099", "Fsaa", "SAA1099P"}, {"xSN76", "SN76489", "FSN76489", "SN76489"},
      {"xYM", "YM3812", "FYM3812", "YM3812"},  {"xYM2", "YM2413", "FYM2413", "YM2413"},
      {"xSID", "SID6581", "FSID", "SID_6581"}, {"xAY3", "AY-3-8910", "T8910", "AY-3-8910"},
  };
  for (const Entry& entry : kEntries) {
    SCOPED_TRACE(entry.form);
    const ControlRef item = TheControl("TScreen", entry.item);
    EXPECT_EQ(CaptionOf(item), entry.itemCaption);
    EXPECT_EQ(item.control->menu, "View");
    const Form* form = FindForm(entry.form);
    EXPECT_EQ(form->caption, entry.formCaption);
    FormState& window = *form->state(m);
    EXPECT_FALSE(window.visible);
    quoll::Press(m, item);
    EXPECT_TRUE(window.visible);
    EXPECT_TRUE(window.raise);
  }
}

// Everything at its loudest: each scope has its 221 points, within its box.
TEST_F(ChipWindowsTest, ScopesHoldHalfAFrame) {
  for (const int value : {0x80, 0x10, 0x90, 0xA3, 0x08, 0xB0, 0xC5, 0x04, 0xD0, 0xF0, 0xE4}) Out(0x30, value);
  for (int c = 0; c < 6; ++c) OutRegister(0x33, c, 0xFF);
  for (int pair = 16; pair <= 18; ++pair) OutRegister(0x33, pair, 0x44);
  OutRegister(0x33, 20, 0x3F);
  OutRegister(0x33, 28, 1);
  for (int c = 0; c < 9; ++c) {
    OutRegister(0x34, 0xA0 + c, 20 * c + 80);
    OutRegister(0x34, 0xB0 + c, 0x2E);
    OutRegister(0x3C, 0x10 + c, 20 * c + 80);
    OutRegister(0x3C, 0x20 + c, 0x18);
    OutRegister(0x3C, 0x30 + c, 15);
  }
  for (int voice = 0; voice < 3; ++voice) {
    OutRegister(0x38, 7 * voice + 1, 20);
    OutRegister(0x38, 7 * voice + 3, 8);
    OutRegister(0x38, 7 * voice + 4, 0x11 + 0x10 * voice);
    OutRegister(0x38, 7 * voice + 6, 0xF0);
  }
  OutRegister(0x38, 24, 15);
  for (int tone = 0; tone < 3; ++tone) OutRegister(0x3A, 2 * tone, 90 + tone);
  for (int tone = 0; tone < 3; ++tone) OutRegister(0x3A, 8 + tone, 15);
  OutRegister(0x3A, 7, 0x38);
  Block();
  for (const Row& row : kRows) {
    if (row.kind != ControlKind::Scope || row.count == 0) continue;
    for (int i = 0; i < row.count; ++i) {
      SCOPED_TRACE(testing::Message() << row.form << '.' << row.name << ' ' << i);
      const Trace& scope = Scope(row.form, row.name, i);
      ASSERT_EQ(scope.y.size(), 221U);
      EXPECT_TRUE(scope.x.empty());
      EXPECT_EQ(scope.X(220), 220);
      EXPECT_EQ(scope.drawings, std::string(row.form) == "FSID" ? 5U : 1U);
      const bool cyan = std::string(row.form) == "T8910" && i >= 3;
      EXPECT_EQ(scope.colour, cyan ? 16776960 : 65280);
      for (const float y : scope.y) EXPECT_TRUE(y >= 0 && y <= kScopeHeight) << y;
      const auto [lowest, highest] = std::ranges::minmax(scope.y);
      const bool flat = std::string(row.form) == "T8910" && i == 4;  // no envelope is at work
      EXPECT_EQ(highest > lowest, !flat);
    }
  }
}

TEST_F(ChipWindowsTest, ASilentCardDrawsNothing) {
  for (int block = 0; block < 3; ++block) Block();
  for (const Row& row : kRows) {
    if (row.kind != ControlKind::Scope) continue;
    for (int i = 0; i < std::max(1, row.count); ++i)
      EXPECT_EQ(Scope(row.form, row.name, i), Trace{.colour = Scope(row.form, row.name, i).colour})
          << row.form << ' ' << i;
  }
}

TEST_F(ChipWindowsTest, WithoutTheCardNothingIsRenderedOrDrawn) {
  m.screen.xio2 = false;
  for (const int value : {0x80, 0x10, 0x90}) Out(0x30, value);
  const SoundCard before = m.card;
  Block();
  EXPECT_TRUE(m.card == before);
  EXPECT_EQ(Scope("FSN76489", "Pic1").drawings, 0U);
  m.screen.xio2 = true;
  Block();
  EXPECT_EQ(Scope("FSN76489", "Pic1").drawings, 1U);
  // Off again, the last frame goes on.
  m.screen.xio2 = false;
  const SoundCard playing = m.card;
  Block();
  EXPECT_TRUE(m.card == playing);
  std::vector<uint8_t> frames[2];
  for (const size_t frame : {0U, 3U}) {
    const auto* from = m.mixer.BlockBuffer.data() + 882 * frame;
    frames[frame == 0 ? 0 : 1].assign(from, from + 882);
  }
  EXPECT_EQ(frames[0], frames[1]);
  EXPECT_NE(frames[0], std::vector<uint8_t>(882, 128));
}

}  // namespace

}  // namespace quoll::test
