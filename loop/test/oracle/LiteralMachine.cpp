// The pass of the run loop, the interrupts, and the states after power-on and reset.
#include "loop/test/oracle/LiteralMachine.h"

namespace oracle {

LiteralMachine::LiteralMachine() { PowerOn(); }

// Everything a new machine has, without the ROM files: those are the caller's bytes to fill in.
void LiteralMachine::PowerOn() {
  MemImage.assign(static_cast<size_t>(kMemImageSize), 0);
  PortShadow.fill(0);
  KeyMatrix.fill(0);
  CpuInit();
  CurOpcode = 0;
  Cycles = 0;
  FrameClock = 0;
  PrefixState = 0;
  ResetRequest = 0;
  UnDocEnabled = 1;
}

void LiteralMachine::LoadPowerOnRegisters() {
  A = B = C = D = E = H = L = 255;
  A2 = B2 = C2 = D2 = E2 = H2 = L2 = 255;
  IX = IY = SP = 65535;
  I = R = PC = 0;
  IFF1 = IFF2 = IM = 0;
  FlagS = FlagZ = FlagY = FlagH = FlagX = FlagPV = FlagN = FlagC = 1;
  AltFlagS = AltFlagZ = AltFlagY = AltFlagH = AltFlagX = AltFlagPV = AltFlagN = AltFlagC = 1;
}

void LiteralMachine::CpuInit() {
  for (size_t i = 0; i < 16; i++) {
    BitValue[i] = 1 << i;
  }
  for (size_t v = 0; v < 256; v++) {
    int32_t count = 0;
    for (size_t bit = 0; bit < 8; bit++) {
      if ((v & (size_t{1} << bit)) != 0) {
        count++;
      }
    }
    ParityTable[v] = count % 2 == 0 ? 1 : 0;
  }
  LoadPowerOnRegisters();
}

void LiteralMachine::CpuReset() {
  LoadPowerOnRegisters();
  Halted = 0;
  ResetRequest = 0;
  IrqLine = 0;
  NmiRequest = 0;
  Cycles = Add32(Cycles, 3);
}

// Memory and the undocumented switch outlive a reset.
void LiteralMachine::MachineReset() {
  if (Label1 == "Unknown Opcode!") Label1.clear();
  PortShadow.fill(0);
  KeyMatrix.fill(0);
  PortShadow[0x59] = 0xBF;
  PortShadow[5] = 0xFF;
  PortShadow[2] = 0;
  CrtcRegs.fill(0);
  CrtcRegs[10] = 32;
  CpuReset();
  PortShadow[2] = 0;
  PortShadow[0x18] = 0;
}

void LiteralMachine::MissingOP() {
  Label1 = "Unknown Opcode!";
  PrefixState = 0;
  PC = Add32(PC, 1);
}

// IrqLine stays set here: only a write to port 7 or a reset takes it back.
void LiteralMachine::IrqEnter() {
  int32_t mode = IM;
  IFF1 = 0;
  IFF2 = 0;
  if (mode != 1) {
    Messages.push_back("IM MODE 0 or 2 not allowed!");
    CpuRunning = 0;
    return;
  }
  Push2((PC >> 8) & 0xFF, PC & 0xFF);
  PC = 0x38;
  Cycles = Add32(Cycles, 11);
  R = Add32(R, 1);
}

// NmiRequest stays set here too, so the NMI comes again after every pass until a reset.
void LiteralMachine::NmiEnter() {
  IFF2 = IFF1;
  IFF1 = 0;
  Push2((PC >> 8) & 0xFF, PC & 0xFF);
  PC = 0x66;
  Cycles = Add32(Cycles, 11);
  R = Add32(R, 1);
}

// A prefix leaves PrefixState above 0, and the next byte follows at once without any interrupt between.
void LiteralMachine::FetchAndDispatch() {
  do {
    CurOpcode = MemRead(PC);
    if (PrefixState == 0) {
      xx();
    } else if (PrefixState == 0xCB) {
      xxCB();
    } else if (PrefixState == 0xED) {
      xxED();
    } else if (PrefixState == 0xDD) {
      xxDD();
    } else if (PrefixState == 0xFD) {
      xxFD();
    } else if (PrefixState == 0xFDCB) {
      CurOpcode = MemRead(Add32(PC, 2));
      xxFDCB();
    } else if (PrefixState == 0xDDCB) {
      CurOpcode = MemRead(Add32(PC, 1));
      xxDDCB();
    } else {
      throw ProgramEnd{std::to_string(PrefixState) + "=Unknown prefix"};
    }
  } while (PrefixState > 0);
}

// The frame is taken as a strip of character positions of 13.6 T-states each.
void LiteralMachine::CursorInterrupt() {
  int32_t clock = FrameClock;
  int32_t product = static_cast<int32_t>(static_cast<uint32_t>(clock) * 100u);
  int32_t position = product / 1360;
  int32_t cursor = Add32(Add32((CrtcRegs[14] & 0x0F) * 256, CrtcRegs[15]), 0x188);
  bool insideRows = clock > 0x188 && clock < int64_t{CrtcRegs[6]} * 1360;
  bool sinceLast = Sub32(clock, LastCursorIrq) > 0;
  int32_t distance = Sub32(position, cursor);
  bool atCursor = distance >= 0 && distance < 2;
  bool allowed = CrtcRegs[10] < 4;
  if (insideRows && sinceLast && atCursor && allowed) {
    PortShadow[0x59] = static_cast<uint8_t>(PortShadow[0x59] & 0xEF);
    LastCursorIrq = clock;
  }
}

void LiteralMachine::LPENRefresh() {
  CrtcRegs[16] = LpenHigh;
  CrtcRegs[17] = LpenLow;
}

void LiteralMachine::PALchNull() { PalNextLine = 0; }

void LiteralMachine::FrameEnd() {
  FrameClock = Sub32(FrameClock, kFrameCycles);
  LastCursorIrq = FrameClock;
  TotalCycles += kFrameCycles;
  FramesEnded++;
  LPENRefresh();

  // Of the redraw only the two histories matter to the machine.
  for (int32_t line = PalNextLine < 0 ? 0 : PalNextLine; line <= 255; line++) {
    for (size_t pen = 0; pen < 4; pen++) {
      PalHistory[pen][static_cast<size_t>(line)] = PortShadow[0x60 + pen];
    }
  }
  int32_t lastColour = BorderLines[287];
  BorderLines.fill(lastColour);
  PALchNull();
  if (OnFrameEnd) {
    OnFrameEnd(*this);
  }

  if (FrameInBlock < 5) {
    DacSlots.fill(0);
    FrameInBlock++;
  }
  if (FrameInBlock == 5) {
    FrameInBlock = 0;
  }
}

void LiteralMachine::Pass() {
  // 1. The start values of the pass.
  int32_t startCycles = Cycles;
  PrevPc = PC;

  // 2. One whole instruction.
  FetchAndDispatch();

  // 3.
  R = R & 0xFF;

  // 4. and 5. Requests come before the interrupt line and shut it out for this pass.
  if (ResetRequest != 0 || NmiRequest != 0) {
    if (Halted != 0) {
      PC = Add32(PC, 1);
      Halted = 0;
    }
    if (ResetRequest != 0) {
      MachineReset();
    } else {
      NmiEnter();
    }
  } else if ((IFF1 & IrqLine) != 0) {
    if (Halted != 0) {
      PC = Add32(PC, 1);
      Halted = 0;
    }
    IrqEnter();
  }

  // 6. The tone counter.
  ToneItCounter = Sub32(ToneItCounter, Sub32(Cycles, startCycles));
  if (ToneItCounter < 1) {
    ToneReload();
    if (ToneIntEnabled && (PortShadow[5] & 0x20) != 0) {
      PortShadow[0x59] = static_cast<uint8_t>(PortShadow[0x59] & 0xEF);
    }
  }

  // 7. and 8. The frame clock and the cursor.
  FrameClock = Add32(FrameClock, Sub32(Cycles, startCycles));
  CursorInterrupt();

  // 9. Any of the five active-low flags pulls the line.
  if ((PortShadow[0x59] & 0x1F) != 0x1F && IFF1 == 1) {
    IrqLine = 1;
  }

  // 10.
  if (FrameClock > kFrameCycles) {
    FrameEnd();
  }

  // 11.
  if (Cycles > kFrameCycles) {
    Cycles = Sub32(Cycles, kFrameCycles);
  }

  // 12.
  if (BreakArmed != 0 && BreakOnAddress && BreakAddress == PC) {
    CpuRunning = 0;
  }

  // 13.
  for (size_t i = 0; i < 9; i++) {
    PcHistory[i] = PcHistory[i + 1];
  }
  PcHistory[9] = PrevPc;
}

}  // namespace oracle
