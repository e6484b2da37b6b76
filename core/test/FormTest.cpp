// The rule of each kind of control, on a form made up here.
#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <string>
#include <vector>

#include "core/Form.h"
#include "core/FormTable.h"
#include "testkit/TestMachine.h"

namespace quoll::test {
namespace {

constexpr int32_t kLowest = std::numeric_limits<int32_t>::min();
constexpr int32_t kHighest = std::numeric_limits<int32_t>::max();

// Makes its texts when asked for them.
struct Numbers {
  int32_t selected = -1;
  size_t EntryCount() const { return 3; }
  std::string Entry(size_t place) const { return std::to_string(100 + place); }
};

struct Record {
  FormState window;
  bool check = false;
  std::array<bool, 3> checks{};
  std::array<bool, 3> options{true, false, false};
  bool left = false, right = false, alone = false;
  std::array<bool, 2> others{true, false};
  bool bystander = true;
  std::string text = "old";
  std::array<std::string, 2> texts{"a", "b"};
  std::string label = "shown";
  Scroll scroll{5, 0, 15};
  Scroll reversed{0, 10, -10};
  std::array<Scroll, 2> scrolls{Scroll{0, 0, 9}, Scroll{0, 100, 200}};
  ListBox list{{"one", "two", "three"}, -1};
  ListBox empty;
  Numbers numbers;
  Look look{.visible = false};
  std::array<Look, 2> looks{Look{.fore = kRed}, Look{.enabled = false}};
};
Record record;

// What the handlers were called for, with the index: "click 0".
std::vector<std::string> heard;
// What a handler found in the record when it ran.
std::string found;

void Hear(const char* event, int index) { heard.push_back(event + (' ' + std::to_string(index))); }

using K = ControlKind;

template <auto kField>
ControlField Field(Machine&) {
  return AsSpan(record.*kField);
}
template <auto kField>
ControlField ListField(Machine&) {
  return ListRef(record.*kField);
}
template <auto kField>
std::span<Look> Looks(Machine&) {
  return AsSpan(record.*kField);
}
template <auto kField = nullptr>
constexpr Control Line(std::string_view name, ControlKind kind, int count = 0) {
  Control line{.name = name, .kind = kind, .count = count};
  if constexpr (!std::is_null_pointer_v<decltype(kField)>) line.field = Field<kField>;
  line.click = +[](Machine&, int index) {
    Hear("click", index);
    found = record.check ? "ticked" : "not ticked";
  };
  line.change = +[](Machine&, int index) {
    Hear("change", index);
    found = record.text + " " + std::to_string(record.scroll.value);
  };
  line.enter = +[](Machine&, int index) { Hear("enter", index); };
  line.doubleClick = +[](Machine&, int index) {
    Hear("double", index);
    found = record.list.Selected();
  };
  line.down = +[](Machine&, int index) { Hear("down", index); };
  line.up = +[](Machine&, int index) { Hear("up", index); };
  return line;
}
constexpr Control List(std::string_view name, ControlField (*field)(Machine&)) {
  return Line(name, K::List).With(&Control::field, field);
}

constexpr std::array kControls{
    Line<&Record::check>("check", K::Check),
    Line<&Record::checks>("checks", K::Check, 3),
    Line<&Record::options>("options", K::Option, 3),
    Line<&Record::left>("left", K::Option).Group("side"),
    Line<&Record::right>("right", K::Option).Group("side"),
    Line<&Record::others>("others", K::Option, 2).Group("side"),
    Line<&Record::alone>("alone", K::Option),
    Line<&Record::bystander>("bystander", K::Check).Group("side"),
    Line<&Record::text>("text", K::Text),
    Line<&Record::texts>("texts", K::Text, 2),
    Line<&Record::label>("label", K::Label),
    Line<&Record::scroll>("scroll", K::Scroll),
    Line<&Record::reversed>("reversed", K::Scroll),
    Line<&Record::scrolls>("scrolls", K::Scroll, 2),
    List("list", ListField<&Record::list>),
    List("empty", ListField<&Record::empty>),
    List("numbers", ListField<&Record::numbers>).With(&Control::kind, K::Combo),
    Line("button", K::Button).Looks(Looks<&Record::look>),
    Line("buttons", K::Button, 2).Looks(Looks<&Record::looks>),
    Line("shared", K::Button, 3).Looks(Looks<&Record::look>),
    // Without any handler.
    Control{.name = "deaf", .kind = K::Button},
    Control{.name = "deafList", .kind = K::List, .field = ListField<&Record::list>},
    Control{.name = "deafText", .kind = K::Text, .field = Field<&Record::text>},
    // A handler that takes no index, for an array.
    Button(
        "plain", "", +[](Machine&) { Hear("plain", -1); }, 2),
};
constexpr Form kForm{"Form", "Caption", +[](Machine&) { return &record.window; }, kControls};

using Heard = std::vector<std::string>;

struct FormRules : testing::Test {
  FormRules() {
    record = Record();
    heard.clear();
    found.clear();
  }

  static ControlRef At(std::string_view name, int index = 0) {
    return {&kForm, FindControl(kForm, name), index};
  }
  // What has been heard since the last call.
  static Heard Now() { return std::exchange(heard, {}); }

  TestMachine machine;
  Machine& m = *machine;
};

TEST_F(FormRules, NamesAreFoundToTheLetter) {
  EXPECT_EQ(FindControl(kForm, "check"), &kControls[0]);
  EXPECT_EQ(FindControl(kForm, "plain"), &kControls.back());
  for (const char* name : {"Check", "chec", "checkx", ""}) EXPECT_EQ(FindControl(kForm, name), nullptr);
}

TEST_F(FormRules, ATickIsStoredThenTheHandlerRuns) {
  SetTick(m, At("check"), true);
  EXPECT_TRUE(record.check);
  EXPECT_EQ(found, "ticked");
  SetTick(m, At("check"), true);  // once more is an event, too
  SetTick(m, At("check"), false);
  EXPECT_EQ(found, "not ticked");
  EXPECT_EQ(Now(), (Heard{"click 0", "click 0", "click 0"}));
}

TEST_F(FormRules, AnArraysTicksStandForThemselves) {
  SetTick(m, At("checks", 2), true);
  SetTick(m, At("checks", 0), true);
  EXPECT_EQ(record.checks, (std::array{true, false, true}));
  EXPECT_EQ(Now(), (Heard{"click 2", "click 0"}));
}

TEST_F(FormRules, AChosenOptionPutsTheOthersOfItsArrayOut) {
  for (const int chosen : {1, 2, 2, 0}) {
    SetTick(m, At("options", chosen), true);
    for (int i = 0; i < 3; ++i) EXPECT_EQ(record.options[static_cast<size_t>(i)], i == chosen) << i;
    EXPECT_EQ(Now(), Heard{"click " + std::to_string(chosen)});
  }
  // Taking one out chooses no other.
  SetTick(m, At("options", 0), false);
  EXPECT_EQ(record.options, (std::array{false, false, false}));
  SetTick(m, At("options", 1), false);
  EXPECT_EQ(record.options, (std::array{false, false, false}));
  EXPECT_EQ(Now(), (Heard{"click 0", "click 1"}));
}

// Two single ones and an array of two are one group of four.
TEST_F(FormRules, OptionsOfOneGroupsNameExcludeEachOther) {
  const auto chosen = [] {
    return std::array{record.left, record.right, record.others[0], record.others[1]};
  };
  const std::array<ControlRef, 4> group{At("left"), At("right"), At("others", 0), At("others", 1)};
  for (const size_t choice : {0U, 1U, 2U, 3U, 0U, 3U}) {
    SetTick(m, group[choice], true);
    std::array<bool, 4> expected{};
    expected[choice] = true;
    EXPECT_EQ(chosen(), expected) << choice;
  }
  EXPECT_TRUE(record.bystander);  // a check box of that name is none of them
  EXPECT_TRUE(record.options[0]);
  SetTick(m, At("alone"), true);  // in a group of its own
  EXPECT_TRUE(record.alone);
  EXPECT_EQ(chosen(), (std::array{false, false, false, true}));
}

TEST_F(FormRules, ChangeAndEnterAreApart) {
  SetText(m, At("text"), "typed");
  EXPECT_EQ(record.text, "typed");
  EXPECT_EQ(found, "typed 5");
  EXPECT_EQ(Now(), Heard{"change 0"});
  PressEnter(m, At("text"));
  EXPECT_EQ(record.text, "typed");
  EXPECT_EQ(Now(), Heard{"enter 0"});
  SetText(m, At("texts", 1), "");
  EXPECT_EQ(record.texts, (std::array<std::string, 2>{"a", ""}));
  PressEnter(m, At("texts", 1));
  EXPECT_EQ(Now(), (Heard{"change 1", "enter 1"}));
}

TEST_F(FormRules, AScrollBarStaysInItsRange) {
  struct Case {
    const char* name;
    int index;
    int32_t wanted, stored;
  };
  for (const auto& [name, index, wanted, stored] : {
           Case{"scroll", 0, 7, 7},
           Case{"scroll", 0, 0, 0},
           Case{"scroll", 0, 15, 15},
           Case{"scroll", 0, 16, 15},
           Case{"scroll", 0, -1, 0},
           Case{"scroll", 0, kHighest, 15},
           Case{"scroll", 0, kLowest, 0},
           Case{"reversed", 0, 3, 3},
           Case{"reversed", 0, 11, 10},
           Case{"reversed", 0, -11, -10},
           Case{"scrolls", 0, 150, 9},
           Case{"scrolls", 1, 150, 150},
           Case{"scrolls", 1, 0, 100},
       }) {
    SetScroll(m, At(name, index), wanted);
    EXPECT_EQ(FieldOf<Scroll>(m, At(name, index))->value, stored) << name << index << " " << wanted;
    EXPECT_EQ(Now(), Heard{"change " + std::to_string(index)});
  }
  SetScroll(m, At("scroll"), 99);
  EXPECT_EQ(found, "old 15");  // the handler finds what was stored
}

TEST_F(FormRules, WhatTheMachineStoresInAScrollBarRunsNoHandler) {
  StoreScroll(record.scroll, 12);
  EXPECT_EQ(record.scroll, (Scroll{12, 0, 15}));
  StoreScroll(record.scroll, -5);
  EXPECT_EQ(record.scroll, (Scroll{0, 0, 15}));
  EXPECT_EQ(Now(), Heard{});
}

TEST_F(FormRules, AnEntryIsChosenInsideTheListOnly) {
  EXPECT_TRUE(ChooseEntry(m, At("list"), 2));
  EXPECT_EQ(record.list.Selected(), "three");
  EXPECT_TRUE(ChooseEntry(m, At("list"), 0));
  EXPECT_EQ(Now(), (Heard{"click 0", "click 0"}));
  for (const int32_t outside : {-1, 3, kLowest, kHighest}) {
    EXPECT_FALSE(ChooseEntry(m, At("list"), outside)) << outside;
    EXPECT_FALSE(DoubleClickEntry(m, At("list"), outside)) << outside;
    EXPECT_EQ(record.list.selected, 0);
  }
  EXPECT_FALSE(ChooseEntry(m, At("empty"), 0));
  EXPECT_FALSE(DoubleClickEntry(m, At("empty"), 0));
  EXPECT_EQ(record.empty.selected, -1);
  EXPECT_EQ(Now(), Heard{});
}

TEST_F(FormRules, ADoubleClickChoosesThenHappens) {
  EXPECT_TRUE(DoubleClickEntry(m, At("list"), 1));
  EXPECT_EQ(record.list.selected, 1);
  EXPECT_EQ(found, "two");
  EXPECT_EQ(Now(), (Heard{"click 0", "double 0"}));
  EXPECT_TRUE(DoubleClickEntry(m, At("deafList"), 2));
  EXPECT_EQ(record.list.selected, 2);
}

TEST_F(FormRules, ARecordMayMakeItsEntriesItself) {
  const ListRef list = ListOf(m, *At("numbers").control);
  EXPECT_EQ(list.EntryCount(), 3U);
  EXPECT_EQ(list.Entry(2), "102");
  EXPECT_TRUE(ChooseEntry(m, At("numbers"), 2));
  EXPECT_EQ(record.numbers.selected, 2);
  EXPECT_FALSE(ChooseEntry(m, At("numbers"), 3));
}

TEST_F(FormRules, AListsSelection) {
  ListBox& list = record.list;
  EXPECT_EQ(list.Selected(), "");
  list.selected = 1;
  EXPECT_EQ(list.Selected(), "two");
  for (const int32_t outside : {3, -2, kHighest, kLowest}) {  // the machine may have stored anything
    list.selected = outside;
    EXPECT_EQ(list.Selected(), "");
  }
  list.selected = 1;
  list.Fill({"four", "five"});
  EXPECT_EQ(list, (ListBox{{"four", "five"}, -1}));
}

TEST_F(FormRules, DownUpAndClickAreApart) {
  Press(m, At("button"));
  EXPECT_EQ(Now(), Heard{"click 0"});
  MouseDown(m, At("buttons", 1));
  EXPECT_EQ(Now(), Heard{"down 1"});
  MouseUp(m, At("buttons", 0));
  EXPECT_EQ(Now(), Heard{"up 0"});
  Press(m, At("label"));  // a label can be pressed as well
  EXPECT_EQ(Now(), Heard{"click 0"});
  EXPECT_EQ(record.label, "shown");
}

TEST_F(FormRules, AHandlerNeedsNoIndex) {
  Press(m, At("plain", 1));
  Press(m, At("plain", 0));
  EXPECT_EQ(Now(), (Heard{"plain -1", "plain -1"}));
}

TEST_F(FormRules, WithoutAHandlerTheValueIsStored) {
  for (const auto action : {Press, MouseDown, MouseUp, PressEnter}) action(m, At("deaf"));
  SetText(m, At("deafText"), "typed");
  EXPECT_EQ(record.text, "typed");
  EXPECT_TRUE(ChooseEntry(m, At("deafList"), 1));
  EXPECT_EQ(Now(), Heard{});
}

TEST_F(FormRules, AnIndexOutsideTheArrayDoesNothing) {
  for (const int outside : {-1, 3, kLowest, kHighest}) {
    SetTick(m, At("checks", outside), true);
    SetTick(m, At("options", outside), true);
    SetText(m, At("texts", outside), "typed");
    SetScroll(m, At("scrolls", outside), 5);
    for (const auto action : {Press, MouseDown, MouseUp, PressEnter}) {
      action(m, At("buttons", outside));
      action(m, At("plain", outside));
      action(m, At("texts", outside));
    }
  }
  for (const int beside : {1, 2, -1}) {  // a single control is number 0
    SetTick(m, At("check", beside), true);
    Press(m, At("button", beside));
  }
  EXPECT_EQ(Now(), Heard{});
  EXPECT_FALSE(record.check);
  EXPECT_EQ(record.checks, (std::array<bool, 3>{}));
  EXPECT_EQ(record.options, (std::array{true, false, false}));
  EXPECT_EQ(record.texts, (std::array<std::string, 2>{"a", "b"}));
  EXPECT_EQ(record.scrolls[0].value + record.scrolls[1].value, 0);
}

TEST_F(FormRules, AFieldIsOfOneTypeAndHasItsPlaces) {
  EXPECT_EQ(FieldOf<bool>(m, At("check")), &record.check);
  EXPECT_EQ(FieldOf<bool>(m, At("checks", 2)), &record.checks[2]);
  EXPECT_EQ(FieldOf<std::string>(m, At("texts", 1)), &record.texts[1]);
  EXPECT_EQ(FieldOf<bool>(m, At("checks", 3)), nullptr);
  EXPECT_EQ(FieldOf<bool>(m, At("checks", -1)), nullptr);
  EXPECT_EQ(FieldOf<std::string>(m, At("check")), nullptr);
  EXPECT_EQ(FieldOf<Scroll>(m, At("text")), nullptr);
  EXPECT_EQ(FieldOf<bool>(m, At("list")), nullptr);
  EXPECT_EQ(FieldOf<bool>(m, At("button")), nullptr);
  // Actions of another kind find no field and run no handler.
  SetTick(m, At("text"), true);
  SetText(m, At("check"), "typed");
  SetScroll(m, At("text"), 1);
  EXPECT_EQ(Now(), Heard{});
}

TEST_F(FormRules, ALookIsOneForAllOrOneForEach) {
  EXPECT_EQ(LookOf(m, At("check")), Look());
  EXPECT_EQ(LookOf(m, At("button")), record.look);
  for (int i = 0; i < 3; ++i) EXPECT_EQ(LookOf(m, At("shared", i)), record.look) << i;
  for (int i = 0; i < 2; ++i) EXPECT_EQ(LookOf(m, At("buttons", i)), record.looks[static_cast<size_t>(i)]);
  EXPECT_EQ(LookOf(m, At("buttons", 2)), Look());
  EXPECT_EQ(LookOf(m, At("buttons", -1)), Look());
  const Look own;
  EXPECT_TRUE(own.visible && own.enabled);
  EXPECT_EQ(own.fore, kOwnColour);
  EXPECT_EQ(own.back, kOwnColour);
}

TEST_F(FormRules, CaptionsOfAnArrayStandBetweenBars) {
  struct Case {
    std::string_view caption;
    int count;
    std::vector<std::string_view> each;  // and one after the last
  };
  for (const Case& c : {
           Case{"Run", 0, {"Run", "Run"}},
           Case{"one|two", 0, {"one|two"}},  // a single control's own
           Case{"one|two|three", 3, {"one", "two", "three", ""}},
           Case{"one", 2, {"one", "", ""}},
           Case{"", 2, {"", "", ""}},
           Case{"|two||four", 4, {"", "two", "", "four", ""}},
       }) {
    const Control control{.name = "x", .kind = K::Button, .caption = c.caption, .count = c.count};
    for (size_t i = 0; i < c.each.size(); ++i)
      EXPECT_EQ(CaptionOf({&kForm, &control, static_cast<int>(i)}), c.each[i]) << c.caption << " " << i;
  }
}

TEST_F(FormRules, WhatAFormOnlyShowsIsWorkedOutWhenSomebodyLooks) {
  RefreshForm(m, kForm);  // this one has nothing of the kind
  EXPECT_EQ(Now(), Heard{});
  constexpr Form kLazy{"Lazy", "", nullptr, {}, +[](Machine&) { record.label = "fresh"; }};
  RefreshForm(m, kLazy);
  EXPECT_EQ(record.label, "fresh");
}

TEST_F(FormRules, ATracesPointsAreEvenOrHaveTheirPlaces) {
  Trace trace{.y = {5, 6, 7}, .step = 0.5F};
  EXPECT_EQ(trace.X(0), 0.0F);
  EXPECT_EQ(trace.X(2), 1.0F);
  trace.x = {3, 9, 4};
  EXPECT_EQ(trace.X(2), 4.0F);
}

TEST_F(FormRules, AFormIsShownInFront) {
  EXPECT_EQ(kForm.state(m), &record.window);
  ShowForm(record.window);
  EXPECT_EQ(record.window, (FormState{.visible = true, .raise = true, .caption = ""}));
}

}  // namespace
}  // namespace quoll::test
