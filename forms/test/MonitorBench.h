// The monitors as their users work with them: by the forms' tables.
#pragma once

#include <gtest/gtest.h>

#include <random>
#include <string>

#include "core/Form.h"
#include "forms/Forms.h"
#include "testkit/TestMachine.h"

namespace quoll::test {

using Dice = std::mt19937_64;

// Uniform in 0 to n - 1.
inline int32_t Roll(Dice& dice, int32_t n) { return static_cast<int32_t>(dice() % static_cast<uint64_t>(n)); }

// A machine whose 64 KB are RAM, full of NOPs. No ROM is needed.
struct MonitorBench : testing::Test {
  const char* form = "CPUmon";
  TestMachine m;
  TestHost& host = m.host;

  MonitorBench() { host.framesAllowed = 10; }

  ControlRef Ref(std::string_view control, int index = 0) const { return TheControl(form, control, index); }
  void Press(std::string_view button) { quoll::Press(*m, Ref(button)); }
  void Tick(std::string_view box, bool on = true) { SetTick(*m, Ref(box), on); }
  void Type(std::string_view box, std::string_view text, int index = 0) {
    SetText(*m, Ref(box, index), text);
  }
  void Enter(std::string_view box, std::string_view text, int index = 0) {
    Type(box, text, index);
    PressEnter(*m, Ref(box, index));
  }
  // What whoever looks sees.
  std::string Text(std::string_view control, int index = 0) {
    RefreshForm(*m, *FindForm(form));
    return *FieldOf<std::string>(*m, Ref(control, index));
  }
  bool Lit(std::string_view lamp, int index = 0) {
    RefreshForm(*m, *FindForm(form));
    return *FieldOf<bool>(*m, Ref(lamp, index));
  }
  Scroll Bar(std::string_view control) {
    RefreshForm(*m, *FindForm(form));
    return *FieldOf<Scroll>(*m, Ref(control));
  }
  void RunTimer(std::string_view timer) { Ref(timer).control->timer(*m, 0); }
};

}  // namespace quoll::test
