// The ED page. PC is on the byte after the prefix.
#include "loop/test/oracle/LiteralMachine.h"

namespace oracle {

// A repeat goes back onto the ED byte, so interrupts and frame ends fall between the repeats.
void LiteralMachine::MoveBlock(bool up, bool repeat) {
  MemWrite(DE(), MemRead(HL()));
  StepPair(1, up ? 1 : -1);
  StepPair(2, up ? 1 : -1);
  StepPair(0, -1);
  FlagH = 0;
  FlagN = 0;
  FlagPV = B + C != 0 ? 1 : 0;
  bool done = B + C == 0;
  Finish(done ? 16 : 21, repeat && !done ? -1 : 1, 1);
}

void LiteralMachine::CompareBlock(bool up, bool repeat) {
  int32_t oldCarry = FlagC;
  CpA(MemRead(HL()));
  StepPair(2, up ? 1 : -1);
  StepPair(0, -1);
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
  StepPair(2, up ? 1 : -1);
  B = Dec8(B);
  FlagZ = B == 0 ? 1 : 0;
  FlagN = 1;
  Finish(16, 1, 0);
}

void LiteralMachine::xxED() {
  const int32_t y = (CurOpcode >> 3) & 7, pair = y / 2, operand1 = Add32(PC, 1);
  const bool up = (CurOpcode & 8) == 0, repeat = (CurOpcode & 16) != 0, second = (y & 1) != 0;
  if (CurOpcode >= 0xA0 && CurOpcode < 0xC0) {
    switch (CurOpcode & 7) {
      case 0: return MoveBlock(up, repeat);
      case 1: return CompareBlock(up, repeat);
      case 3: return repeat ? MissingOP() : OutBlock(up);
      default: return MissingOP();
    }
  }
  if (CurOpcode < 0x40 || CurOpcode > 0x7F) return MissingOP();
  switch (CurOpcode & 7) {
    case 0:
      if (y == 6) return MissingOP();
      WriteOperand(y, InFromC());
      return Finish(12, 1, 1);
    case 1: {
      if (y == 6) return MissingOP();
      // The register itself goes out: a port that masks its value leaves the mask in it.
      int32_t value = ReadOperand(y);
      PortOut(C, value);
      WriteOperand(y, value);
      return Finish(12, 1, 1);
    }
    case 2:
      if (second) {
        AdcHL(Pair(pair));
        return Finish(CurOpcode == 0x7A ? 11 : 15, 1, 1);
      }
      SbcHL(Pair(pair));
      return Finish(15, 1, 1);
    case 3:
      if (second) {
        SetPair(pair, ReadWord(ReadWord(operand1)));
        return Finish(20, 3, 1);
      }
      WriteWord(ReadWord(operand1), Pair(pair));
      return Finish(20, 3, 2);
    default: break;
  }
  switch (CurOpcode) {
    case 0x44:
      FlagC = A != 0 ? 1 : 0;
      FlagPV = A == 0x80 ? 1 : 0;
      A = 256 - A;
      if (A == 256) A = 0;
      FlagH = (A & 15) != 0 ? 1 : 0;
      FlagN = 1;
      FlagS = A > 127 ? 1 : 0;
      FlagZ = A == 0 ? 1 : 0;
      return Finish(8, 1, 1);
    case 0x45:
    case 0x4D:
      if (CurOpcode == 0x45) IFF1 = IFF2;
      RetFromStack();
      return Finish(14, 0, 1);
    case 0x46: IM = 0; return Finish(8, 1, 2);
    case 0x56: IM = 1; return Finish(8, 1, 2);
    case 0x5E: IM = 2; return Finish(8, 1, 2);
    case 0x47: I = A; return Finish(9, 1, 0);
    case 0x4F: R = A + 1; return Finish(9, 1, 0);
    case 0x57:
    case 0x5F:
      // R can stand at 256 right after an acceptance, but A holds eight bits.
      A = CurOpcode == 0x57 ? I : (R & 0xFF);
      FlagS = A > 127 ? 1 : 0;
      FlagZ = A == 0 ? 1 : 0;
      FlagH = FlagN = 0;
      FlagPV = IFF2;
      if (CurOpcode == 0x57) return Finish(9, 1, 1);
      R = A + 2;
      return Finish(9, 1, 0);
    case 0x67: Rrd(); return Finish(18, 1, 5);
    case 0x6F: Rld(); return Finish(18, 1, 5);
    default: return MissingOP();
  }
}

}  // namespace oracle
