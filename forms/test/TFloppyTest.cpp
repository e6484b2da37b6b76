// The disk's form.
#include "forms/FileActions.h"
#include "forms/Forms.h"
#include "forms/TFloppy.h"
#include "loop/Start.h"
#include "machine/MachineInit.h"
#include "machine/Ports.h"
#include "testkit/FolderTest.h"

namespace quoll::test {

namespace {

struct TFloppyTest : FolderTest {
  TFloppy& form = m.tfloppy;

  void Show() { Press(m, TheControl("TScreen", "xdiskload")); }
  bool Choose(int32_t entry) { return ChooseEntry(m, TheControl("TFloppy", "File1"), entry); }
  int32_t FirstByte() {
    m.floppy.FdcCount = 0;
    return PortIn(m, 0x13);
  }
};

TEST_F(TFloppyTest, TheMenuShowsTheListOfTheFilePanelsFolder) {
  std::filesystem::create_directory(folder / "disks");
  for (const char* name : {"b.dsk", "A.DSK", "c.dsk.bak", "d.cas"}) WriteAll(folder / "disks" / name, {1});
  Show();
  EXPECT_TRUE(form.window.visible && form.window.raise);
  EXPECT_TRUE(form.File1.entries.empty());
  m.panel.folder = Path("disks");
  Show();
  EXPECT_EQ(form.File1.entries, (std::vector<std::string>{"A.DSK", "b.dsk"}));
  EXPECT_EQ(form.File1.selected, -1);
}

TEST_F(TFloppyTest, AChosenImageIsInTheDriveAtOnce) {
  WriteAll(Path("one.dsk"), {11, 12});
  WriteAll(Path("two.dsk"), {22});
  Show();
  m.panel.folder = Path("elsewhere");  // the list still shows the other one
  ASSERT_TRUE(Choose(0));
  EXPECT_EQ(form.Label1, "one.dsk");
  EXPECT_EQ(FirstByte(), 11);
  ASSERT_TRUE(Choose(1));
  EXPECT_EQ(form.Label1, "two.dsk");
  EXPECT_EQ(FirstByte(), 22);
  EXPECT_EQ(PortIn(m, 0x13), 12) << "a shorter image leaves what lies behind it";
  EXPECT_FALSE(Choose(2));
  EXPECT_TRUE(host.messages.empty());
}

// What the user has asked for and can't be had is told, and the disk stays.
TEST_F(TFloppyTest, ABadImageIsTold) {
  WriteAll(Path("good.dsk"), {11});
  WriteAll(Path("empty.dsk"), {});
  std::filesystem::create_directory(folder / "folder.dsk");
  TFloppy_Insert(m, Path("good.dsk"));
  EXPECT_TRUE(host.messages.empty());
  const std::pair<const char*, const char*> rows[] = {{"empty.dsk", "it is empty"},
                                                      {"folder.dsk", "it is a directory"},
                                                      {"missing.dsk", "No such file or directory"}};
  for (const auto& [name, reason] : rows) {
    host.messages.clear();
    TFloppy_Insert(m, Path(name));
    ExpectBox(Path(name), reason);
    EXPECT_EQ(form.Label1, "good.dsk");
    EXPECT_EQ(FirstByte(), 11);
  }
}

// One that the list still shows but is gone meanwhile.
TEST_F(TFloppyTest, AVanishedEntryIsTold) {
  WriteAll(Path("one.dsk"), {11});
  Show();
  std::filesystem::remove(Path("one.dsk"));
  ASSERT_TRUE(Choose(0));
  EXPECT_EQ(host.messages.size(), 1U);
  EXPECT_EQ(form.Label1, "");
}

TEST_F(TFloppyTest, ADroppedImageIsOpened) {
  WriteAll(Path("dropped.DSK"), {33});
  OpenBySuffix(m, Path("dropped.DSK"));
  EXPECT_EQ(form.Label1, "dropped.DSK");
  EXPECT_EQ(FirstByte(), 33);
  ASSERT_NE(FindFileAction("*.dsk"), nullptr);
  EXPECT_EQ(FindFileAction("*.dsk")->save, nullptr);
}

struct StartTest : TFloppyTest {
  StartTest() {
    for (const char* rom : {"TVC22_D6.rom", "TVC22_D4.rom", "TVC22_D7.rom"})
      WriteAll(Path(rom), Bytes(0x2000, 0));
  }
};

TEST_F(StartTest, TheFirstDiskIsThatOfTheProgramFolder) {
  WriteAll(Path("default.dsk"), {44});
  std::filesystem::create_directory(folder / "elsewhere");
  std::filesystem::current_path(folder / "elsewhere");
  StartMachine(m);
  EXPECT_EQ(FirstByte(), 44);
  EXPECT_EQ(form.Label1, "default.dsk");
}

// Nobody has asked for it, so nobody is told.
TEST_F(StartTest, AFirstDiskThatIsNoneLeavesZeros) {
  for (const int kind : {0, 1, 2}) {
    if (kind == 1) std::filesystem::create_directory(folder / "default.dsk");
    if (kind == 2) {
      std::filesystem::remove(folder / "default.dsk");
      WriteAll(Path("default.dsk"), {});
    }
    StartMachine(m);
    EXPECT_EQ(FirstByte(), 0);
    EXPECT_EQ(form.Label1, "");
    EXPECT_TRUE(host.messages.empty());
  }
}

TEST_F(StartTest, DiskAndRegistersSurviveResetAndRebuild) {
  WriteAll(Path("default.dsk"), Bytes(4096, 55));
  StartMachine(m);
  int32_t value = 3;
  PortOut(m, 0x11, value);
  value = 0x12;
  PortOut(m, 0x10, value);  // seek
  PortIn(m, 0x13);
  const Floppy before = m.floppy;
  MachineReset(m);
  EXPECT_TRUE(m.floppy == before);
  RebuildMachine(m);
  EXPECT_TRUE(m.floppy == before);
  EXPECT_EQ(form.Label1, "default.dsk");
}

struct LinkHost : TestHost {
  std::string mapsError;
  bool companion = true;
  std::vector<std::string> calls;

  std::string CreateMaps() override {
    calls.emplace_back("maps");
    return mapsError;
  }
  bool CallCompanion(CompanionCall call, const std::string& programFolder) override {
    calls.push_back((call == CompanionCall::Start ? "start " : "other ") + programFolder);
    return companion;
  }
};

// The memories come first: the companion joins them.
TEST_F(StartTest, MemoriesAndCompanionAreAskedForOnce) {
  LinkHost links;
  m.host = &links;
  StartMachine(m);
  EXPECT_EQ(links.calls, (std::vector<std::string>{"maps", "start " + m.programFolder}));
  EXPECT_TRUE(links.messages.empty());
}

TEST_F(StartTest, WithoutThemTheMachineStartsAllTheSame) {
  LinkHost links;
  links.companion = false;
  links.mapsError = "CreateFileMapping system error 13";
  m.host = &links;
  StartMachine(m);
  ASSERT_EQ(links.messages.size(), 2U);
  EXPECT_EQ(links.messages[0].text, "CreateFileMapping system error 13");
  EXPECT_EQ(links.messages[1].text, "Not Found : QUOLLserial.exe");
  EXPECT_EQ(m.MemImage[0x18000], 0);
  EXPECT_FALSE(m.mixer.WavImage.empty());
}

}  // namespace

}  // namespace quoll::test
