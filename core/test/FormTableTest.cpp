// The lines of a table: what each maker puts into them.
#include <gtest/gtest.h>

#include "core/FormTable.h"
#include "testkit/TestMachine.h"

namespace quoll::test {
namespace {

using namespace std::chrono_literals;

void Handle(Machine&, int) {}

constexpr On<&Machine::errorsim> sim;
constexpr On<&Machine::cpumon> monitor;
constexpr On<&Machine::cpumon, &CPUmon::shown> views;
constexpr On<&Machine::tvcmon, &TVCmon::shown> inside;
constexpr On<&Machine::fdxf> sound;
constexpr On<&Machine::ttape> deck;
constexpr On<&Machine::screen> screen;

struct Row {
  Control line;
  ControlKind kind;
  int count;
  Handler Control::*handler;  // the one that is given; nullptr for none
};

using K = ControlKind;
constexpr Row kRows[] = {
    {sim.Check<&ErrorSim::Check1>("x", "A", Handle), K::Check, 0, &Control::click},
    {sim.Check<&ErrorSim::CH0>("x", "A"), K::Check, 8, nullptr},
    {sim.Option<&ErrorSim::Option1>("x", "A", Handle), K::Option, 3, &Control::click},
    {inside.Lamp<&TVCmonShown::SoundLamp>("x", "A"), K::Lamp, 2, nullptr},
    {monitor.Text<&CPUmon::Text5>("x", "A", Handle), K::Text, 0, &Control::change},
    {inside.Label<&TVCmonShown::Pitch>("x", "A", Handle), K::Label, 0, &Control::click},
    {monitor.Scroll<&CPUmon::HScroll1>("x", "A", Handle), K::Scroll, 0, &Control::change},
    {sound.Scope<&FDXF::PL>("x", "A"), K::Scope, 0, nullptr},
    {views.Bar<&CPUmonShown::Shape2>("x", "A"), K::Bar, 0, nullptr},
    {deck.List<&TTape::File1>("x", "A", Handle), K::List, 0, &Control::click},
    {deck.Combo<&TTape::File1>("x", "A", Handle), K::Combo, 0, &Control::click},
    {screen.Tick<&TScreen::xS1>("M", "x", "A", Handle), K::Menu, 0, &Control::click},
    {Button("x", "A", Handle), K::Button, 0, &Control::click},
    {Button("x", "A", Handle, 12), K::Button, 12, &Control::click},
    {MenuEntry("M", "x", "A", Handle), K::Menu, 0, &Control::click},
    {MenuEntry("M", "x", "A"), K::Menu, 0, nullptr},
    {Timer("x", 250ms, Handle), K::Timer, 0, &Control::timer},
};

TEST(FormTable, EachMakerFillsItsLine) {
  constexpr Handler Control::*kHandlers[] = {&Control::click,       &Control::change, &Control::enter,
                                             &Control::doubleClick, &Control::down,   &Control::up,
                                             &Control::timer};
  for (size_t row = 0; row < std::size(kRows); ++row) {
    SCOPED_TRACE(row);
    const auto& [line, kind, count, handler] = kRows[row];
    EXPECT_EQ(line.name, "x");
    EXPECT_EQ(line.kind, kind);
    EXPECT_EQ(line.count, count);
    EXPECT_EQ(line.caption, kind == K::Timer ? "" : "A");
    EXPECT_EQ(line.menu, kind == K::Menu ? "M" : "");
    EXPECT_EQ(line.period, kind == K::Timer ? 250ms : 0ms);
    for (const auto each : kHandlers) EXPECT_EQ(static_cast<bool>(line.*each), each == handler);
    EXPECT_EQ(line.look, nullptr);
    EXPECT_EQ(line.group, "");
  }
}

TEST(FormTable, FieldsAreThoseOfTheMachine) {
  const TestMachine m;
  const auto bools = [&](const Control& line) { return std::get<std::span<bool>>(line.field(*m)); };
  EXPECT_EQ(bools(kRows[0].line).data(), &m->errorsim.Check1);
  EXPECT_EQ(bools(kRows[0].line).size(), 1U);
  EXPECT_EQ(bools(kRows[1].line).data(), m->errorsim.CH0.data());
  EXPECT_EQ(bools(kRows[1].line).size(), 8U);
  EXPECT_EQ(bools(kRows[11].line).data(), &m->screen.xS1);
  EXPECT_EQ(std::get<std::span<std::string>>(kRows[4].line.field(*m)).data(), &m->cpumon.Text5);
  EXPECT_EQ(std::get<std::span<Scroll>>(kRows[6].line.field(*m)).data(), &m->cpumon.HScroll1);
  EXPECT_EQ(std::get<std::span<Trace>>(kRows[7].line.field(*m)).data(), &m->fdxf.PL);
  EXPECT_EQ(ListOf(*m, kRows[9].line).record, &m->ttape.File1);
  EXPECT_EQ(std::get<std::span<std::string>>(deck.Caption().field(*m)).data(), &m->ttape.window.caption);
  EXPECT_EQ(deck.State(*m), &m->ttape.window);
  // A record inside the form's.
  EXPECT_EQ(bools(kRows[3].line).data(), m->tvcmon.shown.SoundLamp.data());
  EXPECT_EQ(inside.State(*m), &m->tvcmon.window);
}

TEST(FormTable, ALitLabelHasALookAndNoField) {
  constexpr Control kLit = Lit("x", "A", views.Look<&CPUmonShown::Label7Look>);
  EXPECT_EQ(kLit.kind, K::Label);
  EXPECT_EQ(kLit.caption, "A");
  EXPECT_EQ(kLit.field, nullptr);
  const TestMachine m;
  EXPECT_EQ(kLit.look(*m).data(), &m->cpumon.shown.Label7Look);
}

TEST(FormTable, AdditionsLeaveTheRestOfTheLine) {
  constexpr Control kLine = kRows[0].line;
  constexpr Control kMore = kLine.Enter(Handle).DoubleClick(Handle).Down(Handle).Up(Handle).Group("g").Looks(
      monitor.Look<&CPUmon::Command1Look>);
  EXPECT_TRUE(kMore.enter && kMore.doubleClick && kMore.down && kMore.up && kMore.click);
  EXPECT_FALSE(kMore.change || kMore.timer);
  EXPECT_EQ(kMore.group, "g");
  EXPECT_EQ(kMore.name, kLine.name);
  EXPECT_EQ(kMore.field, kLine.field);
  const TestMachine m;
  EXPECT_EQ(kMore.look(*m).data(), &m->cpumon.Command1Look);
  EXPECT_FALSE(kLine.enter);
}

}  // namespace
}  // namespace quoll::test
