// The unprefixed opcodes and the CB page. Each case ends with its T-states, PC step and R step.
#include <utility>

#include "loop/test/oracle/LiteralMachine.h"

namespace oracle {

void LiteralMachine::xx() {
  if (CurOpcode < 0x40) {
    xxLow();
  } else if (CurOpcode < 0xC0) {
    int32_t source = CurOpcode & 7;
    int32_t target = (CurOpcode >> 3) & 7;
    if (CurOpcode == 0x76) {
      // PC rests on the HALT until something is accepted.
      Halted = 1;
      Finish(4, 0, 1);
    } else if (CurOpcode < 0x80) {
      WriteOperand(target, ReadOperand(source));
      Finish(source == 6 || target == 6 ? 7 : 4, 1, 1);
    } else {
      Alu(target, ReadOperand(source));
      Finish(source == 6 ? 7 : 4, 1, 1);
    }
  } else {
    xxHigh();
  }
}

void LiteralMachine::xxLow() {
  int32_t operand1 = Add32(PC, 1);
  int32_t target = (CurOpcode >> 3) & 7;
  switch (CurOpcode) {
    case 0x00: Finish(4, 1, 1); break;
    case 0x01:
      SetBC(ReadWord(operand1));
      Finish(10, 3, 1);
      break;
    case 0x11:
      SetDE(ReadWord(operand1));
      Finish(10, 3, 1);
      break;
    case 0x21:
      SetHL(ReadWord(operand1));
      Finish(10, 3, 1);
      break;
    case 0x31:
      SP = ReadWord(operand1);
      Finish(10, 3, 1);
      break;
    case 0x02:
      MemWrite(BC(), A);
      Finish(7, 1, 1);
      break;
    case 0x12:
      MemWrite(DE(), A);
      Finish(7, 1, 1);
      break;
    case 0x0A:
      A = MemRead(BC());
      Finish(7, 1, 1);
      break;
    case 0x1A:
      A = MemRead(DE());
      Finish(7, 1, 1);
      break;
    case 0x03:
      IncBC();
      Finish(6, 1, 1);
      break;
    case 0x13:
      IncDE();
      Finish(6, 1, 1);
      break;
    case 0x23:
      IncHL();
      Finish(6, 1, 1);
      break;
    case 0x33:
      IncSP();
      Finish(6, 1, 1);
      break;
    case 0x0B:
      DecBC();
      Finish(6, 1, 1);
      break;
    case 0x1B:
      DecDE();
      Finish(6, 1, 1);
      break;
    case 0x2B:
      DecHL();
      Finish(6, 1, 1);
      break;
    case 0x3B:
      DecSP();
      Finish(6, 1, 1);
      break;
    case 0x04:
    case 0x0C:
    case 0x14:
    case 0x1C:
    case 0x24:
    case 0x2C:
    case 0x3C:
      WriteOperand(target, Inc8(ReadOperand(target)));
      Finish(4, 1, 1);
      break;
    case 0x05:
    case 0x0D:
    case 0x15:
    case 0x1D:
    case 0x25:
    case 0x2D:
    case 0x3D:
      WriteOperand(target, Dec8(ReadOperand(target)));
      Finish(4, 1, 1);
      break;
    case 0x34:
      MemWrite(HL(), Inc8(MemRead(HL())));
      Finish(11, 1, 1);
      break;
    case 0x35:
      MemWrite(HL(), Dec8(MemRead(HL())));
      Finish(11, 1, 1);
      break;
    case 0x06:
    case 0x0E:
    case 0x16:
    case 0x1E:
    case 0x26:
    case 0x2E:
    case 0x3E:
      WriteOperand(target, MemRead(operand1));
      Finish(7, 2, 1);
      break;
    case 0x36:
      MemWrite(HL(), MemRead(operand1));
      Finish(10, 2, 1);
      break;
    case 0x07:
      A = 2 * A;
      FlagC = 0;
      if (A > 255) {
        A = A - 255;
        FlagC = 1;
      }
      FlagH = 0;
      FlagN = 0;
      Finish(4, 1, 1);
      break;
    case 0x0F:
      FlagC = A & 1;
      A = A / 2 + (FlagC == 1 ? 128 : 0);
      FlagH = 0;
      FlagN = 0;
      Finish(4, 1, 1);
      break;
    case 0x17: {
      int32_t oldCarry = FlagC;
      FlagC = A > 127 ? 1 : 0;
      A = ((2 * A) & 255) + oldCarry;
      FlagH = 0;
      FlagN = 0;
      Finish(4, 1, 1);
      break;
    }
    case 0x1F: {
      int32_t oldCarry = FlagC;
      FlagC = A & 1;
      A = A / 2 + (oldCarry != 0 ? 128 : 0);
      FlagH = 0;
      FlagN = 0;
      Finish(4, 1, 1);
      break;
    }
    case 0x08:
      std::swap(A, A2);
      std::swap(FlagS, AltFlagS);
      std::swap(FlagZ, AltFlagZ);
      std::swap(FlagY, AltFlagY);
      std::swap(FlagH, AltFlagH);
      std::swap(FlagX, AltFlagX);
      std::swap(FlagPV, AltFlagPV);
      std::swap(FlagN, AltFlagN);
      std::swap(FlagC, AltFlagC);
      Finish(4, 1, 1);
      break;
    case 0x09:
      AddHL(BC());
      Finish(11, 1, 1);
      break;
    case 0x19:
      AddHL(DE());
      Finish(11, 1, 1);
      break;
    case 0x29:
      AddHL(HL());
      Finish(11, 1, 1);
      break;
    case 0x39:
      AddHL(SP);
      Finish(11, 1, 1);
      break;
    case 0x10:
      if (B == 1) {
        B = 0;
        Finish(8, 2, 1);
      } else {
        B = B == 0 ? 255 : B - 1;
        JumpRel(MemRead(operand1));
        Finish(13, 0, 1);
      }
      break;
    case 0x18:
      JumpRel(MemRead(operand1));
      Finish(12, 0, 1);
      break;
    case 0x20:
    case 0x28:
    case 0x30:
    case 0x38:
      if (Condition(target & 3)) {
        JumpRel(MemRead(operand1));
        Finish(12, 0, 1);
      } else {
        Finish(7, 2, 1);
      }
      break;
    case 0x22:
      WriteWord(ReadWord(operand1), HL());
      Finish(16, 3, 1);
      break;
    case 0x2A:
      SetHL(ReadWord(ReadWord(operand1)));
      Finish(16, 3, 1);
      break;
    case 0x27:
      Daa();
      Finish(7, 1, 1);
      break;
    case 0x2F:
      A = A ^ 0xFF;
      FlagH = 1;
      FlagN = 1;
      Finish(4, 1, 1);
      break;
    case 0x37:
      FlagC = 1;
      FlagH = 0;
      FlagN = 0;
      Finish(4, 1, 1);
      break;
    case 0x3F:
      FlagH = FlagC;
      FlagC = FlagC != 1 ? 1 : 0;
      FlagN = 0;
      Finish(4, 1, 1);
      break;
    case 0x32:
      MemWrite(ReadWord(operand1), A);
      Finish(13, 3, 1);
      break;
    case 0x3A:
      A = MemRead(ReadWord(operand1));
      Finish(13, 3, 1);
      break;
    default: break;
  }
}

void LiteralMachine::xxHigh() {
  int32_t operand1 = Add32(PC, 1);
  int32_t which = (CurOpcode >> 3) & 7;
  switch (CurOpcode) {
    case 0xC6:
    case 0xCE:
    case 0xD6:
    case 0xE6:
    case 0xFE:
      Alu(which, MemRead(operand1));
      Finish(7, 2, 1);
      break;
    case 0xDE:
      SbcA(MemRead(operand1));
      Finish(4, 2, 1);
      break;
    case 0xEE:
    case 0xF6:
      Alu(which, MemRead(operand1));
      Finish(2, 2, 1);
      break;
    case 0xC0:
    case 0xC8:
    case 0xD0:
    case 0xD8:
    case 0xE0:
    case 0xE8:
    case 0xF0:
    case 0xF8:
      if (Condition(which)) {
        RetFromStack();
        Finish(10, 0, 2);
      } else {
        Finish(5, 1, 2);
      }
      break;
    case 0xC1:
      SetBC(Pop2());
      Finish(10, 1, 1);
      break;
    case 0xD1:
      SetDE(Pop2());
      Finish(10, 1, 1);
      break;
    case 0xE1:
      SetHL(Pop2());
      Finish(10, 1, 1);
      break;
    case 0xF1: {
      int32_t word = Pop2();
      SetFlagByte(word & 0xFF);
      A = word / 256;
      Finish(10, 1, 1);
      break;
    }
    case 0xC2:
      if (FlagZ == 0) {
        PC = ReadWord(operand1);
        Finish(10, 0, 0);
      } else {
        Finish(10, 3, 1);
      }
      break;
    case 0xC3:
      PC = ReadWord(operand1);
      Finish(10, 0, 1);
      break;
    case 0xCA:
    case 0xD2:
    case 0xE2:
    case 0xEA:
    case 0xF2:
    case 0xFA:
      if (Condition(which)) {
        PC = ReadWord(operand1);
        Finish(10, 0, 1);
      } else {
        Finish(6, 3, 1);
      }
      break;
    case 0xDA:
      if (FlagC == 1) {
        PC = ReadWord(operand1);
        Finish(0, 0, 1);
      } else {
        Finish(6, 3, 1);
      }
      break;
    case 0xC4:
    case 0xCC:
    case 0xD4:
    case 0xDC:
    case 0xE4:
    case 0xEC:
    case 0xF4:
    case 0xFC:
      if (Condition(which)) {
        CallTo(ReadWord(operand1));
        Finish(17, 0, 1);
      } else {
        Finish(10, 3, 1);
      }
      break;
    case 0xCD:
      CallTo(ReadWord(operand1));
      Finish(17, 0, 1);
      break;
    case 0xC5:
      Push2(B, C);
      Finish(11, 1, 1);
      break;
    case 0xD5:
      Push2(D, E);
      Finish(11, 1, 1);
      break;
    case 0xE5:
      Push2(H, L);
      Finish(11, 1, 1);
      break;
    case 0xF5:
      Push2(A, FlagByte());
      Finish(11, 1, 1);
      break;
    case 0xC7:
    case 0xCF:
    case 0xD7:
    case 0xDF:
    case 0xE7:
    case 0xEF:
    case 0xF7:
      RstTo(CurOpcode & 0x38);
      Finish(11, 0, 2);
      break;
    case 0xFF:
      RstTo(0x38);
      Finish(11, 0, 1);
      break;
    case 0xC9:
      RetFromStack();
      Finish(10, 0, 1);
      break;
    case 0xD3:
      PortOut(MemRead(operand1), A);
      Finish(11, 2, 1);
      break;
    case 0xDB:
      A = PortIn(MemRead(operand1));
      Finish(11, 2, 3);
      break;
    case 0xD9:
      std::swap(B, B2);
      std::swap(C, C2);
      std::swap(D, D2);
      std::swap(E, E2);
      std::swap(H, H2);
      std::swap(L, L2);
      Finish(4, 1, 1);
      break;
    case 0xE3: {
      int32_t lo = MemRead(SP);
      int32_t hi = MemRead(Add32(SP, 1));
      MemWrite(SP, L);
      MemWrite(Add32(SP, 1), H);
      L = lo;
      H = hi;
      Finish(19, 1, 2);
      break;
    }
    case 0xE9:
      PC = HL();
      Finish(4, 0, 1);
      break;
    case 0xEB:
      std::swap(D, H);
      std::swap(E, L);
      Finish(4, 1, 1);
      break;
    case 0xF3:
      IFF1 = 0;
      IFF2 = 0;
      Finish(4, 1, 1);
      break;
    case 0xFB:
      IFF1 = 1;
      IFF2 = 1;
      Finish(4, 1, 1);
      break;
    case 0xF9:
      SP = HL();
      Finish(10, 1, 1);
      break;
    case 0xCB:
    case 0xDD:
    case 0xED:
    case 0xFD:
      Prefix();
      PC = Add32(PC, 1);
      break;
    default: break;
  }
}

void LiteralMachine::xxCB() {
  int32_t operand = CurOpcode & 7;
  int32_t bit = (CurOpcode >> 3) & 7;
  bool memory = operand == 6;
  if (CurOpcode < 0x40) {
    if (CurOpcode >= 0x30 && CurOpcode <= 0x37 && UnDocEnabled == 0) {
      MissingOP();
      return;
    }
    WriteOperand(operand, Shift(bit, ReadOperand(operand)));
    if (CurOpcode < 0x08) {
      Finish(memory ? 4 : 2, 1, 1);
    } else if (CurOpcode < 0x38) {
      Finish(memory ? 15 : 8, 1, 1);
    } else {
      Finish(8, 1, 1);
    }
  } else if (CurOpcode < 0x80) {
    TestBit(ReadOperand(operand), bit);
    Finish(memory && CurOpcode != 0x7E ? 12 : 4, 1, 1);
  } else if (CurOpcode < 0xC0) {
    WriteOperand(operand, ResBit(ReadOperand(operand), bit));
    Finish(2, 1, 1);
  } else {
    WriteOperand(operand, SetBit(ReadOperand(operand), bit));
    Finish(memory ? 15 : 8, 1, 1);
  }
}

}  // namespace oracle
