#include "forms/Forms.h"

#include <algorithm>
#include <array>
#include <stdexcept>

#include "machine/Machine.h"

namespace quoll {

namespace {

// Each of the six forms has its own DrawChip, and ChipControls where the renderer listens to it.
template <auto kForm, auto kChip>
void Draw(Machine& m, bool scopes) {
  if ((m.card.*kChip).silent == 0) DrawChip(m.*kForm, m.card.*kChip, scopes);
}
// A reset's frame is silent and is drawn all the same.
void DrawSaa(Machine& m, bool scopes) {
  const Saa1099& saa = m.card.saa;
  if (saa.silent == 0 || saa.wasReset) DrawChip(m.fsaa, saa, scopes);
}
template <auto kForm, auto kControls>
void Controls(const Machine& m, SoundCardControls& controls) {
  controls.*kControls = ChipControls(m.*kForm);
}

}  // namespace

std::span<const ChipForm> ChipForms() {
  using Tell = SoundCardControls;
  static constexpr std::array kChipForms{
      ChipForm{Controls<&Machine::fsaa, &Tell::saa>, DrawSaa},
      ChipForm{nullptr, Draw<&Machine::fsn76489, &SoundCard::sn>},
      ChipForm{Controls<&Machine::fym3812, &Tell::opl>, Draw<&Machine::fym3812, &SoundCard::opl>},
      ChipForm{Controls<&Machine::fsid, &Tell::sid>, Draw<&Machine::fsid, &SoundCard::sid>},
      ChipForm{Controls<&Machine::fym2413, &Tell::opll>, Draw<&Machine::fym2413, &SoundCard::opll>},
      ChipForm{nullptr, Draw<&Machine::t8910, &SoundCard::ay>},
  };
  return kChipForms;
}

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
