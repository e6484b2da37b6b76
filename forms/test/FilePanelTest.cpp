// The file panel, worked through the main window's table.
#include <gtest/gtest.h>

#include <algorithm>

#include "forms/FilePanel.h"
#include "forms/Forms.h"
#include "media/Snapshot.h"
#include "testkit/FolderTest.h"

namespace quoll::test {
namespace {

namespace fs = std::filesystem;
using List = std::vector<std::string>;

struct FilePanelTest : FolderTest {
  FilePanel& panel = m.panel;

  static ControlRef At(std::string_view name) { return TheControl("TScreen", name); }
  void Click(std::string_view name) { Press(m, At(name)); }
  void Type(std::string_view name, std::string_view text, bool enter = false) {
    SetText(m, At(name), text);
    if (enter) PressEnter(m, At(name));
  }
  // The place of an entry in a list.
  int32_t Place(std::string_view list, std::string_view entry) {
    const ListRef ref = ListOf(m, *At(list).control);
    int32_t place = 0;
    while (ref.Entry(static_cast<size_t>(place)) != entry) ++place;
    return place;
  }
  void Choose(std::string_view entry) { EXPECT_TRUE(ChooseEntry(m, At("File1"), Place("File1", entry))); }
  void Enter(std::string_view dir) { EXPECT_TRUE(DoubleClickEntry(m, At("Dir1"), Place("Dir1", dir))); }

  // A cassette file whose program is this byte.
  static void Cassette(const std::string& name, uint8_t byte) {
    Bytes file(145);
    file[144] = byte;
    WriteAll(name, file);
  }
  int Loaded() const { return m.MemImage[0x19EF]; }
};

TEST_F(FilePanelTest, EachMenuEntryOpensItsPanel) {
  struct Case {
    const char *entry, *caption, *pattern;
    bool boxes;
  };
  for (const auto& [entry, caption, pattern, boxes] :
       {Case{"xLoadCAS", "Open", "*.cas", false}, Case{"xSaveCAS", "Save", "*.cas", true},
        Case{"xLoadSnap", "Open", "*.tvs", false}, Case{"xSaveSnap", "Save", "*.tvs", false},
        Case{"xLoadCRT", "Open", "*.crt", false}, Case{"xLoadTim", "Open", "*.tim", false}}) {
    SCOPED_TRACE(entry);
    WriteAll("a" + std::string(pattern + 1), {});
    panel.window = {};
    panel.Text3 = "left over";
    Click(entry);
    EXPECT_EQ(panel.window, (FormState{.visible = true, .raise = true, .caption = caption}));
    EXPECT_EQ(panel.Text3, "");
    EXPECT_EQ(panel.Text5, pattern);
    EXPECT_EQ(panel.File1, (ListBox{{"a" + std::string(pattern + 1)}, -1}));
    EXPECT_EQ(panel.location, folder.string());
    for (const char* box : {"Text6", "Text7", "Text8"}) EXPECT_EQ(LookOf(m, At(box)).visible, boxes) << box;
  }
}

TEST_F(FilePanelTest, AChosenFileIsOpenedByTheButton) {
  Cassette("one.cas", 1);
  Cassette("two.cas", 2);
  Click("xLoadCAS");
  Choose("two.cas");
  EXPECT_EQ(panel.Text3, "two.cas");
  EXPECT_EQ(Loaded(), 0);
  Click("Command2");
  EXPECT_EQ(Loaded(), 2);
  EXPECT_FALSE(panel.window.visible);
  EXPECT_TRUE(m.screen.focusPicD);
}

TEST_F(FilePanelTest, ADoubleClickOrEnterOpensToo) {
  Cassette("one.cas", 1);
  Cassette("two.cas", 2);
  Click("xLoadCAS");
  EXPECT_TRUE(DoubleClickEntry(m, At("File1"), Place("File1", "one.cas")));
  EXPECT_EQ(Loaded(), 1);
  Click("xLoadCAS");
  Type("Text3", "two", true);  // the extension is added
  EXPECT_EQ(Loaded(), 2);
  EXPECT_FALSE(panel.window.visible);
}

// A file of just the typed name comes first.
TEST_F(FilePanelTest, ATypedNameNeedsNoExtension) {
  Cassette("game", 1);
  Cassette("game.cas", 2);
  for (const auto& [name, byte] : {std::pair("game", 1), {"game.cas", 2}}) {
    Click("xLoadCAS");
    Type("Text3", name, true);
    EXPECT_EQ(Loaded(), byte) << name;
  }
  Click("xLoadCAS");
  EXPECT_EQ(FilePanelFile(panel), "");
  Type("Text3", Path("game"));
  EXPECT_EQ(FilePanelFile(panel), Path("game"));  // a whole path counts as it is
}

TEST_F(FilePanelTest, WithoutANameItStays) {
  Click("xLoadCAS");
  Click("Command2");
  EXPECT_EQ(panel.error, "Choose a file or type its name.");
  EXPECT_TRUE(panel.window.visible);
  Click("xSaveSnap");
  EXPECT_EQ(panel.error, "");  // opened anew
  Type("Text3", "", true);
  EXPECT_EQ(*FieldOf<std::string>(m, At("Frame1Error")), "Choose a file or type its name.");
  EXPECT_TRUE(NamesIn(folder).empty());
}

TEST_F(FilePanelTest, AFileThatCantBeReadIsToldInThePanel) {
  fs::create_directory("dir.tvs");
  WriteAll("closed.tvs", {1});
  fs::permissions("closed.tvs", fs::perms::none);
  Click("xLoadSnap");
  const ReadOnlyFolder asNobody(folder);
  for (const auto& [name, reason] : {std::pair("none", "No such file or directory"),
                                     {"dir", "it is a directory"},
                                     {"closed", "Permission denied"}}) {
    Type("Text3", name, true);
    EXPECT_EQ(panel.error, Path(name) + ".tvs: " + reason);
    EXPECT_TRUE(panel.window.visible);
    EXPECT_FALSE(m.screen.focusPicD);
  }
  EXPECT_TRUE(host.messages.empty());
}

TEST_F(FilePanelTest, CancelHidesIt) {
  Cassette("one.cas", 1);
  Click("xLoadCAS");
  Choose("one.cas");
  Click("Frame1Cancel");
  EXPECT_FALSE(panel.window.visible);
  EXPECT_TRUE(m.screen.focusPicD);
  EXPECT_EQ(Loaded(), 0);
}

TEST_F(FilePanelTest, FoldersAreWalkedByDoubleClicks) {
  fs::create_directories("inside/deeper");
  fs::create_directory("beside");
  Cassette("inside/one.cas", 1);
  Click("xLoadCAS");
  EXPECT_EQ(panel.Dir1.entries, (List{"..", "beside", "inside"}));
  Enter("inside");
  EXPECT_EQ(panel.location, Path("inside"));
  EXPECT_EQ(panel.Dir1.entries, (List{"..", "deeper"}));
  EXPECT_EQ(panel.File1.entries, List{"one.cas"});
  Enter("deeper");
  EXPECT_EQ(panel.File1.entries, List());
  Enter("..");
  EXPECT_EQ(panel.location, Path("inside"));
  Click("Frame1Cancel");
  Click("xLoadCAS");  // it stays as chosen
  Type("Text3", "one", true);
  EXPECT_EQ(Loaded(), 1);
}

TEST_F(FilePanelTest, TheRootHasNoneAbove) {
  Click("xLoadCAS");
  ShowFolder(panel, "/");
  EXPECT_EQ(panel.location, "/");
  EXPECT_EQ(std::ranges::count(panel.Dir1.entries, ".."), 0);
}

TEST_F(FilePanelTest, AFolderThatCantBeReadIsNotGoneTo) {
  fs::create_directory("closed");
  fs::permissions("closed", fs::perms::none);
  WriteAll("one.cas", {});
  const ReadOnlyFolder asNobody(folder);
  Click("xLoadCAS");
  Enter("closed");
  EXPECT_EQ(panel.error, Path("closed") + ": Permission denied");
  EXPECT_EQ(panel.location, folder.string());
  EXPECT_EQ(panel.File1.entries, List{"one.cas"});
}

// The one that is shown may have gone meanwhile.
TEST_F(FilePanelTest, AFolderThatHasGoneIsEmpty) {
  fs::create_directory("inside");
  Click("xLoadCAS");
  Enter("inside");
  fs::remove("inside");
  Click("xLoadCAS");
  EXPECT_EQ(panel.error, Path("inside") + ": No such file or directory");
  EXPECT_EQ(panel.File1.entries, List());
  EXPECT_EQ(panel.Dir1.entries, List{".."});
  EXPECT_TRUE(panel.window.visible);
  Enter("..");
  EXPECT_EQ(panel.location, folder.string());
}

TEST_F(FilePanelTest, APatternFiltersAndMayChangeTheAction) {
  Cassette("one.cas", 1);
  WriteAll("one.tim", {});
  WriteAll("readme", {});
  Click("xLoadCAS");
  Type("Text5", "*");  // each letter alone does nothing yet
  EXPECT_EQ(panel.File1.entries, List{"one.cas"});
  PressEnter(m, At("Text5"));
  EXPECT_EQ(panel.File1.entries, (List{"one.cas", "one.tim", "readme"}));
  Choose("one.cas");
  Click("Command2");  // still that of cassette files
  EXPECT_EQ(Loaded(), 1);

  Click("xSaveCAS");
  EXPECT_TRUE(LookOf(m, At("Text6")).visible);
  Type("Text5", "*.tim", true);  // can't be saved: only a filter
  EXPECT_EQ(panel.pattern, "*.cas");
  Type("Text5", "*.tvs", true);
  EXPECT_EQ(panel.pattern, "*.tvs");
  EXPECT_FALSE(LookOf(m, At("Text6")).visible);
  Type("Text3", "saved", true);
  EXPECT_EQ(fs::file_size("saved.tvs"), 246'360U);
  Click("xSaveSnap");
  Type("Text5", "*.cas", true);
  EXPECT_TRUE(LookOf(m, At("Text8")).visible);
}

TEST_F(FilePanelTest, ASavedCassetteTakesTheBoxesNumbers) {
  m.PortShadow[2] = kAllRam;
  Put(m, 0x1720, {0x34, 0x12, 0xEF, 0x19, 0, 0, 0x00, 0x20});
  Put(m, 0x2000, {1, 2, 3, 4});
  Click("xSaveCAS");
  EXPECT_EQ(panel.Text6, "6639");  // 0x19EF
  EXPECT_EQ(panel.Text7, "8192");
  EXPECT_EQ(panel.Text8, "4660");
  Type("Text3", "mine");
  Type("Text6", "&H2000");
  Type("Text7", "&H2004", true);  // Enter saves
  const Bytes file = ReadAll("mine.cas");
  ASSERT_EQ(file.size(), 148U);
  EXPECT_EQ(Bytes(file.begin() + 144, file.end()), (Bytes{1, 2, 3, 4}));
  EXPECT_EQ(panel.Text6, "8192");
  EXPECT_EQ(panel.Text7, "8196");
  EXPECT_FALSE(panel.window.visible);
}

// The panel stays for another name, with the one that was typed.
TEST_F(FilePanelTest, ASaveThatFailsIsToldInABox) {
  Click("xSaveSnap");
  panel.window.raise = false;
  const ReadOnlyFolder readOnly(folder);
  Type("Text3", "a", true);
  ExpectBox(Path("a.tvs"), "Permission denied");
  EXPECT_TRUE(panel.window.visible);
  EXPECT_TRUE(panel.window.raise);
  EXPECT_EQ(panel.Text3, "a");
  EXPECT_FALSE(m.screen.focusPicD);
}

TEST_F(FilePanelTest, AFileThatIsNotValidLeavesThePanel) {
  WriteAll("a.tvs", {1, 2, 3});
  Click("xLoadSnap");
  Type("Text3", "a", true);
  ASSERT_EQ(host.messages.size(), 1U);
  EXPECT_EQ(host.messages[0].text, "Snapshot not valid!");
  EXPECT_TRUE(panel.window.visible);
  EXPECT_EQ(panel.Text3, "a");
}

// Whatever the panel was opened for: a snapshot is never taken for a program.
TEST_F(FilePanelTest, AFileOfAnotherKindOpensAsThatKind) {
  m.MemImage[0x3000] = 0x77;
  ASSERT_TRUE(SaveSnapshot(m, Path("Snap.TVS")));
  m.MemImage[0x3000] = 0;
  const uint8_t before = m.MemImage[0x19EF];
  Click("xLoadCAS");
  Type("Text5", "*", true);
  Choose("Snap.TVS");
  Click("Command2");
  EXPECT_EQ(m.MemImage[0x3000], 0x77);
  EXPECT_EQ(Loaded(), before);
  m.MemImage[0x3000] = 0;
  Click("xLoadTim");
  Type("Text3", "Snap.TVS", true);
  EXPECT_EQ(m.MemImage[0x3000], 0x77);
  Cassette("prog.cas", 9);
  Click("xLoadSnap");
  Type("Text3", "prog.cas", true);
  EXPECT_EQ(Loaded(), 9);
  EXPECT_TRUE(host.messages.empty());
}

TEST_F(FilePanelTest, ATypedFolderIsWalkedInto) {
  fs::create_directories("inside/deeper");
  Cassette("inside/one.cas", 1);
  for (const char* entry : {"xLoadCAS", "xSaveCAS"}) {
    Click(entry);
    Type("Text3", "inside", true);
    EXPECT_EQ(panel.location, Path("inside"));
    EXPECT_EQ(panel.Text3, "");
    EXPECT_EQ(panel.File1.entries, List{"one.cas"});
    Type("Text3", "./deeper/", true);
    EXPECT_EQ(panel.location, Path("inside/deeper"));
    Type("Text3", "..", true);
    EXPECT_EQ(panel.location, Path("inside"));
    Type("Text3", ".", true);
    EXPECT_EQ(panel.location, Path("inside"));
    Type("Text3", folder.string() + "/", true);
    EXPECT_EQ(panel.location, folder.string());
    EXPECT_TRUE(panel.window.visible);
    EXPECT_EQ(panel.error, "");
  }
  EXPECT_EQ(NamesIn("inside"), (List{"deeper", "one.cas"}));
  EXPECT_EQ(Names(), List{"inside"});
}

TEST_F(FilePanelTest, ANameThatEndsInASlashIsNoFile) {
  for (const char* entry : {"xSaveCAS", "xSaveSnap", "xLoadCRT"}) {
    Click(entry);
    Type("Text3", "sub/", true);
    EXPECT_EQ(panel.error, "sub/: there is no such folder");
    EXPECT_EQ(panel.Text3, "sub/");
    EXPECT_TRUE(panel.window.visible);
  }
  EXPECT_TRUE(Names().empty());
}

// An entry chosen before may have asked for the keyboard to go to the picture.
TEST_F(FilePanelTest, TheKeyboardIsThePanels) {
  Click("xSound");
  EXPECT_TRUE(m.screen.focusPicD);
  Click("xLoadCAS");
  EXPECT_FALSE(m.screen.focusPicD);
  EXPECT_TRUE(panel.window.raise);
}

TEST_F(FilePanelTest, TakingTheCartridgeOutHidesIt) {
  for (const RomFile& rom : kRomFiles) WriteAll(rom.name, Bytes(rom.size));
  Click("xLoadCRT");
  Click("xUnloadCRT");
  EXPECT_FALSE(panel.window.visible);
}

}  // namespace
}  // namespace quoll::test
