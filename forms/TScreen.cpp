// The main window's menu: what stands in it and what each entry does to the machine. Its list and its texts,
// and the controls of the file panel that opens inside it.
#include "forms/TScreen.h"

#include "core/BinaryFile.h"
#include "core/FormTable.h"
#include "forms/FilePanel.h"
#include "loop/RunLoop.h"
#include "machine/Machine.h"
#include "machine/MachineInit.h"
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
  RebuildMachine(m);
  FocusPicture(m);
}

// As above. The warm-start mark is spoilt first, although the new machine's memory is empty anyway.
template <Tick kTick>
void ToggleCard(Machine& m) {
  Toggle<kTick>(m);
  m.MemImage[kWarmStartMark] = 0xFF;
  CpuReset(m);
  RebuildMachine(m);
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
template <Tick kTick>
void ChooseSpeed(Machine& m) {
  Toggle<kTick>(m);
  for (const Tick other : {&TScreen::xS1, &TScreen::xS2, &TScreen::xS3, &TScreen::xS4}) {
    if (other != kTick) m.screen.*other = false;
  }
  FocusPicture(m);
}

// The monitor's scroll bar shows the choice.
template <Tick kTick, int32_t kFactor>
void ChooseShownSpeed(Machine& m) {
  ChooseSpeed<kTick>(m);
  StoreScroll(m.cpumon.HScroll1, kFactor);
}

void xLoadCAS_Click(Machine& m) { OpenFilePanel(m, kOpenCaption, "*.cas"); }
void xSaveCAS_Click(Machine& m) { OpenFilePanel(m, kSaveCaption, "*.cas"); }
void xLoadSnap_Click(Machine& m) { OpenFilePanel(m, kOpenCaption, "*.tvs"); }
void xSaveSnap_Click(Machine& m) { OpenFilePanel(m, kSaveCaption, "*.tvs"); }
void xLoadCRT_Click(Machine& m) { OpenFilePanel(m, kOpenCaption, "*.crt"); }
void xLoadTim_Click(Machine& m) { OpenFilePanel(m, kOpenCaption, "*.tim"); }

void xUnloadCRT_Click(Machine& m) {
  m.panel.window.visible = false;
  UnloadCRT(m);
  FocusPicture(m);
}

// These tell the user themselves when a file can't be written or read; where one went the status says.
template <bool (*kSave)(Machine&)>
void SaveAs(Machine& m, const char* file) {
  if (kSave(m)) m.screen.Label1 = "Saved: " + FullName(file);
}

void xSvaMEX4_Click(Machine& m) { SaveAs<SaveMex4mb>(m, kMexStoreFile); }
void xSaveScreen_Click(Machine& m) { SaveAs<SaveScreen>(m, kScreenFile); }
void xLoadScreen_Click(Machine& m) { LoadScreen(m); }
void xMemDump_Click(Machine& m) { SaveAs<MemoryDump>(m, kDumpFile); }

template <auto kForm>
void Show(Machine& m) {
  ShowForm((m.*kForm).window);
}

constexpr On<&Machine::screen> f;
constexpr On<&Machine::panel> panel;

// Seen while a cassette file is saved.
template <auto kBox>
constexpr Control CasBox(std::string_view name, std::string_view caption) {
  return panel.Text<kBox>(name, caption).Enter(FilePanelPress).Looks(panel.Look<&FilePanel::casLook>);
}

constexpr std::array kControls{
    // The menus, in the order in which they show their entries.
    MenuEntry("File", "xLoadCAS", "Load cas", xLoadCAS_Click),
    MenuEntry("File", "xSaveCAS", "Save cas", xSaveCAS_Click),
    MenuEntry("File", "xLoadSnap", "Load Snap", xLoadSnap_Click),
    MenuEntry("File", "xSaveSnap", "Save Snap", xSaveSnap_Click),
    MenuEntry("File", "xLoadCRT", "Load CRT", xLoadCRT_Click),
    MenuEntry("File", "xUnloadCRT", "Unload", xUnloadCRT_Click),
    MenuEntry("File", "xSvaMEX4", "Save MEX4MB", xSvaMEX4_Click),
    f.Tick<&TScreen::xio0>("File", "xio0", "I/O card 0: Floppy", ToggleCard<&TScreen::xio0>),
    f.Tick<&TScreen::xio1>("File", "xio1", "I/O card 1: RS232", ToggleCard<&TScreen::xio1>),
    f.Tick<&TScreen::xio2>("File", "xio2", "I/O card 2: SoundCard", ToggleCard<&TScreen::xio2>),
    f.Tick<&TScreen::xio3>("File", "xio3", "I/O card 3: (IO3.rom)", ToggleCard<&TScreen::xio3>),
    MenuEntry("File", "xSaveScreen", "Save Screen", xSaveScreen_Click),
    MenuEntry("File", "xLoadScreen", "Load Screen", xLoadScreen_Click),
    MenuEntry("File", "xLoadTim", "Load Tim", xLoadTim_Click),
    MenuEntry("File", "xMemDump", "Memory dump", xMemDump_Click),
    MenuEntry("File", "xReset", "Reset", xReset_Click),
    MenuEntry("File", "xReset2", "Reset2", xReset2_Click),
    MenuEntry("Media", "xdiskload", "Disk Load", TFloppy_Show),
    MenuEntry("Media", "xTapeLoad", "Tape Load", Show<&Machine::ttape>),
    MenuEntry("Options", "xFullsc", "FullScreen", Show<&Machine::fscreen>),
    f.Tick<&TScreen::xScreenBW>("Options", "xScreenBW", "Screen BW", Toggle<&TScreen::xScreenBW>),
    f.Tick<&TScreen::xScreenDIB>("Options", "xScreenDIB", "Screen DIB", Toggle<&TScreen::xScreenDIB>),
    f.Tick<&TScreen::xScreenNoise>("Options", "xScreenNoise", "Screen noise", Toggle<&TScreen::xScreenNoise>),
    f.Tick<&TScreen::xSound>("Options", "xSound", "Sound", ToggleAndFocus<&TScreen::xSound>),
    f.Tick<&TScreen::xNoError>("Options", "xNoError", "Ignore CPU error", ToggleAndFocus<&TScreen::xNoError>),
    f.Tick<&TScreen::xUnDoc>("Options", "xUnDoc", "Undocumented", xUnDoc_Click),
    f.Tick<&TScreen::x32KB>("Options", "x32KB", "32K", ToggleModel<&TScreen::x32KB>),
    f.Tick<&TScreen::xBasic>("Options", "xBasic", "Basic 2.2", ToggleModel<&TScreen::xBasic>),
    f.Tick<&TScreen::xS1>("Speed", "xS1", "Pause", xS1_Click),
    f.Tick<&TScreen::xS2>("Speed", "xS2", "0.5x", ChooseSpeed<&TScreen::xS2>),
    f.Tick<&TScreen::xS3>("Speed", "xS3", "Normal", ChooseShownSpeed<&TScreen::xS3, 2>),
    f.Tick<&TScreen::xS4>("Speed", "xS4", "2x", ChooseShownSpeed<&TScreen::xS4, 4>),
    f.Tick<&TScreen::xS5>("Speed", "xS5", "4x"),
    f.Tick<&TScreen::xS6>("Speed", "xS6", "Max", Toggle<&TScreen::xS6>),
    MenuEntry("View", "xTVCmon", "TVC monitor", Show<&Machine::tvcmon>),
    MenuEntry("View", "xDebug", "Z80 monitor", CPUmon_Show),
    MenuEntry("View", "xAsse", "Assembler", Asse_Show),
    MenuEntry("View", "xPrinter", "Printer", TPrint_Show),
    MenuEntry("View", "xSerial", "Serial", Show<&Machine::tserial>),
    MenuEntry("View", "xsaa", "SAA1099", Show<&Machine::fsaa>),
    MenuEntry("View", "xSN76", "SN76489", Show<&Machine::fsn76489>),
    MenuEntry("View", "xYM", "YM3812", Show<&Machine::fym3812>),
    MenuEntry("View", "xYM2", "YM2413", Show<&Machine::fym2413>),
    MenuEntry("View", "xSID", "SID6581", Show<&Machine::fsid>),
    MenuEntry("View", "xAY3", "AY-3-8910", Show<&Machine::t8910>),
    MenuEntry("View", "xErrorSim", "ErrorSim", Show<&Machine::errorsim>),
    MenuEntry("View", "xTools", "Tools", Show<&Machine::tools>),
    MenuEntry("View", "xSoundOut", "Sound output", Show<&Machine::fdxf>),
    MenuEntry("Help", "xHelp", "Help", Show<&Machine::frame2>),

    f.Label<&TScreen::Label1>("Label1", "Status"),
    f.Text<&TScreen::Text1>("Text1", "Speed: hundred-thousandths of a second for a frame"),
    f.List<&TScreen::List1>("List1", "Accesses to unknown ports"),
    f.Caption(),

    panel.Text<&FilePanel::Text3>("Text3", "File name").Enter(FilePanelPress),
    panel.Text<&FilePanel::Text5>("Text5", "Pattern of the listed files").Enter(Text5_Enter),
    CasBox<&FilePanel::Text6>("Text6", "Start address"),
    CasBox<&FilePanel::Text7>("Text7", "End address"),
    CasBox<&FilePanel::Text8>("Text8", "Word at 1720"),
    panel.List<&FilePanel::Dir1>("Dir1", "Folders").DoubleClick(Dir1_DoubleClick),
    panel.List<&FilePanel::File1>("File1", "Files", File1_Click).DoubleClick(FilePanelPress),
    panel.Label<&FilePanel::location>("Frame4", "Location"),
    panel.Label<&FilePanel::error>("Frame1Error", "Error"),
    Button("Command2", "OPEN", FilePanelPress),
    Button("Frame1Cancel", "Cancel", FilePanelCancel),
};

}  // namespace

void xReset_Click(Machine& m) {
  m.run.ResetRequest = 1;
  FocusPicture(m);
}

void xReset2_Click(Machine& m) {
  m.MemImage[kWarmStartMark] = 0xFF;  // the ROM then makes a cold start
  xReset_Click(m);
}

constexpr Form kTScreen{"TScreen", "", f.State, kControls};
constexpr Form kFrame2{"Frame2", "About", On<&Machine::frame2>::State, {}};
constexpr Form kFScreen{"FScreen", "TVC", On<&Machine::fscreen>::State, {}};

}  // namespace quoll
