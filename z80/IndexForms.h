// What the IX and IY pages share: operands at index + displacement.
#pragma once

#include <cstdint>

#include "z80/Alu.h"

namespace quoll {

// The address of such an operand.
inline intptr_t At(int32_t index, int32_t displacement) { return WrappingAdd(index, displacement); }

// Reads the byte at index + displacement, passes it through a flag-setting operation and writes it back.
template <class Core>
int32_t Modify(Core& c, int32_t (*operation)(Z80State&, int32_t), int32_t index) {
  const intptr_t address = At(index, c.s.IndexDisp);
  const int32_t result = operation(c.s, c.Read(address));
  c.Write(address, result);
  return result;
}

// The same for SET and RES, which leave the flags alone.
template <class Core>
void ModifyBit(Core& c, int32_t (*operation)(int32_t, int32_t), int32_t index, int32_t bit) {
  const intptr_t address = At(index, c.s.IndexDisp);
  c.Write(address, operation(c.Read(address), bit));
}

// EX (SP),index.
template <class Core>
void ExchangeStack(Core& c, int32_t& pair) {
  const int32_t word = c.ReadWord(c.s.SP);
  c.WriteWord(c.s.SP, pair);
  pair = word;
  c.Next(23, 1, 2);
}

}  // namespace quoll
