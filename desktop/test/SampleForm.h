// A form with a control of each kind, for tests of the kit: its record lies beside the machine.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "core/FormTable.h"
#include "machine/Machine.h"

namespace quoll::test {

struct Sample {
  FormState window;
  bool xTick = false;
  bool Check1 = false;
  std::array<bool, 3> Check2{};
  std::array<bool, 3> Option1{true, false, false};
  std::string Text1;
  std::array<std::string, 2> Text2;
  std::string Label1;
  std::array<std::string, 2> Label2;
  std::array<bool, 2> Lamp1{};
  std::array<Scroll, 2> HScroll1{Scroll{3, 0, 10}, Scroll{0, 50, -50}};
  ListBox List1, Combo1;
  std::array<Trace, 2> Pic1;
  PixelImage Pic2;
  std::array<std::string, 20> Cell1;
  std::string View1;
  Scroll VScroll1{0, 0, 0xFFFF};
  Scroll Shape1{5, 0, 20};
  Look look;                  // of Check1, Text1 and others
  std::array<Look, 2> looks;  // of Label2
  std::array<Look, 20> cellLooks;

  int refreshes = 0;                // how often the form was brought up to date
  std::vector<std::string> events;  // handlers that have run
};

// The record that the table reaches, whatever the machine.
inline Sample sample;

inline void Note(const std::string& event) { sample.events.push_back(event); }
inline void NoteAt(const std::string& event, int index) { Note(event + std::to_string(index)); }

template <auto kField>
ControlField SampleField(Machine&) {
  return AsSpan(sample.*kField);
}
template <auto kField>
ControlField SampleList(Machine&) {
  return ListRef(sample.*kField);
}
template <auto kField>
std::span<Look> SampleLook(Machine&) {
  return AsSpan(sample.*kField);
}

// The kit needs nothing of a table but its lines.
inline std::span<const Control> SampleControls() {
  using K = ControlKind;
  static const std::array kControls{
      MenuEntry(
          "One", "xEntry", "Entry & more", +[](Machine&) { Note("xEntry"); }),
      Control{.name = "xTick",
              .kind = K::Menu,
              .caption = "Tick",
              .field = SampleField<&Sample::xTick>,
              .click = +[](Machine&) { sample.xTick = !sample.xTick; },
              .menu = "One"},
      MenuEntry("Two", "xNothing", "Nothing"),
      Control{.name = "Check1",
              .kind = K::Check,
              .caption = "Check",
              .field = SampleField<&Sample::Check1>,
              .look = SampleLook<&Sample::look>,
              .click = +[](Machine&) { Note("Check1"); }},
      Control{.name = "Check2",
              .kind = K::Check,
              .caption = "a|b|c",
              .count = 3,
              .field = SampleField<&Sample::Check2>,
              .click = +[](Machine&, int i) { NoteAt("Check2 ", i); }},
      Control{.name = "Option1",
              .kind = K::Option,
              .caption = "x|y|z",
              .count = 3,
              .field = SampleField<&Sample::Option1>,
              .click = +[](Machine&, int i) { NoteAt("Option1 ", i); }},
      Control{.name = "Text1",
              .kind = K::Text,
              .caption = "Text",
              .field = SampleField<&Sample::Text1>,
              .look = SampleLook<&Sample::look>,
              .change = +[](Machine&) { Note("change " + sample.Text1); },
              .enter = +[](Machine&) { Note("enter " + sample.Text1); }},
      Control{.name = "Text2",
              .kind = K::Text,
              .caption = "p|q",
              .count = 2,
              .field = SampleField<&Sample::Text2>,
              .enter = +[](Machine&, int i) { NoteAt("Text2 ", i); }},
      Control{.name = "Label1", .kind = K::Label, .caption = "Label", .field = SampleField<&Sample::Label1>},
      Control{.name = "Label2",
              .kind = K::Label,
              .caption = "L0|L1",
              .count = 2,
              .field = SampleField<&Sample::Label2>,
              .look = SampleLook<&Sample::looks>,
              .click = +[](Machine&, int i) { NoteAt("click ", i); },
              .down = +[](Machine&, int i) { NoteAt("down ", i); },
              .up = +[](Machine&, int i) { NoteAt("up ", i); }},
      Control{.name = "Lamp1",
              .kind = K::Lamp,
              .caption = "RED|GREEN",
              .count = 2,
              .field = SampleField<&Sample::Lamp1>},
      Button(
          "Command1", "Do & be", +[](Machine&) { Note("Command1"); }),
      Button(
          "Command2", "r|s", +[](Machine&, int i) { NoteAt("Command2 ", i); }, 2)
          .Down(+[](Machine&, int i) { NoteAt("Command2 down ", i); })
          .Up(+[](Machine&, int i) { NoteAt("Command2 up ", i); }),
      Control{.name = "HScroll1",
              .kind = K::Scroll,
              .caption = "f|g",
              .count = 2,
              .field = SampleField<&Sample::HScroll1>,
              .change = +[](Machine&, int i) { NoteAt("HScroll1 ", i); }},
      Control{.name = "List1",
              .kind = K::List,
              .caption = "List",
              .field = SampleList<&Sample::List1>,
              .click = +[](Machine&) { Note("click " + sample.List1.Selected()); },
              .doubleClick = +[](Machine&) { Note("double " + sample.List1.Selected()); }},
      Control{.name = "Combo1",
              .kind = K::Combo,
              .caption = "Combo",
              .field = SampleList<&Sample::Combo1>,
              .click = +[](Machine&) { Note("combo " + sample.Combo1.Selected()); }},
      Control{.name = "Pic1",
              .kind = K::Scope,
              .caption = "s|t",
              .count = 2,
              .field = SampleField<&Sample::Pic1>},
      Control{.name = "Pic2", .kind = K::Image, .caption = "Image", .field = SampleField<&Sample::Pic2>},
      Control{.name = "Cell1",
              .kind = K::Label,
              .caption = "A|B|C",
              .count = 20,
              .field = SampleField<&Sample::Cell1>,
              .look = SampleLook<&Sample::cellLooks>,
              .click = +[](Machine&, int i) { NoteAt("Cell1 ", i); }},
      Control{.name = "View1", .kind = K::Label, .caption = "View", .field = SampleField<&Sample::View1>},
      Control{.name = "VScroll1",
              .kind = K::Scroll,
              .caption = "Address",
              .field = SampleField<&Sample::VScroll1>,
              .change = +[](Machine&) { NoteAt("VScroll1 ", sample.VScroll1.value); }},
      Control{.name = "Shape1", .kind = K::Bar, .caption = "Bar", .field = SampleField<&Sample::Shape1>},
      Lit("Lit1", "INT ON", SampleLook<&Sample::look>),
      Timer(
          "Timer1", std::chrono::milliseconds(100), +[](Machine&) { Note("Timer1"); }),
  };
  return kControls;
}

inline const Form kSample{"Sample", "A sample", +[](Machine&) { return &sample.window; }, SampleControls(),
                          [](Machine&) { ++sample.refreshes; }};

}  // namespace quoll::test
