// The main window's menu: what stands in it and what each entry does to the machine.
#include "forms/TScreen.h"

#include <cstddef>
#include <utility>

#include "machine/Machine.h"
#include "machine/MachineInit.h"
#include "loop/RunLoop.h"
#include "media/Cartridge.h"
#include "media/Pictures.h"

namespace quoll {

namespace {

using Tick = bool TScreen::*;

void FocusPicture(Machine& m) { m.screen.focusPicD = true; }

template <Tick kTick>
void Toggle(Machine& m) {
  m.screen.*kTick = !(m.screen.*kTick);
}

template <Tick kTick>
void ToggleAndFocus(Machine& m) {
  Toggle<kTick>(m);
  FocusPicture(m);
}

// Memory model and system ROMs are built into the machine, so a change makes a new one.
template <Tick kTick>
void ToggleModel(Machine& m) {
  Toggle<kTick>(m);
  MachineInit(m);
  MachineReset(m);
  FocusPicture(m);
}

// As above. The warm-start mark is spoilt first, although the new machine's memory is empty anyway.
template <Tick kTick>
void ToggleCard(Machine& m) {
  Toggle<kTick>(m);
  m.MemImage[kWarmStartMark] = 0xFF;
  CpuReset(m);
  MachineInit(m);
  MachineReset(m);
  FocusPicture(m);
}

void xUnDoc_Click(Machine& m) {
  Toggle<&TScreen::xUnDoc>(m);
  m.z80.UnDocEnabled = m.screen.xUnDoc ? 1 : 0;
}

// Taking the tick off runs the machine on this very stack: what follows the loop is done when it ends.
void xS1_Click(Machine& m) {
  Toggle<&TScreen::xS1>(m);
  if (m.screen.xS1) {
    m.run.CpuRunning = 0;
  } else {
    m.run.CpuRunning = 1;
    RunLoop(m);
  }
  m.screen.xS2 = false;
  m.screen.xS4 = false;
  m.screen.xS3 = true;
  FocusPicture(m);
}

// The three speeds differ in their ticks only: the sound blocks alone set the machine's pace. Choosing
// one takes the tick off "Pause" without starting the machine.
void xS2_Click(Machine& m) {
  Toggle<&TScreen::xS2>(m);
  m.screen.xS1 = m.screen.xS3 = m.screen.xS4 = false;
  FocusPicture(m);
}

void xS3_Click(Machine& m) {
  Toggle<&TScreen::xS3>(m);
  m.screen.xS1 = m.screen.xS2 = m.screen.xS4 = false;
  m.cpumon.HScroll1 = 2;
  FocusPicture(m);
}

void xS4_Click(Machine& m) {
  Toggle<&TScreen::xS4>(m);
  m.screen.xS1 = m.screen.xS2 = m.screen.xS3 = false;
  m.cpumon.HScroll1 = 4;
  FocusPicture(m);
}

void xLoadCAS_Click(Machine& m) { OpenFilePanel(m, kOpenCaption, "*.cas"); }
void xSaveCAS_Click(Machine& m) { OpenFilePanel(m, kSaveCaption, "*.cas"); }
void xLoadSnap_Click(Machine& m) { OpenFilePanel(m, kOpenCaption, "*.tvs"); }
void xSaveSnap_Click(Machine& m) { OpenFilePanel(m, kSaveCaption, "*.tvs"); }
void xLoadCRT_Click(Machine& m) { OpenFilePanel(m, kOpenCaption, "*.crt"); }
void xLoadTim_Click(Machine& m) { OpenFilePanel(m, kOpenCaption, "*.tim"); }

void xUnloadCRT_Click(Machine& m) {
  m.panel.visible = false;
  UnloadCRT(m);
  FocusPicture(m);
}

// These tell the user themselves when a file can't be written or read.
void xSvaMEX4_Click(Machine& m) { SaveMex4mb(m); }
void xSaveScreen_Click(Machine& m) { SaveScreen(m); }
void xLoadScreen_Click(Machine& m) { LoadScreen(m); }
void xMemDump_Click(Machine& m) { MemoryDump(m); }

template <WindowState Windows::*kWindow>
void Show(Machine& m) {
  ShowWindow(m.windows.*kWindow);
}

constexpr std::array kMenu{
    MenuItem{"File", "xLoadCAS", "Load cas", nullptr, xLoadCAS_Click},
    MenuItem{"File", "xSaveCAS", "Save cas", nullptr, xSaveCAS_Click},
    MenuItem{"File", "xLoadSnap", "Load Snap", nullptr, xLoadSnap_Click},
    MenuItem{"File", "xSaveSnap", "Save Snap", nullptr, xSaveSnap_Click},
    MenuItem{"File", "xLoadCRT", "Load CRT", nullptr, xLoadCRT_Click},
    MenuItem{"File", "xUnloadCRT", "Unload", nullptr, xUnloadCRT_Click},
    MenuItem{"File", "xSvaMEX4", "Save MEX4MB", nullptr, xSvaMEX4_Click},
    MenuItem{"File", "xio0", "I/O card 0: Floppy", &TScreen::xio0, ToggleCard<&TScreen::xio0>},
    MenuItem{"File", "xio1", "I/O card 1: RS232", &TScreen::xio1, ToggleCard<&TScreen::xio1>},
    MenuItem{"File", "xio2", "I/O card 2: SoundCard", &TScreen::xio2, ToggleCard<&TScreen::xio2>},
    MenuItem{"File", "xio3", "I/O card 3: (IO3.rom)", &TScreen::xio3, ToggleCard<&TScreen::xio3>},
    MenuItem{"File", "xSaveScreen", "Save Screen", nullptr, xSaveScreen_Click},
    MenuItem{"File", "xLoadScreen", "Load Screen", nullptr, xLoadScreen_Click},
    MenuItem{"File", "xLoadTim", "Load Tim", nullptr, xLoadTim_Click},
    MenuItem{"File", "xMemDump", "Memory dump", nullptr, xMemDump_Click},
    MenuItem{"File", "xReset", "Reset", nullptr, xReset_Click},
    MenuItem{"File", "xReset2", "Reset2", nullptr, xReset2_Click},
    MenuItem{"Media", "xdiskload", "Disk Load"},
    MenuItem{"Media", "xTapeLoad", "Tape Load", nullptr, Show<&Windows::TTape>},
    MenuItem{"Options", "xFullsc", "FullScreen", nullptr, Show<&Windows::FScreen>},
    MenuItem{"Options", "xScreenBW", "Screen BW", &TScreen::xScreenBW, Toggle<&TScreen::xScreenBW>},
    MenuItem{"Options", "xScreenDIB", "Screen DIB", &TScreen::xScreenDIB, Toggle<&TScreen::xScreenDIB>},
    MenuItem{"Options", "xScreenNoise", "Screen noise", &TScreen::xScreenNoise,
             Toggle<&TScreen::xScreenNoise>},
    MenuItem{"Options", "xSound", "Sound", &TScreen::xSound, ToggleAndFocus<&TScreen::xSound>},
    MenuItem{"Options", "xNoError", "Ignore CPU error", &TScreen::xNoError,
             ToggleAndFocus<&TScreen::xNoError>},
    MenuItem{"Options", "xUnDoc", "Undocumented", &TScreen::xUnDoc, xUnDoc_Click},
    MenuItem{"Options", "x32KB", "32K", &TScreen::x32KB, ToggleModel<&TScreen::x32KB>},
    MenuItem{"Options", "xBasic", "Basic 2.2", &TScreen::xBasic, ToggleModel<&TScreen::xBasic>},
    MenuItem{"Speed", "xS1", "Pause", &TScreen::xS1, xS1_Click},
    MenuItem{"Speed", "xS2", "0.5x", &TScreen::xS2, xS2_Click},
    MenuItem{"Speed", "xS3", "Normal", &TScreen::xS3, xS3_Click},
    MenuItem{"Speed", "xS4", "2x", &TScreen::xS4, xS4_Click},
    MenuItem{"Speed", "xS5", "4x", &TScreen::xS5},
    MenuItem{"Speed", "xS6", "Max", &TScreen::xS6, Toggle<&TScreen::xS6>},
    MenuItem{"View", "xTVCmon", "TVC monitor", nullptr, Show<&Windows::TVCmon>},
    MenuItem{"View", "xDebug", "Z80 monitor"},
    MenuItem{"View", "xAsse", "Assembler"},
    MenuItem{"View", "xPrinter", "Printer"},
    MenuItem{"View", "xSerial", "Serial"},
    MenuItem{"View", "xsaa", "SAA1099"},
    MenuItem{"View", "xSN76", "SN76489"},
    MenuItem{"View", "xYM", "YM3812"},
    MenuItem{"View", "xYM2", "YM2413"},
    MenuItem{"View", "xSID", "SID6581"},
    MenuItem{"View", "xAY3", "AY-3-8910"},
    MenuItem{"View", "xErrorSim", "ErrorSim", nullptr, Show<&Windows::ErrorSim>},
    MenuItem{"View", "xTools", "Tools"},
    MenuItem{"View", "xSoundOut", "Sound output", nullptr, Show<&Windows::FDXF>},
    MenuItem{"Help", "xHelp", "Help", nullptr, Show<&Windows::Frame2>},
};

// Menu items as controls, made from the table above so that an item is listed once.
template <size_t kPlace>
Control MenuControl() {
  const MenuItem& item = kMenu[kPlace];
  Control control{item.name, ControlKind::Menu};
  if (item.tick != nullptr) {
    control.field = [](Machine& m) -> ControlField { return &(m.screen.*kMenu[kPlace].tick); };
  }
  if (item.click != nullptr) {
    control.changed = [](Machine& m, int) { kMenu[kPlace].click(m); };
  }
  return control;
}

constexpr size_t kOwnControls = 4;

template <size_t... kPlaces>
std::array<Control, kOwnControls + sizeof...(kPlaces)> AllControls(std::index_sequence<kPlaces...>) {
  return {
      Control{"Caption", ControlKind::Label, [](Machine& m) -> ControlField { return &m.screen.Caption; }},
      Control{"Label1", ControlKind::Label, [](Machine& m) -> ControlField { return &m.screen.Label1; }},
      Control{"Text1", ControlKind::Text, [](Machine& m) -> ControlField { return &m.screen.Text1; }},
      Control{"List1", ControlKind::List},  // its lines are a PortLog, which no field can hold
      MenuControl<kPlaces>()...,
  };
}

void Log(PortLog& log, uint32_t limit, char kind, int32_t port) {
  if (log.count > limit) log.count = 0;
  log.lines[log.count++] = {kind, port};
}

}  // namespace

std::string PortLog::Text(uint32_t line) const {
  if (line >= count) return {};
  return lines[line].kind + std::to_string(lines[line].port);
}

void LogPortWrite(PortLog& log, int32_t port) { Log(log, PortLog::kWriteLimit, 'W', port); }
void LogPortRead(PortLog& log, int32_t port) { Log(log, PortLog::kReadLimit, 'R', port); }

std::span<const MenuItem> MenuItems() { return kMenu; }

const MenuItem* FindMenuItem(std::string_view name) {
  for (const MenuItem& item : kMenu) {
    if (item.name == name) return &item;
  }
  return nullptr;
}

void ClickMenu(Machine& m, const MenuItem& item) {
  if (item.click != nullptr) item.click(m);
}

std::span<const Control> TScreenControls() {
  static const auto controls = AllControls(std::make_index_sequence<kMenu.size()>());
  return controls;
}

void xReset_Click(Machine& m) {
  m.run.ResetRequest = 1;
  FocusPicture(m);
}

void xReset2_Click(Machine& m) {
  m.MemImage[kWarmStartMark] = 0xFF;  // the ROM then makes a cold start
  xReset_Click(m);
}

}  // namespace quoll
