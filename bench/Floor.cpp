#include "bench/Floor.h"

namespace quoll::bench {

// Knows the opcodes of the loop mix alone, sets no flag but the zero of XOR, counts no refresh, keeps no
// history.
void RunFloor(FloorMachine& m, int32_t tStates) {
  int32_t left = tStates;
  uint32_t pc = m.pc;
  int64_t instructions = 0;
  const auto byte = [&](uint32_t address) { return m.pages[(address >> 12) & 15][address & 0xFFF]; };
  const auto word = [&](uint32_t address) {
    return static_cast<uint32_t>(byte(address) | byte(address + 1) << 8);
  };
  while (left > 0) {
    ++instructions;
    switch (byte(pc)) {
      case 0x01: m.bc = word(pc + 1), pc += 3, left -= 10; break;
      case 0x06: m.b = byte(pc + 1), pc += 2, left -= 7; break;
      case 0x0E: m.c = byte(pc + 1), pc += 2, left -= 7; break;
      case 0x10:
        m.b = (m.b - 1) & 0xFF,
        pc += m.b != 0 ? 2 + static_cast<uint32_t>(static_cast<int8_t>(byte(pc + 1))) : 2, left -= 13;
        break;
      case 0x11: m.de = word(pc + 1), pc += 3, left -= 10; break;
      case 0x18: pc += 2 + static_cast<uint32_t>(static_cast<int8_t>(byte(pc + 1))), left -= 12; break;
      case 0x21: m.hl = word(pc + 1), pc += 3, left -= 10; break;
      case 0x23: m.hl = (m.hl + 1) & 0xFFFF, pc += 1, left -= 6; break;
      case 0x28:
        pc += m.zero != 0 ? 2 + static_cast<uint32_t>(static_cast<int8_t>(byte(pc + 1))) : 2, left -= 7;
        break;
      case 0x32: m.memory[word(pc + 1)] = static_cast<uint8_t>(m.a), pc += 3, left -= 13; break;
      case 0x3A: m.a = byte(word(pc + 1)), pc += 3, left -= 13; break;
      case 0x3C: m.a = (m.a + 1) & 0xFF, pc += 1, left -= 4; break;
      case 0x4F: m.c = m.a, pc += 1, left -= 4; break;
      case 0x77: m.memory[m.hl] = static_cast<uint8_t>(m.a), pc += 1, left -= 7; break;
      case 0x7E: m.a = byte(m.hl), pc += 1, left -= 7; break;
      case 0x81: m.a = (m.a + m.c) & 0xFF, pc += 1, left -= 4; break;
      case 0x86: m.a = (m.a + byte(m.hl)) & 0xFF, pc += 1, left -= 7; break;
      case 0xA8: m.a ^= m.b, m.zero = m.a == 0, pc += 1, left -= 4; break;
      case 0xED:  // LDIR, a byte a pass
        m.memory[m.de] = byte(m.hl), m.de = (m.de + 1) & 0xFFFF, m.hl = (m.hl + 1) & 0xFFFF,
        m.bc = (m.bc - 1) & 0xFFFF;
        pc += m.bc == 0 ? 2 : 0, left -= 21;
        break;
      default: pc += 1, left -= 4; break;
    }
  }
  m.pc = pc & 0xFFFF;
  m.instructions += instructions;
}

}  // namespace quoll::bench
