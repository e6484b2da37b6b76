// The lines of a form's table. On<&Machine::fdxf> makes them for the controls of that record:
//
//   constexpr On<&Machine::fdxf> f;
//   constexpr std::array kControls{
//       f.Button("Cstop", "Stop", Cstop_Click),
//       f.Check<&FDXF::Check7>("Check7", "Osc"),
//       f.Scroll<&FDXF::HScroll1>("HScroll1", "Volume", HScroll1_Change),
//       Timer("Timer1", 100ms, Timer1_Timer),
//   };
//
// A field that is a std::array makes an array of controls. Handlers are named for control and event:
// _Click, _Change, _Enter, _DoubleClick, _Down, _Up, _Timer.
#pragma once

#include <array>

#include "core/Form.h"

namespace quoll {

template <class T>
inline constexpr int kCountOf = 0;
template <class T, size_t kSize>
inline constexpr int kCountOf<std::array<T, kSize>> = static_cast<int>(kSize);

template <class T>
std::span<T> AsSpan(T& field) {
  return {&field, 1};
}
template <class T, size_t kSize>
std::span<T> AsSpan(std::array<T, kSize>& field) {
  return field;
}

// kPath: members that lead on to a record inside the form's.
template <auto kForm, auto... kPath>
struct On {
  static auto& Record(Machine& m) { return ((m.*kForm).*....*kPath); }
  // The form's window state, which every record calls window.
  static FormState* State(Machine& m) { return &(m.*kForm).window; }

  template <auto kField>
  static ControlField Field(Machine& m) {
    return AsSpan(Record(m).*kField);
  }
  template <auto kField>
  static ControlField ListField(Machine& m) {
    return ListRef(Record(m).*kField);
  }
  // For Control::Looks.
  template <auto kField>
  static std::span<Look> Look(Machine& m) {
    return AsSpan(Record(m).*kField);
  }
  template <auto kField = nullptr>
  static constexpr Control Value(std::string_view name, ControlKind kind, std::string_view caption) {
    return {
        .name = name, .kind = kind, .caption = caption, .count = CountOf<kField>(), .field = Field<kField>};
  }

  template <auto kField>
  static constexpr Control Check(std::string_view name, std::string_view caption, Handler click = {}) {
    return Value<kField>(name, ControlKind::Check, caption).With(&Control::click, click);
  }
  // The window's caption, which scripts read.
  static ControlField CaptionField(Machine& m) { return AsSpan((m.*kForm).window.caption); }
  static constexpr Control Caption() {
    return {.name = "Caption", .kind = ControlKind::Label, .caption = "Caption", .field = CaptionField};
  }
  // A lamp, lit while its field is true: shown only.
  template <auto kField>
  static constexpr Control Lamp(std::string_view name, std::string_view caption) {
    return Value<kField>(name, ControlKind::Lamp, caption);
  }
  template <auto kField>
  static constexpr Control Option(std::string_view name, std::string_view caption, Handler click = {}) {
    return Value<kField>(name, ControlKind::Option, caption).With(&Control::click, click);
  }
  template <auto kField>
  static constexpr Control Text(std::string_view name, std::string_view caption, Handler change = {}) {
    return Value<kField>(name, ControlKind::Text, caption).With(&Control::change, change);
  }
  template <auto kField>
  static constexpr Control Label(std::string_view name, std::string_view caption, Handler click = {}) {
    return Value<kField>(name, ControlKind::Label, caption).With(&Control::click, click);
  }
  template <auto kField>
  static constexpr Control Scroll(std::string_view name, std::string_view caption, Handler change = {}) {
    return Value<kField>(name, ControlKind::Scroll, caption).With(&Control::change, change);
  }
  template <auto kField>
  static constexpr Control Bar(std::string_view name, std::string_view caption) {
    return Value<kField>(name, ControlKind::Bar, caption);
  }
  template <auto kField>
  static constexpr Control Scope(std::string_view name, std::string_view caption) {
    return Value<kField>(name, ControlKind::Scope, caption);
  }
  template <auto kField>
  static constexpr Control Image(std::string_view name, std::string_view caption) {
    return Value<kField>(name, ControlKind::Image, caption);
  }
  template <auto kField>
  static constexpr Control List(std::string_view name, std::string_view caption, Handler click = {}) {
    return {.name = name,
            .kind = ControlKind::List,
            .caption = caption,
            .field = ListField<kField>,
            .click = click};
  }
  template <auto kField>
  static constexpr Control Combo(std::string_view name, std::string_view caption, Handler click = {}) {
    return List<kField>(name, caption, click).With(&Control::kind, ControlKind::Combo);
  }
  // A menu entry with a tick, which the handler flips.
  template <auto kField>
  static constexpr Control Tick(std::string_view menu, std::string_view name, std::string_view caption,
                                Handler click = {}) {
    return Value<kField>(name, ControlKind::Menu, caption)
        .With(&Control::click, click)
        .With(&Control::menu, menu);
  }

 private:
  template <auto kField>
  static constexpr int CountOf() {
    return []<class Record, class T>(T Record::*) { return kCountOf<T>; }(kField);
  }
};

// An array of count buttons has the index in its handler.
constexpr Control Button(std::string_view name, std::string_view caption, Handler click, int count = 0) {
  return {.name = name, .kind = ControlKind::Button, .caption = caption, .count = count, .click = click};
}

// A label of a fixed text whose colour tells something.
constexpr Control Lit(std::string_view name, std::string_view caption, std::span<Look> (*look)(Machine&)) {
  return {.name = name, .kind = ControlKind::Label, .caption = caption, .look = look};
}

// A menu entry without a tick.
constexpr Control MenuEntry(std::string_view menu, std::string_view name, std::string_view caption,
                            Handler click = {}) {
  return {.name = name, .kind = ControlKind::Menu, .caption = caption, .click = click, .menu = menu};
}

constexpr Control Timer(std::string_view name, std::chrono::milliseconds period, Handler timer) {
  return {.name = name, .kind = ControlKind::Timer, .timer = timer, .period = period};
}

}  // namespace quoll
