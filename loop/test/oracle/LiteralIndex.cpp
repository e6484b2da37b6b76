// The DD and FD pages.
#include "loop/test/oracle/LiteralMachine.h"

namespace oracle {

// The opcodes on the byte halves of IX or IY, alike in both pages. False when the opcode is none of them.
bool LiteralMachine::IndexHalf(int32_t& index) {
  int32_t high = (index >> 8) & 0xFF;
  int32_t low = index & 0xFF;
  bool byteOperand = false;
  // Writes rebuild the whole register at the end.
  int32_t newHigh = high;
  int32_t newLow = low;
  // INC, DEC and LD n of a half; loads from and to one, but for the place of memory; arithmetic with one.
  const int32_t source = CurOpcode & 7, target = (CurOpcode >> 3) & 7;
  const bool fromHalf = source == 4 || source == 5, toHalf = target == 4 || target == 5;
  const bool change = CurOpcode < 0x40 && toHalf && source >= 4 && source <= 6;
  const bool load =
      CurOpcode >= 0x40 && CurOpcode < 0x80 && (fromHalf || toHalf) && source != 6 && target != 6;
  const bool arithmetic = CurOpcode >= 0x80 && CurOpcode < 0xC0 && fromHalf;
  if (!change && !load && !arithmetic) return false;
  if (UnDocEnabled == 0) {
    MissingOP();
    return true;
  }
  const auto half = [&](int32_t operand) {
    return operand == 4 ? high : operand == 5 ? low : ReadOperand(operand);
  };
  int32_t& changed = target == 4 ? newHigh : newLow;
  if (arithmetic) {
    Alu(target, half(source));
  } else if (load && toHalf) {
    changed = half(source);
  } else if (load) {
    WriteOperand(target, half(source));
  } else if (source == 4) {
    changed = Inc8(half(target));
  } else if (source == 5) {
    changed = Dec8(half(target));
  } else {
    changed = MemRead(Add32(PC, 1));
    byteOperand = true;
  }
  index = newHigh * 256 + newLow;
  if (byteOperand) {
    Finish(11, 2, 2);
  } else {
    Finish(8, 1, 2);
  }
  return true;
}

// Both pages do the same to their register, in other T-states and steps of R.
void LiteralMachine::IndexPage(bool y) {
  int32_t& index = y ? IY : IX;
  IndexDisp = SignByte(MemRead(Add32(PC, 1)));
  const int32_t operand1 = Add32(PC, 1), operand2 = Add32(PC, 2);
  const int32_t at = Add32(index, IndexDisp);
  const int32_t source = CurOpcode & 7, target = (CurOpcode >> 3) & 7;
  switch (CurOpcode) {
    case 0xCB:
      Prefix();
      if (!y) PC = Add32(PC, 1);  // in the other page it stays on the CB byte
      return;
    case 0x09: AddIndex(index, BC()); return Finish(15, 1, 1);
    case 0x19: AddIndex(index, DE()); return Finish(15, 1, 1);
    case 0x29: AddIndex(index, index); return Finish(15, 1, y ? 4 : 1);
    case 0x39: AddIndex(index, SP); return Finish(15, 1, y ? 4 : 1);
    case 0x21: index = ReadWord(operand1); return Finish(19, 3, 1);
    case 0x22: WriteWord(ReadWord(operand1), index); return Finish(20, 3, 2);
    case 0x2A: index = ReadWord(ReadWord(operand1)); return Finish(20, 3, 1);
    case 0x23: index = Add32(index, 1) & 0xFFFF; return Finish(6, 1, 1);
    case 0x2B: index = Sub32(index, 1) & 0xFFFF; return Finish(y ? 10 : 6, 1, y ? 2 : 1);
    case 0x34: MemWrite(at, Inc8(MemRead(at))); return Finish(23, 2, y ? 2 : 1);
    case 0x35: MemWrite(at, Dec8(MemRead(at))); return Finish(23, 2, y ? 2 : 1);
    case 0x36: MemWrite(at, MemRead(operand2)); return Finish(19, 3, 1);
    case 0xE1: index = Pop2(); return Finish(10, 1, 1);
    case 0xE3: {
      const int32_t lo = MemRead(SP), hi = MemRead(Add32(SP, 1));
      WriteWord(SP, index);
      index = hi * 256 + lo;
      return Finish(23, 1, 2);
    }
    case 0xE5: Push2((index >> 8) & 0xFF, index & 0xFF); return Finish(15, 1, 1);
    case 0xE9: PC = index; return Finish(8, 0, 1);
    case 0xF9: SP = index; return Finish(10, 1, 2);
    default: break;
  }
  if (CurOpcode >= 0x40 && CurOpcode < 0x80 && source == 6 && target != 6) {
    WriteOperand(target, MemRead(at));
    return Finish(19, 2, y || CurOpcode == 0x66 || CurOpcode == 0x7E ? 2 : 1);
  }
  if (CurOpcode >= 0x70 && CurOpcode < 0x78 && source != 6) {
    MemWrite(at, ReadOperand(source));
    return Finish(y ? 20 : 19, 2, 1);
  }
  if (CurOpcode >= 0x80 && CurOpcode < 0xC0 && source == 6) {
    Alu(target, MemRead(at));
    return Finish(19, 2, y && CurOpcode == 0x8E ? 4 : y && CurOpcode == 0x9E ? 5 : 1);
  }
  if (!IndexHalf(index)) MissingOP();
}

void LiteralMachine::xxDD() { IndexPage(false); }

void LiteralMachine::xxFD() {
  if (CurOpcode < 0xF0 || CurOpcode > 0xF3) return IndexPage(true);
  // A program steers the emulator with these four.
  IndexDisp = SignByte(MemRead(Add32(PC, 1)));
  if (CurOpcode == 0xF0 && IFF1 == 1) IrqLine = 1;
  if (CurOpcode == 0xF1) NmiRequest = 1;
  if (CurOpcode == 0xF2) ResetRequest = 1;
  if (CurOpcode == 0xF3) CpuRunning = 0;
  if (CurOpcode != 0xF0) Beeps++;
  Finish(0, 1, 0);
}

}  // namespace oracle
