// What the two files of controls share: how a script names them.
#pragma once

#include "core/Form.h"
#include "script/Script.h"

namespace quoll {

// The form or the control of the name at this argument; an unknown one is refused with the names there are.
const Form& CheckForm(lua_State* L, int argument);
const Control& CheckControl(lua_State* L, const Form& form, int argument);

// An index of an array of controls, from 0.
int CheckIndex(lua_State* L, const Control& control, int argument);

// Refuses what the user can't do: a control that is disabled.
void CheckEnabled(lua_State* L, Script& script, const ControlRef& ref);

// Texts of the tables are literals, so that their data ends with a zero.
inline const char* Name(std::string_view name) { return name.data(); }

// Press, Enter, Choose and the others that act on a control by name.
void OpenControlActions(lua_State* L);

}  // namespace quoll
