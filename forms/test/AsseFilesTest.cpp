// The assembler's file panel, its files and its pictures.
#include "forms/test/AsseBench.h"
#include "loop/Redraw.h"

namespace quoll::test {
namespace {

using List = std::vector<std::string>;

constexpr std::string_view kHungarian1250 = "'\xC1rv\xEDzt\xFBr\xF5 \x81\r\nnop\n\n\r'x\r\r\nret";

struct AsseFilesTest : AsseBench {
  AsseFilesTest() {
    for (const char* name : {"a.asm", "B.ASM", "c.tvcasm", "p.bmp", "q.JPG", "r.gif", "s.wav", "t.png"})
      File(name, std::string("'") + name + "\n");
    std::filesystem::create_directory(folder / "inner");
    File("inner/z.asm", "'z\n");
  }

  void Open(const std::string& file) {
    Press("xOpen");
    Choose("File1", file);
    Press("Command14");
  }
  void SaveAs(const std::string& file) {
    Press("xSave");
    Type("Text16", file);
    Press("Command14");
  }
  void ExpectFileError() {
    ASSERT_EQ(desk.messages.size(), 1U);
    EXPECT_EQ(desk.messages[0].text, "File Open error!");
    desk.messages.clear();
  }
};

TEST_F(AsseFilesTest, TheMenusShowAndHideThePanel) {
  struct Row {
    const char *entry, *caption;
    bool visible;
  };
  for (const Row& row : {Row{"xOpen", "OPEN", true},
                         {"xSave", "SAVE", true},
                         {"xEdit", "SAVE", false},
                         {"xOpen", "OPEN", true},
                         {"Command15", "OPEN", false}}) {
    Press(row.entry);
    EXPECT_EQ(LookOf(m, Ref("File1")).visible, row.visible) << row.entry;
    EXPECT_EQ(files.Command14Caption, row.caption);
  }
}

TEST_F(AsseFilesTest, TheTypeFiltersTheFiles) {
  Press("xOpen");
  EXPECT_EQ(files.File1.entries, (List{"a.asm", "B.ASM", "c.tvcasm"}));
  struct Row {
    const char* type;
    List files;
  };
  for (const Row& row : {Row{"tvcasm", {"c.tvcasm"}},
                         {"picture", {"p.bmp", "q.JPG", "r.gif"}},
                         {"sound", {"s.wav"}},
                         {"asm", {"a.asm", "B.ASM"}}}) {
    Choose("Combo1", row.type);
    EXPECT_EQ(files.File1.entries, row.files);
  }
}

TEST_F(AsseFilesTest, FoldersAndDrivesFollowEachOther) {
  Press("xOpen");
  EXPECT_EQ(files.folder, std::filesystem::current_path());
  EXPECT_EQ(files.Drive1.entries[0], "/");
  EXPECT_EQ(files.Drive1.Selected(), "/");
  EXPECT_EQ(files.Dir1.entries, (List{"..", "inner"}));
  DoubleClickOn("Dir1", "inner");
  EXPECT_EQ(files.File1.entries, List{"z.asm"});
  DoubleClickOn("Dir1", "..");
  EXPECT_EQ(files.folder, std::filesystem::current_path());
  Choose("Drive1", "/");
  EXPECT_EQ(files.folder, "/");
  EXPECT_EQ(std::ranges::count(files.Dir1.entries, ".."), 0);
}

TEST_F(AsseFilesTest, AFolderThatHasGoneIsTold) {
  Press("xOpen");
  std::filesystem::remove_all(folder / "inner");
  DoubleClickOn("Dir1", "inner");
  ExpectFileError();
  EXPECT_EQ(files.folder, std::filesystem::current_path());
}

TEST_F(AsseFilesTest, OpenTakesTheFile) {
  Type("RText1", "old");
  form.editor.ErrorLine = 1;
  Open("a.asm");
  EXPECT_EQ(Source(), "'a.asm\n");
  EXPECT_EQ(files.Text16, "a.asm");
  EXPECT_FALSE(files.Frame2Look.visible);
  EXPECT_EQ(form.editor.texts, form.editor.savedTexts);
  EXPECT_EQ(form.editor.ErrorLine, 0);
  EXPECT_EQ(form.source.folder, std::filesystem::current_path());
}

TEST_F(AsseFilesTest, SourcesComeBackByteForByte) {
  struct Row {
    std::string bytes, text;
    SourceCode code;
  };
  for (const Row& row : {
           Row{"", "", SourceCode::Utf8},
           {"nop\r\n\tret", "nop\r\n\tret", SourceCode::Utf8},
           {"'\xC3\xA1\n\r\r\n\xE2\x86\x92", "'\xC3\xA1\n\r\r\n\xE2\x86\x92", SourceCode::Utf8},
           {"\xEF\xBB\xBFnop\n", "nop\n", SourceCode::Utf8WithMark},
           {std::string("a\0b", 3), std::string("a\0b", 3), SourceCode::Utf8},
           {std::string(kHungarian1250),
            "'\xC3\x81rv\xC3\xADzt\xC5\xB1r\xC5\x91 \xC2\x81\r\nnop\n\n\r'x\r\r\nret", SourceCode::Cp1250},
       }) {
    File("a.asm", row.bytes);
    Open("a.asm");
    EXPECT_EQ(Source(), row.text);
    EXPECT_EQ(form.source.code, row.code);
    SaveAs("new.asm");
    EXPECT_EQ(Content("new.asm"), row.bytes);
  }
}

// Each byte by itself, in a file that is no UTF-8.
TEST_F(AsseFilesTest, EachByteOfCodePage1250ComesBack) {
  std::string bytes;
  for (int byte = 0; byte < 256; ++byte) bytes += static_cast<char>(byte);
  File("a.asm", bytes);
  Open("a.asm");
  SaveAs("b2.asm");
  EXPECT_EQ(Content("b2.asm"), bytes);
}

TEST_F(AsseFilesTest, OnlyWhatIsEditedChanges) {
  File("a.asm", kHungarian1250);
  Open("a.asm");
  const std::vector<std::string> with{"nop '\xC3\xA9", "di"};
  EditSource(m, 1, 1, with);
  EXPECT_NE(form.editor.texts, form.editor.savedTexts);
  SaveAs("a.asm");
  EXPECT_EQ(Content("a.asm"), "'\xC1rv\xEDzt\xFBr\xF5 \x81\r\nnop '\xE9\r\ndi\n\n\r'x\r\r\nret");
  EXPECT_EQ(form.editor.texts, form.editor.savedTexts);
}

TEST_F(AsseFilesTest, ACharacterThatTheCodePageLacksMakesTheFileUtf8) {
  File("a.asm", "'\xE1");
  Open("a.asm");
  Type("RText1", Source() + "\xE2\x86\x92");
  SaveAs("a.asm");
  EXPECT_EQ(Content("a.asm"), "'\xC3\xA1\xE2\x86\x92");
  EXPECT_EQ(form.source.code, SourceCode::Utf8);
}

TEST_F(AsseFilesTest, SaveGoesBesideAndHarmsNoOldFile) {
  Type("RText1", std::string(5000, 'x'));
  const std::string old = Content("a.asm");
  {
    const FullDisk full(1000);
    SaveAs("a.asm");
  }
  ExpectFileError();
  EXPECT_EQ(Content("a.asm"), old);
  {
    const ReadOnlyFolder readOnly(folder);
    SaveAs("a.asm");
  }
  ExpectFileError();
  EXPECT_EQ(Content("a.asm"), old);
  EXPECT_FALSE(files.Frame2Look.visible);
  const List before = Names();
  SaveAs("a.asm");
  EXPECT_EQ(Content("a.asm"), std::string(5000, 'x'));
  EXPECT_EQ(Names(), before);
}

TEST_F(AsseFilesTest, WhatCantBeOpenedOrSavedIsTold) {
  Type("RText1", "old");
  Press("xOpen");
  Choose("File1", "a.asm");
  std::filesystem::remove(folder / "a.asm");
  Press("Command14");
  ExpectFileError();
  EXPECT_EQ(Source(), "old");
  for (const std::string& name :
       std::vector<std::string>{"", "inner", "none/x.asm", "..", std::string("a\0b", 3)}) {
    SaveAs(name);
    ExpectFileError();
  }
  EXPECT_FALSE(OpenSource(m, Path("inner")));
  ExpectFileError();
}

TEST_F(AsseFilesTest, AFileThatIsPickedGivesItsNameToASave) {
  Press("xOpen");
  Choose("File1", "a.asm");
  EXPECT_EQ(files.Text16, "");
  Press("xSave");
  Choose("File1", "B.ASM");
  EXPECT_EQ(files.Text16, "B.ASM");
}

TEST_F(AsseFilesTest, EnterInTheNameOpensIt) {
  Press("xOpen");
  Type("Text16", "inner/z.asm");
  Enter("Text16");
  EXPECT_EQ(Source(), "'z\n");
}

TEST_F(AsseFilesTest, ADoubleClickSavesTheListingWithItsColours) {
  Type("RText1", "'\xC3\xA1{\\}\nnop");
  Press("Command1");
  DoubleClick(m, Ref("RText2"));
  const std::string rich = Content("RichTextBox.rtf");
  EXPECT_EQ(rich,
            "{\\rtf1\\ansi\\ansicpg1250\\deff0{\\fonttbl{\\f0\\fmodern Courier New;}}\r\n"
            "{\\colortbl ;\\red55\\green155\\blue55;\\red120\\green20\\blue110;\\red0\\green0\\blue0;}\r\n"
            "\\f0\\fs18 \\cf1 '\\'c1\\{\\\\\\}\\par\r\n\\cf2 0x0000\\cf3 \\tab NOP\\par\r\n}\r\n");
  const ReadOnlyFolder readOnly(folder);
  DoubleClick(m, Ref("RText2"));
  ExpectFileError();
}

// Pictures.

PixelImage Filled(int32_t width, int32_t height, int32_t colour) {
  return {width, height, std::vector<int32_t>(static_cast<size_t>(width) * height, colour), 0};
}

struct AssePictureTest : AsseFilesTest {
  void Pick(const std::string& name, const PixelImage& picture) {
    desk.pictures[Path(name)] = picture;
    Press("xOpen");
    Choose("Combo1", "picture");
    Choose("File1", name);
  }
};

TEST_F(AssePictureTest, APickedPictureIsLoaded) {
  PixelImage picture = Filled(512, 480, 0);
  picture.pixels[512 * 2 + 2] = 0x123456;
  Pick("p.bmp", picture);
  EXPECT_EQ(files.ResPic.width, 512);
  EXPECT_EQ(files.ResPic.pixels, picture.pixels);
  EXPECT_EQ(files.ResPic.drawings, 1U);
  EXPECT_EQ(files.Image1.width, 256);
  EXPECT_EQ(files.Image1.height, 240);
  EXPECT_EQ(files.Image1.pixels[256 + 1], 0x123456);
  EXPECT_TRUE(files.Frame2Look.visible);
  Press("Command14");  // it is there already
  EXPECT_TRUE(files.Frame2Look.visible);
}

TEST_F(AssePictureTest, WhatIsNoPictureIsToldAndTheOldOneStays) {
  Pick("p.bmp", Filled(2, 2, 5));
  Press("xOpen");
  Choose("File1", "r.gif");
  ExpectFileError();
  EXPECT_EQ(files.ResPic.width, 2);
  for (const PixelImage& bad : {PixelImage{0, 0, {}, 0}, PixelImage{2, 2, {1}, 0}}) {
    desk.pictures[Path("q.JPG")] = bad;
    Choose("File1", "q.JPG");
    ExpectFileError();
    EXPECT_EQ(files.ResPic.width, 2);
  }
}

// Red sets the low bits, green the high ones; the first of four points has bit 0.
TEST_F(AssePictureTest, TheButtonsImportIntoTheDisplayedPage) {
  PixelImage picture = Filled(512, 480, 0);
  picture.pixels[0] = 0x0000FF;                // red
  picture.pixels[512 * 2 + 1] = 0x00FF00;      // green in the second row that is read
  picture.pixels[512 * 478 + 255] = 0xFF0000;  // blue at the end of 4 colours' last row
  struct Row {
    const char* button;
    int first, second, last;  // bytes 0, 64 and 15359
  };
  const std::vector<Row> rows{{"Command9", 0x01, 0x02, 0x00},  {"Command10", 0x01, 0x20, 0x88},
                              {"Command17", 0x01, 0x20, 0x88}, {"Command19", 0x01, 0x20, 0x88},
                              {"Command16", 0x44, 0xA0, 0x00}, {"Command18", 0x44, 0xA0, 0x00},
                              {"Command20", 0x44, 0xA0, 0x00}};
  constexpr std::array<size_t, 4> kPages{0x10000, 0x20000, 0x24000, 0x28000};
  Pick("p.bmp", picture);
  for (size_t page = 0; page < kPages.size(); ++page) {
    m.PortShadow[0x0F] = static_cast<uint8_t>(page << 4);
    for (const Row& row : rows) {
      m.MemImage.fill(0xEE);
      Press(row.button);
      EXPECT_EQ(m.MemImage[kPages[page]], row.first) << row.button;
      EXPECT_EQ(m.MemImage[kPages[page] + 64], row.second) << row.button;
      EXPECT_EQ(m.MemImage[kPages[page] + 15359], row.last) << row.button;
      EXPECT_EQ(m.MemImage[kPages[page] - 1], 0xEE);
      EXPECT_EQ(m.MemImage[kPages[page] + 15360], 0xEE);
    }
  }
}

TEST_F(AssePictureTest, WithoutAPictureNothingIsImported) {
  m.MemImage.fill(0xEE);
  Press("Command10");
  EXPECT_EQ(m.MemImage[0x10000], 0xEE);
  EXPECT_TRUE(PicturePreview(m, ScreenColours::Four).pixels.empty());
}

TEST_F(AssePictureTest, TheThresholdCounts) {
  Pick("p.bmp", Filled(256, 480, 100));
  for (const auto& [threshold, byte] : {std::pair{99, 0x0F}, {100, 0x00}}) {
    SetScroll(m, Ref("HScroll1"), threshold);
    Press("Command10");
    EXPECT_EQ(m.MemImage[0x10000], byte);
  }
}

// The preview is what the machine shows after the import.
TEST_F(AssePictureTest, ThePreviewIsWhatTheMachineWillShow) {
  PixelImage picture = Filled(512, 480, 0);
  uint32_t seed = 1;
  for (int32_t& pixel : picture.pixels)
    pixel = static_cast<int32_t>((seed = seed * 1664525U + 1013904223U) >> 8);
  Pick("p.bmp", picture);
  m.PortShadow[0x60] = 0;
  m.PortShadow[0x61] = 0x55;
  m.PortShadow[0x62] = 0x14;
  m.PortShadow[0x63] = 0x41;
  m.crtc.CrtcRegs[1] = 64;
  m.crtc.CrtcRegs[6] = 60;
  m.screen.xScreenDIB = true;
  const std::pair<const char*, ScreenColours> modes[] = {{"Command9", ScreenColours::Two},
                                                         {"Command10", ScreenColours::Four},
                                                         {"Command16", ScreenColours::Sixteen}};
  for (uint8_t mode = 0; mode < 3; ++mode) {
    m.PortShadow[6] = mode;
    const PixelImage preview = PicturePreview(m, modes[mode].second);
    Press(modes[mode].first);
    redraw(m);
    PALchNull(m.palette);
    const std::vector<uint8_t> shown = PicturePixels(m.picture);
    ASSERT_EQ(preview.pixels.size() * 3, shown.size());
    size_t wrong = 0, lit = 0;
    for (size_t i = 0; i < preview.pixels.size(); ++i) {
      const int32_t pixel = shown[3 * i] | shown[3 * i + 1] << 8 | shown[3 * i + 2] << 16;
      wrong += preview.pixels[i] != pixel ? 1 : 0;
      lit += pixel != 0 ? 1 : 0;
    }
    EXPECT_EQ(wrong, 0U) << int{mode};
    EXPECT_GT(lit, 10000U) << int{mode};
  }
}

}  // namespace
}  // namespace quoll::test
