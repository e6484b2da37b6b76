// What a user does to a control beside changing its value. All take form and control by name.
#include "forms/Forms.h"
#include "script/Controls.h"

namespace quoll {

namespace {

constexpr int kForm = 1, kControl = 2, kThird = 3;

// The control of arguments 1 and 2. Of an array the one whose index stands at argument 3.
ControlRef CheckRef(lua_State* L, Script& script) {
  const Form& form = CheckForm(L, kForm);
  const Control& control = CheckControl(L, form, kControl);
  ControlRef ref{&form, &control, 0};
  if (control.count > 0) ref.index = CheckIndex(L, control, kThird);
  CheckEnabled(L, script, ref);
  return ref;
}

using Action = void (*)(Machine&, const ControlRef&);

// An action that needs a handler, or it is not one of this control's.
template <Action kAction, Handler Control::*kHandler>
int Act(lua_State* L, Script& script) {
  const ControlRef ref = CheckRef(L, script);
  if (ref.control->kind == ControlKind::Menu)
    Refuse(L, "%s is a menu item: use Click", Name(ref.control->name));
  if (!(ref.control->*kHandler)) {
    Refuse(L, "%s.%s does nothing then", Name(ref.form->name), Name(ref.control->name));
  }
  kAction(script.machine, ref);
  return 0;
}

int PressButton(lua_State* L, Script& script) {
  const char* form = luaL_checkstring(L, kForm);
  const char* name = luaL_checkstring(L, kControl);
  if (FindControl(form, name) == nullptr) return luaL_error(L, "there is no button %s.%s", form, name);
  const Control& control = CheckControl(L, CheckForm(L, kForm), kControl);
  const bool held = control.down && !control.click;  // acts while it is held
  const bool pressable =
      control.kind == ControlKind::Button || (control.kind == ControlKind::Label && (control.click || held));
  if (!pressable) return luaL_error(L, "%s.%s is no button", form, name);
  const ControlRef ref = CheckRef(L, script);
  if (held) {
    MouseDown(script.machine, ref);
    MouseUp(script.machine, ref);
  } else {
    Press(script.machine, ref);
  }
  return 0;
}

int PressEnterKey(lua_State* L, Script& script) {
  const ControlRef ref = CheckRef(L, script);
  if (ref.control->kind != ControlKind::Text) Refuse(L, "%s is no text box", Name(ref.control->name));
  PressEnter(script.machine, ref);
  return 0;
}

ControlRef CheckList(lua_State* L, Script& script) {
  const Form& form = CheckForm(L, kForm);
  const Control& control = CheckControl(L, form, kControl);
  if (control.kind != ControlKind::List && control.kind != ControlKind::Combo) {
    Refuse(L, "%s.%s is no list", Name(form.name), Name(control.name));
  }
  const ControlRef ref{&form, &control, 0};
  CheckEnabled(L, script, ref);
  return ref;
}

template <bool (*kChoice)(Machine&, const ControlRef&, int32_t)>
int ChooseBy(lua_State* L, Script& script) {
  const ControlRef ref = CheckList(L, script);
  const int32_t entry = NearestInt(L, kThird);
  if (!kChoice(script.machine, ref, entry)) {
    Refuse(L, "%s: entry %d out of range, there are %d", Name(ref.control->name), static_cast<int>(entry),
           static_cast<int>(ListOf(script.machine, *ref.control).EntryCount()));
  }
  return 0;
}

// On a list's entry, or on any other control that answers to it.
int DoubleClickOn(lua_State* L, Script& script) {
  const Control& control = CheckControl(L, CheckForm(L, kForm), kControl);
  const bool list = control.kind == ControlKind::List || control.kind == ControlKind::Combo;
  if (!list && control.doubleClick) return Act<DoubleClick, &Control::doubleClick>(L, script);
  return ChooseBy<DoubleClickEntry>(L, script);
}

int Selected(lua_State* L, Script& script) {
  const ControlRef ref = CheckList(L, script);
  const ListRef list = ListOf(script.machine, *ref.control);
  if (*list.selected < 0) {
    lua_pushnil(L);
  } else {
    lua_pushinteger(L, *list.selected);
  }
  return 1;
}

constexpr luaL_Reg kFunctions[] = {{"Press", Guarded<PressButton>},
                                   {"Enter", Guarded<PressEnterKey>},
                                   {"Choose", Guarded<ChooseBy<ChooseEntry>>},
                                   {"DoubleClick", Guarded<DoubleClickOn>},
                                   {"Selected", Guarded<Selected>},
                                   {"MouseDown", (Guarded<Act<MouseDown, &Control::down>>)},
                                   {"MouseUp", (Guarded<Act<MouseUp, &Control::up>>)}};

}  // namespace

void OpenControlActions(lua_State* L) { Register(L, kFunctions); }

}  // namespace quoll
