// How a form's controls are reached. A form is a record of its controls in the machine; its table
// (FormTable.h) has one line a control: name, kind, the field, what the user's actions do. Windows, scripts
// and tests all go through the same table, by the functions at the end of this file.
#pragma once

#include <chrono>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <variant>
#include <vector>

namespace quoll {

struct Machine;

enum class ControlKind {
  Menu,    // bool or nothing; a click runs the handler, which flips the tick itself
  Check,   // bool
  Option,  // bool; of its group just one is on
  Text,    // string; change and Enter apart
  Label,   // string, shown only; can be pressed where it has a handler
  Lamp,    // bool, shown only
  Button,  // no field
  Scroll,  // Scroll
  Bar,     // the same, shown only
  List,    // ListBox and what looks like one
  Combo,   // the same, one entry seen
  Scope,   // Trace
  Image,   // PixelImage
  Timer,   // no field; its handler runs once a period
};

// The window's own state, in each form's record. A menu entry asks for a window here, the window tells here
// when the user has closed it; with no window the flags alone are what has happened.
struct FormState {
  bool visible = false;
  bool raise = false;   // asked for anew: the window comes to the front and takes this back
  std::string caption;  // empty: the form's own

  bool operator==(const FormState&) const = default;
};

inline void ShowForm(FormState& form) { form.visible = form.raise = true; }

inline constexpr int32_t kOwnColour = -1;  // the one that the window's style gives
inline constexpr int32_t kBlack = 0;
inline constexpr int32_t kRed = 0x0000FF, kGreen = 0x00FF00, kCyan = 0xFFFF00, kWhite = 0xFFFFFF;
inline constexpr int32_t kButtonFace = 0xC0C0C0;

// How a control looks while that can change.
struct Look {
  bool visible = true;
  bool enabled = true;
  int32_t fore = kOwnColour;  // red + 256 x green + 65536 x blue
  int32_t back = kOwnColour;

  bool operator==(const Look&) const = default;
};

// A scroll bar's value with its range, both ends included.
struct Scroll {
  int32_t value = 0;
  int32_t first = 0, last = 0;

  bool operator==(const Scroll&) const = default;
};

// A list or combo box.
struct ListBox {
  std::vector<std::string> entries;
  int32_t selected = -1;  // from 0; -1 for none

  size_t EntryCount() const { return entries.size(); }
  std::string Entry(size_t place) const { return entries[place]; }
  // Its text, empty for none.
  std::string Selected() const {
    const auto place = static_cast<size_t>(selected);
    return selected >= 0 && place < entries.size() ? entries[place] : std::string();
  }
  // New entries, none of them selected.
  void Fill(std::vector<std::string> with) {
    entries = std::move(with);
    selected = -1;
  }
  bool operator==(const ListBox&) const = default;
};

// A scope's line, as it was drawn last: point i stands at (x[i], y[i]), in the units of a box of its own
// size, y downwards.
struct Trace {
  std::vector<float> x{};  // empty: the points are evenly spaced, point i at i x step
  std::vector<float> y{};
  float step = 1;
  int32_t colour = kGreen;
  uint32_t drawings = 0;  // how often one was drawn: a window paints when this has changed

  float X(size_t point) const { return x.empty() ? static_cast<float>(point) * step : x[point]; }
  bool operator==(const Trace&) const = default;
};

// A picture: rows from the top, one word a pixel, red + 256 x green + 65536 x blue.
struct PixelImage {
  int32_t width = 0, height = 0;
  std::vector<int32_t> pixels;
  uint32_t drawings = 0;

  bool operator==(const PixelImage&) const = default;
};

// Any record with entries, a ListBox or one that makes its texts when asked for them.
struct ListRef {
  template <class T>
  explicit ListRef(T& list)
      : record(&list),
        selected(&list.selected),
        count([](const void* r) { return static_cast<const T*>(r)->EntryCount(); }),
        entry([](const void* r, size_t place) { return static_cast<const T*>(r)->Entry(place); }) {}

  size_t EntryCount() const { return count(record); }
  std::string Entry(size_t place) const { return entry(record, place); }

  void* record;
  int32_t* selected;
  size_t (*count)(const void*);
  std::string (*entry)(const void*, size_t);
};

// The field behind a control, or the fields of an array of controls.
using ControlField = std::variant<std::monostate, std::span<bool>, std::span<std::string>, std::span<Scroll>,
                                  std::span<Trace>, std::span<PixelImage>, ListRef>;

// What follows an action of the user. The index is that within an array of controls, else 0.
struct Handler {
  constexpr Handler() = default;
  constexpr Handler(void (*plain)(Machine&)) : one(plain) {}  // NOLINT: reads like the function
  constexpr Handler(void (*indexed)(Machine&, int index)) : each(indexed) {}  // NOLINT
  constexpr explicit operator bool() const { return one != nullptr || each != nullptr; }
  void operator()(Machine& m, int index) const {
    if (one != nullptr) one(m);
    if (each != nullptr) each(m, index);
  }

  void (*one)(Machine&) = nullptr;
  void (*each)(Machine&, int) = nullptr;
};

struct Control {
  std::string_view name;
  ControlKind kind;
  std::string_view caption{};  // of an array: those of its controls with a bar between them
  int count = 0;               // 0: a single control; else an array of so many
  ControlField (*field)(Machine&) = nullptr;
  std::span<Look> (*look)(Machine&) = nullptr;  // one for all or one for each

  Handler click{};   // pressed, ticked, chosen, selected
  Handler change{};  // of a text or a scroll value, at each change
  Handler enter{};   // the Enter key in a text box
  Handler doubleClick{}, down{}, up{}, timer{};

  std::string_view menu{};              // Menu: the title it stands under
  std::string_view group{};             // Option: separate controls of one group share a name
  std::chrono::milliseconds period{0};  // Timer

  // Additions to a line of a table.
  constexpr Control Enter(Handler handler) const { return With(&Control::enter, handler); }
  constexpr Control DoubleClick(Handler handler) const { return With(&Control::doubleClick, handler); }
  constexpr Control Down(Handler handler) const { return With(&Control::down, handler); }
  constexpr Control Up(Handler handler) const { return With(&Control::up, handler); }
  // Not by With, of which clang makes no constant for these types.
  constexpr Control Group(std::string_view of) const {
    Control more = *this;
    more.group = of;
    return more;
  }
  constexpr Control Looks(std::span<Look> (*access)(Machine&)) const {
    Control more = *this;
    more.look = access;
    return more;
  }
  template <class T>
  constexpr Control With(T Control::*member, std::type_identity_t<T> value) const {
    Control more = *this;
    more.*member = value;
    return more;
  }
};

struct Form {
  std::string_view name;
  std::string_view caption;  // of its window
  FormState* (*state)(Machine&) = nullptr;
  std::span<const Control> controls;
  // Brings up to date what the form only shows, where that is worked out only when somebody looks. The
  // machine itself stays as it is. nullptr: nothing.
  void (*refresh)(Machine&) = nullptr;
};

// To be called before a form's fields are looked at, by windows and scripts.
inline void RefreshForm(Machine& m, const Form& form) {
  if (form.refresh != nullptr) form.refresh(m);
}

// nullptr when there is none. Names are case sensitive.
const Control* FindControl(const Form& form, std::string_view name);

// One control: of an array, the one at index. Valid as long as the tables are, which is always.
struct ControlRef {
  const Form* form = nullptr;
  const Control* control = nullptr;
  int index = 0;
};

// The text on the control, from the table.
std::string_view CaptionOf(const ControlRef& ref);

// The field of type T behind the control; nullptr when it has another type or the index is outside.
template <class T>
T* FieldOf(Machine& m, const ControlRef& ref) {
  if (ref.control->field == nullptr) return nullptr;
  const ControlField field = ref.control->field(m);
  const auto* values = std::get_if<std::span<T>>(&field);
  const auto place = static_cast<size_t>(ref.index);
  return values != nullptr && place < values->size() ? &(*values)[place] : nullptr;
}

// Lists and combo boxes only.
ListRef ListOf(Machine& m, const Control& control);

// How it looks now; controls without a Look of their own are visible, enabled and of their own colours.
Look LookOf(Machine& m, const ControlRef& ref);

// The user's actions. Each stores first, then runs the handler, which may do anything, run the machine
// included. An index outside the array does nothing.

// Ticks a check box, or chooses an option and puts the others of its group out. For options false only
// takes the tick: no other one is chosen.
void SetTick(Machine& m, const ControlRef& ref, bool on);
// Types a text: the change handler runs, Enter's does not.
void SetText(Machine& m, const ControlRef& ref, std::string_view text);
void PressEnter(Machine& m, const ControlRef& ref);
// Moves a scroll bar; the value is brought into its range.
void SetScroll(Machine& m, const ControlRef& ref, int32_t value);
// Selects an entry, counted from 0. Outside the list nothing happens; the return value says so.
bool ChooseEntry(Machine& m, const ControlRef& ref, int32_t entry);
bool DoubleClickEntry(Machine& m, const ControlRef& ref, int32_t entry);
// A double click on what is no list.
void DoubleClick(Machine& m, const ControlRef& ref);
// A click on a button, a label or a menu entry.
void Press(Machine& m, const ControlRef& ref);
void MouseDown(Machine& m, const ControlRef& ref);
void MouseUp(Machine& m, const ControlRef& ref);

// Stores a scroll value that the machine itself sets, within its range.
void StoreScroll(Scroll& scroll, int32_t value);

}  // namespace quoll
