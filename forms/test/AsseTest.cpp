// The assembler's form: compiling, starting, the editor's buttons, the converter.
#include "forms/test/AsseBench.h"
#include "loop/RunLoop.h"
#include "machine/MachineHash.h"

namespace quoll::test {
namespace {

TEST_F(AsseBench, TheControlsStandAsTheyAreCalled) {
  struct Row {
    const char *name, *caption;
    ControlKind kind;
  };
  constexpr auto kButton = ControlKind::Button;
  for (const Row& row : std::vector<Row>{
           {"Command1", "Compile", kButton},         {"Command6", "RUN", kButton},
           {"Command13", "RUN CPU", kButton},        {"Command12", "STOP CPU", kButton},
           {"Command7", "RESET", kButton},           {"Command2", "Clear", kButton},
           {"Command3", "Del TABS", kButton},        {"Command4", "Ucase", kButton},
           {"Command5", "Lcase", kButton},           {"Command8", "Disassemly", kButton},
           {"Command11", "Convert tvcasm", kButton}, {"Command9", "LOAD PIC 2", kButton},
           {"Command10", "LOAD PIC 4", kButton},     {"Command17", "LOAD PIC 4", kButton},
           {"Command19", "LOAD PIC 4", kButton},     {"Command16", "LOAD PIC 16", kButton},
           {"Command18", "LOAD PIC 16", kButton},    {"Command20", "LOAD PIC 16", kButton},
           {"Command15", "CANCEL", kButton},         {"Check1", "Undocumented*", ControlKind::Check},
           {"Check2", "Debug", ControlKind::Check},  {"Text5", "dec", ControlKind::Text},
           {"Text6", "hex", ControlKind::Text},      {"xOpen", "Open", ControlKind::Menu},
           {"xSave", "Save", ControlKind::Menu},     {"xEdit", "Edit", ControlKind::Menu},
           {"xFormat", "Format", ControlKind::Menu}, {"xhelp", "Help", ControlKind::Menu},
       }) {
    EXPECT_EQ(Ref(row.name).control->caption, row.caption);
    EXPECT_EQ(Ref(row.name).control->kind, row.kind) << row.name;
  }
  EXPECT_EQ(kAsse.caption, "Assembler");
  EXPECT_EQ(form.Text15, "10000");
  EXPECT_EQ(form.help.Label3, "LD (IX+d),n");
  EXPECT_EQ(form.listing.Label1, "Size:");
  EXPECT_EQ(files.Combo1.entries, (std::vector<std::string>{"asm", "tvcasm", "picture", "sound"}));
}

TEST_F(AsseBench, TheMenuEntryShowsTheWindow) {
  EXPECT_FALSE(form.opened);
  quoll::Press(m, TheControl("TScreen", "xAsse"));
  EXPECT_TRUE(form.window.visible);
  EXPECT_TRUE(form.window.raise);
  EXPECT_TRUE(form.opened);
}

TEST_F(AsseBench, CompileWritesIntoMemoryAndShowsWhatCameOfIt) {
  Type("RText1", "org 10000\r\nstart:\r\njp @l\r\nl:\r\nname: equ 5\r\n'end");
  files.Frame2Look.visible = true;
  Press("Command1");
  EXPECT_EQ(Memory(10000, 3), (Bytes{0xC3, 0x13, 0x27}));
  EXPECT_EQ(form.listing.Text13, "Completed: 7 msec");
  EXPECT_EQ(form.listing.Text14, "Pass2");
  EXPECT_EQ(form.listing.StatusLook.back, 0xC0FFC0);
  EXPECT_EQ(form.editor.RText1Look.back, kWhite);
  EXPECT_EQ(form.listing.Label2, "10003");
  EXPECT_EQ(form.listing.AsmPC, 10003);
  EXPECT_EQ(form.listing.RText2, "ORG 10000\r\nSTART:\r\n0x2710\tJP @L\r\nL:\r\nNAME: EQU 5\r\n'END\r\n");
  EXPECT_EQ(form.listing.List1.entries,
            (std::vector<std::string>{"10000  START:", "10003  L:", "5      NAME:"}));
  EXPECT_EQ(form.listing.List3.entries,
            (std::vector<std::string>{"START:                10000", "L:                    10003",
                                      "NAME:                 5    "}));
  EXPECT_EQ(form.editor.ErrorLine, 0);
  EXPECT_FALSE(files.Frame2Look.visible);
  using Run = ColouredText::Run;
  EXPECT_EQ(form.listing.RText2Runs.front(), (Run{0, 0xFF0000}));
  EXPECT_EQ(form.listing.RText2Runs[1], (Run{19, 0x6E1478}));
  EXPECT_EQ(form.listing.RText2Runs[2], (Run{25, 0}));
  EXPECT_EQ(form.listing.RText2Runs.back(), (Run{50, 0x379B37}));
}

TEST_F(AsseBench, TheMachinesPagesDoNotMove) {
  m.PortShadow[2] = 0x70;
  Type("RText1", "org 10000\nnop\npmem=$00F0\norg 16384\ndb 1");
  Press("Command1");
  EXPECT_EQ(m.PortShadow[2], 0x70);
  EXPECT_EQ(form.listing.Text13, "Completed: 7 msec");
}

// A write into the window of a card ends the program; the pages are the machine's own again then, too.
TEST_F(AsseBench, PagesComeBackWhenTheProgramEnds) {
  m.PortShadow[2] = 0x70;
  m.PortShadow[3] = 0x40;
  Type("RText1", "pmem=$00F0\norg $C000\nnop");
  EXPECT_THROW(Press("Command1"), ProgramEnd);
  EXPECT_EQ(m.PortShadow[2], 0x70);
}

struct ErrorRow {
  const char *source, *status, *pass;
  int32_t line;
  const char* selected;
};

TEST_F(AsseBench, AnErrorIsToldAndItsLineSelected) {
  for (const ErrorRow& row : {
           ErrorRow{"nop\r\nx: equ 1+1\r\nnop", "Syntax Error!", "Pass1", 2, "x: equ 1+1"},
           {"a\xC5\x91:\nld a,256", "OverFlow Error!", "Pass1", 2, "ld a,256"},
           {"loop:\r\nnop\r\nloop:", "Existing name!", "Pass1", 3, "loop:"},
           {"  foo  \n", "Internal Error P1!", "Pass1", 1, "  foo  "},
           {"\r\rld ixh,5", "Internal Error P2!", "Pass2", 3, "ld ixh,5"},
           {"nop\n'\xC3\xA1\njp @nowhere", "Syntax Error!", "Pass2", 3, "jp @nowhere"},
       }) {
    Type("RText1", row.source);
    const uint32_t selections = form.editor.selections;
    Press("Command1");
    EXPECT_EQ(form.listing.Text13, row.status);
    EXPECT_EQ(form.listing.Text14, row.pass) << row.source;
    EXPECT_EQ(form.listing.StatusLook.back, 0x8080FF);
    EXPECT_EQ(form.editor.RText1Look.back, kWhite);
    EXPECT_EQ(form.editor.ErrorLine, row.line) << row.source;
    EXPECT_EQ(Selected(), row.selected);
    EXPECT_EQ(form.editor.selections, selections + 1);
  }
}

TEST_F(AsseBench, AFailingFirstPassLeavesTheListing) {
  Type("RText1", "nop");
  Press("Command1");
  Type("RText1", "x:\nfoo");
  Press("Command1");
  EXPECT_EQ(form.listing.RText2, "0x0000\tNOP\r\n");
  EXPECT_EQ(form.listing.Label2, "1");
  EXPECT_EQ(form.listing.List1.entries, (std::vector<std::string>{"0      X:"}));
  Type("RText1", "nop\nld ixh,5");
  Press("Command1");
  EXPECT_EQ(form.listing.RText2, "0x0000\tNOP\r\n");
}

TEST_F(AsseBench, TheFailingLineGoesWithTheText) {
  Type("RText1", "nop\nnop\nfoo\nnop");
  Press("Command1");
  ASSERT_EQ(form.editor.ErrorLine, 3);
  const std::vector<std::string> three{"nop", "nop", "nop"};
  EditSource(m, 0, 1, three);  // above it
  EXPECT_EQ(form.editor.ErrorLine, 5);
  EditSource(m, 5, 1, three);  // below it
  EXPECT_EQ(form.editor.ErrorLine, 5);
  const std::vector<std::string> one{"fo"};
  EditSource(m, 4, 1, one);
  EXPECT_EQ(form.editor.ErrorLine, 0);
  EXPECT_EQ(Source(), "nop\nnop\nnop\nnop\nfo\nnop\nnop\nnop");
}

TEST_F(AsseBench, StringsAreTheMachinesCharacters) {
  Type("RText1", "db \"\xC3\x81\xC3\x89\"");
  Press("Command1");
  EXPECT_EQ(Memory(0, 2), (Bytes{128, 129}));
  EXPECT_EQ(form.listing.RText2, "0x0000\tDB \"\xC3\x81\xC3\x89\"\r\n");
}

// Text that is no UTF-8 is in code page 1250.
TEST_F(AsseBench, ATextInCodePage1250BecomesUtf8) {
  Type("RText1", "'\xC1rv\xEDz");
  EXPECT_EQ(Source(), "'\xC3\x81rv\xC3\xADz");
}

TEST_F(AsseBench, IncbinLooksInTheSourcesFolder) {
  std::filesystem::create_directory(folder / "sources");
  File("sources/data.bin", "ab");
  File("sources/a.asm", "incbin \"data.bin\"");
  ASSERT_TRUE(OpenSource(m, Path("sources/a.asm")));
  Press("Command1");
  EXPECT_EQ(Memory(0, 2), (Bytes{'a', 'b'}));
}

TEST_F(AsseBench, ProgramsStartAndStop) {
  Press("Command6");
  EXPECT_EQ(m.z80.PC, 10000);
  EXPECT_EQ(m.run.CpuRunning, 0);

  Type("RText1", "org 10000\ninc a\n*break\nnop");
  Press("Command1");
  m.z80.A = 1;
  Press("Command13");  // returns at the break
  EXPECT_EQ(m.run.CpuRunning, 0);
  EXPECT_EQ(m.z80.A, 2);
  EXPECT_EQ(m.z80.PC, 10003);

  m.run.CpuRunning = 1;
  Press("Command12");
  EXPECT_EQ(m.run.CpuRunning, 0);
}

TEST_F(AsseBench, ResetTakesTheWarmStartMarkToo) {
  m.MemImage[2850] = 0;
  m.MemImage[5000] = 77;
  m.z80.PC = 1234;
  m.PortShadow[0x60] = 9;
  Press("Command7");
  EXPECT_EQ(m.MemImage[2850], 255);
  EXPECT_EQ(m.MemImage[5000], 77);
  EXPECT_EQ(m.z80.PC, 0);
  EXPECT_EQ(m.PortShadow[0x60], 0);
}

TEST_F(AsseBench, TheEditorsButtons) {
  const std::string text = "\tld A,5\t'\xC5\xB1 \xE2\x86\x92 \xC3\x9F\r\nNOP";
  struct Row {
    const char *button, *result;
  };
  for (const Row& row : {
           Row{"Command3", " ld A,5 '\xC5\xB1 \xE2\x86\x92 \xC3\x9F\r\nNOP"},
           {"Command4", "\tLD A,5\t'\xC5\xB0 \xE2\x86\x92 \xC3\x9F\r\nNOP"},
           {"Command5", "\tld a,5\t'\xC5\xB1 \xE2\x86\x92 \xC3\x9F\r\nnop"},
           {"Command2", ""},
       }) {
    Type("RText1", text);
    Caret(9);
    const uint32_t texts = form.editor.texts;
    Press(row.button);
    EXPECT_EQ(Source(), row.result) << row.button;
    EXPECT_EQ(form.editor.texts, texts + 1);
    EXPECT_EQ(form.editor.SelStart.value, std::min<int32_t>(9, static_cast<int32_t>(Source().size())));
  }
}

TEST_F(AsseBench, ConvertKeepsTheLineEnds) {
  Type("RText1", "x EQU 5\n  call y ;text\nJP NZ,z\nl:\nDB 1\n");
  Press("Command11");
  EXPECT_EQ(Source(), "x: EQU 5\ncall @y \njp nz,@z\nl DB 1\n");
  Type("RText1", "x EQU 5\r\nJP z");
  Press("Command11");
  EXPECT_EQ(Source(), "x: EQU 5\r\njp @z");
}

TEST_F(AsseBench, TheNumberConverterWantsEnter) {
  struct Row {
    const char *typed, *decimal, *hex;
  };
  const auto check = [this](const char* from, const char* to, const Row& row) {
    form.Text5 = form.Text6 = "?";
    Type(from, row.typed);
    EXPECT_EQ(std::string_view(to) == "Text5" ? form.Text5 : form.Text6, "?");
    Enter(from);
    EXPECT_EQ(form.Text5, row.decimal);
    EXPECT_EQ(form.Text6, row.hex);
  };
  for (const Row& row : {Row{"255", "255", "FF"},
                         {" 007x", "7", "7"},
                         {"10", "10", "A"},
                         {"x", "0", "0"},
                         {"65536", "65536", "10000"},
                         {"-1", "-1", "FFFFFFFF"},
                         {"2.5", "2", "2"}})
    check("Text5", "Text6", row);
  Type("Text5", "99999999999");
  Enter("Text5");
  EXPECT_EQ(form.Text5, "99999999999");

  for (const Row& row : {Row{"ff", "255", "ff"}, {"2710", "10000", "2710"}, {"FFFFFFFF", "-1", "FFFFFFFF"}})
    check("Text6", "Text5", row);
  Type("Text6", "5g");
  Enter("Text6");
  EXPECT_EQ(form.Text5, "-1");  // no number: nothing happens
}

TEST_F(AsseBench, DisassemblyOf500Instructions) {
  m.MemImage[10000] = 0x08;
  m.MemImage[10001] = 0x3E;
  m.MemImage[10002] = 0x0A;
  form.Text9 = "before";
  Press("Command8");
  EXPECT_EQ(std::ranges::count(form.Text9, '\n'), 499);
  EXPECT_TRUE(form.Text9.starts_with(" 2710 EX AF,AF\xE2\x80\x99\r\n 2711 LD A,0A\r\n 2713 NOP\r\n"))
      << form.Text9.substr(0, 60);
  Type("Text15", "&H2711");
  Press("Command8");
  EXPECT_TRUE(form.Text9.starts_with(" 2711 LD A,0A\r\n"));
}

TEST_F(AsseBench, DebugShowsTheListing) {
  EXPECT_TRUE(LookOf(m, Ref("RText2")).visible);
  SetTick(m, Ref("Check2"), false);
  EXPECT_FALSE(LookOf(m, Ref("RText2")).visible);
  SetTick(m, Ref("Check2"), true);
  EXPECT_TRUE(LookOf(m, Ref("RText2")).visible);
  EXPECT_FALSE(LookOf(m, Ref("List1")).visible);
}

TEST_F(AsseBench, DlineMarksTheListingsLine) {
  Type("RText1", "'\xC3\xA1\norg $ABCD\nnop\ninc a");
  Press("Command1");
  Dline(m, "0xabce");
  EXPECT_EQ(form.listing.RText2.substr(static_cast<size_t>(form.listing.SelStart), 12), "0xABCE\tINC A");
  EXPECT_EQ(form.listing.SelLength, 6);
  EXPECT_EQ(form.listing.selections, 1U);
  Dline(m, "0x1234");  // not there: all stays
  EXPECT_EQ(form.listing.selections, 1U);
}

TEST_F(AsseBench, AStepMarksOnceTheWindowHasBeenOpened) {
  Type("RText1", "org 10000\nnop\nnop");
  Press("Command1");
  Press("Command6");
  const ControlRef step = TheControl("CPUmon", "Command7");
  quoll::Press(m, step);
  EXPECT_EQ(form.listing.selections, 0U);
  Asse_Show(m);
  Press("Command6");
  quoll::Press(m, step);
  EXPECT_EQ(form.listing.RText2.substr(static_cast<size_t>(form.listing.SelStart), 6), "0x2711");
}

TEST_F(AsseBench, ASymbolLeadsToWhereItIsNamedFirst) {
  Type("RText1", "jp @\xC3\xA1llj:\r\nnop\r\n\xC3\x81LLJ: 'x\r\nb:");
  form.listing.List3.Fill(
      {"\xC3\x81LLJ:                10000", "B:                   5", "GONE:                5", ""});
  DoubleClickOn("List3", form.listing.List3.entries[0]);
  EXPECT_EQ(Selected(), "\xC3\xA1llj:");
  EXPECT_EQ(form.editor.SelStart.value, 4);
  DoubleClickOn("List3", form.listing.List3.entries[1]);
  EXPECT_EQ(Selected(), "b:");
  for (const size_t nothing : {2, 3}) {
    DoubleClickOn("List3", form.listing.List3.entries[nothing]);
    EXPECT_EQ(Selected(), "b:");
  }
}

TEST_F(AsseBench, HelpTextComesAndGoes) {
  EXPECT_FALSE(form.Text4Look.visible);
  Press("xhelp");
  EXPECT_TRUE(form.Text4Look.visible);
  Press("xhelp");
  EXPECT_FALSE(form.Text4Look.visible);
  EXPECT_TRUE(
      form.Text4.starts_with("Z80 Assembler parancsok:\n\nAz utas\xC3\xADt\xC3\xA1sok decim\xC3\xA1lis"));
  EXPECT_TRUE(form.Text4.ends_with("ld a,r\nout (0),a\njr @ee"));
  EXPECT_EQ(std::ranges::count(form.Text4, '\n'), 42);
}

TEST_F(AsseBench, WhatIsOnlyShownIsNoStateOfTheMachine) {
  const uint64_t before = MachineHash(m);
  Asse_Show(m);
  form.opened = false;
  Caret(0);
  Dline(m, "x");
  form.listing.Text13 = "status";
  form.help.wait = 2;
  EXPECT_EQ(MachineHash(m), before);
  Type("RText1", "nop");
  EXPECT_NE(MachineHash(m), before);
}

}  // namespace
}  // namespace quoll::test
