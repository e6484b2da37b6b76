#include "machine/Machine.h"

namespace quoll {

Machine::Machine(Host& hostOfMachine) : host(&hostOfMachine) {}
Machine::Machine(const Machine& other) = default;
Machine& Machine::operator=(const Machine& other) = default;
Machine::~Machine() = default;

void EndProgram(Machine& m, std::string_view text, std::string_view title) {
  m.host->MessageBox(text, title, MessageIcon::Stop);
  throw ProgramEnd{};
}

// Without a sound device nobody has to be waited for.
void Host::WaitForBlock(Machine& m) { m.mixer.NeedData = 1; }

}  // namespace quoll
