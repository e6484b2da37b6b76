// Opcodes that the processor does not know.
#pragma once

namespace quoll {

struct Machine;

// Status label and caption say "Unknown Opcode!", the prefix is given up and PC moves on by one.
void MissingOP(Machine& m);

}  // namespace quoll
