#include "core/Form.h"

#include <algorithm>
#include <array>

#include "machine/Machine.h"

namespace quoll {

namespace {

// Of a group of option buttons just one is on: the one that the user has chosen.
void ExcludeOthers(const ControlField& field, int index) {
  const auto* group = std::get_if<std::span<bool>>(&field);
  if (group == nullptr || index < 0 || static_cast<size_t>(index) >= group->size()) return;
  if (!(*group)[static_cast<size_t>(index)]) return;
  std::fill(group->begin(), group->end(), false);
  (*group)[static_cast<size_t>(index)] = true;
}

}  // namespace

std::span<const Form> Forms() {
  static const std::array forms{
      Form{"TScreen", TScreenControls()}, Form{"CPUmon", CPUmonControls()},
      Form{"TVCmon", TVCmonControls()},   Form{"ErrorSim", ErrorSimControls()},
      Form{"TPrint", TPrintControls()},   Form{"TTools", TToolsControls()},
      Form{"TTape", TTapeControls()},     Form{"FDXF", FDXFControls()},
      Form{"Fsaa", FsaaControls()},
  };
  return forms;
}

const Control* FindControl(std::string_view form, std::string_view control) {
  for (const Form& f : Forms()) {
    if (f.name != form) continue;
    for (const Control& c : f.controls) {
      if (c.name == control) return &c;
    }
  }
  return nullptr;
}

void ControlChanged(Machine& m, const Control& control, int index) {
  if (control.kind == ControlKind::Option && control.field != nullptr) ExcludeOthers(control.field(m), index);
  if (control.changed != nullptr) control.changed(m, index);
}

}  // namespace quoll
