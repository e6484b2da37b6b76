// The printer's form.
#include "cards/CodePage852.h"
#include "forms/Forms.h"
#include "forms/TPrint.h"
#include "machine/Ports.h"
#include "testkit/FolderTest.h"

namespace quoll::test {

namespace {

struct PrintHost : TestHost {
  std::vector<std::string> printers;
  std::vector<std::pair<std::string, std::string>> jobs;
  std::string error;

  std::vector<std::string> Printers() override { return printers; }
  std::string Print(const std::string& printer, std::string_view text) override {
    jobs.emplace_back(printer, text);
    return error;
  }
};

struct TPrintTest : FolderTest {
  PrintHost world;
  TPrint& form = m.tprint;

  TPrintTest() { m.host = &world; }
  void Click(const char* name) { Press(m, TheControl("TPrint", name)); }
  void Show() { Press(m, TheControl("TScreen", "xPrinter")); }
  void Send(std::string_view bytes) {
    for (const char byte : bytes) Senddata(m.printer, static_cast<uint8_t>(byte));
  }
};

TEST_F(TPrintTest, TheMenuShowsTheHostsPrintersAsTheyAre) {
  using Names = std::vector<std::string>;
  EXPECT_EQ(form.Combo1.entries, Names{"No Printer"});
  EXPECT_EQ(form.Combo1.selected, 0);
  world.printers = {"Laser", "Print to file"};
  Show();
  EXPECT_TRUE(form.window.visible && form.window.raise);
  EXPECT_EQ(form.Combo1.entries, (Names{"No Printer", "Laser", "Print to file"}));
  EXPECT_EQ(form.Combo1.Selected(), "No Printer");
  ASSERT_TRUE(ChooseEntry(m, TheControl("TPrint", "Combo1"), 2));
  world.printers = {"Print to file"};
  Show();
  EXPECT_EQ(form.Combo1.Selected(), "Print to file");
  world.printers = {};
  Show();
  EXPECT_EQ(form.Combo1.Selected(), "No Printer");
}

TEST_F(TPrintTest, PrintSendsTheTextToTheChosenPrinter) {
  world.printers = {"Laser"};
  Show();
  Send("\x90rv\x85z\r\n");
  Click("Command1");
  EXPECT_TRUE(world.jobs.empty()) << "No Printer";
  ChooseEntry(m, TheControl("TPrint", "Combo1"), 1);
  Click("Command1");
  ASSERT_EQ(world.jobs.size(), 1U);
  EXPECT_EQ(world.jobs[0].first, "Laser");
  EXPECT_EQ(world.jobs[0].second, "árvŐz\n");
  EXPECT_TRUE(world.messages.empty());
  world.error = "Laser: no paper";
  Click("Command1");
  ASSERT_EQ(world.messages.size(), 1U);
  EXPECT_EQ(world.messages[0].text, "Laser: no paper");
  m.tprint.Combo1.selected = -1;
  Click("Command1");
  EXPECT_EQ(world.jobs.size(), 2U);
}

// Scripts and the machine have the printer's own bytes.
TEST_F(TPrintTest, TheTextIsThePrintersOwn) {
  int32_t value = 0x90;
  PortOut(m, 0x01, value);
  value = 0x80;
  PortOut(m, 0x06, value);
  EXPECT_EQ(m.printer.printed, "") << "no strobe";
  value = 0x00;
  PortOut(m, 0x06, value);
  const std::string* text = FieldOf<std::string>(m, TheControl("TPrint", "Text1"));
  ASSERT_NE(text, nullptr);
  EXPECT_EQ(*text, "\xA0");
  Send("\xA0\xFF");
  EXPECT_EQ(*text, "\xA0..");
  Click("Command2");
  EXPECT_EQ(*text, "");
}

TEST_F(TPrintTest, SaveAsText) {
  Send("Zs\x94k\r\nm\xA1sik\n");
  Click("Command3");
  const Bytes file = ReadAll(Path("print.txt"));
  EXPECT_EQ(std::string(file.begin(), file.end()), "Zsök\nm.sik\n");
  SetText(m, TheControl("TPrint", "Text2"), "list.txt");
  Click("Command2");
  Send("x");
  PressEnter(m, TheControl("TPrint", "Text2"));
  EXPECT_EQ(ReadAll(Path("list.txt")), Bytes{'x'});
  SetText(m, TheControl("TPrint", "Text2"), "");
  Click("Command3");
  EXPECT_EQ(Names(), (std::vector<std::string>{"list.txt", "print.txt"}));
  EXPECT_TRUE(world.messages.empty());
  SetText(m, TheControl("TPrint", "Text2"), Path("missing/list.txt"));
  Click("Command3");
  ASSERT_EQ(world.messages.size(), 1U);
  EXPECT_NE(world.messages[0].text.find("missing/list.txt"), std::string::npos);
}

// Piece by piece the same text comes out, wherever the pieces end, between CR and LF too.
TEST_F(TPrintTest, AFollowerGetsTheSameText) {
  const std::string printed = "a\r\n\x90\n\rb\r\r\n\tc\f\x01";
  for (size_t step = 1; step <= printed.size(); ++step) {
    PrintedFollower follower;
    std::string text;
    ClearPrinted(m.printer);
    EXPECT_EQ(FollowPrinted(follower, m.printer).fromStart, true);
    for (size_t at = 0; at < printed.size(); at += step) {
      Send(printed.substr(at, step));
      const PrintedPiece piece = FollowPrinted(follower, m.printer);
      EXPECT_FALSE(piece.fromStart);
      text += piece.text;
    }
    EXPECT_EQ(text, PrintedText(m.printer.printed)) << step;
    EXPECT_EQ(FollowPrinted(follower, m.printer).text, "");
  }
}

TEST_F(TPrintTest, AFollowerSeesThatTheTextBeganAnew) {
  PrintedFollower follower;
  Send("one");
  EXPECT_EQ(FollowPrinted(follower, m.printer).text, "one");
  Click("Command2");
  Send("three");  // longer than what was there
  PrintedPiece piece = FollowPrinted(follower, m.printer);
  EXPECT_TRUE(piece.fromStart);
  EXPECT_EQ(piece.text, "three");
  SetText(m, TheControl("TPrint", "Text1"), "the user's text");
  piece = FollowPrinted(follower, m.printer, 4);
  EXPECT_TRUE(piece.fromStart);
  EXPECT_EQ(piece.text, "the ");
  piece = FollowPrinted(follower, m.printer, 100);
  EXPECT_FALSE(piece.fromStart);
  EXPECT_EQ(piece.text, "user's text");
  m.printer.printed.clear();  // a machine put back to what it was
  EXPECT_TRUE(FollowPrinted(follower, m.printer).fromStart);
}

}  // namespace

}  // namespace quoll::test
