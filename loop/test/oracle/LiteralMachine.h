// A slow, plain model of the machine: one instruction per pass, every rule written out where it applies.
// It exists to check the fast engine against and shares no code with it.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace oracle {

// Thrown where the emulator would show a message and end.
struct ProgramEnd {
  std::string text;
};

constexpr int32_t kMemImageSize = 0x3C001;
constexpr int32_t kFrameCycles = 62500;

// PC, R and the counters wrap at 32 bits, so their sums are made unsigned.
inline int32_t Add32(int32_t a, int32_t b) {
  return static_cast<int32_t>(static_cast<uint32_t>(a) + static_cast<uint32_t>(b));
}

inline int32_t Sub32(int32_t a, int32_t b) {
  return static_cast<int32_t>(static_cast<uint32_t>(a) - static_cast<uint32_t>(b));
}

struct LiteralMachine {
  LiteralMachine();

  // The processor.
  int32_t A = 0, B = 0, C = 0, D = 0, E = 0, H = 0, L = 0;
  int32_t A2 = 0, B2 = 0, C2 = 0, D2 = 0, E2 = 0, H2 = 0, L2 = 0;
  int32_t IX = 0, IY = 0, SP = 0, PC = 0;
  int32_t I = 0, R = 0, IM = 0, IFF1 = 0, IFF2 = 0;
  int32_t FlagS = 0, FlagZ = 0, FlagY = 0, FlagH = 0, FlagX = 0, FlagPV = 0, FlagN = 0, FlagC = 0;
  int32_t AltFlagS = 0, AltFlagZ = 0, AltFlagY = 0, AltFlagH = 0;
  int32_t AltFlagX = 0, AltFlagPV = 0, AltFlagN = 0, AltFlagC = 0;
  int32_t Halted = 0, IrqLine = 0, PrefixState = 0, CurOpcode = 0, IndexDisp = 0, UnDocEnabled = 0;
  std::array<int32_t, 16> BitValue{};
  std::array<uint8_t, 256> ParityTable{};

  // The run loop.
  uint8_t CpuRunning = 0;
  uint8_t BreakArmed = 0;
  int32_t Cycles = 0, FrameClock = 0, LastCursorIrq = 0;
  int64_t TotalCycles = 0;
  int32_t ToneItCounter = 0, PrevPc = 0;
  std::array<int32_t, 10> PcHistory{};
  int32_t ResetRequest = 0, NmiRequest = 0;
  bool BreakOnAddress = false;
  int32_t BreakAddress = 0;
  int32_t FrameInBlock = 0;
  int32_t FramesEnded = 0;

  // Memory.
  std::vector<uint8_t> MemImage;
  std::vector<std::vector<uint8_t>> MexPages;
  std::string CartName;

  // Ports and devices.
  std::array<uint8_t, 256> PortShadow{};
  std::array<int32_t, 19> CrtcRegs{};
  std::array<uint8_t, 16> KeyMatrix{};
  std::array<std::array<uint8_t, 257>, 4> PalHistory{};
  int32_t PalNextLine = 0;
  std::array<int32_t, 288> BorderLines{};
  std::array<uint8_t, 441> DacSlots{};
  int32_t LpenHigh = 0, LpenLow = 0;
  int32_t FdcTrack = 0, FdcSector = 0, FdcData = 0, FdcHwStatus = 0,
          FdcCount = 0;           // no disk is in the drives
  std::vector<uint8_t> SerialTx;  // nothing ever comes in
  std::vector<uint8_t> TapeIn;    // the samples to come
  size_t TapeNext = 0;
  int32_t TapeLastCycle = 0, TapeLevel = 0, TapeOutPos = 45;
  bool x32KB = false, xio0 = false, xio1 = false, xScreenBW = false;
  bool VideoReadNoise = false;
  bool ToneIntEnabled = true;

  // What the user would see.
  std::vector<std::string> List1;
  std::vector<std::string> Messages;
  std::string Label1;
  std::string Printed;
  int32_t Beeps = 0;
  std::function<void(LiteralMachine&)> OnFrameEnd;

  // Set-up, the pass and the interrupts: LiteralMachine.cpp.
  void PowerOn();
  void CpuInit();
  void CpuReset();
  void MachineReset();
  void Pass();
  void IrqEnter();
  void NmiEnter();
  void MissingOP();
  void FetchAndDispatch();
  void CursorInterrupt();
  void FrameEnd();
  void LPENRefresh();
  void PALchNull();
  void LoadPowerOnRegisters();

  // The bus: LiteralBus.cpp.
  int32_t MemRead(int32_t address);
  void MemWrite(int32_t address, int32_t value);
  int32_t PortIn(int32_t port);
  void PortOut(int32_t port, int32_t& value);
  void FloppyCommand(int32_t value);
  int32_t FloppyData();
  void FloppyOut(int32_t port, int32_t value);
  int32_t FloppyIn(int32_t port);
  int32_t ImageAt(int32_t offset) const;
  void StoreImage(int32_t offset, int32_t value);
  bool HasMex() const;
  int32_t MexAt(int32_t index) const;
  void StoreMex(int32_t index, int32_t value);
  int32_t ReadPage3(int32_t address);
  void WritePage3(int32_t address, int32_t value);
  void PALSet();
  void BorderSet(int32_t value);
  void ToneReload();
  void StoreSlot(int32_t byte);
  int32_t TapeRead();
  void TapeWriteEdge();
  void CrtcWrite(int32_t& value);
  void LogPort(char kind, int32_t port);

  // Arithmetic and the shared steps of the opcode routines: LiteralAlu.cpp.
  int32_t BitOf(int32_t v, int32_t n) const;
  int32_t SetBit(int32_t v, int32_t n) const;
  int32_t ResBit(int32_t v, int32_t n) const;
  void TestBit(int32_t v, int32_t n);
  int32_t Parity(int32_t v) const;
  void AddA(int32_t v);
  void AdcA(int32_t v);
  void SubA(int32_t v);
  void SbcA(int32_t v);
  void AndA(int32_t v);
  void XorA(int32_t v);
  void OrA(int32_t v);
  void LogicResult(int32_t result, int32_t half);
  void CpA(int32_t v);
  int32_t Inc8(int32_t v);
  int32_t Dec8(int32_t v);
  void ShiftFlags(int32_t result, int32_t carry);
  int32_t Rlc(int32_t v);
  int32_t Rrc(int32_t v);
  int32_t Rl(int32_t v);
  int32_t Rr(int32_t v);
  int32_t Sla(int32_t v);
  int32_t Sra(int32_t v);
  int32_t Sll(int32_t v);
  int32_t Srl(int32_t v);
  void AddHL(int32_t v);
  void AddIndex(int32_t& index, int32_t v);
  void AdcHL(int32_t v);
  void SbcHL(int32_t v);
  int32_t BC() const;
  int32_t DE() const;
  int32_t HL() const;
  void SetBC(int32_t v);
  void SetDE(int32_t v);
  void SetHL(int32_t v);
  int32_t Pair(int32_t which) const;  // BC, DE, HL, SP
  void SetPair(int32_t which, int32_t v);
  void StepPair(int32_t which, int32_t by);
  void IncSP();
  void DecSP();
  void Daa();
  void NibbleFlags(int32_t result);
  void Rrd();
  void Rld();
  void JumpRel(int32_t e);
  void Push2(int32_t hi, int32_t lo);
  int32_t Pop2();
  void RetFromStack();
  void CallTo(int32_t target);
  void RstTo(int32_t target);
  static int32_t SignByte(int32_t v);
  int32_t InFromC();
  int32_t FlagByte() const;
  void SetFlagByte(int32_t f);
  int32_t ReadWord(int32_t address);
  void WriteWord(int32_t address, int32_t value);
  int32_t ReadOperand(int32_t index);
  void WriteOperand(int32_t index, int32_t value);
  void Alu(int32_t which, int32_t v);
  int32_t Shift(int32_t which, int32_t v);
  bool Condition(int32_t which) const;
  void Prefix();
  void Finish(int32_t cycles, int32_t pcStep, int32_t rStep);

  // The opcode pages.
  void xx();  // LiteralBase.cpp
  void xxLow();
  void xxJumps(int32_t which);
  void xxIndirect(int32_t which);
  void xxAccumulator(int32_t which);
  void xxHigh();
  void xxPops(int32_t which);
  void xxOthers(int32_t which);
  void EnterPrefix();
  void xxCB();
  void xxDD();  // LiteralIndex.cpp
  void xxFD();
  void xxDDCB();
  void xxFDCB();
  void IndexPage(bool y);
  void IndexBitsPage(bool y, int32_t pcStep);
  bool IndexHalf(int32_t& index);
  void xxED();  // LiteralEd.cpp
  void MoveBlock(bool up, bool repeat);
  void CompareBlock(bool up, bool repeat);
  void OutBlock(bool up);
};

}  // namespace oracle
