// Menu items and the controls of the forms, by the machine's own tables.
#include <cstdint>
#include <cstring>
#include <limits>

#include "core/Form.h"
#include "script/Script.h"

namespace quoll {

namespace {

constexpr const char* kFormMetatable = "quollrun.form";
constexpr const char* kGroupMetatable = "quollrun.controls";

std::span<bool> One(bool* value) { return {value, 1}; }
std::span<int32_t> One(int32_t* value) { return {value, 1}; }
std::span<std::string> One(std::string* value) { return {value, 1}; }
template <typename T>
std::span<T> One(std::span<T> group) {
  return group;
}

template <typename T>
constexpr bool kIsGroup = false;
template <typename T>
constexpr bool kIsGroup<std::span<T>> = true;

bool IsGroup(const ControlField& field) {
  return std::visit([](const auto& where) { return kIsGroup<std::decay_t<decltype(where)>>; }, field);
}

size_t GroupSize(const ControlField& field) {
  return std::visit(
      [](const auto& where) -> size_t {
        if constexpr (std::is_same_v<std::decay_t<decltype(where)>, std::monostate>)
          return 0;
        else
          return One(where).size();
      },
      field);
}

void Push(lua_State* L, bool value) { lua_pushboolean(L, value ? 1 : 0); }
void Push(lua_State* L, int32_t value) { lua_pushinteger(L, value); }
void Push(lua_State* L, const std::string& value) { lua_pushlstring(L, value.data(), value.size()); }

void Take(lua_State* L, bool& value) {
  luaL_checktype(L, 3, LUA_TBOOLEAN);
  value = lua_toboolean(L, 3) != 0;
}

void Take(lua_State* L, int32_t& value) {
  using Limits = std::numeric_limits<int32_t>;
  const lua_Integer number = luaL_checkinteger(L, 3);
  luaL_argcheck(L, number >= Limits::min() && number <= Limits::max(), 3, "number too large");
  value = static_cast<int32_t>(number);
}

void Take(lua_State* L, std::string& value) {
  size_t length = 0;
  const char* text = luaL_checklstring(L, 3, &length);
  value.assign(text, length);
}

void PushValue(lua_State* L, const ControlField& field, size_t index) {
  std::visit(
      [&](const auto& where) {
        if constexpr (!std::is_same_v<std::decay_t<decltype(where)>, std::monostate>)
          Push(L, One(where)[index]);
      },
      field);
}

void TakeValue(lua_State* L, const ControlField& field, size_t index) {
  std::visit(
      [&](const auto& where) {
        if constexpr (!std::is_same_v<std::decay_t<decltype(where)>, std::monostate>)
          Take(L, One(where)[index]);
      },
      field);
}

// The access log, the one list there is.
void PushPortLog(lua_State* L, const PortLog& log) {
  lua_createtable(L, static_cast<int>(log.count), 0);
  for (uint32_t i = 0; i < log.count; i++) {
    lua_pushfstring(L, "%c%d", log.lines[i].kind, static_cast<int>(log.lines[i].port));
    lua_rawseti(L, -2, static_cast<lua_Integer>(i) + 1);
  }
}

// What the Lua values of a form and of an array of controls hold.
struct FormRef {
  const Form* form;
};
struct GroupRef {
  const Control* control;
};

const Form& CheckForm(lua_State* L) {
  return *static_cast<FormRef*>(luaL_checkudata(L, 1, kFormMetatable))->form;
}

// Texts of the tables are literals, so that their data ends with a zero.
const char* Name(std::string_view name) { return name.data(); }

const Control& CheckControl(lua_State* L, const Form& form, int argument) {
  const char* name = luaL_checkstring(L, argument);
  const Control* control = FindControl(form.name, name);
  if (control == nullptr) Refuse(L, "%s has no control '%s'", Name(form.name), name);
  return *control;
}

ControlField FieldOf(Script& script, const Control& control) {
  return control.field == nullptr ? ControlField{} : control.field(script.machine);
}

// The user can tick, choose, type and scroll; the rest goes another way or not at all.
void CheckChangeable(lua_State* L, const Control& control) {
  switch (control.kind) {
    case ControlKind::Button: Refuse(L, "%s is a button: use Press", Name(control.name));
    case ControlKind::Menu: Refuse(L, "%s is a menu item: use Click", Name(control.name));
    case ControlKind::Label:
    case ControlKind::List: Refuse(L, "%s cannot be changed", Name(control.name));
    case ControlKind::Check:
    case ControlKind::Option:
    case ControlKind::Text:
    case ControlKind::Scroll: break;
  }
}

int ReadControl(lua_State* L, Script& script) {
  const Form& form = CheckForm(L);
  const Control& control = CheckControl(L, form, 2);
  if (control.kind == ControlKind::List && form.name == "TScreen") {
    PushPortLog(L, script.machine.screen.List1);
    return 1;
  }
  const ControlField field = FieldOf(script, control);
  if (IsGroup(field)) {
    *static_cast<GroupRef*>(lua_newuserdatauv(L, sizeof(GroupRef), 0)) = {&control};
    luaL_setmetatable(L, kGroupMetatable);
    return 1;
  }
  if (GroupSize(field) == 0) return luaL_error(L, "%s has no value", Name(control.name));
  PushValue(L, field, 0);
  return 1;
}

int WriteControl(lua_State* L, Script& script) {
  const Control& control = CheckControl(L, CheckForm(L), 2);
  CheckChangeable(L, control);
  const ControlField field = FieldOf(script, control);
  if (IsGroup(field)) return luaL_error(L, "%s has an index", Name(control.name));
  if (GroupSize(field) == 0) return luaL_error(L, "%s has no value", Name(control.name));
  TakeValue(L, field, 0);
  ControlChanged(script.machine, control);
  return 0;
}

const Control& CheckGroup(lua_State* L) {
  return *static_cast<GroupRef*>(luaL_checkudata(L, 1, kGroupMetatable))->control;
}

size_t CheckIndex(lua_State* L, const Control& control, size_t size) {
  const lua_Integer index = luaL_checkinteger(L, 2);
  if (index < 0 || index >= static_cast<lua_Integer>(size)) {
    Refuse(L, "%s: index %I out of range, there are %I", Name(control.name), index,
           static_cast<lua_Integer>(size));
  }
  return static_cast<size_t>(index);
}

int ReadGroup(lua_State* L, Script& script) {
  const Control& control = CheckGroup(L);
  const ControlField field = FieldOf(script, control);
  PushValue(L, field, CheckIndex(L, control, GroupSize(field)));
  return 1;
}

int WriteGroup(lua_State* L, Script& script) {
  const Control& control = CheckGroup(L);
  CheckChangeable(L, control);
  const ControlField field = FieldOf(script, control);
  const size_t index = CheckIndex(L, control, GroupSize(field));
  TakeValue(L, field, index);
  ControlChanged(script.machine, control, static_cast<int>(index));
  return 0;
}

int GroupLength(lua_State* L, Script& script) {
  lua_pushinteger(L, static_cast<lua_Integer>(GroupSize(FieldOf(script, CheckGroup(L)))));
  return 1;
}

const MenuItem& CheckMenuItem(lua_State* L, int argument) {
  const char* name = luaL_checkstring(L, argument);
  const MenuItem* item = FindMenuItem(name);
  if (item == nullptr) Refuse(L, "the menus have no '%s'", name);
  return *item;
}

int ReadTick(lua_State* L, Script& script) {
  const MenuItem& item = CheckMenuItem(L, 2);
  Push(L, item.tick != nullptr && script.machine.screen.*item.tick);
  return 1;
}

int WriteTick(lua_State* L, Script& /*script*/) {
  return luaL_error(L, "%s is a menu item: use Click", Name(CheckMenuItem(L, 2).name));
}

int Click(lua_State* L, Script& script) {
  ClickMenu(script.machine, CheckMenuItem(L, 1));
  return 0;
}

int Press(lua_State* L, Script& script) {
  const char* formName = luaL_checkstring(L, 1);
  const char* buttonName = luaL_checkstring(L, 2);
  const Control* button = FindControl(formName, buttonName);
  if (button == nullptr) return luaL_error(L, "there is no button %s.%s", formName, buttonName);
  if (button->kind != ControlKind::Button) return luaL_error(L, "%s.%s is no button", formName, buttonName);
  ControlChanged(script.machine, *button);
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

}  // namespace

void OpenControls(lua_State* L) {
  NewMetatable(L, kFormMetatable, Guarded<ReadControl>, Guarded<WriteControl>, nullptr);
  NewMetatable(L, kGroupMetatable, Guarded<ReadGroup>, Guarded<WriteGroup>, Guarded<GroupLength>);
  for (const Form& form : Forms()) {
    *static_cast<FormRef*>(lua_newuserdatauv(L, sizeof(FormRef), 0)) = {&form};
    luaL_setmetatable(L, kFormMetatable);
    lua_setglobal(L, Name(form.name));
  }
  SetProxy(L, "Menu", Guarded<ReadTick>, Guarded<WriteTick>);
  lua_register(L, "Click", Guarded<Click>);
  lua_register(L, "Press", Guarded<Press>);
}

}  // namespace quoll
