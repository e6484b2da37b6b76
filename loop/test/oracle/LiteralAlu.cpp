// The arithmetic helpers with their flag rules, and the steps the opcode routines share.
// A flag that a helper does not name keeps its value.
#include "loop/test/oracle/LiteralMachine.h"

namespace oracle {

namespace {

int32_t BitAt(int32_t value, int32_t bit) {
  return static_cast<int32_t>((static_cast<uint32_t>(value) >> bit) & 1u);
}

int32_t Flag(bool set) { return set ? 1 : 0; }

}  // namespace

int32_t LiteralMachine::Parity(int32_t v) const { return ParityTable[static_cast<size_t>(v & 0xFF)]; }

int32_t LiteralMachine::BitOf(int32_t v, int32_t n) const {
  return v & BitValue[static_cast<size_t>(n & 15)];
}

int32_t LiteralMachine::SetBit(int32_t v, int32_t n) const {
  return v | BitValue[static_cast<size_t>(n & 15)];
}

int32_t LiteralMachine::ResBit(int32_t v, int32_t n) const {
  return v & ~BitValue[static_cast<size_t>(n & 15)];
}

void LiteralMachine::TestBit(int32_t v, int32_t n) {
  bool set = BitOf(v, n) != 0;
  FlagS = Flag(n == 7 && set);
  FlagZ = Flag(!set);
  FlagH = 1;
  FlagPV = Flag(!set);
  FlagN = 0;
}

void LiteralMachine::AddA(int32_t v) {
  int32_t sum = A + v;
  int32_t result = sum & 0xFF;
  FlagS = BitAt(result, 7);
  FlagZ = Flag(result == 0);
  FlagH = BitAt((A & 15) + (v & 15), 4);
  FlagPV = BitAt((~v ^ A) & (A ^ result), 7);
  FlagN = 0;
  FlagC = BitAt(sum, 8);
  A = result;
}

void LiteralMachine::AdcA(int32_t v) {
  int32_t carry = FlagC == 1 ? 1 : 0;
  int32_t sum = A + v + carry;
  int32_t result = sum & 0xFF;
  FlagS = BitAt(result, 7);
  FlagZ = Flag(result == 0);
  FlagH = BitAt((A & 15) + (v & 15) + carry, 4);
  FlagPV = BitAt((~v ^ A) & (A ^ result), 7);
  FlagN = 0;
  FlagC = BitAt(sum, 8);
  A = result;
}

void LiteralMachine::SubA(int32_t v) {
  int32_t difference = A - v;
  int32_t result = difference & 0xFF;
  FlagS = BitAt(result, 7);
  FlagZ = Flag(result == 0);
  FlagH = BitAt((A & 15) - (v & 15), 4);
  FlagPV = BitAt((A ^ v) & (A ^ result), 7);
  FlagN = 1;
  FlagC = BitAt(difference, 8);
  A = result;
}

void LiteralMachine::SbcA(int32_t v) {
  int32_t carry = FlagC == 1 ? 1 : 0;
  int32_t difference = A - v - carry;
  int32_t result = difference & 0xFF;
  FlagS = BitAt(result, 7);
  FlagZ = Flag(result == 0);
  FlagH = BitAt((A & 15) - (v & 15) - carry, 4);
  FlagPV = BitAt((A ^ v) & (A ^ result), 7);
  FlagN = 1;
  FlagC = BitAt(difference, 8);
  A = result;
}

// The only arithmetic that touches the two spare flags, and it takes them from the operand.
void LiteralMachine::CpA(int32_t v) {
  int32_t kept = A;
  SubA(v);
  A = kept;
  FlagY = BitAt(v, 5);
  FlagX = BitAt(v, 3);
}

void LiteralMachine::AndA(int32_t v) { LogicResult(A & v, 1); }
void LiteralMachine::XorA(int32_t v) { LogicResult(A ^ v, 0); }
void LiteralMachine::OrA(int32_t v) { LogicResult(A | v, 0); }

void LiteralMachine::LogicResult(int32_t result, int32_t half) {
  ShiftFlags(result, 0);
  FlagH = half;
  A = result;
}

int32_t LiteralMachine::Inc8(int32_t v) {
  int32_t result = (v + 1) & 0xFF;
  FlagS = BitAt(v + 1, 7);
  FlagZ = Flag(result == 0);
  FlagH = BitAt((v & 15) + 1, 4);
  FlagPV = Flag(v == 127);
  FlagN = 0;
  return result;
}

int32_t LiteralMachine::Dec8(int32_t v) {
  FlagS = BitAt(v - 1, 7);
  FlagZ = Flag(v == 1);
  FlagH = BitAt((v & 15) - 1, 4);
  FlagPV = Flag(v == 128);
  FlagN = 1;
  return (v - 1) & 0xFF;
}

void LiteralMachine::ShiftFlags(int32_t result, int32_t carry) {
  FlagS = Flag(result > 127);
  FlagZ = Flag(result == 0);
  FlagH = 0;
  FlagPV = Parity(result);
  FlagN = 0;
  FlagC = carry;
}

int32_t LiteralMachine::Rlc(int32_t v) {
  int32_t result = 2 * v;
  int32_t carry = 0;
  if (result >= 256) {
    carry = 1;
    result = result - 255;
  }
  ShiftFlags(result, carry);
  return result;
}

int32_t LiteralMachine::Rrc(int32_t v) {
  int32_t carry = v & 1;
  int32_t result = v / 2 + 128 * carry;
  ShiftFlags(result, carry);
  return result;
}

int32_t LiteralMachine::Rl(int32_t v) {
  int32_t result = ((2 * v) & 0xFF) + FlagC;
  ShiftFlags(result, BitAt(v, 7));
  return result;
}

int32_t LiteralMachine::Rr(int32_t v) {
  int32_t result = v / 2 + 128 * FlagC;
  ShiftFlags(result, v & 1);
  return result;
}

int32_t LiteralMachine::Sla(int32_t v) {
  int32_t result = (2 * v) & 0xFF;
  ShiftFlags(result, BitAt(v, 7));
  return result;
}

int32_t LiteralMachine::Sra(int32_t v) {
  int32_t result = v / 2 + (v & 0x80);
  ShiftFlags(result, v & 1);
  return result;
}

// Z is never set here, and S looks at the value before the 1 comes in.
int32_t LiteralMachine::Sll(int32_t v) {
  int32_t doubled = (2 * v) & 0xFF;
  int32_t result = doubled + 1;
  FlagS = Flag(doubled > 126);
  FlagZ = 0;
  FlagH = 0;
  FlagPV = Parity(result);
  FlagN = 0;
  FlagC = BitAt(v, 7);
  return result;
}

int32_t LiteralMachine::Srl(int32_t v) {
  int32_t result = v / 2;
  FlagS = 0;
  FlagZ = Flag(result == 0);
  FlagH = 0;
  FlagPV = Parity(result);
  FlagN = 0;
  FlagC = v & 1;
  return result;
}

int32_t LiteralMachine::BC() const { return B * 256 + C; }
int32_t LiteralMachine::DE() const { return D * 256 + E; }
int32_t LiteralMachine::HL() const { return H * 256 + L; }

void LiteralMachine::SetBC(int32_t v) {
  B = (v >> 8) & 0xFF;
  C = v & 0xFF;
}

void LiteralMachine::SetDE(int32_t v) {
  D = (v >> 8) & 0xFF;
  E = v & 0xFF;
}

void LiteralMachine::SetHL(int32_t v) {
  H = (v >> 8) & 0xFF;
  L = v & 0xFF;
}

int32_t LiteralMachine::Pair(int32_t which) const {
  const int32_t pairs[] = {BC(), DE(), HL(), SP};
  return pairs[which];
}

void LiteralMachine::SetPair(int32_t which, int32_t v) {
  if (which == 0) SetBC(v);
  if (which == 1) SetDE(v);
  if (which == 2) SetHL(v);
  if (which == 3) SP = v;
}

void LiteralMachine::StepPair(int32_t which, int32_t by) { SetPair(which, Add32(Pair(which), by) & 0xFFFF); }

void LiteralMachine::IncSP() { SP = Add32(SP, 1) & 0xFFFF; }
void LiteralMachine::DecSP() { SP = Sub32(SP, 1) & 0xFFFF; }

void LiteralMachine::AddHL(int32_t v) {
  const int32_t sum = HL() + v;
  FlagH = Flag((HL() & 0xFFF) + (v & 0xFFF) >= 4096);
  FlagC = BitAt(sum, 16);
  FlagN = 0;
  SetHL(sum & 0xFFFF);
}

// H comes from IX, for IY too: that is how this machine behaves.
void LiteralMachine::AddIndex(int32_t& index, int32_t v) {
  const bool half = (IX & 0xFFF) + (v & 0xFFF) >= 4096;
  const int32_t sum = index + v;
  index = sum & 0xFFFF;
  FlagC = BitAt(sum, 16);
  FlagH = Flag(half);
  FlagN = 0;
}

// The half carry is made with the new carry, not the one that came in.
void LiteralMachine::AdcHL(int32_t v) {
  int32_t before = HL();
  int32_t sum = before + v + FlagC;
  int32_t result = sum & 0xFFFF;
  int32_t newCarry = BitAt(sum, 16);
  FlagS = BitAt(result, 15);
  FlagZ = Flag(result == 0);
  FlagC = newCarry;
  FlagN = 0;
  FlagPV = BitAt((~v ^ before) & (before ^ result), 15);
  FlagH = BitAt((before & 0xFFF) + (v & 0xFFF) + newCarry, 12);
  SetHL(result);
}

void LiteralMachine::SbcHL(int32_t v) {
  int32_t before = HL();
  int32_t difference = before - v - FlagC;
  int32_t result = difference & 0xFFFF;
  int32_t newCarry = BitAt(difference, 16);
  FlagS = BitAt(result, 15);
  FlagZ = Flag(result == 0);
  FlagC = newCarry;
  FlagPV = BitAt((v ^ before) & (before ^ result), 15);
  FlagH = BitAt((before & 0xFFF) - (v & 0xFFF) - newCarry, 12);
  FlagN = 1;
  SetHL(result);
}

void LiteralMachine::Daa() {
  int32_t oldA = A;
  int32_t oldCarry = FlagC;
  int32_t low = FlagH == 1 || (oldA & 15) > 9 ? 6 : 0;
  int32_t step = FlagC == 1 || oldA > 0x9F ? (low | 0x60) : low;
  if (oldA > 0x8F && (oldA & 15) > 9) {
    step = low | 0x60;
  }
  if (FlagN == 1) {
    SubA(step);
  } else {
    AddA(step);
  }
  FlagC = oldA < 0x9A ? oldCarry : 1;
  FlagPV = Parity(A);
}

// The flags of RRD, RLD and IN: the carry stays.
void LiteralMachine::NibbleFlags(int32_t result) { ShiftFlags(result, FlagC); }

void LiteralMachine::Rrd() {
  int32_t m = MemRead(HL());
  int32_t oldA = A;
  A = (oldA & 0xF0) + (m & 0x0F);
  MemWrite(HL(), m / 16 + (oldA & 15) * 16);
  NibbleFlags(A);
}

void LiteralMachine::Rld() {
  int32_t m = MemRead(HL());
  int32_t oldA = A;
  MemWrite(HL(), (m * 16 + (oldA & 15)) & 255);
  A = (oldA & 0xF0) + m / 16;
  NibbleFlags(A);
}

void LiteralMachine::JumpRel(int32_t e) { PC = e > 127 ? Add32(PC, e - 254) : Add32(PC, e + 2); }

void LiteralMachine::Push2(int32_t hi, int32_t lo) {
  DecSP();
  MemWrite(SP, hi);
  DecSP();
  MemWrite(SP, lo);
}

int32_t LiteralMachine::Pop2() {
  int32_t lo = MemRead(SP);
  IncSP();
  int32_t hi = MemRead(SP);
  IncSP();
  return hi * 256 + lo;
}

void LiteralMachine::RetFromStack() { PC = Pop2(); }

void LiteralMachine::CallTo(int32_t target) {
  int32_t back = Add32(PC, 3);
  Push2((back >> 8) & 0xFF, back & 0xFF);
  PC = target;
}

void LiteralMachine::RstTo(int32_t target) {
  int32_t back = Add32(PC, 1);
  Push2((back >> 8) & 0xFF, back & 0xFF);
  PC = target;
}

int32_t LiteralMachine::SignByte(int32_t v) { return v >= 128 ? v - 256 : v; }

// The port is register C alone.
int32_t LiteralMachine::InFromC() {
  int32_t value = PortIn(C);
  NibbleFlags(value);
  return value;
}

int32_t LiteralMachine::FlagByte() const {
  return FlagS * 128 + FlagZ * 64 + FlagY * 32 + FlagH * 16 + FlagX * 8 + FlagPV * 4 + FlagN * 2 + FlagC;
}

void LiteralMachine::SetFlagByte(int32_t f) {
  FlagS = BitAt(f, 7);
  FlagZ = BitAt(f, 6);
  FlagY = BitAt(f, 5);
  FlagH = BitAt(f, 4);
  FlagX = BitAt(f, 3);
  FlagPV = BitAt(f, 2);
  FlagN = BitAt(f, 1);
  FlagC = BitAt(f, 0);
}

// Words are read high byte first and stored low byte first.
int32_t LiteralMachine::ReadWord(int32_t address) {
  int32_t hi = MemRead(Add32(address, 1));
  int32_t lo = MemRead(address);
  return hi * 256 + lo;
}

void LiteralMachine::WriteWord(int32_t address, int32_t value) {
  MemWrite(address, value & 0xFF);
  MemWrite(Add32(address, 1), (value >> 8) & 0xFF);
}

int32_t LiteralMachine::ReadOperand(int32_t index) {
  switch (index) {
    case 0: return B;
    case 1: return C;
    case 2: return D;
    case 3: return E;
    case 4: return H;
    case 5: return L;
    case 6: return MemRead(HL());
    default: return A;
  }
}

void LiteralMachine::WriteOperand(int32_t index, int32_t value) {
  switch (index) {
    case 0: B = value; break;
    case 1: C = value; break;
    case 2: D = value; break;
    case 3: E = value; break;
    case 4: H = value; break;
    case 5: L = value; break;
    case 6: MemWrite(HL(), value); break;
    default: A = value; break;
  }
}

void LiteralMachine::Alu(int32_t which, int32_t v) {
  switch (which) {
    case 0: AddA(v); break;
    case 1: AdcA(v); break;
    case 2: SubA(v); break;
    case 3: SbcA(v); break;
    case 4: AndA(v); break;
    case 5: XorA(v); break;
    case 6: OrA(v); break;
    default: CpA(v); break;
  }
}

int32_t LiteralMachine::Shift(int32_t which, int32_t v) {
  switch (which) {
    case 0: return Rlc(v);
    case 1: return Rrc(v);
    case 2: return Rl(v);
    case 3: return Rr(v);
    case 4: return Sla(v);
    case 5: return Sra(v);
    case 6: return Sll(v);
    default: return Srl(v);
  }
}

bool LiteralMachine::Condition(int32_t which) const {
  switch (which) {
    case 0: return FlagZ == 0;
    case 1: return FlagZ == 1;
    case 2: return FlagC == 0;
    case 3: return FlagC == 1;
    case 4: return FlagPV == 0;
    case 5: return FlagPV == 1;
    case 6: return FlagS == 0;
    default: return FlagS == 1;
  }
}

// PC is stepped by the page itself, since FD CB leaves it where it stands.
void LiteralMachine::Prefix() { PrefixState = PrefixState * 256 + CurOpcode; }

void LiteralMachine::Finish(int32_t cycles, int32_t pcStep, int32_t rStep) {
  Cycles = Add32(Cycles, cycles);
  PC = Add32(PC, pcStep);
  R = Add32(R, rStep);
  PrefixState = 0;
}

}  // namespace oracle
