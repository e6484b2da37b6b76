#include "forms/Forms.h"

#include <algorithm>
#include <array>
#include <stdexcept>

#include "machine/Machine.h"

namespace quoll {

std::span<const Form* const> Forms() {
  static constexpr std::array kForms{
      &kTScreen,   //
      &kFrame2,    //
      &kFScreen,   //
      &kCPUmon,    //
      &kTVCmon,    //
      &kAsse,      //
      &kErrorSim,  //
      &kTFloppy,   //
      &kTSerial,   //
      &kTPrint,    //
      &kTTools,    //
      &kTTape,     //
      &kFDXF,      //
      &kFsaa,      //
      &kFSN76489,  //
      &kFYM3812,   //
      &kFYM2413,   //
      &kFSID,      //
      &kT8910,     //
  };
  return kForms;
}

const Form* FindForm(std::string_view name) {
  const auto found = std::ranges::find(Forms(), name, &Form::name);
  return found == Forms().end() ? nullptr : *found;
}

const Control* FindControl(std::string_view form, std::string_view control) {
  const Form* found = FindForm(form);
  return found == nullptr ? nullptr : FindControl(*found, control);
}

ControlRef TheControl(std::string_view form, std::string_view control, int index) {
  const ControlRef ref{FindForm(form), FindControl(form, control), index};
  if (ref.control == nullptr)
    throw std::logic_error("no control " + std::string(form) + "." + std::string(control));
  return ref;
}

}  // namespace quoll
