#include "core/Form.h"

#include <algorithm>

namespace quoll {

namespace {

bool SameGroup(const Control& a, const Control& b) {
  return &a == &b || (b.kind == ControlKind::Option && !a.group.empty() && a.group == b.group);
}

// Of a group of option buttons just one is on: the one that the user has chosen.
void PutOthersOut(Machine& m, const ControlRef& chosen) {
  for (const Control& control : chosen.form->controls) {
    if (!SameGroup(*chosen.control, control)) continue;
    const ControlField field = control.field(m);
    const auto ticks = std::get<std::span<bool>>(field);
    for (size_t i = 0; i < ticks.size(); ++i)
      ticks[i] = &control == chosen.control && static_cast<int>(i) == chosen.index;
  }
}

bool IsInside(const ControlRef& ref) { return ref.index >= 0 && ref.index < std::max(1, ref.control->count); }

void Run(Machine& m, const ControlRef& ref, const Handler& handler) {
  if (IsInside(ref)) handler(m, ref.index);
}

}  // namespace

const Control* FindControl(const Form& form, std::string_view name) {
  const auto found = std::ranges::find(form.controls, name, &Control::name);
  return found == form.controls.end() ? nullptr : &*found;
}

std::string_view CaptionOf(const ControlRef& ref) {
  std::string_view rest = ref.control->caption;
  if (ref.control->count == 0) return rest;
  for (int skip = ref.index; skip > 0; --skip) {
    const size_t bar = rest.find('|');
    if (bar == std::string_view::npos) return {};
    rest.remove_prefix(bar + 1);
  }
  return rest.substr(0, rest.find('|'));
}

ListRef ListOf(Machine& m, const Control& control) { return std::get<ListRef>(control.field(m)); }

Look LookOf(Machine& m, const ControlRef& ref) {
  if (ref.control->look == nullptr) return {};
  const std::span<Look> looks = ref.control->look(m);
  const size_t place = looks.size() == 1 ? 0 : static_cast<size_t>(ref.index);
  return place < looks.size() ? looks[place] : Look{};
}

void SetTick(Machine& m, const ControlRef& ref, bool on) {
  bool* tick = FieldOf<bool>(m, ref);
  if (tick == nullptr) return;
  *tick = on;
  if (on && ref.control->kind == ControlKind::Option) PutOthersOut(m, ref);
  Run(m, ref, ref.control->click);
}

void SetText(Machine& m, const ControlRef& ref, std::string_view text) {
  auto* value = FieldOf<std::string>(m, ref);
  if (value == nullptr) return;
  *value = text;
  Run(m, ref, ref.control->change);
}

void PressEnter(Machine& m, const ControlRef& ref) { Run(m, ref, ref.control->enter); }

void SetScroll(Machine& m, const ControlRef& ref, int32_t value) {
  auto* scroll = FieldOf<Scroll>(m, ref);
  if (scroll == nullptr) return;
  StoreScroll(*scroll, value);
  Run(m, ref, ref.control->change);
}

bool ChooseEntry(Machine& m, const ControlRef& ref, int32_t entry) {
  const ListRef list = ListOf(m, *ref.control);
  if (entry < 0 || static_cast<size_t>(entry) >= list.EntryCount()) return false;
  *list.selected = entry;
  Run(m, ref, ref.control->click);
  return true;
}

bool DoubleClickEntry(Machine& m, const ControlRef& ref, int32_t entry) {
  if (!ChooseEntry(m, ref, entry)) return false;
  Run(m, ref, ref.control->doubleClick);
  return true;
}

void DoubleClick(Machine& m, const ControlRef& ref) { Run(m, ref, ref.control->doubleClick); }
void Press(Machine& m, const ControlRef& ref) { Run(m, ref, ref.control->click); }
void MouseDown(Machine& m, const ControlRef& ref) { Run(m, ref, ref.control->down); }
void MouseUp(Machine& m, const ControlRef& ref) { Run(m, ref, ref.control->up); }

void StoreScroll(Scroll& scroll, int32_t value) {
  scroll.value = std::clamp(value, std::min(scroll.first, scroll.last), std::max(scroll.first, scroll.last));
}

}  // namespace quoll
