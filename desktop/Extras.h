// Choices of this program that the machine knows nothing of. With nothing chosen all of them are as they
// stand here, and there is no file.
#pragma once

#include <array>

namespace quoll {

struct Extras {
  bool startCompanion = true;  // the companion program is started with this one, where none runs

  bool operator==(const Extras&) const = default;
};

// A choice that is on or off, in the order of the menu.
struct ExtrasTick {
  const char* name;  // in the menu and in the file
  const char* caption;
  bool Extras::*on;
};

inline constexpr std::array kExtrasTicks{
    ExtrasTick{"StartCompanion", "Start QUOLLserial", &Extras::startCompanion},
};

// As the user has left them.
Extras ReadExtras();

// Keeps for the next start what differs from the first state.
void KeepExtras(const Extras& extras);

}  // namespace quoll
