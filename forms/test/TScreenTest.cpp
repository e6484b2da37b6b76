#include <gtest/gtest.h>

#include <deque>
#include <filesystem>
#include <map>
#include <vector>

#include "forms/Forms.h"
#include "forms/TScreen.h"
#include "loop/RunLoop.h"
#include "machine/Machine.h"
#include "machine/MachineInit.h"
#include "testkit/Files.h"
#include "testkit/TestMachine.h"

namespace quoll::test {
namespace {

// A machine with ROM files in a folder of its own. The first byte of each file tells which one it is, the
// rest is zero, which is NOP.
class Screen : public testing::Test {
 protected:
  Screen() {
    for (const RomFile& rom : kRomFiles) {
      Bytes bytes(rom.size);
      bytes[0] = FirstByte(rom.name);
      folder.Write(rom.name, bytes);
    }
    m->programFolder = folder.path.string();
    MachineInit(*m);
    MachineReset(*m);
  }

  // 0x26 for "TVC22_D6.rom" and so on, the first letter for the others.
  static uint8_t FirstByte(std::string_view rom) {
    if (!rom.starts_with("TVC")) return static_cast<uint8_t>(rom[0]);
    return static_cast<uint8_t>((rom[3] - '0') * 16 + (rom[7] - '0'));
  }

  void Click(std::string_view name) {
    const ControlRef item = TheControl("TScreen", name);
    ASSERT_EQ(item.control->kind, ControlKind::Menu) << name;
    Press(*m, item);
  }

  // All ticks by name.
  std::map<std::string, bool> Ticks() const {
    std::map<std::string, bool> ticks;
    for (const Control& item : kTScreen.controls) {
      const bool* tick = FieldOf<bool>(*m, {&kTScreen, &item});
      if (item.kind == ControlKind::Menu && tick != nullptr) ticks[std::string(item.name)] = *tick;
    }
    return ticks;
  }

  TempFolder folder;
  TestMachine m;
  TestHost& host = m.host;
};

// A save without a dialog says where its file is.
TEST_F(Screen, TheStatusSaysWhereAFileWent) {
  const TempFolder there;
  const WorkingIn working(there.path);
  for (const auto& [entry, file] : {std::pair("xSaveScreen", "screen.bin"), {"xMemDump", "ramdump.bin"}}) {
    Click(entry);
    EXPECT_EQ(m->screen.Label1, "Saved: " + there.Path(file));
  }
  m->screen.Label1.clear();
  Click("xSvaMEX4");  // there is no such cartridge
  EXPECT_EQ(m->screen.Label1, "");
}

struct Entry {
  std::string menu, name, caption;
  bool operator==(const Entry&) const = default;
};
void PrintTo(const Entry& e, std::ostream* out) { *out << e.menu << "/" << e.name << "/" << e.caption; }

TEST(Menu, StandsInItsOrder) {
  const std::vector<Entry> expected{
      {"File", "xLoadCAS", "Load cas"},
      {"File", "xSaveCAS", "Save cas"},
      {"File", "xLoadSnap", "Load Snap"},
      {"File", "xSaveSnap", "Save Snap"},
      {"File", "xLoadCRT", "Load CRT"},
      {"File", "xUnloadCRT", "Unload"},
      {"File", "xSvaMEX4", "Save MEX4MB"},
      {"File", "xio0", "I/O card 0: Floppy"},
      {"File", "xio1", "I/O card 1: RS232"},
      {"File", "xio2", "I/O card 2: SoundCard"},
      {"File", "xio3", "I/O card 3: (IO3.rom)"},
      {"File", "xSaveScreen", "Save Screen"},
      {"File", "xLoadScreen", "Load Screen"},
      {"File", "xLoadTim", "Load Tim"},
      {"File", "xMemDump", "Memory dump"},
      {"File", "xReset", "Reset"},
      {"File", "xReset2", "Reset2"},
      {"Media", "xdiskload", "Disk Load"},
      {"Media", "xTapeLoad", "Tape Load"},
      {"Options", "xFullsc", "FullScreen"},
      {"Options", "xScreenBW", "Screen BW"},
      {"Options", "xScreenDIB", "Screen DIB"},
      {"Options", "xScreenNoise", "Screen noise"},
      {"Options", "xSound", "Sound"},
      {"Options", "xNoError", "Ignore CPU error"},
      {"Options", "xUnDoc", "Undocumented"},
      {"Options", "x32KB", "32K"},
      {"Options", "xBasic", "Basic 2.2"},
      {"Speed", "xS1", "Pause"},
      {"Speed", "xS2", "0.5x"},
      {"Speed", "xS3", "Normal"},
      {"Speed", "xS4", "2x"},
      {"Speed", "xS5", "4x"},
      {"Speed", "xS6", "Max"},
      {"View", "xTVCmon", "TVC monitor"},
      {"View", "xDebug", "Z80 monitor"},
      {"View", "xAsse", "Assembler"},
      {"View", "xPrinter", "Printer"},
      {"View", "xSerial", "Serial"},
      {"View", "xsaa", "SAA1099"},
      {"View", "xSN76", "SN76489"},
      {"View", "xYM", "YM3812"},
      {"View", "xYM2", "YM2413"},
      {"View", "xSID", "SID6581"},
      {"View", "xAY3", "AY-3-8910"},
      {"View", "xErrorSim", "ErrorSim"},
      {"View", "xTools", "Tools"},
      {"View", "xSoundOut", "Sound output"},
      {"Help", "xHelp", "Help"},
  };
  std::vector<Entry> actual;
  for (const Control& item : kTScreen.controls) {
    if (item.kind == ControlKind::Menu)
      actual.push_back({std::string(item.menu), std::string(item.name), std::string(item.caption)});
  }
  EXPECT_EQ(actual, expected);
  for (const Entry& entry : expected) {
    const Control* item = FindControl("TScreen", entry.name);
    ASSERT_NE(item, nullptr);
    EXPECT_EQ(item->caption, entry.caption);
  }
  EXPECT_EQ(FindControl("TScreen", "xBASIC"), nullptr);
  EXPECT_EQ(FindControl("TScreen", ""), nullptr);
}

TEST_F(Screen, StartsWithItsDefaults) {
  const std::map<std::string, bool> expected{
      {"xio0", false},  {"xio1", false},      {"xio2", false},         {"xio3", false},  {"xScreenBW", false},
      {"xSound", true}, {"xScreenDIB", true}, {"xScreenNoise", false}, {"xUnDoc", true}, {"xNoError", false},
      {"x32KB", false}, {"xBasic", true},     {"xS1", false},          {"xS2", false},   {"xS3", true},
      {"xS4", false},   {"xS5", false},       {"xS6", false},
  };
  EXPECT_EQ(Ticks(), expected);
}

TEST_F(Screen, AToggleFlipsItsOwnTickOnly) {
  for (const std::string name : {"xScreenBW", "xScreenDIB", "xScreenNoise", "xSound", "xNoError", "xUnDoc",
                                 "x32KB", "xBasic", "xio0", "xio1", "xio2", "xio3", "xS6"}) {
    std::map<std::string, bool> expected = Ticks();
    expected[name] = !expected[name];
    Click(name);
    EXPECT_EQ(Ticks(), expected) << name;
    expected[name] = !expected[name];
    Click(name);
    EXPECT_EQ(Ticks(), expected) << name;
  }
}

TEST_F(Screen, FocusGoesToThePicture) {
  for (const char* name : {"xReset", "xReset2", "xSound", "xNoError", "x32KB", "xBasic", "xio0", "xio1",
                           "xio2", "xio3", "xS1", "xS2", "xS3", "xS4"}) {
    m->screen.focusPicD = false;
    Click(name);
    EXPECT_TRUE(m->screen.focusPicD) << name;
    if (std::string_view(name) == "xS1") m->screen.xS1 = false;
  }
  for (const char* name : {"xScreenBW", "xScreenDIB", "xScreenNoise", "xUnDoc", "xS5", "xS6"}) {
    m->screen.focusPicD = false;
    Click(name);
    EXPECT_FALSE(m->screen.focusPicD) << name;
  }
}

TEST_F(Screen, AnEntryWithoutAHandlerDoesNothing) {
  const auto before = Ticks();
  Click("xS5");
  EXPECT_EQ(Ticks(), before);
}

TEST_F(Screen, UndocumentedSwitchesTheProcessor) {
  ASSERT_EQ(m->z80.UnDocEnabled, 1);
  Click("xUnDoc");
  EXPECT_EQ(m->z80.UnDocEnabled, 0);
  Click("xUnDoc");
  EXPECT_EQ(m->z80.UnDocEnabled, 1);

  Click("xUnDoc");
  Click("x32KB");  // a new machine has them, whatever the tick says
  EXPECT_EQ(m->z80.UnDocEnabled, 1);
  EXPECT_FALSE(m->screen.xUnDoc);
}

TEST_F(Screen, ResetIsOnlyAskedFor) {
  m->MemImage[0x0B22] = 0x11;
  m->z80.PC = 0x1234;
  Click("xReset");
  EXPECT_EQ(m->run.ResetRequest, 1);
  EXPECT_EQ(m->MemImage[0x0B22], 0x11);
  EXPECT_EQ(m->z80.PC, 0x1234);

  m->run.ResetRequest = 0;
  Click("xReset2");
  EXPECT_EQ(m->run.ResetRequest, 1);
  EXPECT_EQ(m->MemImage[0x0B22], 0xFF);
  EXPECT_EQ(m->z80.PC, 0x1234);
}

TEST_F(Screen, BasicChoosesTheSystemRoms) {
  m->MemImage[0x4000] = 0x77;
  m->z80.PC = 0x1234;
  Click("xBasic");
  EXPECT_EQ(m->MemImage[0x18000], 0x14);
  EXPECT_EQ(m->MemImage[0x1A000], 0x13);
  EXPECT_EQ(m->MemImage[0x1E000], 0x17);
  EXPECT_EQ(m->MemImage[0x4000], 0);
  EXPECT_EQ(m->z80.PC, 0);
  EXPECT_EQ(m->PortShadow[0x59], 0xBF);

  Click("xBasic");
  EXPECT_EQ(m->MemImage[0x18000], 0x26);
  EXPECT_EQ(m->MemImage[0x1A000], 0x24);
  EXPECT_EQ(m->MemImage[0x1E000], 0x27);
}

TEST_F(Screen, A32KMachineReadsNothingAbove0x8000) {
  const auto pageInU2 = [&] {
    m->PortShadow[2] = 0x20;
    RenewPages(*m);
  };
  Click("x32KB");
  pageInU2();
  MemWrite(*m, 0x8000, 0x55);
  EXPECT_EQ(MemRead(*m, 0x8000), 0);
  EXPECT_EQ(m->MemImage[0x8000], 0x55);

  Click("x32KB");
  EXPECT_EQ(m->MemImage[0x8000], 0);
  pageInU2();
  MemWrite(*m, 0x8000, 0x55);
  EXPECT_EQ(MemRead(*m, 0x8000), 0x55);
}

TEST_F(Screen, ACardBringsItsRomAndANewMachine) {
  const std::map<std::string, std::pair<int32_t, int>> roms{{"xio0", {0x38000, 0x68}},
                                                            {"xio3", {0x32000, 0x69}}};
  for (const auto& [name, rom] : roms) {
    m->MemImage[0x100] = 1;
    m->run.NmiRequest = 1;
    m->z80.PC = 0x1234;
    Click(name);
    EXPECT_EQ(m->MemImage[rom.first], rom.second) << name;
    EXPECT_EQ(m->MemImage[0x100], 0);
    EXPECT_EQ(m->MemImage[0x0B22], 0);  // the mark goes with the memory
    EXPECT_EQ(m->run.NmiRequest, 0);
    EXPECT_EQ(m->z80.PC, 0);
  }
}

TEST_F(Screen, AMissingRomEndsTheProgram) {
  std::filesystem::remove(folder.path / "TVC12_D3.rom");
  EXPECT_THROW(Click("xBasic"), ProgramEnd);
  EXPECT_EQ(host.messages,
            (std::vector<TestHost::Message>{{"Rom File error: ", "Error", MessageIcon::Stop}}));
}

TEST_F(Screen, PauseStopsTheLoop) {
  m->screen.xS2 = m->screen.xS4 = true;
  m->screen.xS3 = false;
  m->run.CpuRunning = 1;
  Click("xS1");
  EXPECT_TRUE(m->screen.xS1);
  EXPECT_EQ(m->run.CpuRunning, 0);
  EXPECT_FALSE(m->screen.xS2);
  EXPECT_FALSE(m->screen.xS4);
  EXPECT_TRUE(m->screen.xS3);
}

TEST_F(Screen, EndOfPauseRunsTheMachineOnTheSameStack) {
  m->screen.xS1 = true;
  m->screen.xS2 = m->screen.xS4 = true;
  m->screen.xS3 = false;
  std::map<std::string, bool> ticksWhileRunning;
  int runningThen = 0, frames = 0;
  host.onFrameEnded = [&](Machine& machine) {
    ++frames;
    ticksWhileRunning = Ticks();
    runningThen = machine.run.CpuRunning;
    machine.screen.focusPicD = false;
  };
  Click("xS1");
  EXPECT_EQ(frames, 1);
  EXPECT_EQ(runningThen, 1);
  EXPECT_FALSE(ticksWhileRunning["xS1"]);
  EXPECT_TRUE(ticksWhileRunning["xS2"]);  // the other ticks follow when the loop has ended
  EXPECT_FALSE(ticksWhileRunning["xS3"]);
  EXPECT_FALSE(m->screen.xS1);
  EXPECT_FALSE(m->screen.xS2);
  EXPECT_TRUE(m->screen.xS3);
  EXPECT_FALSE(m->screen.xS4);
  EXPECT_TRUE(m->screen.focusPicD);
}

TEST_F(Screen, SpeedsExcludeEachOther) {
  const std::vector<std::string> names{"xS1", "xS2", "xS3", "xS4"};
  m->run.CpuRunning = 1;
  for (const std::string name : {"xS2", "xS3", "xS4"}) {
    m->screen.xS1 = m->screen.xS2 = m->screen.xS3 = m->screen.xS4 = true;
    m->screen.xS6 = true;
    m->cpumon.HScroll1.value = 77;
    Click(name);
    auto ticks = Ticks();
    for (const std::string& other : names) EXPECT_FALSE(ticks[other]) << name << " " << other;
    Click(name);
    ticks = Ticks();
    for (const std::string& other : names) EXPECT_EQ(ticks[other], other == name) << name << " " << other;
    EXPECT_TRUE(ticks["xS6"]);
    const int scroll = name == "xS3" ? 2 : name == "xS4" ? 4 : 77;
    EXPECT_EQ(m->cpumon.HScroll1.value, scroll) << name;
    EXPECT_EQ(m->run.CpuRunning, 1) << name;  // speeds change ticks and nothing else
  }
}

// The list as it would be with a list box: emptied before adding when it holds more than the limit.
struct SlowLog {
  std::deque<std::string> lines;
  void Add(const std::string& line, size_t limit) {
    if (lines.size() > limit) lines.clear();
    lines.push_back(line);
  }
};

TEST(PortLog, EmptiesItselfAtItsLimits) {
  PortLog log;
  for (int i = 0; i < 36; ++i) LogPortWrite(log, 8);
  EXPECT_EQ(log.count, 36U);
  LogPortWrite(log, 9);
  EXPECT_EQ(log.count, 1U);
  EXPECT_EQ(log.Entry(0), "W9");
  for (int i = 0; i < 100; ++i) LogPortRead(log, 255);
  EXPECT_EQ(log.count, 101U);
  EXPECT_EQ(log.Entry(100), "R255");
  LogPortRead(log, 0);
  EXPECT_EQ(log.count, 1U);
  EXPECT_EQ(log.Entry(0), "R0");
  EXPECT_EQ(log.Entry(1), "");
}

TEST(PortLog, FollowsTheListBox) {
  PortLog log;
  SlowLog slow;
  uint32_t random = 1;
  for (int i = 0; i < 5000; ++i) {
    random = random * 1664525U + 1013904223U;
    const auto port = static_cast<uint8_t>(random >> 16U);
    // Long runs of reads now and then, so that a write meets more lines than it allows.
    if ((i / 70) % 2 == 0 && (random >> 30U) != 0) {
      LogPortRead(log, port);
      slow.Add("R" + std::to_string(port), 100);
    } else {
      LogPortWrite(log, port);
      slow.Add("W" + std::to_string(port), 35);
    }
    ASSERT_EQ(log.count, slow.lines.size());
    for (uint32_t line = 0; line < log.count; ++line) ASSERT_EQ(log.Entry(line), slow.lines[line]);
  }
}

}  // namespace
}  // namespace quoll::test
