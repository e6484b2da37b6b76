// How the controls of a form are reached by name. A form is a record of its controls; its table has one
// line a control: name, kind, the field, what the user's change does. Windows, scripts and tests all
// go through the same table.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <variant>

namespace quoll {

struct Machine;

enum class ControlKind { Menu, Check, Option, Text, Label, Button, Scroll, List };

// The field behind a control. Arrays of controls have a span; a plain button has no field.
using ControlField = std::variant<std::monostate, bool*, int32_t*, std::string*, std::span<bool>,
                                  std::span<int32_t>, std::span<std::string>>;

struct Control {
  std::string_view name;
  ControlKind kind;
  // Where the control's value lives in this machine; nullptr for none.
  ControlField (*field)(Machine&) = nullptr;
  // What follows when the user has changed the value or pressed the button; index within an array of
  // controls, else 0. nullptr: the value alone is the effect.
  void (*changed)(Machine&, int index) = nullptr;
};

struct Form {
  std::string_view name;
  std::span<const Control> controls;
};

// All forms of the machine.
std::span<const Form> Forms();

// The control of that form and name, nullptr when there is none. Names are case sensitive.
const Control* FindControl(std::string_view form, std::string_view control);

// Does what a user's change of a control does after the field has its new value.
void ControlChanged(Machine& m, const Control& control, int index = 0);

}  // namespace quoll
