// The DDCB and FDCB pages, each written out by itself.
#include "loop/test/oracle/LiteralMachine.h"

namespace oracle {

// PC is on the displacement here, and the opcode came from the byte after it.
void LiteralMachine::xxDDCB() {
  IndexDisp = SignByte(MemRead(PC));
  int32_t at = Add32(IX, IndexDisp);
  int32_t bit = (CurOpcode >> 3) & 7;
  switch (CurOpcode) {
    case 0x06:
      MemWrite(at, Rlc(MemRead(at)));
      Finish(23, 2, 1);
      return;
    case 0x0E:
      MemWrite(at, Rrc(MemRead(at)));
      Finish(23, 2, 1);
      return;
    case 0x16:
      MemWrite(at, Rl(MemRead(at)));
      Finish(23, 2, 1);
      return;
    case 0x1E:
      MemWrite(at, Rr(MemRead(at)));
      Finish(23, 2, 1);
      return;
    case 0x26:
      MemWrite(at, Sla(MemRead(at)));
      Finish(6, 2, 1);
      return;
    case 0x2E:
      MemWrite(at, Sra(MemRead(at)));
      Finish(6, 2, 1);
      return;
    case 0x3E:
      MemWrite(at, Srl(MemRead(at)));
      Finish(6, 2, 1);
      return;
    case 0x46:
    case 0x4E:
    case 0x56:
    case 0x5E:
    case 0x66:
    case 0x6E:
    case 0x76:
    case 0x7E:
      TestBit(MemRead(at), bit);
      Finish(20, 2, 1);
      return;
    case 0x86:
    case 0x8E:
    case 0x96:
    case 0x9E:
    case 0xA6:
    case 0xAE:
    case 0xB6:
    case 0xBE:
      MemWrite(at, ResBit(MemRead(at), bit));
      Finish(23, 2, 1);
      return;
    case 0xC6:
    case 0xCE:
    case 0xD6:
    case 0xDE:
    case 0xE6:
    case 0xEE:
    case 0xF6:
    case 0xFE:
      MemWrite(at, SetBit(MemRead(at), bit));
      Finish(23, 2, 1);
      return;
    case 0x30:
    case 0x31:
    case 0x32:
    case 0x33:
    case 0x34:
    case 0x35:
    case 0x36:
    case 0x37: {
      if (UnDocEnabled == 0) {
        MissingOP();
        return;
      }
      int32_t result = Sll(MemRead(at));
      MemWrite(at, result);
      if (CurOpcode != 0x36) {
        WriteOperand(CurOpcode & 7, result);
      }
      Finish(23, 2, 1);
      return;
    }
    default: break;
  }
  MissingOP();
}

// PC is still on the CB byte here: the displacement and the opcode follow it.
void LiteralMachine::xxFDCB() {
  IndexDisp = SignByte(MemRead(Add32(PC, 1)));
  int32_t at = Add32(IY, IndexDisp);
  int32_t bit = (CurOpcode >> 3) & 7;
  switch (CurOpcode) {
    case 0x06:
      MemWrite(at, Rlc(MemRead(at)));
      Finish(20, 3, 1);
      return;
    case 0x0E:
      MemWrite(at, Rrc(MemRead(at)));
      Finish(23, 3, 6);
      return;
    case 0x16:
      MemWrite(at, Rl(MemRead(at)));
      Finish(23, 3, 1);
      return;
    case 0x1E:
      MemWrite(at, Rr(MemRead(at)));
      Finish(23, 3, 1);
      return;
    case 0x26:
      MemWrite(at, Sla(MemRead(at)));
      Finish(23, 3, 1);
      return;
    case 0x2E:
      MemWrite(at, Sra(MemRead(at)));
      Finish(23, 3, 1);
      return;
    case 0x3E:
      MemWrite(at, Srl(MemRead(at)));
      Finish(23, 3, 1);
      return;
    case 0x46:
    case 0x4E:
    case 0x56:
    case 0x5E:
    case 0x66:
    case 0x6E:
    case 0x76:
    case 0x7E:
      TestBit(MemRead(at), bit);
      Finish(20, 3, 1);
      return;
    case 0x86:
    case 0x8E:
    case 0x96:
    case 0x9E:
    case 0xA6:
    case 0xAE:
    case 0xB6:
    case 0xBE:
      MemWrite(at, ResBit(MemRead(at), bit));
      Finish(20, 3, 1);
      return;
    case 0xC6:
    case 0xCE:
    case 0xD6:
    case 0xDE:
    case 0xE6:
    case 0xEE:
    case 0xF6:
    case 0xFE:
      MemWrite(at, SetBit(MemRead(at), bit));
      Finish(20, 3, 1);
      return;
    case 0x30:
    case 0x31:
    case 0x32:
    case 0x33:
    case 0x34:
    case 0x35:
    case 0x36:
    case 0x37: {
      if (UnDocEnabled == 0) {
        MissingOP();
        return;
      }
      int32_t result = Sll(MemRead(at));
      MemWrite(at, result);
      if (CurOpcode != 0x36) {
        WriteOperand(CurOpcode & 7, result);
      }
      Finish(23, 3, 1);
      return;
    }
    default: break;
  }
  MissingOP();
}

}  // namespace oracle
