#include <gtest/gtest.h>

#include <memory>
#include <set>
#include <string>
#include <vector>

#include "forms/Forms.h"
#include "machine/Machine.h"

namespace quoll::test {
namespace {

TEST(Form, AllFormsAreThere) {
  std::vector<std::string> names;
  for (const Form* form : Forms()) {
    names.emplace_back(form->name);
    const bool bare = form->name == "Frame2" || form->name == "FScreen";
    EXPECT_EQ(form->controls.empty(), bare) << form->name;
    EXPECT_EQ(FindForm(form->name), form);
  }
  EXPECT_EQ(names, (std::vector<std::string>{"TScreen", "Frame2", "FScreen", "CPUmon", "TVCmon", "ErrorSim",
                                             "TPrint", "TTools", "TTape", "FDXF", "Fsaa"}));
}

TEST(Form, NamesAreUniqueAndFound) {
  for (const Form* form : Forms()) {
    std::set<std::string> names;
    for (const Control& control : form->controls) {
      EXPECT_TRUE(names.emplace(control.name).second) << form->name << "." << control.name;
      EXPECT_EQ(FindControl(form->name, control.name), &control);
    }
  }
}

TEST(Form, AStrangersNameIsNotFound) {
  EXPECT_EQ(FindControl("CPUmon", "command1"), nullptr);
  EXPECT_EQ(FindControl("cpumon", "Command1"), nullptr);
  EXPECT_EQ(FindControl("TVCmon", "Command1"), nullptr);
  EXPECT_EQ(FindControl("", ""), nullptr);
}

// First and last byte of what a field stands for.
std::pair<const void*, const void*> Extent(const ControlField& field) {
  return std::visit(
      [](const auto& where) -> std::pair<const void*, const void*> {
        using Where = std::decay_t<decltype(where)>;
        if constexpr (std::is_same_v<Where, std::monostate>) {
          return {nullptr, nullptr};
        } else if constexpr (std::is_same_v<Where, ListRef>) {
          return {where.record, where.selected + 1};
        } else {
          return {where.data(), where.data() + where.size()};
        }
      },
      field);
}

TEST(Form, FieldsLieInTheMachineAndApart) {
  Host host;
  const auto m = std::make_unique<Machine>(host);
  std::set<const void*> seen;
  for (const Form* form : Forms()) {
    for (const Control& control : form->controls) {
      if (control.field == nullptr) continue;
      const auto [first, last] = Extent(control.field(*m));
      ASSERT_NE(first, nullptr) << form->name << "." << control.name;
      EXPECT_GE(first, static_cast<const void*>(m.get()));
      EXPECT_LE(last, static_cast<const void*>(m.get() + 1));
      EXPECT_TRUE(seen.insert(first).second) << form->name << "." << control.name << " shares a field";
    }
  }
}

TEST(Form, AButtonHasAHandlerAndNoField) {
  for (const Form* form : Forms()) {
    for (const Control& control : form->controls) {
      if (control.kind != ControlKind::Button) continue;
      EXPECT_EQ(control.field, nullptr) << form->name << "." << control.name;
      EXPECT_TRUE(control.click || control.down || control.up) << form->name << "." << control.name;
    }
  }
}

// A tick of the menu is a field of the main window's record.
TEST(Form, MenuTicksAreFieldsOfTheMainWindow) {
  Host host;
  const auto m = std::make_unique<Machine>(host);
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
  Host host;
  const auto m = std::make_unique<Machine>(host);
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
  Host host;
  const auto m = std::make_unique<Machine>(host);
  std::string* text = FieldOf<std::string>(*m, TheControl("TPrint", "Text1"));
  ASSERT_NE(text, nullptr);
  *text = "printed";
  EXPECT_EQ(m->printer.printed, "printed");
  Press(*m, TheControl("TPrint", "Command2"));
  EXPECT_EQ(m->printer.printed, "");
}

}  // namespace
}  // namespace quoll::test
