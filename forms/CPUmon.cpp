#include "forms/CPUmon.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>

#include "core/Files.h"
#include "core/FolderList.h"
#include "core/FormTable.h"
#include "core/NumberText.h"
#include "devtools/ToolText.h"
#include "forms/CPUmonFields.h"
#include "forms/CPUmonViews.h"
#include "loop/Redraw.h"
#include "loop/RunLoop.h"
#include "machine/Machine.h"

namespace quoll {

namespace {

using namespace std::chrono_literals;

constexpr auto kTimer1 = 500ms;
constexpr std::string_view kBinaries = "*.obj;*.rom;*.bin";

void ZeroCycles(Machine& m) {
  m.run.Cycles = 0;
  m.run.TotalCycles = 0;
}

void Redraw(Machine& m) { ++m.cpumon.shown.redraws; }

// Run, stop and requests.

void Command2_Click(Machine& m) { m.run.NmiRequest = 1; }

void Command4_Click(Machine& m) {
  if (m.z80.IFF1 == 1) m.z80.IrqLine = 1;
}

void Command5_Click(Machine& m) {
  m.run.ResetRequest = 1;
  Redraw(m);
}

void Check4_Click(Machine& m) {
  m.run.BreakArmed = m.cpumon.Check4 ? 1 : 0;
  m.cpumon.Frame8Look.visible = m.cpumon.Check4;
}

// Editing: hexadecimal texts, taken with Enter. One that is no number changes nothing.

void Store(Machine& m, const std::string& text, MonitorField field, int32_t highest) {
  if (const auto value = HexValue(text)) m.z80.*field = std::clamp(*value, 0, highest);
  Redraw(m);
}

void Text1_Enter(Machine& m, int index) {
  const auto i = static_cast<size_t>(index);
  Store(m, m.cpumon.shown.Text1[i], kMonitorRegisters[i], 0xFF);
}

// The two flags without a name of their own can't be typed: wanted, they only show.
void Text2_Enter(Machine& m, int index) {
  constexpr int kFlagY = 2, kFlagX = 4, kAlternate = 8;
  const auto i = static_cast<size_t>(index);
  const int flag = index % kAlternate;
  if (flag == kFlagY || flag == kFlagX) return Redraw(m);
  Store(m, m.cpumon.shown.Text2[i], kMonitorFlags[i], 1);
}

void Text3_Enter(Machine& m, int index) {
  const auto i = static_cast<size_t>(index);
  Store(m, m.cpumon.shown.Text3[i], kMonitorWords[i], 0xFFFF);
}

void Text4_Enter(Machine& m, int index) {
  constexpr int kInterruptMode = 2;
  const auto i = static_cast<size_t>(index);
  if (const auto value = HexValue(m.cpumon.shown.Text4[i]))
    m.z80.*kMonitorModes[i] = index == kInterruptMode ? *value & 3 : *value;
  Redraw(m);
}

// The views.

void MoveView(Machine& m, std::string& text, Scroll& bar) {
  const int32_t address = CPUmon_ViewAddress(text);
  text = std::to_string(address);
  StoreScroll(bar, address);
  Redraw(m);
}

void Text10_Enter(Machine& m) { MoveView(m, m.cpumon.Text10, m.cpumon.VScroll1); }
void Text11_Enter(Machine& m) { MoveView(m, m.cpumon.Text11, m.cpumon.VScroll2); }

void VScroll1_Change(Machine& m) {
  m.cpumon.Text10 = std::to_string(m.cpumon.VScroll1.value);
  Redraw(m);
}

void VScroll2_Change(Machine& m) {
  m.cpumon.Text11 = std::to_string(m.cpumon.VScroll2.value);
  Redraw(m);
}

// "Poke"
void Command3_Click(Machine& m) {
  const int32_t address = NumberOfText(m.cpumon.Text12);
  const int32_t value = NumberOfText(m.cpumon.Text13);
  MemWrite(m, address, static_cast<uint8_t>(value & 0xFF));
  Redraw(m);
}

// "Load Bin": straight into RAM, ahead of any paging.
void Command8_Click(Machine& m) {
  constexpr size_t kRam = 0x10000;
  const std::string name = m.cpumon.File1.Selected();
  if (name.empty()) return TellFileError(*m.host, "Choose a file from the list.");
  const FileContent content = ReadFile((std::filesystem::path(m.cpumon.folder) / name).string(), kRam);
  if (!content.error.empty()) return TellFileError(*m.host, content.error);
  std::ranges::copy(content.bytes, m.MemImage.begin());
  Redraw(m);
}

// The figures since the last tick.
void Timer1_Timer(Machine& m) {
  CPUmon& form = m.cpumon;
  // "Run" has begun to count anew when there are fewer.
  const int64_t before = form.countedBefore <= m.run.TotalCycles ? form.countedBefore : 0;
  const double passed = static_cast<double>(m.run.TotalCycles) - static_cast<double>(before);
  form.countedBefore = m.run.TotalCycles;
  const double perMillisecond = passed / static_cast<double>(kTimer1.count());
  std::array<char, 32> text{};
  std::snprintf(text.data(), text.size(), "%.0f", perMillisecond);
  form.Text7 = text.data();
  std::snprintf(text.data(), text.size(), "%.3f", perMillisecond / 1000.0);
  form.Label5 = text.data();
  m.screen.window.caption = "QUOLL_EMU  " + form.Label5;
  if (form.Check5 && m.run.CpuRunning == 1) Redraw(m);
}

void Refresh(Machine& m) {
  CPUmonShown& shown = m.cpumon.shown;
  if (shown.redrawsDone == shown.redraws) return;
  shown.redrawsDone = shown.redraws;
  CPUmon_ShowState(m);
}

constexpr On<&Machine::cpumon> f;
constexpr On<&Machine::cpumon, &CPUmon::shown> shown;

constexpr std::array kControls{
    Button("Command1", "Run", CPUmon_Command1_Click).Looks(f.Look<&CPUmon::Command1Look>),
    Button("Command6", "Stop", CPUmon_Command6_Click),
    Button("Command7", "Step", CPUmon_Command7_Click),
    Button("Command5", "RESET", Command5_Click),
    Button("Command4", "INT", Command4_Click),
    Button("Command2", "NMI", Command2_Click),
    f.Check<&CPUmon::Check4>("Check4", "Debug", Check4_Click),
    f.Check<&CPUmon::Check2>("Check2", "Address").Looks(f.Look<&CPUmon::Frame8Look>),
    f.Text<&CPUmon::Text5>("Text5", "Breakpoint address").Looks(f.Look<&CPUmon::Frame8Look>),
    f.Check<&CPUmon::Check3>("Check3", "Instcount").Looks(f.Look<&CPUmon::Frame8Look>),
    f.Text<&CPUmon::Text6>("Text6", "Instruction count").Looks(f.Look<&CPUmon::Frame8Look>),
    f.Check<&CPUmon::Check7>("Check7", "Int").Looks(f.Look<&CPUmon::Frame8Look>),
    f.Check<&CPUmon::Check8>("Check8", "Nmi").Looks(f.Look<&CPUmon::Frame8Look>),
    f.Check<&CPUmon::Check9>("Check9", "Reset").Looks(f.Look<&CPUmon::Frame8Look>),
    f.Check<&CPUmon::Check5>("Check5", "Screen"),
    f.Check<&CPUmon::Check6>("Check6", "Border"),
    f.Scroll<&CPUmon::HScroll1>("HScroll1", "Speed"),

    shown.Label<&CPUmonShown::TextA>("TextA", "Accumulator"),
    shown.Text<&CPUmonShown::Text1>("Text1", "A|B|C|D|E|H|L|A'|B'|C'|D'|E'|H'|L'").Enter(Text1_Enter),
    shown.Text<&CPUmonShown::Text2>("Text2", "S|Z|Y|H|X|P/V|N|C|S'|Z'|Y'|H'|X'|P/V'|N'|C'")
        .Enter(Text2_Enter),
    shown.Text<&CPUmonShown::Text3>("Text3", "IX|SP|IY|PC|I|R").Enter(Text3_Enter),
    shown.Text<&CPUmonShown::Text4>("Text4", "IFF1|IFF2|IM").Enter(Text4_Enter),
    shown.Bar<&CPUmonShown::Shape2>("Shape2", "PC"),
    shown.Bar<&CPUmonShown::Shape4>("Shape4", "R"),
    Lit("Label7", "Halt ON", shown.Look<&CPUmonShown::Label7Look>),
    Lit("Label8", "INT ON", shown.Look<&CPUmonShown::Label8Look>),

    shown.Label<&CPUmonShown::Picture1>("Picture1", "Disassembly"),
    shown.Label<&CPUmonShown::Picture4>("Picture4", "Last instructions"),
    f.Text<&CPUmon::Text10>("Text10", "Memory from").Enter(Text10_Enter),
    f.Scroll<&CPUmon::VScroll1>("VScroll1", "Memory", VScroll1_Change),
    shown.Label<&CPUmonShown::Picture2>(
        "Picture2", "Mem:  00 01 02 03 04 05 06 07 08 09 0A 0B 0C 0D 0E 0F ................"),
    f.Text<&CPUmon::Text11>("Text11", "Ports from").Enter(Text11_Enter),
    f.Scroll<&CPUmon::VScroll2>("VScroll2", "Ports", VScroll2_Change),
    shown.Label<&CPUmonShown::Picture3>(
        "Picture3", "Port: 00 01 02 03 04 05 06 07 08 09 0A 0B 0C 0D 0E 0F ................"),

    f.Text<&CPUmon::Text12>("Text12", "Poke: address"),
    f.Text<&CPUmon::Text13>("Text13", "Poke: value"),
    Button("Command3", "Poke", Command3_Click),
    f.List<&CPUmon::File1>("File1", "Files to load").DoubleClick(Command8_Click),
    Button("Command8", "Load Bin", Command8_Click),

    f.Label<&CPUmon::Text7>("Text7", "Clock / msec"),
    shown.Label<&CPUmonShown::Text8>("Text8", "Inst count"),
    f.Label<&CPUmon::Label5>("Label5", "Mhz"),
    f.Label<&CPUmon::Label3>("Label3", "Unit of the speed"),
    Timer("Timer1", kTimer1, Timer1_Timer),
};

}  // namespace

void CPUmon_Command1_Click(Machine& m) {
  m.cpumon.Command1Look.back = kButtonFace;
  m.run.CpuRunning = 1;
  ZeroCycles(m);
  RunLoop(m);
}

void CPUmon_Command6_Click(Machine& m) {
  m.run.CpuRunning = 0;
  ZeroCycles(m);
}

void CPUmon_Command7_Click(Machine& m) {
  m.run.CpuRunning = 0;
  RunLoop(m);
  redraw(m);
  if (m.asse.opened) Dline(m, "0x" + Hex4(m.z80.PC));
}

void CPUmon_Show(Machine& m) {
  m.cpumon.folder = m.panel.folder;
  m.cpumon.File1.Fill(FilesIn(m.cpumon.folder, kBinaries).names);
  ShowForm(m.cpumon.window);
  Redraw(m);
}

constexpr Form kCPUmon{"CPUmon", "Z80mon", f.State, kControls, Refresh};

}  // namespace quoll
