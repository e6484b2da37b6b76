// Menu items and the values of the forms' controls, by the machine's own tables.
#include "script/Controls.h"

#include <algorithm>
#include <cstring>

#include "forms/Forms.h"

namespace quoll {

namespace {

constexpr const char* kFormMetatable = "quollrun.form";
constexpr const char* kGroupMetatable = "quollrun.controls";

void Push(lua_State* L, bool value) { lua_pushboolean(L, value ? 1 : 0); }
void Push(lua_State* L, const std::string& value) { lua_pushlstring(L, value.data(), value.size()); }
void Push(lua_State* L, const Scroll& scroll) { lua_pushinteger(L, scroll.value); }

void SetNumber(lua_State* L, const char* field, lua_Number value) {
  lua_pushnumber(L, value);
  lua_setfield(L, -2, field);
}

// The points as they were drawn, an array from 1.
void Push(lua_State* L, const Trace& trace) {
  lua_createtable(L, static_cast<int>(trace.y.size()), 0);
  for (size_t i = 0; i < trace.y.size(); ++i) {
    lua_createtable(L, 0, 2);
    SetNumber(L, "x", static_cast<lua_Number>(trace.X(i)));
    SetNumber(L, "y", static_cast<lua_Number>(trace.y[i]));
    lua_rawseti(L, -2, static_cast<lua_Integer>(i) + 1);
  }
}

// Width, height and the colours as an array from 1, red + 256 x green + 65536 x blue.
void Push(lua_State* L, const PixelImage& image) {
  lua_createtable(L, static_cast<int>(image.pixels.size()), 2);
  for (size_t i = 0; i < image.pixels.size(); ++i) {
    lua_pushinteger(L, image.pixels[i]);
    lua_rawseti(L, -2, static_cast<lua_Integer>(i) + 1);
  }
  lua_pushinteger(L, image.width);
  lua_setfield(L, -2, "width");
  lua_pushinteger(L, image.height);
  lua_setfield(L, -2, "height");
}

void PushList(lua_State* L, const ListRef& list) {
  const size_t count = list.EntryCount();
  lua_createtable(L, static_cast<int>(count), 0);
  for (size_t i = 0; i < count; ++i) {
    Push(L, list.Entry(i));
    lua_rawseti(L, -2, static_cast<lua_Integer>(i) + 1);
  }
}

// False when the control has no value.
bool PushValue(lua_State* L, Script& script, const ControlRef& ref) {
  if (ref.control->field == nullptr) return false;
  const ControlField field = ref.control->field(script.machine);
  std::visit(
      [&](const auto& where) {
        using Where = std::decay_t<decltype(where)>;
        if constexpr (std::is_same_v<Where, ListRef>)
          PushList(L, where);
        else if constexpr (!std::is_same_v<Where, std::monostate>)
          Push(L, where[static_cast<size_t>(ref.index)]);
      },
      field);
  return true;
}

void TakeScroll(lua_State* L, Script& script, const ControlRef& ref) {
  const Scroll& scroll = *FieldOf<Scroll>(script.machine, ref);
  const lua_Integer number = luaL_checkinteger(L, 3);
  const auto [first, last] = std::minmax(scroll.first, scroll.last);
  if (number < first || number > last) {
    Refuse(L, "number too %s: %s goes from %d to %d", number < first ? "small" : "large",
           Name(ref.control->name), static_cast<int>(first), static_cast<int>(last));
  }
  SetScroll(script.machine, ref, static_cast<int32_t>(number));
}

void TakeText(lua_State* L, Script& script, const ControlRef& ref) {
  size_t length = 0;
  const char* text = luaL_checklstring(L, 3, &length);
  SetText(script.machine, ref, std::string_view(text, length));
}

// Does what the user's change to the value at argument 3 does. The user can tick, choose, type and scroll;
// the rest goes another way or not at all.
void TakeValue(lua_State* L, Script& script, const ControlRef& ref) {
  CheckEnabled(L, script, ref);
  const char* name = Name(ref.control->name);
  switch (ref.control->kind) {
    case ControlKind::Check:
    case ControlKind::Option:
      luaL_checktype(L, 3, LUA_TBOOLEAN);
      return SetTick(script.machine, ref, lua_toboolean(L, 3) != 0);
    case ControlKind::Text: return TakeText(L, script, ref);
    case ControlKind::Scroll: return TakeScroll(L, script, ref);
    case ControlKind::Button: Refuse(L, "%s is a button: use Press", name);
    case ControlKind::Menu: Refuse(L, "%s is a menu item: use Click", name);
    case ControlKind::Combo: Refuse(L, "%s cannot be changed: use Choose", name);
    case ControlKind::List:
    case ControlKind::Label:
    case ControlKind::Lamp:
    case ControlKind::Bar:
    case ControlKind::Scope:
    case ControlKind::Image:
    case ControlKind::Timer: Refuse(L, "%s cannot be changed", name);
  }
}

// What the Lua values of a form and of an array of controls hold.
struct FormRef {
  const Form* form;
};

const Form& CheckFormValue(lua_State* L) {
  return *static_cast<FormRef*>(luaL_checkudata(L, 1, kFormMetatable))->form;
}

int ReadControl(lua_State* L, Script& script) {
  const Form& form = CheckFormValue(L);
  const Control& control = CheckControl(L, form, 2);
  RefreshForm(script.machine, form);
  if (control.count > 0) {
    *static_cast<ControlRef*>(lua_newuserdatauv(L, sizeof(ControlRef), 0)) = {&form, &control, 0};
    luaL_setmetatable(L, kGroupMetatable);
    return 1;
  }
  if (!PushValue(L, script, {&form, &control, 0})) Refuse(L, "%s has no value", Name(control.name));
  return 1;
}

int WriteControl(lua_State* L, Script& script) {
  const Form& form = CheckFormValue(L);
  const Control& control = CheckControl(L, form, 2);
  if (control.count > 0) Refuse(L, "%s has an index", Name(control.name));
  TakeValue(L, script, {&form, &control, 0});
  return 0;
}

// The array's control at the index of argument 2.
ControlRef CheckElement(lua_State* L) {
  ControlRef ref = *static_cast<ControlRef*>(luaL_checkudata(L, 1, kGroupMetatable));
  ref.index = CheckIndex(L, *ref.control, 2);
  return ref;
}

int ReadElement(lua_State* L, Script& script) {
  const ControlRef ref = CheckElement(L);
  RefreshForm(script.machine, *ref.form);
  if (!PushValue(L, script, ref)) Refuse(L, "%s has no value", Name(ref.control->name));
  return 1;
}

int WriteElement(lua_State* L, Script& script) {
  TakeValue(L, script, CheckElement(L));
  return 0;
}

int GroupLength(lua_State* L, Script& /*script*/) {
  lua_pushinteger(L, static_cast<ControlRef*>(luaL_checkudata(L, 1, kGroupMetatable))->control->count);
  return 1;
}

ControlRef CheckMenuItem(lua_State* L, int argument) {
  const char* name = luaL_checkstring(L, argument);
  for (const Form* form : Forms()) {
    const Control* item = FindControl(*form, name);
    if (item != nullptr && item->kind == ControlKind::Menu) return {form, item, 0};
  }
  Refuse(L, "the menus have no '%s'", name);
}

int ReadTick(lua_State* L, Script& script) {
  const ControlRef item = CheckMenuItem(L, 2);
  if (!PushValue(L, script, item)) Push(L, false);
  return 1;
}

int WriteTick(lua_State* L, Script& /*script*/) {
  return luaL_error(L, "%s is a menu item: use Click", Name(CheckMenuItem(L, 2).control->name));
}

int Click(lua_State* L, Script& script) {
  Press(script.machine, CheckMenuItem(L, 1));
  return 0;
}

void NewMetatable(lua_State* L, const char* name, lua_CFunction index, lua_CFunction newIndex,
                  lua_CFunction length) {
  luaL_newmetatable(L, name);
  lua_pushcfunction(L, index);
  lua_setfield(L, -2, "__index");
  lua_pushcfunction(L, newIndex);
  lua_setfield(L, -2, "__newindex");
  if (length != nullptr) {
    lua_pushcfunction(L, length);
    lua_setfield(L, -2, "__len");
  }
  lua_pop(L, 1);
}

// Leaves "a, b, c" on the stack.
template <class Range, class NameOf>
void PushNames(lua_State* L, const Range& range, NameOf nameOf) {
  luaL_Buffer buffer;
  luaL_buffinit(L, &buffer);
  bool first = true;
  for (const auto& entry : range) {
    if (!first) luaL_addstring(&buffer, ", ");
    first = false;
    luaL_addstring(&buffer, Name(nameOf(entry)));
  }
  luaL_pushresult(&buffer);
}

}  // namespace

const Form& CheckForm(lua_State* L, int argument) {
  const char* name = luaL_checkstring(L, argument);
  const Form* form = FindForm(name);
  if (form != nullptr) return *form;
  PushNames(L, Forms(), [](const Form* each) { return each->name; });
  Refuse(L, "there is no form '%s'; there are %s", name, lua_tostring(L, -1));
}

const Control& CheckControl(lua_State* L, const Form& form, int argument) {
  const char* name = luaL_checkstring(L, argument);
  const Control* control = FindControl(form, name);
  if (control != nullptr) return *control;
  PushNames(L, form.controls, [](const Control& each) { return each.name; });
  Refuse(L, "%s has no control '%s'; it has %s", Name(form.name), name, lua_tostring(L, -1));
}

int CheckIndex(lua_State* L, const Control& control, int argument) {
  const lua_Integer index = luaL_checkinteger(L, argument);
  if (index < 0 || index >= control.count) {
    Refuse(L, "%s: index %I out of range, there are %d", Name(control.name), index, control.count);
  }
  return static_cast<int>(index);
}

void CheckEnabled(lua_State* L, Script& script, const ControlRef& ref) {
  if (!LookOf(script.machine, ref).enabled) Refuse(L, "%s is disabled", Name(ref.control->name));
}

void OpenControls(lua_State* L) {
  NewMetatable(L, kFormMetatable, Guarded<ReadControl>, Guarded<WriteControl>, nullptr);
  NewMetatable(L, kGroupMetatable, Guarded<ReadElement>, Guarded<WriteElement>, Guarded<GroupLength>);
  for (const Form* form : Forms()) {
    *static_cast<FormRef*>(lua_newuserdatauv(L, sizeof(FormRef), 0)) = {form};
    luaL_setmetatable(L, kFormMetatable);
    lua_setglobal(L, Name(form->name));
  }
  SetProxy(L, "Menu", Guarded<ReadTick>, Guarded<WriteTick>);
  lua_register(L, "Click", Guarded<Click>);
  OpenControlActions(L);
}

}  // namespace quoll
