// The windows of the forms, all but the main one's own.
#pragma once

#include <memory>
#include <vector>

namespace quoll {

class FormWindow;
class QtHost;
struct Machine;

// They are hidden until the machine's record of windows asks for them.
std::vector<std::unique_ptr<FormWindow>> MakeFormWindows(QtHost& host, Machine& m);

}  // namespace quoll
