// The DD and FD pages. IX and IY differ in their counts, so each page is written out by itself.
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
  switch (CurOpcode) {
    case 0x24:
    case 0x25:
    case 0x2C:
    case 0x2D:
    case 0x26:
    case 0x2E:
    case 0x44:
    case 0x45:
    case 0x4C:
    case 0x4D:
    case 0x54:
    case 0x55:
    case 0x5C:
    case 0x5D:
    case 0x7C:
    case 0x7D:
    case 0x60:
    case 0x61:
    case 0x62:
    case 0x63:
    case 0x64:
    case 0x65:
    case 0x67:
    case 0x68:
    case 0x69:
    case 0x6A:
    case 0x6B:
    case 0x6C:
    case 0x6D:
    case 0x6F:
    case 0x84:
    case 0x85:
    case 0x8C:
    case 0x8D:
    case 0x94:
    case 0x95:
    case 0x9C:
    case 0x9D:
    case 0xA4:
    case 0xA5:
    case 0xAC:
    case 0xAD:
    case 0xB4:
    case 0xB5:
    case 0xBC:
    case 0xBD: break;
    default: return false;
  }
  if (UnDocEnabled == 0) {
    MissingOP();
    return true;
  }
  switch (CurOpcode) {
    case 0x24: newHigh = Inc8(high); break;
    case 0x25: newHigh = Dec8(high); break;
    case 0x2C: newLow = Inc8(low); break;
    case 0x2D: newLow = Dec8(low); break;
    case 0x26:
      newHigh = MemRead(Add32(PC, 1));
      byteOperand = true;
      break;
    case 0x2E:
      newLow = MemRead(Add32(PC, 1));
      byteOperand = true;
      break;
    case 0x44: B = high; break;
    case 0x45: B = low; break;
    case 0x4C: C = high; break;
    case 0x4D: C = low; break;
    case 0x54: D = high; break;
    case 0x55: D = low; break;
    case 0x5C: E = high; break;
    case 0x5D: E = low; break;
    case 0x7C: A = high; break;
    case 0x7D: A = low; break;
    case 0x60: newHigh = B; break;
    case 0x61: newHigh = C; break;
    case 0x62: newHigh = D; break;
    case 0x63: newHigh = E; break;
    case 0x64: break;
    case 0x65: newHigh = low; break;
    case 0x67: newHigh = A; break;
    case 0x68: newLow = B; break;
    case 0x69: newLow = C; break;
    case 0x6A: newLow = D; break;
    case 0x6B: newLow = E; break;
    case 0x6C: newLow = high; break;
    case 0x6D: break;
    case 0x6F: newLow = A; break;
    case 0x84: AddA(high); break;
    case 0x85: AddA(low); break;
    case 0x8C: AdcA(high); break;
    case 0x8D: AdcA(low); break;
    case 0x94: SubA(high); break;
    case 0x95: SubA(low); break;
    case 0x9C: SbcA(high); break;
    case 0x9D: SbcA(low); break;
    case 0xA4: AndA(high); break;
    case 0xA5: AndA(low); break;
    case 0xAC: XorA(high); break;
    case 0xAD: XorA(low); break;
    case 0xB4: OrA(high); break;
    case 0xB5: OrA(low); break;
    case 0xBC: CpA(high); break;
    case 0xBD: CpA(low); break;
    default: break;
  }
  index = newHigh * 256 + newLow;
  if (byteOperand) {
    Finish(11, 2, 2);
  } else {
    Finish(8, 1, 2);
  }
  return true;
}

void LiteralMachine::xxDD() {
  IndexDisp = SignByte(MemRead(Add32(PC, 1)));
  int32_t operand1 = Add32(PC, 1);
  int32_t operand2 = Add32(PC, 2);
  int32_t at = Add32(IX, IndexDisp);
  switch (CurOpcode) {
    case 0xCB:
      Prefix();
      PC = Add32(PC, 1);
      return;
    case 0x09:
      AddIX(BC());
      Finish(15, 1, 1);
      return;
    case 0x19:
      AddIX(DE());
      Finish(15, 1, 1);
      return;
    case 0x29:
      AddIX(IX);
      Finish(15, 1, 1);
      return;
    case 0x39:
      AddIX(SP);
      Finish(15, 1, 1);
      return;
    case 0x21:
      IX = ReadWord(operand1);
      Finish(19, 3, 1);
      return;
    case 0x22:
      WriteWord(ReadWord(operand1), IX);
      Finish(20, 3, 2);
      return;
    case 0x2A:
      IX = ReadWord(ReadWord(operand1));
      Finish(20, 3, 1);
      return;
    case 0x23:
      IX = Add32(IX, 1) & 0xFFFF;
      Finish(6, 1, 1);
      return;
    case 0x2B:
      IX = Sub32(IX, 1) & 0xFFFF;
      Finish(6, 1, 1);
      return;
    case 0x34:
      MemWrite(at, Inc8(MemRead(at)));
      Finish(23, 2, 1);
      return;
    case 0x35:
      MemWrite(at, Dec8(MemRead(at)));
      Finish(23, 2, 1);
      return;
    case 0x36:
      MemWrite(at, MemRead(operand2));
      Finish(19, 3, 1);
      return;
    case 0x46:
      B = MemRead(at);
      Finish(19, 2, 1);
      return;
    case 0x4E:
      C = MemRead(at);
      Finish(19, 2, 1);
      return;
    case 0x56:
      D = MemRead(at);
      Finish(19, 2, 1);
      return;
    case 0x5E:
      E = MemRead(at);
      Finish(19, 2, 1);
      return;
    case 0x6E:
      L = MemRead(at);
      Finish(19, 2, 1);
      return;
    case 0x66:
      H = MemRead(at);
      Finish(19, 2, 2);
      return;
    case 0x7E:
      A = MemRead(at);
      Finish(19, 2, 2);
      return;
    case 0x70:
      MemWrite(at, B);
      Finish(19, 2, 1);
      return;
    case 0x71:
      MemWrite(at, C);
      Finish(19, 2, 1);
      return;
    case 0x72:
      MemWrite(at, D);
      Finish(19, 2, 1);
      return;
    case 0x73:
      MemWrite(at, E);
      Finish(19, 2, 1);
      return;
    case 0x74:
      MemWrite(at, H);
      Finish(19, 2, 1);
      return;
    case 0x75:
      MemWrite(at, L);
      Finish(19, 2, 1);
      return;
    case 0x77:
      MemWrite(at, A);
      Finish(19, 2, 1);
      return;
    case 0x86:
      AddA(MemRead(at));
      Finish(19, 2, 1);
      return;
    case 0x8E:
      AdcA(MemRead(at));
      Finish(19, 2, 1);
      return;
    case 0x96:
      SubA(MemRead(at));
      Finish(19, 2, 1);
      return;
    case 0x9E:
      SbcA(MemRead(at));
      Finish(19, 2, 1);
      return;
    case 0xA6:
      AndA(MemRead(at));
      Finish(19, 2, 1);
      return;
    case 0xAE:
      XorA(MemRead(at));
      Finish(19, 2, 1);
      return;
    case 0xB6:
      OrA(MemRead(at));
      Finish(19, 2, 1);
      return;
    case 0xBE:
      CpA(MemRead(at));
      Finish(19, 2, 1);
      return;
    case 0xE1:
      IX = Pop2();
      Finish(10, 1, 1);
      return;
    case 0xE3: {
      int32_t lo = MemRead(SP);
      int32_t hi = MemRead(Add32(SP, 1));
      WriteWord(SP, IX);
      IX = hi * 256 + lo;
      Finish(23, 1, 2);
      return;
    }
    case 0xE5:
      Push2((IX >> 8) & 0xFF, IX & 0xFF);
      Finish(15, 1, 1);
      return;
    case 0xE9:
      PC = IX;
      Finish(8, 0, 1);
      return;
    case 0xF9:
      SP = IX;
      Finish(10, 1, 2);
      return;
    default: break;
  }
  if (!IndexHalf(IX)) {
    MissingOP();
  }
}

void LiteralMachine::xxFD() {
  IndexDisp = SignByte(MemRead(Add32(PC, 1)));
  int32_t operand1 = Add32(PC, 1);
  int32_t operand2 = Add32(PC, 2);
  int32_t at = Add32(IY, IndexDisp);
  switch (CurOpcode) {
    case 0xCB:
      // PC stays on the CB byte, unlike in the other page.
      Prefix();
      return;
    case 0x09:
      AddIY(BC());
      Finish(15, 1, 1);
      return;
    case 0x19:
      AddIY(DE());
      Finish(15, 1, 1);
      return;
    case 0x29:
      AddIY(IY);
      Finish(15, 1, 4);
      return;
    case 0x39:
      AddIY(SP);
      Finish(15, 1, 4);
      return;
    case 0x21:
      IY = ReadWord(operand1);
      Finish(19, 3, 1);
      return;
    case 0x22:
      WriteWord(ReadWord(operand1), IY);
      Finish(20, 3, 2);
      return;
    case 0x2A:
      IY = ReadWord(ReadWord(operand1));
      Finish(20, 3, 1);
      return;
    case 0x23:
      IY = Add32(IY, 1) & 0xFFFF;
      Finish(6, 1, 1);
      return;
    case 0x2B:
      IY = Sub32(IY, 1) & 0xFFFF;
      Finish(10, 1, 2);
      return;
    case 0x34:
      MemWrite(at, Inc8(MemRead(at)));
      Finish(23, 2, 2);
      return;
    case 0x35:
      MemWrite(at, Dec8(MemRead(at)));
      Finish(23, 2, 2);
      return;
    case 0x36:
      MemWrite(at, MemRead(operand2));
      Finish(19, 3, 1);
      return;
    case 0x46:
      B = MemRead(at);
      Finish(19, 2, 2);
      return;
    case 0x4E:
      C = MemRead(at);
      Finish(19, 2, 2);
      return;
    case 0x56:
      D = MemRead(at);
      Finish(19, 2, 2);
      return;
    case 0x5E:
      E = MemRead(at);
      Finish(19, 2, 2);
      return;
    case 0x6E:
      L = MemRead(at);
      Finish(19, 2, 2);
      return;
    case 0x66:
      H = MemRead(at);
      Finish(19, 2, 2);
      return;
    case 0x7E:
      A = MemRead(at);
      Finish(19, 2, 2);
      return;
    case 0x70:
      MemWrite(at, B);
      Finish(20, 2, 1);
      return;
    case 0x71:
      MemWrite(at, C);
      Finish(20, 2, 1);
      return;
    case 0x72:
      MemWrite(at, D);
      Finish(20, 2, 1);
      return;
    case 0x73:
      MemWrite(at, E);
      Finish(20, 2, 1);
      return;
    case 0x74:
      MemWrite(at, H);
      Finish(20, 2, 1);
      return;
    case 0x75:
      MemWrite(at, L);
      Finish(20, 2, 1);
      return;
    case 0x77:
      MemWrite(at, A);
      Finish(20, 2, 1);
      return;
    case 0x86:
      AddA(MemRead(at));
      Finish(19, 2, 1);
      return;
    case 0x8E:
      AdcA(MemRead(at));
      Finish(19, 2, 4);
      return;
    case 0x96:
      SubA(MemRead(at));
      Finish(19, 2, 1);
      return;
    case 0x9E:
      SbcA(MemRead(at));
      Finish(19, 2, 5);
      return;
    case 0xA6:
      AndA(MemRead(at));
      Finish(19, 2, 1);
      return;
    case 0xAE:
      XorA(MemRead(at));
      Finish(19, 2, 1);
      return;
    case 0xB6:
      OrA(MemRead(at));
      Finish(19, 2, 1);
      return;
    case 0xBE:
      CpA(MemRead(at));
      Finish(19, 2, 1);
      return;
    case 0xE1:
      IY = Pop2();
      Finish(10, 1, 1);
      return;
    case 0xE3: {
      int32_t lo = MemRead(SP);
      int32_t hi = MemRead(Add32(SP, 1));
      WriteWord(SP, IY);
      IY = hi * 256 + lo;
      Finish(23, 1, 2);
      return;
    }
    case 0xE5:
      Push2((IY >> 8) & 0xFF, IY & 0xFF);
      Finish(15, 1, 1);
      return;
    case 0xE9:
      PC = IY;
      Finish(8, 0, 1);
      return;
    case 0xF9:
      SP = IY;
      Finish(10, 1, 2);
      return;
    // A program steers the emulator with the next four.
    case 0xF0:
      if (IFF1 == 1) {
        IrqLine = 1;
      }
      Finish(0, 1, 0);
      return;
    case 0xF1:
      NmiRequest = 1;
      Beeps++;
      Finish(0, 1, 0);
      return;
    case 0xF2:
      ResetRequest = 1;
      Beeps++;
      Finish(0, 1, 0);
      return;
    case 0xF3:
      CpuRunning = 0;
      Beeps++;
      Finish(0, 1, 0);
      return;
    default: break;
  }
  if (!IndexHalf(IY)) {
    MissingOP();
  }
}

}  // namespace oracle
