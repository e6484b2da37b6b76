// The DDCB and FDCB pages.
#include "loop/test/oracle/LiteralMachine.h"

namespace oracle {

// pcStep leads from where PC stands behind the opcode. The pages differ in their T-states, and one of them in
// R.
void LiteralMachine::IndexBitsPage(bool y, int32_t pcStep) {
  const int32_t at = Add32(y ? IY : IX, IndexDisp);
  const int32_t bit = (CurOpcode >> 3) & 7;
  if (CurOpcode >= 0x30 && CurOpcode < 0x38) {
    if (UnDocEnabled == 0) return MissingOP();
    const int32_t result = Sll(MemRead(at));
    MemWrite(at, result);
    if (CurOpcode != 0x36) WriteOperand(CurOpcode & 7, result);
    return Finish(23, pcStep, 1);
  }
  if ((CurOpcode & 7) != 6) return MissingOP();
  switch (CurOpcode >> 6) {
    case 0:
      MemWrite(at, Shift(bit, MemRead(at)));
      if (y) return Finish(CurOpcode == 0x06 ? 20 : 23, pcStep, CurOpcode == 0x0E ? 6 : 1);
      return Finish(CurOpcode < 0x20 ? 23 : 6, pcStep, 1);
    case 1: TestBit(MemRead(at), bit); return Finish(20, pcStep, 1);
    case 2: MemWrite(at, ResBit(MemRead(at), bit)); return Finish(y ? 20 : 23, pcStep, 1);
    default: MemWrite(at, SetBit(MemRead(at), bit)); return Finish(y ? 20 : 23, pcStep, 1);
  }
}

// PC is on the displacement here, and the opcode came from the byte after it.
void LiteralMachine::xxDDCB() {
  IndexDisp = SignByte(MemRead(PC));
  IndexBitsPage(false, 2);
}

// PC is still on the CB byte here: the displacement and the opcode follow it.
void LiteralMachine::xxFDCB() {
  IndexDisp = SignByte(MemRead(Add32(PC, 1)));
  IndexBitsPage(true, 3);
}

}  // namespace oracle
