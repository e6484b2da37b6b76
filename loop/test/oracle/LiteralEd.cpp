// The ED page. PC is on the byte after the prefix.
#include "loop/test/oracle/LiteralMachine.h"

namespace oracle {

// A repeat goes back onto the ED byte, so interrupts and frame ends fall between the repeats.
void LiteralMachine::MoveBlock(bool up, bool repeat) {
  MemWrite(DE(), MemRead(HL()));
  if (up) {
    IncDE();
    IncHL();
  } else {
    DecDE();
    DecHL();
  }
  DecBC();
  FlagH = 0;
  FlagN = 0;
  FlagPV = B + C != 0 ? 1 : 0;
  bool done = B + C == 0;
  Finish(done ? 16 : 21, repeat && !done ? -1 : 1, 1);
}

void LiteralMachine::CompareBlock(bool up, bool repeat) {
  int32_t oldCarry = FlagC;
  CpA(MemRead(HL()));
  if (up) {
    IncHL();
  } else {
    DecHL();
  }
  DecBC();
  FlagPV = B + C != 0 ? 1 : 0;
  FlagC = oldCarry;
  if (repeat && FlagZ == 0 && FlagPV != 0) {
    Finish(21, -1, 0);
  } else {
    Finish(16, 1, 0);
  }
}

void LiteralMachine::OutBlock(bool up) {
  int32_t value = MemRead(HL());
  PortOut(C, value);
  if (up) {
    IncHL();
  } else {
    DecHL();
  }
  B = Dec8(B);
  FlagZ = B == 0 ? 1 : 0;
  FlagN = 1;
  Finish(16, 1, 0);
}

void LiteralMachine::xxED() {
  int32_t operand1 = Add32(PC, 1);
  switch (CurOpcode) {
    case 0x40:
      B = InFromC();
      Finish(12, 1, 1);
      return;
    case 0x48:
      C = InFromC();
      Finish(12, 1, 1);
      return;
    case 0x50:
      D = InFromC();
      Finish(12, 1, 1);
      return;
    case 0x58:
      E = InFromC();
      Finish(12, 1, 1);
      return;
    case 0x60:
      H = InFromC();
      Finish(12, 1, 1);
      return;
    case 0x68:
      L = InFromC();
      Finish(12, 1, 1);
      return;
    case 0x78:
      A = InFromC();
      Finish(12, 1, 1);
      return;
    // The register itself goes out: a port that masks its value leaves the mask in it.
    case 0x41:
      PortOut(C, B);
      Finish(12, 1, 1);
      return;
    case 0x49:
      PortOut(C, C);
      Finish(12, 1, 1);
      return;
    case 0x51:
      PortOut(C, D);
      Finish(12, 1, 1);
      return;
    case 0x59:
      PortOut(C, E);
      Finish(12, 1, 1);
      return;
    case 0x61:
      PortOut(C, H);
      Finish(12, 1, 1);
      return;
    case 0x69:
      PortOut(C, L);
      Finish(12, 1, 1);
      return;
    case 0x79:
      PortOut(C, A);
      Finish(12, 1, 1);
      return;
    case 0x42:
      SbcHL(BC());
      Finish(15, 1, 1);
      return;
    case 0x52:
      SbcHL(DE());
      Finish(15, 1, 1);
      return;
    case 0x62:
      SbcHL(HL());
      Finish(15, 1, 1);
      return;
    case 0x72:
      SbcHL(SP);
      Finish(15, 1, 1);
      return;
    case 0x4A:
      AdcHL(BC());
      Finish(15, 1, 1);
      return;
    case 0x5A:
      AdcHL(DE());
      Finish(15, 1, 1);
      return;
    case 0x6A:
      AdcHL(HL());
      Finish(15, 1, 1);
      return;
    case 0x7A:
      AdcHL(SP);
      Finish(11, 1, 1);
      return;
    case 0x43:
      WriteWord(ReadWord(operand1), BC());
      Finish(20, 3, 2);
      return;
    case 0x53:
      WriteWord(ReadWord(operand1), DE());
      Finish(20, 3, 2);
      return;
    case 0x63:
      WriteWord(ReadWord(operand1), HL());
      Finish(20, 3, 2);
      return;
    case 0x73:
      WriteWord(ReadWord(operand1), SP);
      Finish(20, 3, 2);
      return;
    case 0x4B:
      SetBC(ReadWord(ReadWord(operand1)));
      Finish(20, 3, 1);
      return;
    case 0x5B:
      SetDE(ReadWord(ReadWord(operand1)));
      Finish(20, 3, 1);
      return;
    case 0x6B:
      SetHL(ReadWord(ReadWord(operand1)));
      Finish(20, 3, 1);
      return;
    case 0x7B:
      SP = ReadWord(ReadWord(operand1));
      Finish(20, 3, 1);
      return;
    case 0x44:
      FlagC = A != 0 ? 1 : 0;
      FlagPV = A == 0x80 ? 1 : 0;
      A = 256 - A;
      if (A == 256) {
        A = 0;
      }
      FlagH = (A & 15) != 0 ? 1 : 0;
      FlagN = 1;
      FlagS = A > 127 ? 1 : 0;
      FlagZ = A == 0 ? 1 : 0;
      Finish(8, 1, 1);
      return;
    case 0x45:
      IFF1 = IFF2;
      RetFromStack();
      Finish(14, 0, 1);
      return;
    case 0x4D:
      RetFromStack();
      Finish(14, 0, 1);
      return;
    case 0x46:
      IM = 0;
      Finish(8, 1, 2);
      return;
    case 0x56:
      IM = 1;
      Finish(8, 1, 2);
      return;
    case 0x5E:
      IM = 2;
      Finish(8, 1, 2);
      return;
    case 0x47:
      I = A;
      Finish(9, 1, 0);
      return;
    case 0x4F:
      R = A + 1;
      Finish(9, 1, 0);
      return;
    case 0x57:
    case 0x5F:
      // R can stand at 256 right after an acceptance, but A holds eight bits.
      A = CurOpcode == 0x57 ? I : (R & 0xFF);
      FlagS = A > 127 ? 1 : 0;
      FlagZ = A == 0 ? 1 : 0;
      FlagH = 0;
      FlagN = 0;
      FlagPV = IFF2;
      if (CurOpcode == 0x57) {
        Finish(9, 1, 1);
      } else {
        R = A + 2;
        Finish(9, 1, 0);
      }
      return;
    case 0x67:
      Rrd();
      Finish(18, 1, 5);
      return;
    case 0x6F:
      Rld();
      Finish(18, 1, 5);
      return;
    case 0xA0: MoveBlock(true, false); return;
    case 0xA8: MoveBlock(false, false); return;
    case 0xB0: MoveBlock(true, true); return;
    case 0xB8: MoveBlock(false, true); return;
    case 0xA1: CompareBlock(true, false); return;
    case 0xA9: CompareBlock(false, false); return;
    case 0xB1: CompareBlock(true, true); return;
    case 0xB9: CompareBlock(false, true); return;
    case 0xA3: OutBlock(true); return;
    case 0xAB: OutBlock(false); return;
    default: break;
  }
  MissingOP();
}

}  // namespace oracle
