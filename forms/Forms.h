// The list of all forms.
#pragma once

#include <span>
#include <string_view>

#include "core/Form.h"

namespace quoll {

std::span<const Form* const> Forms();

// nullptr when there is none. Names are case sensitive.
const Form* FindForm(std::string_view name);
const Control* FindControl(std::string_view form, std::string_view control);

// The control as the user's actions want it. Asking for one that is not there is a mistake of the program and
// throws std::logic_error.
ControlRef TheControl(std::string_view form, std::string_view control, int index = 0);

}  // namespace quoll
