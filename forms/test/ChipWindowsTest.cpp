// What the tables of the six chips' windows hold, and how the main window's menu shows them.
#include <map>
#include <sstream>

#include "forms/test/ChipBench.h"

namespace quoll::test {

namespace {

struct ChipWindowsTest : ChipBench {};

struct Row {
  std::string form, name;
  ControlKind kind;
  int count;
  std::string caption;  // of the first one of an array; empty: any
};

// Form, kind, and its controls: "*" says how many there are in an array, "=" the caption.
constexpr std::string_view kTables = R"(
Fsaa Check: Check2=Manual|Check10=Circuit|Check11=patch|Check12=patch|Check1*6=Enable Freq
Fsaa Check: Check3*6=Enable Noise
Fsaa Scroll: HScroll1*6|HScroll2*6|HScroll3*6|HScroll4*6
Fsaa Check: Check4*2=Inverse R|Check5*2=3 Bit|Check6*2=External clock|Check7*2=Enable envelope
Fsaa Scroll: HScroll6*2
Fsaa Check: Check8=All out enable|Check9=Reset
Fsaa Button: Command1=Record
Fsaa Label: Label8|Label9|Label11
Fsaa Scope: Pic1*6
Fsaa Timer: Timer1
FSN76489 Check: Check1=Circuit|Check2=Periodic Noise |Check3=Manual
FSN76489 Scroll: HScroll3*3|HScroll4*4
FSN76489 Label: Label6*3
FSN76489 Scope: Pic1*4
FSN76489 Timer: Timer1
FYM3812 Check: Check1*9|Check2*4=KSR|Check3=Direct I/O port:
FYM3812 Text: Text2
FYM3812 Label: Label1*246=00
FYM3812 Text: Text1
FYM3812 Scroll: HScroll1*8
FYM3812 Button: Command1
FYM3812 Scope: Pic1*9
FYM3812 Timer: Timer1
FYM2413 Check: Check7*9
FYM2413 Label: Label1*64=00
FYM2413 Scope: Pic1*9
FYM2413 Timer: Timer1
FSID Check: Check1=High Pass|Check2=Low Pass|Check3=Butterfly Pass
FSID Scroll: HScroll1|HScroll2|HScroll3
FSID Text: Text1
FSID Check: Check4=Wobbler|Check5
FSID Label: Label15
FSID Scope: PIC2
FSID Check: Check6=ADSR On|Check7=Filter On|Check8=Exp|Check9*3|Check10=Ring On
FSID Scroll: HScroll4|HScroll5|HScroll6
FSID Option: Option1=No File|Option2=SIDX|Option3=DMP
FSID List: File1
FSID Text: Text2|Text3
FSID Button: Command1
FSID Label: Label25|Label26
FSID Scope: Pic1*3
T8910 Label: Label1*16
T8910 Scope: Pic1*5
)";

std::string Cut(std::string& text, char end) {
  const size_t at = text.find(end);
  std::string part = text.substr(0, at);
  text.erase(0, at == std::string::npos ? at : at + 1);
  return part;
}

std::vector<Row> Rows() {
  const std::map<std::string, ControlKind> kinds{
      {"Check", ControlKind::Check}, {"Option", ControlKind::Option}, {"Text", ControlKind::Text},
      {"Label", ControlKind::Label}, {"Button", ControlKind::Button}, {"Scroll", ControlKind::Scroll},
      {"List", ControlKind::List},   {"Scope", ControlKind::Scope},   {"Timer", ControlKind::Timer}};
  std::vector<Row> rows;
  std::istringstream tables{std::string(kTables)};
  for (std::string line; std::getline(tables, line);) {
    if (line.empty()) continue;
    const std::string form = Cut(line, ' '), kind = Cut(line, ':');
    line.erase(0, 1);
    while (!line.empty()) {
      std::string caption = Cut(line, '|');
      std::string count = Cut(caption, '=');
      const std::string name = Cut(count, '*');
      rows.push_back({form, name, kinds.at(kind), count.empty() ? 0 : std::stoi(count), caption});
    }
  }
  return rows;
}

const std::vector<Row> kRows = Rows();

ControlRef ControlOf(const Row& row, int index = 0) { return TheControl(row.form, row.name, index); }

TEST_F(ChipWindowsTest, EveryControlIsInItsTable) {
  for (const Row& row : kRows) {
    SCOPED_TRACE(testing::Message() << row.form << '.' << row.name);
    const ControlRef ref = ControlOf(row);
    EXPECT_EQ(ref.control->kind, row.kind);
    EXPECT_EQ(ref.control->count, row.count);
    if (!row.caption.empty()) {
      EXPECT_EQ(CaptionOf(ref), row.caption);
    }
    // What the user can reach has a name for those who can't see it.
    const bool shown = row.kind != ControlKind::Timer;
    for (int i = 0; i < std::max(1, row.count); ++i)
      EXPECT_EQ(CaptionOf({ref.form, ref.control, i}).empty(), !shown) << i;
  }
}

TEST_F(ChipWindowsTest, BoxesAtTheStart) {
  for (const Row& row : kRows) {
    if (row.kind != ControlKind::Check && row.kind != ControlKind::Option) continue;
    const std::string name = row.form + '.' + row.name;
    const bool expected = name == "FYM3812.Check1" || name == "FYM2413.Check7" || name == "FSID.Check9" ||
                          name == "FSID.Check6" || name == "FSID.Check7" || name == "FSID.Check10" ||
                          name == "FSID.Option1";
    for (int i = 0; i < std::max(1, row.count); ++i)
      EXPECT_EQ(*FieldOf<bool>(m, ControlOf(row, i)), expected) << name << ' ' << i;
  }
}

TEST_F(ChipWindowsTest, BoxesCanBeTicked) {
  for (const Row& row : kRows) {
    if (row.kind != ControlKind::Check) continue;
    SCOPED_TRACE(testing::Message() << row.form << '.' << row.name);
    for (int i = 0; i < std::max(1, row.count); ++i) {
      for (const bool on : {true, false, true}) {
        SetTick(m, ControlOf(row, i), on);
        EXPECT_EQ(*FieldOf<bool>(m, ControlOf(row, i)), on) << i;
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
      const Trace& scope = *FieldOf<Trace>(m, ControlOf(row, i));
      ASSERT_EQ(scope.y.size(), 221U);
      EXPECT_TRUE(scope.x.empty());
      EXPECT_EQ(scope.X(220), 220);
      EXPECT_EQ(scope.drawings, row.form == "FSID" ? 5U : 1U);
      const bool cyan = row.form == "T8910" && i >= 3;
      EXPECT_EQ(scope.colour, cyan ? 16776960 : 65280);
      for (const float y : scope.y) EXPECT_TRUE(y >= 0 && y <= kScopeHeight) << y;
      const auto [lowest, highest] = std::ranges::minmax(scope.y);
      const bool flat = row.form == "T8910" && i == 4;  // no envelope is at work
      EXPECT_EQ(highest > lowest, !flat);
    }
  }
}

TEST_F(ChipWindowsTest, ASilentCardDrawsNothing) {
  for (int block = 0; block < 3; ++block) Block();
  for (const Row& row : kRows) {
    if (row.kind != ControlKind::Scope) continue;
    for (int i = 0; i < std::max(1, row.count); ++i) {
      const Trace& scope = *FieldOf<Trace>(m, ControlOf(row, i));
      EXPECT_EQ(scope, Trace{.colour = scope.colour}) << row.form << ' ' << i;
    }
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
