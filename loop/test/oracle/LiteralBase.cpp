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

// 00 to 3F, by the low three bits: jumps, pairs, memory by address, pairs counted, bytes counted, bytes
// loaded, the accumulator and its flags.
void LiteralMachine::xxLow() {
  const int32_t operand1 = Add32(PC, 1);
  const int32_t target = (CurOpcode >> 3) & 7, pair = target / 2;
  const bool second = (target & 1) != 0;
  switch (CurOpcode & 7) {
    case 0: return xxJumps(target);
    case 1:
      if (second) {
        AddHL(Pair(pair));
        return Finish(11, 1, 1);
      }
      SetPair(pair, ReadWord(operand1));
      return Finish(10, 3, 1);
    case 2: return xxIndirect(target);
    case 3: StepPair(pair, second ? -1 : 1); return Finish(6, 1, 1);
    case 4: WriteOperand(target, Inc8(ReadOperand(target))); return Finish(target == 6 ? 11 : 4, 1, 1);
    case 5: WriteOperand(target, Dec8(ReadOperand(target))); return Finish(target == 6 ? 11 : 4, 1, 1);
    case 6: WriteOperand(target, MemRead(operand1)); return Finish(target == 6 ? 10 : 7, 2, 1);
    default: return xxAccumulator(target);
  }
}

void LiteralMachine::xxJumps(int32_t which) {
  const int32_t operand1 = Add32(PC, 1);
  switch (which) {
    case 0: return Finish(4, 1, 1);
    case 1:
      for (const auto& [here, there] : {std::pair(&A, &A2),
                                        {&FlagS, &AltFlagS},
                                        {&FlagZ, &AltFlagZ},
                                        {&FlagY, &AltFlagY},
                                        {&FlagH, &AltFlagH},
                                        {&FlagX, &AltFlagX},
                                        {&FlagPV, &AltFlagPV},
                                        {&FlagN, &AltFlagN},
                                        {&FlagC, &AltFlagC}})
        std::swap(*here, *there);
      return Finish(4, 1, 1);
    case 2:
      if (B == 1) {
        B = 0;
        return Finish(8, 2, 1);
      }
      B = B == 0 ? 255 : B - 1;
      JumpRel(MemRead(operand1));
      return Finish(13, 0, 1);
    default:
      if (which > 3 && !Condition(which - 4)) return Finish(7, 2, 1);
      JumpRel(MemRead(operand1));
      return Finish(12, 0, 1);
  }
}

void LiteralMachine::xxIndirect(int32_t which) {
  const int32_t operand1 = Add32(PC, 1);
  switch (which) {
    case 0:
    case 2: MemWrite(Pair(which / 2), A); return Finish(7, 1, 1);
    case 1:
    case 3: A = MemRead(Pair(which / 2)); return Finish(7, 1, 1);
    case 4: WriteWord(ReadWord(operand1), HL()); return Finish(16, 3, 1);
    case 5: SetHL(ReadWord(ReadWord(operand1))); return Finish(16, 3, 1);
    case 6: MemWrite(ReadWord(operand1), A); return Finish(13, 3, 1);
    default: A = MemRead(ReadWord(operand1)); return Finish(13, 3, 1);
  }
}

void LiteralMachine::xxAccumulator(int32_t which) {
  const int32_t oldCarry = FlagC;
  if (which == 4) {
    Daa();
    return Finish(7, 1, 1);
  }
  FlagH = FlagN = 0;
  switch (which) {
    case 0:
      FlagC = A > 127 ? 1 : 0;
      A = 2 * A - 255 * FlagC;
      break;
    case 1:
      FlagC = A & 1;
      A = A / 2 + 128 * FlagC;
      break;
    case 2:
      FlagC = A > 127 ? 1 : 0;
      A = ((2 * A) & 255) + oldCarry;
      break;
    case 3:
      FlagC = A & 1;
      A = A / 2 + (oldCarry != 0 ? 128 : 0);
      break;
    case 5:
      A = A ^ 0xFF;
      FlagH = FlagN = 1;
      break;
    case 6: FlagC = 1; break;
    default:
      FlagH = oldCarry;
      FlagC = oldCarry != 1 ? 1 : 0;
      break;
  }
  Finish(4, 1, 1);
}

// C0 to FF, by the low three bits: returns, pops and what stands beside them, jumps, what stands beside JP,
// calls, pushes, arithmetic with a byte, restarts.
void LiteralMachine::xxHigh() {
  const int32_t operand1 = Add32(PC, 1);
  const int32_t which = (CurOpcode >> 3) & 7;
  switch (CurOpcode & 7) {
    case 0:
      if (!Condition(which)) return Finish(5, 1, 2);
      RetFromStack();
      return Finish(10, 0, 2);
    case 1: return xxPops(which);
    case 2: {
      const bool jumps = Condition(which);
      if (jumps) PC = ReadWord(operand1);
      if (CurOpcode == 0xC2) return jumps ? Finish(10, 0, 0) : Finish(10, 3, 1);
      if (!jumps) return Finish(6, 3, 1);
      return Finish(CurOpcode == 0xDA ? 0 : 10, 0, 1);
    }
    case 3: return xxOthers(which);
    case 4:
      if (!Condition(which)) return Finish(10, 3, 1);
      CallTo(ReadWord(operand1));
      return Finish(17, 0, 1);
    case 5:
      if (CurOpcode == 0xCD) {
        CallTo(ReadWord(operand1));
        return Finish(17, 0, 1);
      }
      if ((which & 1) != 0) return EnterPrefix();
      if (which == 6) {
        Push2(A, FlagByte());
      } else {
        Push2(Pair(which / 2) / 256, Pair(which / 2) & 0xFF);
      }
      return Finish(11, 1, 1);
    case 6:
      Alu(which, MemRead(operand1));
      return Finish(which == 3 ? 4 : which == 5 || which == 6 ? 2 : 7, 2, 1);
    default: RstTo(which * 8); return Finish(11, 0, which == 7 ? 1 : 2);
  }
}

void LiteralMachine::xxPops(int32_t which) {
  switch (which) {
    case 6: {
      const int32_t word = Pop2();
      SetFlagByte(word & 0xFF);
      A = word / 256;
      return Finish(10, 1, 1);
    }
    case 1: RetFromStack(); return Finish(10, 0, 1);
    case 3:
      for (const auto& [here, there] :
           {std::pair(&B, &B2), {&C, &C2}, {&D, &D2}, {&E, &E2}, {&H, &H2}, {&L, &L2}})
        std::swap(*here, *there);
      return Finish(4, 1, 1);
    case 5: PC = HL(); return Finish(4, 0, 1);
    case 7: SP = HL(); return Finish(10, 1, 1);
    default: SetPair(which / 2, Pop2()); return Finish(10, 1, 1);
  }
}

void LiteralMachine::xxOthers(int32_t which) {
  const int32_t operand1 = Add32(PC, 1);
  switch (which) {
    case 0: PC = ReadWord(operand1); return Finish(10, 0, 1);
    case 1: return EnterPrefix();
    case 2: PortOut(MemRead(operand1), A); return Finish(11, 2, 1);
    case 3: A = PortIn(MemRead(operand1)); return Finish(11, 2, 3);
    case 4: {
      const int32_t lo = MemRead(SP), hi = MemRead(Add32(SP, 1));
      WriteWord(SP, HL());
      L = lo;
      H = hi;
      return Finish(19, 1, 2);
    }
    case 5:
      std::swap(D, H);
      std::swap(E, L);
      return Finish(4, 1, 1);
    default: IFF1 = IFF2 = which == 7 ? 1 : 0; return Finish(4, 1, 1);
  }
}

void LiteralMachine::EnterPrefix() {
  Prefix();
  PC = Add32(PC, 1);
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
