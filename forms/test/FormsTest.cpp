#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

#include "forms/Forms.h"
#include "machine/Machine.h"
#include "testkit/TestMachine.h"

namespace quoll::test {
namespace {

// Each control of each form, with its full name for messages.
template <class Check>
void ForEachControl(Check check) {
  for (const Form* form : Forms()) {
    for (const Control& control : form->controls) {
      SCOPED_TRACE(std::string(form->name) + "." + std::string(control.name));
      check(*form, control);
    }
  }
}

TEST(Form, AllFormsAreThereOnce) {
  std::set<std::string_view> names;
  for (const Form* form : Forms()) {
    EXPECT_TRUE(names.insert(form->name).second) << form->name;
    const bool bare = form->name == "Frame2" || form->name == "FScreen";
    EXPECT_EQ(form->controls.empty(), bare) << form->name;
    EXPECT_EQ(FindForm(form->name), form);
  }
  for (const char* name :
       {"TScreen", "Frame2", "FScreen", "CPUmon", "TVCmon", "asse", "ErrorSim", "TPrint", "TTools", "TTape",
        "FDXF", "Fsaa", "FSN76489", "FYM3812", "FYM2413", "FSID", "T8910"})
    EXPECT_TRUE(names.contains(name)) << name;
}

TEST(Form, NamesAreUniqueAndFound) {
  std::set<std::pair<std::string_view, std::string_view>> names;
  ForEachControl([&](const Form& form, const Control& control) {
    EXPECT_TRUE(names.emplace(form.name, control.name).second);
    EXPECT_EQ(FindControl(form.name, control.name), &control);
    const ControlRef ref = TheControl(form.name, control.name, 2);
    EXPECT_EQ(ref.form, &form);
    EXPECT_EQ(ref.control, &control);
    EXPECT_EQ(ref.index, 2);
  });
}

TEST(Form, AStrangersNameIsNotFound) {
  for (const auto& [form, control] : {std::pair("CPUmon", "command1"),
                                      {"cpumon", "Command1"},
                                      {"TVCmon", "Command2"},
                                      {"CPUmon", ""},
                                      {"", ""}}) {
    EXPECT_EQ(FindControl(form, control), nullptr) << form << "." << control;
    EXPECT_THROW(TheControl(form, control), std::logic_error);
  }
  EXPECT_EQ(FindForm("cpumon"), nullptr);
  EXPECT_EQ(FindForm(""), nullptr);
}

// What stands behind a control's field.
struct FieldShape {
  const void *first = nullptr, *last = nullptr;
  size_t count = 0;
};
FieldShape ShapeOf(const ControlField& field) {
  return std::visit(
      [](const auto& where) -> FieldShape {
        using Where = std::decay_t<decltype(where)>;
        if constexpr (std::is_same_v<Where, std::monostate>) {
          return {};
        } else if constexpr (std::is_same_v<Where, ListRef>) {
          return {where.record, where.selected + 1, 1};
        } else {
          return {where.data(), where.data() + where.size(), where.size()};
        }
      },
      field);
}

TEST(Form, FieldsLieInTheMachineAndApart) {
  TestMachine m;
  std::set<const void*> seen;
  ForEachControl([&](const Form&, const Control& control) {
    if (control.field == nullptr) return;
    const auto [first, last, count] = ShapeOf(control.field(*m));
    ASSERT_NE(first, nullptr);
    EXPECT_GE(first, static_cast<const void*>(&*m));
    EXPECT_LE(last, static_cast<const void*>(&*m + 1));
    EXPECT_TRUE(seen.insert(first).second) << "shares a field";
    EXPECT_EQ(count, static_cast<size_t>(std::max(1, control.count)));
  });
}

// The front ends rely on it: they ask for the field that the kind says.
TEST(Form, EachKindHasItsTypeOfField) {
  TestMachine m;
  ForEachControl([&](const Form&, const Control& control) {
    const ControlField field = control.field == nullptr ? ControlField() : control.field(*m);
    const auto isA = [&]<class T>(std::type_identity<T>) { return std::holds_alternative<T>(field); };
    const bool none = isA(std::type_identity<std::monostate>());
    switch (control.kind) {
      case ControlKind::Menu: EXPECT_TRUE(none || isA(std::type_identity<std::span<bool>>())); break;
      case ControlKind::Check:
      case ControlKind::Option:
      case ControlKind::Lamp: EXPECT_TRUE(isA(std::type_identity<std::span<bool>>())); break;
      case ControlKind::Label:  // without a field when only its looks change or it is only pressed
        if (none && (control.look != nullptr || control.down)) break;
        [[fallthrough]];
      case ControlKind::Text: EXPECT_TRUE(isA(std::type_identity<std::span<std::string>>())); break;
      case ControlKind::Scroll:
      case ControlKind::Bar: EXPECT_TRUE(isA(std::type_identity<std::span<Scroll>>())); break;
      case ControlKind::List:
      case ControlKind::Combo: EXPECT_TRUE(isA(std::type_identity<ListRef>())); break;
      case ControlKind::Scope: EXPECT_TRUE(isA(std::type_identity<std::span<Trace>>())); break;
      case ControlKind::Image: EXPECT_TRUE(isA(std::type_identity<std::span<PixelImage>>())); break;
      case ControlKind::Button:
      case ControlKind::Timer: EXPECT_TRUE(none); break;
    }
    if (control.look != nullptr) {
      const size_t looks = control.look(*m).size();
      EXPECT_TRUE(looks == 1 || looks == static_cast<size_t>(control.count)) << looks;
    }
  });
}

TEST(Form, EachKindHasTheHandlersThatItCanRun) {
  ForEachControl([](const Form&, const Control& control) {
    const bool timer = control.kind == ControlKind::Timer;
    EXPECT_EQ(static_cast<bool>(control.timer), timer);
    EXPECT_EQ(control.period > std::chrono::milliseconds(0), timer);
    const bool text = control.kind == ControlKind::Text;
    const bool list = control.kind == ControlKind::List || control.kind == ControlKind::Combo;
    EXPECT_TRUE(text || control.kind == ControlKind::Scroll || !control.change);
    EXPECT_TRUE(text || !control.enter);
    EXPECT_TRUE(list || text || !control.doubleClick);
    EXPECT_EQ(control.kind == ControlKind::Menu, !control.menu.empty());
    EXPECT_TRUE(control.kind == ControlKind::Option || control.group.empty());
  });
}

TEST(Form, AScrollBarStartsInItsRange) {
  TestMachine m;
  ForEachControl([&](const Form& form, const Control& control) {
    if (control.kind != ControlKind::Scroll && control.kind != ControlKind::Bar) return;
    for (int i = 0; i < std::max(1, control.count); ++i) {
      const Scroll scroll = *FieldOf<Scroll>(*m, {&form, &control, i});
      Scroll stored = scroll;
      StoreScroll(stored, scroll.value);
      EXPECT_EQ(stored, scroll) << i;
      EXPECT_NE(scroll.first, scroll.last) << i;
    }
  });
}

TEST(Form, AButtonHasAHandlerAndNoField) {
  ForEachControl([](const Form&, const Control& control) {
    if (control.kind != ControlKind::Button) return;
    EXPECT_EQ(control.field, nullptr);
    EXPECT_TRUE(control.click || control.down || control.up);
  });
}

// A tick of the menu is a field of the main window's record.
TEST(Form, MenuTicksAreFieldsOfTheMainWindow) {
  TestMachine m;
  const auto inScreen = [&](const bool* field) {
    const auto* at = reinterpret_cast<const std::byte*>(field);
    const auto* screen = reinterpret_cast<const std::byte*>(&m->screen);
    return at >= screen && at < screen + sizeof(TScreen);
  };
  int ticks = 0;
  for (const Control& control : kTScreen.controls) {
    if (control.kind != ControlKind::Menu) continue;
    EXPECT_FALSE(control.menu.empty()) << control.name;
    const bool* tick = FieldOf<bool>(*m, {&kTScreen, &control});
    EXPECT_EQ(tick != nullptr, control.field != nullptr) << control.name;
    if (tick == nullptr) continue;
    EXPECT_TRUE(inScreen(tick)) << control.name;
    ++ticks;
  }
  EXPECT_EQ(ticks, 18);
  Press(*m, TheControl("TScreen", "xScreenBW"));
  EXPECT_TRUE(m->screen.xScreenBW);
  Press(*m, TheControl("TScreen", "xReset"));
  EXPECT_EQ(m->run.ResetRequest, 1);
}

TEST(Form, AChosenOptionPutsTheOthersOut) {
  TestMachine m;
  std::array<bool, 3>& options = m->errorsim.Option1;
  for (const int chosen : {2, 1, 0}) {
    SetTick(*m, TheControl("ErrorSim", "Option1", chosen), true);
    for (int i = 0; i < 3; ++i) EXPECT_EQ(options[static_cast<size_t>(i)], i == chosen);
  }
  for (const int outside : {-1, 3, 1000}) {
    SetTick(*m, TheControl("ErrorSim", "Option1", outside), true);
    EXPECT_EQ(options, (std::array<bool, 3>{true, false, false}));
  }
}

TEST(Form, ThePrintersClearEmptiesItsText) {
  TestMachine m;
  std::string* text = FieldOf<std::string>(*m, TheControl("TPrint", "Text1"));
  ASSERT_NE(text, nullptr);
  *text = "printed";
  EXPECT_EQ(m->printer.printed, "printed");
  Press(*m, TheControl("TPrint", "Command2"));
  EXPECT_EQ(m->printer.printed, "");
}

}  // namespace
}  // namespace quoll::test
