// The programs that the benchmarks run.
#pragma once

#include <cstdint>
#include <vector>

namespace quoll::bench {

inline constexpr int32_t kMixStart = 0x4000;  // U1, RAM in every paging

// A block move of 128 bytes, then 256 rounds of byte arithmetic over a table, then a counter; for ever.
inline std::vector<uint8_t> LoopMix() {
  return {
      0x21, 0x00, 0x50,  // LD HL,5000
      0x11, 0x00, 0x60,  // LD DE,6000
      0x01, 0x80, 0x00,  // LD BC,0080
      0xED, 0xB0,        // LDIR
      0x21, 0x00, 0x51,  // LD HL,5100
      0x06, 0x00,        // LD B,0: 256 rounds
      0x0E, 0x01,        // LD C,1
      0x7E,              // round: LD A,(HL)
      0x86,              // ADD A,(HL)
      0x81,              // ADD A,C
      0x4F,              // LD C,A
      0x77,              // LD (HL),A
      0x23,              // INC HL
      0xA8,              // XOR B
      0x28, 0x01,        // JR Z,+1
      0x4F,              // LD C,A
      0x10, 0xF4,        // DJNZ round
      0x3A, 0x00, 0x62,  // LD A,(6200)
      0x3C,              // INC A
      0x32, 0x00, 0x62,  // LD (6200),A
      0x18, 0xD9,        // JR start
  };
}

// All seven pages: arithmetic, stack, calls, bits, index registers, block instructions.
inline std::vector<uint8_t> BroadMix() {
  return {
      0x31, 0x00, 0x7F,        // LD SP,7F00
      0x21, 0x00, 0x50,        // start: LD HL,5000
      0x11, 0x00, 0x60,        // LD DE,6000
      0x01, 0x07, 0x10,        // LD BC,1007
      0xDD, 0x21, 0x00, 0x58,  // LD IX,5800
      0xFD, 0x21, 0x00, 0x5A,  // LD IY,5A00
      0x7E,                    // round: LD A,(HL)
      0xC6, 0x11,              // ADD A,11
      0xCE, 0x22,              // ADC A,22
      0xCB, 0x07,              // RLC A
      0xCB, 0x47,              // BIT 0,A
      0x28, 0x02,              // JR Z,+2
      0xCB, 0xFE,              // SET 7,(HL)
      0x77,                    // LD (HL),A
      0xDD, 0x77, 0x05,        // LD (IX+5),A
      0xDD, 0x86, 0x03,        // ADD A,(IX+3)
      0xDD, 0x34, 0x05,        // INC (IX+5)
      0xFD, 0x7E, 0x02,        // LD A,(IY+2)
      0xFD, 0xCB, 0x02, 0x06,  // RLC (IY+2)
      0xDD, 0xCB, 0x05, 0x46,  // BIT 0,(IX+5)
      0xC5,                    // PUSH BC
      0xCD, 0x60, 0x40,        // CALL 4060
      0xC1,                    // POP BC
      0xE5,                    // PUSH HL
      0x09,                    // ADD HL,BC
      0xED, 0x52,              // SBC HL,DE
      0xE1,                    // POP HL
      0x23,                    // INC HL
      0x13,                    // INC DE
      0xEB,                    // EX DE,HL
      0xEB,                    // EX DE,HL
      0xED, 0xA0,              // LDI
      0x03,                    // INC BC
      0xED, 0x44,              // NEG
      0x2F,                    // CPL
      0xB1,                    // OR C
      0xBE,                    // CP (HL)
      0x38, 0x01,              // JR C,+1
      0x3D,                    // DEC A
      0x10, 0xC3,              // DJNZ round
      0xC3, 0x03, 0x40,        // JP start
  };
}

// Called by the broad mix at kMixStart + 0x60.
inline constexpr int32_t kBroadCallee = kMixStart + 0x60;
inline std::vector<uint8_t> BroadCallee() {
  return {
      0xF5,              // PUSH AF
      0x3A, 0x00, 0x62,  // LD A,(6200)
      0x3C,              // INC A
      0x27,              // DAA
      0x32, 0x00, 0x62,  // LD (6200),A
      0xD9,              // EXX
      0x0C,              // INC C
      0xD9,              // EXX
      0x08,              // EX AF,AF'
      0x1F,              // RRA
      0x08,              // EX AF,AF'
      0xF1,              // POP AF
      0xC9,              // RET
  };
}

}  // namespace quoll::bench
