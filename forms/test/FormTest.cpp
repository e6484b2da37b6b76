#include <gtest/gtest.h>

#include <memory>
#include <set>
#include <string>
#include <vector>

#include "core/Form.h"
#include "machine/Machine.h"

namespace quoll::test {
namespace {

TEST(Form, AllFormsAreThere) {
  std::vector<std::string> names;
  for (const Form& form : Forms()) {
    names.emplace_back(form.name);
    EXPECT_FALSE(form.controls.empty()) << form.name;
  }
  EXPECT_EQ(names, (std::vector<std::string>{"TScreen", "CPUmon", "TVCmon", "ErrorSim", "TPrint", "TTools",
                                             "TTape", "FDXF", "Fsaa"}));
}

TEST(Form, NamesAreUniqueAndFound) {
  for (const Form& form : Forms()) {
    std::set<std::string> names;
    for (const Control& control : form.controls) {
      EXPECT_TRUE(names.emplace(control.name).second) << form.name << "." << control.name;
      EXPECT_EQ(FindControl(form.name, control.name), &control);
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
        } else if constexpr (std::is_pointer_v<Where>) {
          return {where, where + 1};
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
  for (const Form& form : Forms()) {
    for (const Control& control : form.controls) {
      if (control.field == nullptr) continue;
      const auto [first, last] = Extent(control.field(*m));
      ASSERT_NE(first, nullptr) << form.name << "." << control.name;
      EXPECT_GE(first, static_cast<const void*>(m.get()));
      EXPECT_LE(last, static_cast<const void*>(m.get() + 1));
      EXPECT_TRUE(seen.insert(first).second) << form.name << "." << control.name << " shares a field";
    }
  }
}

TEST(Form, AButtonHasAHandlerAndNoField) {
  for (const Form& form : Forms()) {
    for (const Control& control : form.controls) {
      if (control.kind != ControlKind::Button) continue;
      EXPECT_EQ(control.field, nullptr) << form.name << "." << control.name;
      EXPECT_NE(control.changed, nullptr) << form.name << "." << control.name;
    }
  }
}

TEST(Form, EachMenuItemIsAControlOfTheMainWindow) {
  Host host;
  const auto m = std::make_unique<Machine>(host);
  for (const MenuItem& item : MenuItems()) {
    const Control* control = FindControl("TScreen", item.name);
    ASSERT_NE(control, nullptr) << item.name;
    EXPECT_EQ(control->kind, ControlKind::Menu);
    EXPECT_EQ(control->changed != nullptr, item.click != nullptr) << item.name;
    if (item.tick == nullptr) {
      EXPECT_EQ(control->field, nullptr) << item.name;
    } else {
      EXPECT_EQ(std::get<bool*>(control->field(*m)), &(m->screen.*item.tick)) << item.name;
    }
  }
  ControlChanged(*m, *FindControl("TScreen", "xScreenBW"));
  EXPECT_TRUE(m->screen.xScreenBW);
  ControlChanged(*m, *FindControl("TScreen", "xReset"));
  EXPECT_EQ(m->run.ResetRequest, 1);
}

TEST(Form, AChosenOptionPutsTheOthersOut) {
  Host host;
  const auto m = std::make_unique<Machine>(host);
  std::array<bool, 3>& options = m->errorsim.Option1;
  const Control* control = FindControl("ErrorSim", "Option1");
  ASSERT_NE(control, nullptr);
  for (int chosen : {2, 1, 0}) {
    options[static_cast<size_t>(chosen)] = true;
    ControlChanged(*m, *control, chosen);
    for (int i = 0; i < 3; ++i) EXPECT_EQ(options[static_cast<size_t>(i)], i == chosen);
  }
  for (int outside : {-1, 3, 1000}) {
    ControlChanged(*m, *control, outside);
    EXPECT_EQ(options, (std::array<bool, 3>{true, false, false}));
  }
}

// An option group made up here, whose table leaves the others to ControlChanged.
TEST(Form, OptionsNeedNoHandler) {
  static std::array<bool, 4> options;
  options = {true, false, false, false};
  constexpr Control kControl{"Option9", ControlKind::Option,
                             [](Machine&) -> ControlField { return std::span<bool>(options); }};
  Host host;
  const auto m = std::make_unique<Machine>(host);
  options[3] = true;
  ControlChanged(*m, kControl, 3);
  EXPECT_EQ(options, (std::array<bool, 4>{false, false, false, true}));
  options[3] = false;  // taking one out chooses no other
  ControlChanged(*m, kControl, 3);
  EXPECT_EQ(options, (std::array<bool, 4>{}));
}

TEST(Form, ThePrintersClearEmptiesItsText) {
  Host host;
  const auto m = std::make_unique<Machine>(host);
  const Control* text = FindControl("TPrint", "Text1");
  ASSERT_NE(text, nullptr);
  *std::get<std::string*>(text->field(*m)) = "printed";
  EXPECT_EQ(m->printer.Text1, "printed");
  ControlChanged(*m, *FindControl("TPrint", "Command2"));
  EXPECT_EQ(m->printer.Text1, "");
}

}  // namespace
}  // namespace quoll::test
