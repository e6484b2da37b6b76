#include "loop/test/Twins.h"

#include <limits>

#include "loop/RunLoop.h"
#include "machine/MachineInit.h"
#include "machine/Ports.h"

namespace quoll::test {

namespace {

struct CpuField {
  const char* name;
  int32_t Z80State::*here;
  int32_t oracle::LiteralMachine::*there;
  int32_t range;  // of the random start; 1 starts at 0
};

// clang-format off
const std::vector<CpuField> kCpuFields = {
    {"A", &Z80State::A, &oracle::LiteralMachine::A, 256},
    {"B", &Z80State::B, &oracle::LiteralMachine::B, 256},
    {"C", &Z80State::C, &oracle::LiteralMachine::C, 256},
    {"D", &Z80State::D, &oracle::LiteralMachine::D, 256},
    {"E", &Z80State::E, &oracle::LiteralMachine::E, 256},
    {"H", &Z80State::H, &oracle::LiteralMachine::H, 256},
    {"L", &Z80State::L, &oracle::LiteralMachine::L, 256},
    {"A2", &Z80State::A2, &oracle::LiteralMachine::A2, 256},
    {"B2", &Z80State::B2, &oracle::LiteralMachine::B2, 256},
    {"C2", &Z80State::C2, &oracle::LiteralMachine::C2, 256},
    {"D2", &Z80State::D2, &oracle::LiteralMachine::D2, 256},
    {"E2", &Z80State::E2, &oracle::LiteralMachine::E2, 256},
    {"H2", &Z80State::H2, &oracle::LiteralMachine::H2, 256},
    {"L2", &Z80State::L2, &oracle::LiteralMachine::L2, 256},
    {"I", &Z80State::I, &oracle::LiteralMachine::I, 256},
    {"R", &Z80State::R, &oracle::LiteralMachine::R, 256},
    {"IX", &Z80State::IX, &oracle::LiteralMachine::IX, 65536},
    {"IY", &Z80State::IY, &oracle::LiteralMachine::IY, 65536},
    {"SP", &Z80State::SP, &oracle::LiteralMachine::SP, 65536},
    {"PC", &Z80State::PC, &oracle::LiteralMachine::PC, 65536},
    {"FlagS", &Z80State::FlagS, &oracle::LiteralMachine::FlagS, 2},
    {"FlagZ", &Z80State::FlagZ, &oracle::LiteralMachine::FlagZ, 2},
    {"FlagY", &Z80State::FlagY, &oracle::LiteralMachine::FlagY, 2},
    {"FlagH", &Z80State::FlagH, &oracle::LiteralMachine::FlagH, 2},
    {"FlagX", &Z80State::FlagX, &oracle::LiteralMachine::FlagX, 2},
    {"FlagPV", &Z80State::FlagPV, &oracle::LiteralMachine::FlagPV, 2},
    {"FlagN", &Z80State::FlagN, &oracle::LiteralMachine::FlagN, 2},
    {"FlagC", &Z80State::FlagC, &oracle::LiteralMachine::FlagC, 2},
    {"AltFlagS", &Z80State::AltFlagS, &oracle::LiteralMachine::AltFlagS, 2},
    {"AltFlagZ", &Z80State::AltFlagZ, &oracle::LiteralMachine::AltFlagZ, 2},
    {"AltFlagY", &Z80State::AltFlagY, &oracle::LiteralMachine::AltFlagY, 2},
    {"AltFlagH", &Z80State::AltFlagH, &oracle::LiteralMachine::AltFlagH, 2},
    {"AltFlagX", &Z80State::AltFlagX, &oracle::LiteralMachine::AltFlagX, 2},
    {"AltFlagPV", &Z80State::AltFlagPV, &oracle::LiteralMachine::AltFlagPV, 2},
    {"AltFlagN", &Z80State::AltFlagN, &oracle::LiteralMachine::AltFlagN, 2},
    {"AltFlagC", &Z80State::AltFlagC, &oracle::LiteralMachine::AltFlagC, 2},
    {"IFF1", &Z80State::IFF1, &oracle::LiteralMachine::IFF1, 2},
    {"IFF2", &Z80State::IFF2, &oracle::LiteralMachine::IFF2, 2},
    {"IrqLine", &Z80State::IrqLine, &oracle::LiteralMachine::IrqLine, 2},
    {"Halted", &Z80State::Halted, &oracle::LiteralMachine::Halted, 2},
    {"UnDocEnabled", &Z80State::UnDocEnabled, &oracle::LiteralMachine::UnDocEnabled, 2},
    {"IM", &Z80State::IM, &oracle::LiteralMachine::IM, 1},
    {"PrefixState", &Z80State::PrefixState, &oracle::LiteralMachine::PrefixState, 1},
    {"CurOpcode", &Z80State::CurOpcode, &oracle::LiteralMachine::CurOpcode, 1},
    {"IndexDisp", &Z80State::IndexDisp, &oracle::LiteralMachine::IndexDisp, 1},
};

struct RunField {
  const char* name;
  int32_t RunState::*here;
  int32_t oracle::LiteralMachine::*there;
};

const std::vector<RunField> kRunFields = {
    {"Cycles", &RunState::Cycles, &oracle::LiteralMachine::Cycles},
    {"FrameClock", &RunState::FrameClock, &oracle::LiteralMachine::FrameClock},
    {"LastCursorIrq", &RunState::LastCursorIrq, &oracle::LiteralMachine::LastCursorIrq},
    {"ToneItCounter", &RunState::ToneItCounter, &oracle::LiteralMachine::ToneItCounter},
    {"PrevPc", &RunState::PrevPc, &oracle::LiteralMachine::PrevPc},
    {"ResetRequest", &RunState::ResetRequest, &oracle::LiteralMachine::ResetRequest},
    {"NmiRequest", &RunState::NmiRequest, &oracle::LiteralMachine::NmiRequest},
};
// clang-format on

Happening NextHappening(Dice& dice) {
  Happening h;
  if (Roll(dice, 3) != 0) return h;
  h.kind = static_cast<Happening::Kind>(1 + Roll(dice, Happening::Stop));
  h.a = Roll(dice, 65536);
  h.b = Roll(dice, 65536);
  return h;
}

// Both machines bear the same field names, so that one text serves for both.
template <class Cpu, class Run, class Pen>
void Apply(const Happening& h, Cpu& cpu, Run& run, std::array<uint8_t, 256>& ports,
           std::array<int32_t, 19>& crtc, std::array<uint8_t, 16>& keys, Pen& pen) {
  switch (h.kind) {
    case Happening::Nothing: break;
    case Happening::Reset: run.ResetRequest = h.a % 4 == 0; break;
    case Happening::Nmi: run.NmiRequest = h.a % 4 == 0; break;
    case Happening::Irq: cpu.IrqLine = 1; break;
    case Happening::CardIrq: ports[kStatusPort] &= static_cast<uint8_t>(~(1 << h.a % 4)); break;
    case Happening::CursorMoved:
      crtc[14] = h.a % 16, crtc[15] = h.b % 256, crtc[6] = h.a % 64, crtc[10] = h.b % 6;
      break;
    case Happening::KeyPressed:
      keys[static_cast<size_t>(h.a % 11)] ^= static_cast<uint8_t>(1 << h.b % 8);
      break;
    case Happening::PenMoved: pen.LpenHigh = h.a % 6, pen.LpenLow = h.b % 256; break;
    case Happening::ClockSet: run.ToneItCounter = h.a - 100; break;
    case Happening::Stop: run.CpuRunning = 0; break;
  }
}

// Instructions that make long, lively runs: interrupts served, blocks moved, ports written, halts.
const std::vector<std::vector<uint8_t>>& Snippets() {
  static const std::vector<std::vector<uint8_t>> kSnippets = {
      {0xFB},
      {0xFB, 0x76},
      {0x76},
      {0xED, 0xB0},
      {0xED, 0xB8},
      {0xED, 0xB1},
      {0xED, 0xB9},
      {0xD3, 0x07},
      {0xD3, 0x06},
      {0xD3, 0x60},
      {0xD3, 0x00},
      {0xD3, 0x71},
      {0xD3, 0x70},
      {0xDB, 0x5B},
      {0xDB, 0x59},
      {0xDB, 0x5D},
      {0xD3, 0x50},
      {0xD3, 0x57},
      {0xD3, 0x5B},
      {0xD3, 0x05},
      {0xD3, 0x04},
      {0xD3, 0x02},
      {0xD3, 0x03},
      {0xD3, 0x0F},
      {0x18, 0xFE},
      {0x10, 0xFE},
      {0x01, 0x00, 0x04, 0xED, 0xB0},
      {0x21, 0x00, 0x40, 0x11, 0x00, 0x60},
      {0xED, 0x56},
      {0xF3},
      {0xED, 0x45},
      {0xFD, 0xF0},
      {0xDA, 0x00, 0x40},
      {0x20, 0xF0},
      {0x38, 0xE0},
      {0xC9},
      {0xE5},
      {0xE1},
      {0xF5},
      {0xF1},
      {0xD9},
      {0x08},
      {0xDD, 0x21, 0xF0, 0xFF},
      {0xFD, 0x21, 0x05, 0x00},
      {0x31, 0x01, 0x00},
      {0x31, 0x00, 0x7F},
      {0x31, 0x00, 0x70},
      {0x3E, 0xB0},
      {0x3E, 0x10, 0xD3, 0x02},
      {0xCD, 0x00, 0x41},
      {0xED, 0x5F},
      {0xED, 0x4F},
  };
  return kSnippets;
}

void FillWithSnippets(Dice& dice, std::vector<uint8_t>& image) {
  size_t at = 0;
  while (at < image.size()) {
    if (Roll(dice, 3) == 0) {
      for (const uint8_t byte :
           Snippets()[static_cast<size_t>(Roll(dice, static_cast<int32_t>(Snippets().size())))]) {
        if (at < image.size()) image[at++] = byte;
      }
    } else {
      image[at++] = static_cast<uint8_t>(dice());
    }
  }
  // The interrupt's entry in every place from which it may be reached: acknowledge, enable, return.
  const std::vector<uint8_t> handler = {0xF5, 0xD3, 0x07, 0xF1, 0xFB, 0xC9};
  for (const size_t base : {0x00000U, 0x0C000U, 0x14000U, 0x18000U}) {
    std::copy(handler.begin(), handler.end(), image.begin() + static_cast<ptrdiff_t>(base + 0x38));
  }
}

}  // namespace

Twins::Twins() {
  machine->programFolder = "/nonexistent";
  host.ticks = 1000;
  host.frameTicks = 20;
  host.framesAllowed = std::numeric_limits<int>::max();
  host.onPump = [this](Machine& m) {
    Apply(NextHappening(happenings), m.z80, m.run, m.PortShadow, m.crtc.CrtcRegs, m.keyboard.KeyMatrix,
          m.pen);
    if (--framesLeft <= 0) m.run.CpuRunning = 0;
  };
  model.OnFrameEnd = [this](oracle::LiteralMachine& m) {
    Apply(NextHappening(modelHappenings), m, m, m.PortShadow, m.CrtcRegs, m.KeyMatrix, m);
    if (--modelFramesLeft <= 0) m.CpuRunning = 0;
  };
}

void Twins::RandomizeCpu(Dice& dice) {
  for (const CpuField& field : kCpuFields)
    machine->z80.*field.here = model.*field.there = Roll(dice, field.range);
}

void Twins::Poke(int32_t offset, uint8_t byte) {
  machine->MemImage[static_cast<size_t>(offset)] = model.MemImage[static_cast<size_t>(offset)] = byte;
}

bool Twins::Pass() {
  model.CpuRunning = 0;
  machine->run.CpuRunning = 0;
  const bool modelEnds = Ends([&] { model.Pass(); });
  const bool machineEnds = Ends([&] { RunLoop(*machine); });
  EXPECT_EQ(machineEnds, modelEnds);
  return modelEnds || machineEnds;
}

void Twins::Randomize(Dice& dice) {
  if (Roll(dice, 4) == 0) {
    for (uint8_t& byte : model.MemImage) byte = static_cast<uint8_t>(dice());
  } else {
    FillWithSnippets(dice, model.MemImage);
  }
  Machine& m = *machine;
  std::ranges::copy(model.MemImage, m.MemImage.begin());
  Z80State& z = m.z80;
  RandomizeCpu(dice);
  z.IM = model.IM = Roll(dice, 20) == 0 ? Roll(dice, 3) : 1;
  z.UnDocEnabled = model.UnDocEnabled = Roll(dice, 8) != 0;
  if (Roll(dice, 12) == 0) z.PC = model.PC = Roll(dice, 0x30000) - 0x2000;
  if (Roll(dice, 40) == 0) z.PC = model.PC = static_cast<int32_t>(dice());
  constexpr std::array<int32_t, 7> kPrefixes = {0, 0xCB, 0xDD, 0xED, 0xFD, 0xDDCB, 0xFDCB};
  z.PrefixState = model.PrefixState = Roll(dice, 10) == 0 ? kPrefixes[static_cast<size_t>(Roll(dice, 7))] : 0;

  for (uint8_t& port : m.PortShadow) port = static_cast<uint8_t>(dice());
  m.PortShadow[kStatusPort] |= static_cast<uint8_t>(Roll(dice, 4) != 0 ? 0x1F : 0x0F);
  if (Roll(dice, 2) == 0) m.PortShadow[2] = 0xB0;
  if (Roll(dice, 4) != 0) m.PortShadow[3] &= 0x3F;
  model.PortShadow = m.PortShadow;
  for (int32_t& reg : m.crtc.CrtcRegs) reg = Roll(dice, 256);
  m.crtc.CrtcRegs[6] = Roll(dice, 128);
  m.crtc.CrtcRegs[10] = Roll(dice, 6);
  m.crtc.CrtcRegs[14] = Roll(dice, 64);
  m.crtc.CrtcRegs[18] = Roll(dice, 32);
  model.CrtcRegs = m.crtc.CrtcRegs;

  m.run.FrameClock = model.FrameClock = Roll(dice, 62501);
  m.run.Cycles = model.Cycles = Roll(dice, 62501);
  m.run.LastCursorIrq = model.LastCursorIrq = Roll(dice, 62501);
  m.run.ToneItCounter = model.ToneItCounter = Roll(dice, 70000) - 10;
  m.mixer.FrameInBlock = model.FrameInBlock = Roll(dice, 7);
  m.screen.x32KB = model.x32KB = Roll(dice, 6) == 0;
  m.screen.xio0 = model.xio0 = Roll(dice, 2) == 0;
  m.screen.xio1 = model.xio1 = Roll(dice, 2) == 0;
  m.screen.xScreenBW = model.xScreenBW = Roll(dice, 2) == 0;
  // A piece of tape, which may end on the way, and an edge some time ago.
  m.tape.input.aheadCount = static_cast<uint32_t>(Roll(dice, TapeInput::kChunk + 1));
  for (uint8_t& sample : m.tape.input.ahead) sample = static_cast<uint8_t>(dice());
  model.TapeIn.assign(m.tape.input.ahead.begin(), m.tape.input.ahead.begin() + m.tape.input.aheadCount);
  m.tape.TapeLastCycle = model.TapeLastCycle = Roll(dice, 62600);
  if (Roll(dice, 2) == 0) m.tape.TapeLevel = Tape::kLow, model.TapeLevel = 0x1E;
  m.VideoReadNoise = model.VideoReadNoise = Roll(dice, 10) == 0;
  m.tvcmon.Check3 = model.ToneIntEnabled = Roll(dice, 6) != 0;
  if (Roll(dice, 12) == 0) {
    m.CartName = model.CartName = kMexCartridge;
    m.MexPages.resize(kMexPageCount);
    model.MexPages.assign(kMexPageCount, std::vector<uint8_t>(sizeof(MexPage)));
    for (size_t page = 0; page < kMexPageCount; ++page) {
      // Every page a copy of some RAM, shifted by its number.
      for (size_t i = 0; i < sizeof(MexPage); ++i) {
        m.MexPages[page][i] = model.MexPages[page][i] = m.MemImage[i * 3 + page];
      }
    }
  }
  const uint64_t seed = dice();
  happenings.seed(seed);
  modelHappenings.seed(seed);
}

void Twins::ExpectCpuEqual(const std::string& what) const {
  const Machine& m = *machine;
  for (const CpuField& field : kCpuFields) {
    EXPECT_EQ(m.z80.*field.here, model.*field.there) << field.name << ' ' << what;
  }
  for (const RunField& field : kRunFields) {
    EXPECT_EQ(m.run.*field.here, model.*field.there) << field.name << ' ' << what;
  }
}

void Twins::ExpectEqual(const std::string& what) const {
  const Machine& m = *machine;
  ExpectCpuEqual(what);
  EXPECT_EQ(m.run.CpuRunning, model.CpuRunning) << what;
  EXPECT_EQ(m.run.TotalCycles, model.TotalCycles) << what;
  for (size_t i = 0; i < PcTrail::kShown; ++i) {
    EXPECT_EQ(m.run.PcHistory[i], model.PcHistory[i]) << "PcHistory " << i << ' ' << what;
  }
  EXPECT_TRUE(std::ranges::equal(m.MemImage, model.MemImage)) << "MemImage " << what;
  for (size_t page = 0; page < m.MexPages.size(); ++page) {
    EXPECT_TRUE(std::ranges::equal(m.MexPages[page], model.MexPages[page]))
        << "MexPages " << page << ' ' << what;
  }
  EXPECT_EQ(m.PortShadow, model.PortShadow) << what;
  EXPECT_EQ(m.crtc.CrtcRegs, model.CrtcRegs) << what;
  EXPECT_EQ(m.keyboard.KeyMatrix, model.KeyMatrix) << what;
  EXPECT_EQ(m.palette.PalHistory, model.PalHistory) << what;
  EXPECT_EQ(m.palette.PalNextLine, model.PalNextLine) << what;
  EXPECT_EQ(m.palette.BorderLines, model.BorderLines) << what;
  EXPECT_EQ(m.tone.DacSlots, model.DacSlots) << what;
  EXPECT_EQ(m.tape.input.next, model.TapeNext) << what;
  EXPECT_EQ(m.tape.TapeLastCycle, model.TapeLastCycle) << what;
  EXPECT_EQ(m.tape.TapeLevel, model.TapeLevel) << what;
  EXPECT_EQ(m.tape.TapeOutPos, model.TapeOutPos) << what;
  EXPECT_EQ(m.mixer.FrameInBlock, model.FrameInBlock) << what;
  EXPECT_EQ(m.screen.Label1, model.Label1) << what;
  EXPECT_EQ(m.printer.printed.size(), model.Printed.size()) << what;
  EXPECT_EQ(m.floppy.FdcTrack, model.FdcTrack) << what;
  EXPECT_EQ(m.floppy.FdcSector, model.FdcSector) << what;
  EXPECT_EQ(m.floppy.FdcData, model.FdcData) << what;
  EXPECT_EQ(m.floppy.FdcHwStatus, model.FdcHwStatus) << what;
  EXPECT_EQ(m.floppy.FdcCount, model.FdcCount) << what;
  EXPECT_TRUE(std::ranges::equal(m.serial.SerialTx, model.SerialTx)) << what;
  EXPECT_EQ(host.messages.size(), model.Messages.size()) << what;
  ASSERT_EQ(m.screen.List1.count, model.List1.size()) << what;
  for (uint32_t i = 0; i < m.screen.List1.count; ++i)
    EXPECT_EQ(m.screen.List1.Entry(i), model.List1[i]) << what;
}

}  // namespace quoll::test
