#include "machine/MachineInit.h"

#include <algorithm>
#include <memory>

#include "core/Wrap.h"
#include "machine/Machine.h"
#include "machine/Ports.h"
#include "machine/RomFiles.h"

namespace quoll {

namespace {

constexpr size_t kFloppyRomSize = 0x4000;

void LoadSystemRom(Machine& m, const char* name, int32_t offset) {
  if (!ReadRomFile(m.programFolder, name, Region(m, offset, kRomSize)))
    EndProgram(m, "Rom File error: ", "Error");
}

void LoadCardRom(Machine& m, const std::string& folder, const std::string& name, std::span<uint8_t> region) {
  if (!ReadRomFile(folder, name, region)) EndProgram(m, "CRT Rom File error: ", "Error");
}

void LoadCards(Machine& m) {
  if (m.screen.xio0) LoadCardRom(m, m.programFolder, "hbf.rom", Region(m, kHbf, kFloppyRomSize));
  if (m.screen.xio2) {
    std::array<uint8_t, kSoundRomSize> rom{};
    LoadCardRom(m, m.programFolder, kSoundRom, rom);
    std::ranges::copy(std::span(rom).last(kRomSize), Region(m, kIom2, kRomSize).begin());
  }
  if (m.screen.xio3) LoadCardRom(m, m.programFolder, "io3.rom", Region(m, kIom3, kRomSize));
}

void LoadCartridge(Machine& m) {
  m.MexPages.clear();
  const std::string& folder = m.cartFolder.empty() ? m.programFolder : m.cartFolder;
  if (m.CartName.empty()) {
    std::ranges::fill(Region(m, kCart, sizeof(MexPage)), uint8_t{0});
  } else if (m.CartName == kMexCartridge) {
    std::vector<uint8_t> file(kMexPageCount * sizeof(MexPage));
    LoadCardRom(m, folder, m.CartName, file);
    m.MexPages.resize(kMexPageCount);
    for (size_t page = 0; page < kMexPageCount; ++page) {
      std::ranges::copy(std::span(file).subspan(page * sizeof(MexPage), sizeof(MexPage)),
                        m.MexPages[page].begin());
    }
  } else {
    LoadCardRom(m, folder, m.CartName, Region(m, kCart, sizeof(MexPage)));
  }
}

// Nothing else would ever take the texts away.
void ForgetUnknownOpcode(TScreen& screen) {
  if (screen.Label1 == kUnknownOpcode) screen.Label1.clear();
  if (screen.window.caption == kUnknownOpcode) screen.window.caption = kProgramName;
}

}  // namespace

void MachineInit(Machine& m) {
  m.MemImage.fill(0);
  m.PortShadow.fill(0);
  KeyboardClear(m.keyboard);
  CpuInit(m.z80);
  SoundCardInit(m.card);
  // Always open at first, although nothing plays it until the user has listed dumps and chosen one.
  SidTuneOpenFile(m.card.tune, SidTuneFormat::Sidx, "ninja.txt");
  m.z80.CurOpcode = 0;
  m.z80.PrefixState = 0;
  m.z80.UnDocEnabled = 1;
  m.run.Cycles = 0;
  m.run.FrameClock = 0;
  m.run.ResetRequest = 0;
  const bool basic22 = m.screen.xBasic;
  LoadSystemRom(m, basic22 ? "TVC22_D6.rom" : "TVC12_D4.rom", kSysLow);
  LoadSystemRom(m, basic22 ? "TVC22_D4.rom" : "TVC12_D3.rom", kSysHigh);
  LoadSystemRom(m, basic22 ? "TVC22_D7.rom" : "TVC12_D7.rom", kExtHigh);
  LoadCards(m);
  LoadCartridge(m);
  RenewPages(m);
}

void RebuildMachine(Machine& m) {
  MachineInit(m);
  MachineReset(m);
}

void CpuReset(Machine& m) {
  CpuInit(m.z80);
  m.z80.Halted = 0;
  m.z80.IrqLine = 0;
  m.run.ResetRequest = 0;
  m.run.NmiRequest = 0;
  m.run.Cycles = WrappingAdd(m.run.Cycles, 3);
}

void MachineReset(Machine& m) {
  ForgetUnknownOpcode(m.screen);
  m.PortShadow.fill(0);
  KeyboardClear(m.keyboard);
  m.PortShadow[kStatusPort] = 0xBF;
  m.PortShadow[5] = 0xFF;
  CrtcReset(m.crtc);
  SoundCardReset(m.card);
  CpuReset(m);
  RenewPages(m);
}

}  // namespace quoll
