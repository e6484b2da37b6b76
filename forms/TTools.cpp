#include "forms/TTools.h"

#include "core/FormTable.h"
#include "core/NumberText.h"
#include "forms/PicD.h"
#include "forms/ToolKeys.h"
#include "machine/Machine.h"

namespace quoll {

namespace {

void KeyDown(Machine& m, int32_t code) { picd_KeyDown(m, code, 0); }

// A click ends a hold, too.
void KeyUp(Machine& m, int32_t code) {
  m.tools.Held[static_cast<size_t>(code)] = false;
  KeyboardHold(m.keyboard, code, false);
  picd_KeyUp(m, code);
}

void Label1_Down(Machine& m, int index) { KeyDown(m, index + kFirstKeyCode); }
void Label1_Up(Machine& m, int index) { KeyUp(m, index + kFirstKeyCode); }

template <int32_t kCode>
void Key_Down(Machine& m) {
  KeyDown(m, kCode);
}
template <int32_t kCode>
void Key_Up(Machine& m) {
  KeyUp(m, kCode);
}

// Only keys that the machine has can be held.
void Held_Click(Machine& m, int code) {
  bool& held = m.tools.Held[static_cast<size_t>(code)];
  if (!held) return KeyUp(m, code);
  held = KeyboardHold(m.keyboard, code, true);
  if (held) KeyDown(m, code);
}

// A row and its bits of the value: bits from kShift on, as many as the row's indices need.
template <auto kRow, auto kLooks, int kShift>
void Row_Click(Machine& m, int index) {
  auto& row = m.tools.*kRow;
  row.fill(false);
  row[static_cast<size_t>(index)] = true;
  m.tools.*kLooks =
      PageRow<std::tuple_size_v<std::decay_t<decltype(row)>>>::Looks(static_cast<size_t>(index));
  const int32_t bits = static_cast<int32_t>(row.size() - 1) << kShift;
  m.tools.Text2 = std::to_string((NumberOfText(m.tools.Text2) & ~bits & 0xFF) | index << kShift);
}

// The legends of Label1's keys with bars between them; places without a key have none.
struct Captions {
  std::array<char, 512> text{};
  size_t length = 0;

  constexpr void Add(std::string_view more) {
    for (const char c : more) text[length++] = c;
  }
};

constexpr std::string_view LegendOf(int code) {
  for (const ToolKey& key : kToolKeys) {
    if (key.code == code && key.control == "Label1") return key.legend;
  }
  return {};
}

constexpr Captions MakeCaptions() {
  Captions captions;
  for (int index = 0; index < TTools::kKeys; ++index) {
    if (index != 0) captions.Add("|");
    captions.Add(LegendOf(index + kFirstKeyCode));
  }
  return captions;
}
constexpr Captions kCaptions = MakeCaptions();

constexpr Control LargeKey(std::string_view name, std::string_view caption, Handler down, Handler up) {
  return Control{.name = name, .kind = ControlKind::Label, .caption = caption, .down = down, .up = up};
}

constexpr On<&Machine::tools> f;

constexpr std::array kControls{
    Control{.name = "Label1",
            .kind = ControlKind::Label,
            .caption = {kCaptions.text.data(), kCaptions.length},
            .count = TTools::kKeys,
            .down = Label1_Down,
            .up = Label1_Up},
    LargeKey("Label2", "SHIFT", Key_Down<0x10>, Key_Up<0x10>),
    LargeKey("Label3", "Enter", Key_Down<0x0D>, Key_Up<0x0D>),
    LargeKey("Label4", "CTRL", Key_Down<0x11>, Key_Up<0x11>),
    LargeKey("Label5", "ALT", Key_Down<0x12>, Key_Up<0x12>),
    LargeKey("Label6", "LOCK", Key_Down<0x14>, Key_Up<0x14>),
    LargeKey("Label7", "DEL", Key_Down<0x08>, Key_Up<0x08>),
    f.Check<&TTools::Held>("Held", "", Held_Click),
    f.Text<&TTools::Text1>("Text1", "Key code"),
    f.Option<&TTools::U0>("U0", "SYS|CART|U0|U3", Row_Click<&TTools::U0, &TTools::U0Look, 3>)
        .Looks(f.Look<&TTools::U0Look>),
    f.Option<&TTools::U1>("U1", "U1|VIDEO", Row_Click<&TTools::U1, &TTools::U1Look, 2>)
        .Looks(f.Look<&TTools::U1Look>),
    f.Option<&TTools::U2>("U2", "VIDEO|U2", Row_Click<&TTools::U2, &TTools::U2Look, 5>)
        .Looks(f.Look<&TTools::U2Look>),
    f.Option<&TTools::U3>("U3", "CART|SYS|U3|EXT", Row_Click<&TTools::U3, &TTools::U3Look, 6>)
        .Looks(f.Look<&TTools::U3Look>),
    f.Text<&TTools::Text2>("Text2", "Paging value"),
};

}  // namespace

constexpr Form kTTools{"TTools", "Tools", f.State, kControls};

}  // namespace quoll
