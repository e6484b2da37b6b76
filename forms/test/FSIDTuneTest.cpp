// The SID's window as a player of register dumps.
#include "forms/test/ChipBench.h"
#include "machine/MachineInit.h"

namespace quoll::test {

namespace {

constexpr const char* kForm = "FSID";

// A SIDX: seven lines of header, then a line for each frequency given, a note in voice 1.
Bytes Sidx(std::initializer_list<int> notes, const char* filter = "Low", const char* lineEnd = "\n") {
  std::string text;
  for (int line = 0; line < 7; ++line) text += "header 1234" + std::string(lineEnd);
  for (const int note : notes) {
    std::string line(110, '.');
    char hex[8];
    std::snprintf(hex, sizeof hex, "%04X", note);
    line.replace(10, 4, hex);
    line.replace(24, 2, "21");
    line.replace(102, 3, filter);
    line.replace(106, 1, "F");
    text += line + lineEnd;
  }
  return {text.begin(), text.end()};
}

// A DMP of records whose bytes are all the number given.
Bytes Dmp(std::initializer_list<int> records) {
  Bytes bytes;
  for (const int record : records) bytes.insert(bytes.end(), 25, static_cast<uint8_t>(record));
  return bytes;
}

struct FSIDTuneTest : ChipBench {
  Sid6581& sid = m.card.sid;

  void Choose(const char* option) { Tick(kForm, option); }
  void Click(int entry) { EXPECT_TRUE(ChooseEntry(m, TheControl(kForm, "File1"), entry)); }
  int Note() const { return sid.SID_Reg[1] * 256 + sid.SID_Reg[0]; }
};

TEST_F(FSIDTuneTest, ASidxPlaysALineAFrame) {
  for (const char* lineEnd : {"\n", "\r\n", "\r"}) {
    WriteAll(Path("a.sidx"), Sidx({0x1234, 0x0801, 0x0FFF}, "Low", lineEnd));
    Choose("Option1");
    Choose("Option2");
    EXPECT_EQ(m.fsid.File1.Selected(), "a.sidx");
    for (const int note : {0x1234, 0x0801, 0x0FFF, 0x0FFF, 0x0FFF}) {
      Frame();
      EXPECT_EQ(Note(), note);
      EXPECT_EQ(sid.SID_Reg[24], 0x1F);
    }
  }
  EXPECT_TRUE(host.messages.empty());
}

TEST_F(FSIDTuneTest, ADmpPlaysARecordAFrame) {
  WriteAll(Path("b.DMP"), Dmp({3, 200, 77}));
  Choose("Option3");
  for (const int byte : {3, 200, 77, 77}) {
    Frame();
    for (int reg = 0; reg < 25; ++reg) ASSERT_EQ(sid.SID_Reg[reg], byte);
    EXPECT_EQ(sid.SID_Reg[25], 0);
  }
}

TEST_F(FSIDTuneTest, ADumpAdvancesAtVolume0) {
  WriteAll(Path("b.dmp"), Dmp({0x10, 0x20, 0x30, 0x3F}));
  Choose("Option3");
  for (const int byte : {0x10, 0x20, 0x30}) {
    Frame();
    EXPECT_EQ(sid.SID_Reg[0], byte);
    EXPECT_EQ(sid.SidOut, FrameSamples{});
    EXPECT_EQ(sid.silent, 1);
  }
}

TEST_F(FSIDTuneTest, WithTheCardOffTheFileStands) {
  WriteAll(Path("b.dmp"), Dmp({1, 2, 3}));
  Choose("Option3");
  Frame();
  m.screen.xio2 = false;
  Block();
  m.screen.xio2 = true;
  Frame();
  EXPECT_EQ(sid.SID_Reg[0], 2);
}

TEST_F(FSIDTuneTest, NoFileEmptiesTheListAndStops) {
  WriteAll(Path("b.dmp"), Dmp({1, 2, 3}));
  Choose("Option3");
  Frame();
  Choose("Option1");
  EXPECT_TRUE(m.fsid.File1.entries.empty());
  EXPECT_EQ(m.fsid.File1.selected, -1);
  Frame();
  EXPECT_EQ(sid.SID_Reg[0], 1);
  EXPECT_FALSE(m.fsid.Option3);
}

TEST_F(FSIDTuneTest, TheListHasTheWorkingDirectoryThenTheProgramFolder) {
  std::filesystem::create_directory(folder / "program");
  m.programFolder = Path("program");
  for (const char* name : {"m.sidx", "B.sidx", "x.dmp", "n.txt"}) WriteAll(Path(name), Sidx({1}));
  for (const char* name : {"a.sidx", "m.sidx", "z.SIDX", "y.dmp"})
    WriteAll(folder / "program" / name, Sidx({2}));
  Choose("Option2");
  EXPECT_EQ(m.fsid.File1.entries, (std::vector<std::string>{"B.sidx", "m.sidx", "a.sidx", "z.SIDX"}));
  EXPECT_EQ(m.fsid.File1.selected, 0);
  for (int entry = 0; entry < 4; ++entry) {
    Click(entry);
    Frame();
    EXPECT_EQ(Note(), entry < 2 ? 1 : 2) << entry;
  }
  Choose("Option3");
  EXPECT_EQ(m.fsid.File1.entries, (std::vector<std::string>{"x.dmp", "y.dmp"}));
  EXPECT_EQ(m.fsid.File1.selected, 0);
}

TEST_F(FSIDTuneTest, ChoosingTheFormatAgainKeepsTheFileAndBeginsIt) {
  WriteAll(Path("a.dmp"), Dmp({1, 2}));
  WriteAll(Path("b.dmp"), Dmp({3, 4}));
  Choose("Option3");
  Click(1);
  Frame();
  Frame();
  EXPECT_EQ(sid.SID_Reg[0], 4);
  WriteAll(Path("aa.dmp"), Dmp({5}));
  Choose("Option3");
  EXPECT_EQ(m.fsid.File1.Selected(), "b.dmp");
  EXPECT_EQ(m.fsid.File1.selected, 2);
  Frame();
  EXPECT_EQ(sid.SID_Reg[0], 3);
}

TEST_F(FSIDTuneTest, AClickResetsTheChipAndOptionsDoNot) {
  WriteAll(Path("a.sidx"), Sidx({0x0102}));
  Out(0x38, 20);
  Out(0x39, 0x99);
  sid.SidPhase = {0.5F, 0.5F, 0.5F};
  Choose("Option2");
  EXPECT_EQ(sid.SID_Reg[20], 0x99);
  Click(0);
  EXPECT_EQ(sid.SID_Reg[20], 0);
  EXPECT_EQ(sid.SidPhase[1], 0);
  EXPECT_EQ(sid.SID_Voice[2].sustain, 0);  // decoded anew
  Frame();
  EXPECT_EQ(Note(), 0x0102);
}

TEST_F(FSIDTuneTest, AnUnknownFilterWordIsTold) {
  WriteAll(Path("a.sidx"), Sidx({1, 2}, "Zap"));
  Choose("Option2");
  Frame();
  ASSERT_EQ(host.messages.size(), 1U);
  EXPECT_EQ(host.messages[0].text, "hiba");
  EXPECT_EQ(host.messages[0].title, "Zap");
  EXPECT_EQ(sid.SID_Reg[24], 15);
  Frame();
  EXPECT_EQ(host.messages.size(), 2U);
}

TEST_F(FSIDTuneTest, BadFilesAreToldAndNothingPlays) {
  struct Case {
    const char* name;
    Bytes bytes;
    const char* message;
  };
  const std::vector<Case> cases{
      {"empty.dmp", {}, "The file is empty."},
      {"short.dmp", Bytes(24, 1), "The file is shorter than one record of 25 bytes."},
      {"huge.dmp", Bytes((size_t{16} << 20U) + 1), "The file is larger than 16 MB, which no tune is."},
      {"empty.sidx", {}, "The file is empty."},
      {"header.sidx", Sidx({}), "The file ends with its header of seven lines, or within it."},
      {"noline.sidx", Bytes(100, 'x'), "The file ends with its header of seven lines, or within it."},
  };
  for (const Case& each : cases) {
    SCOPED_TRACE(each.name);
    WriteAll(Path(each.name), each.bytes);
    sid.SID_Reg.fill(9);
    host.messages.clear();
    Choose("Option1");
    Choose(std::string_view(each.name).ends_with("dmp") ? "Option3" : "Option2");
    ExpectBox(each.name, each.message);
    Frame();
    EXPECT_EQ(sid.SID_Reg[0], 9);
    std::filesystem::remove(Path(each.name));
  }
}

TEST_F(FSIDTuneTest, HalfARecordAtTheEndIsToldAndNotPlayed) {
  Bytes bytes = Dmp({5, 6});
  bytes.resize(40);
  WriteAll(Path("a.dmp"), bytes);
  Choose("Option3");
  ExpectBox("a.dmp", "The file's last record is cut short. It is not played.");
  for (int frame = 0; frame < 3; ++frame) {
    Frame();
    EXPECT_EQ(sid.SID_Reg[24], 5);
  }
}

TEST_F(FSIDTuneTest, AnUnreadableFileIsTold) {
  WriteAll(Path("a.dmp"), Dmp({1}));
  WriteAll(Path("b.dmp"), Dmp({2}));
  Choose("Option3");
  std::filesystem::remove(Path("b.dmp"));
  std::filesystem::create_directory(Path("b.dmp"));
  Click(1);
  ASSERT_EQ(host.messages.size(), 1U);
  EXPECT_EQ(host.messages[0].title, "Error");
  EXPECT_TRUE(host.messages[0].text.starts_with("b.dmp: ")) << host.messages[0].text;
  Frame();
  EXPECT_EQ(sid.SID_Reg[0], 0);
}

TEST_F(FSIDTuneTest, AFileThatIsGoneIsNoError) {
  WriteAll(Path("a.dmp"), Dmp({1}));
  Choose("Option3");
  std::filesystem::remove(Path("a.dmp"));
  Click(0);
  Frame();
  EXPECT_TRUE(host.messages.empty());
  EXPECT_EQ(sid.SID_Reg[0], 0);
}

TEST_F(FSIDTuneTest, AnEmptyListPlaysNothing) {
  Choose("Option2");
  EXPECT_TRUE(m.fsid.File1.entries.empty());
  EXPECT_EQ(m.fsid.File1.selected, -1);
  Frame();
  EXPECT_TRUE(host.messages.empty());
}

// A new machine has "ninja.txt" open, which nobody hears until a file has been chosen.
TEST_F(FSIDTuneTest, ANewMachineHasNinjaOpen) {
  for (const auto& [name, size] : {std::pair{"TVC22_D6.rom", 8192},
                                   {"TVC22_D4.rom", 8192},
                                   {"TVC22_D7.rom", 8192},
                                   {"sndmx.rom", 32768}})
    WriteAll(Path(name), Bytes(static_cast<size_t>(size)));
  MachineInit(m);
  EXPECT_EQ(m.card.tune, SidTune{});
  WriteAll(Path("ninja.txt"), Sidx({0x0777}));
  MachineInit(m);
  Frame();
  EXPECT_EQ(Note(), 0);
  // A list with a file chosen plays what is open, and that is ninja.
  WriteAll(Path("a.sidx"), Sidx({0x0111, 0x0222}));
  Choose("Option2");
  MachineInit(m);
  Frame();
  EXPECT_EQ(Note(), 0x0777);
  EXPECT_TRUE(host.messages.empty());
}

}  // namespace

}  // namespace quoll::test
