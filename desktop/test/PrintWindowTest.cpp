// The printer's window, and what comes out of a printer.
#include <unistd.h>

#include <QComboBox>
#include <QFontInfo>
#include <QPlainTextEdit>
#include <QProcess>
#include <QScrollBar>
#include <chrono>
#include <fstream>

#include "cards/CodePage852.h"
#include "desktop/Printing.h"
#include "desktop/test/CardWindows.h"

namespace quoll {
namespace {

struct PrintHost : TestHost {
  std::string AskForPrintFile() override {
    ++asked;
    return file;
  }
  std::string file;
  int asked = 0;
};

struct PrintWindowTest : CardWindowsTest {
  PrintHost world;
  QWidget* shown = nullptr;

  void OpenPrinter() {
    m.host = &world;
    shown = Open("xPrinter", "TPrint");
  }
  QPlainTextEdit* Paper() { return Find<QPlainTextEdit>(shown, "Text1"); }
  void Choose(std::string_view printer) {
    auto* box = Find<QComboBox>(shown, "Combo1");
    const int entry = box->findText(ToQt(printer));
    ASSERT_GE(entry, 0);
    box->setFocus();
    while (box->currentIndex() != entry)
      QTest::keyClick(box, box->currentIndex() < entry ? Qt::Key_Down : Qt::Key_Up);
    Settle();
  }
  // The text of a PDF file, a line a line.
  static std::string ReadPdf(const QString& file) {
    QProcess reader;
    reader.start("pdftotext", {"-layout", file, "-"});
    EXPECT_TRUE(reader.waitForFinished() && reader.exitCode() == 0) << "pdftotext";
    QStringList lines = QString::fromUtf8(reader.readAllStandardOutput()).remove('\f').split('\n');
    while (!lines.isEmpty() && lines.back().isEmpty()) lines.pop_back();
    return lines.join('\n').toStdString();
  }
};

TEST_F(PrintWindowTest, ShowsTheNationalCharactersInAFontOfOneWidth) {
  OpenPrinter();
  EXPECT_EQ(shown->windowTitle(), "Printer");
  EXPECT_TRUE(QFontInfo(Paper()->font()).fixedPitch());
  EXPECT_EQ(Paper()->font().pointSize(), 9);
  Print("\x90\x91\x93\x94\x95\x96\x97\x98\r\n\x80\x81\x83\x84\x85\x86\x87\x88\n\xA0");
  Settle();
  EXPECT_EQ(Paper()->toPlainText(), "áéóöőúüű\nÁÉÓÖŐÚÜŰ\n.");
  Print("more");
  Settle();
  EXPECT_TRUE(Paper()->toPlainText().endsWith(".more"));
  Click(shown, "Command2");
  Settle();
  EXPECT_EQ(Paper()->toPlainText(), "");
  EXPECT_EQ(m.printer.printed, "");
}

TEST_F(PrintWindowTest, SavesAsText) {
  OpenPrinter();
  Print("Zs\x94k\r\n");
  Click(shown, "Command3");
  QFile file("print.txt");
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  EXPECT_EQ(file.readAll(), "Zsök\n");
}

TEST_F(PrintWindowTest, NobodyIsAskedWithoutAPrinter) {
  OpenPrinter();
  Print("text");
  EXPECT_EQ(Find<QComboBox>(shown, "Combo1")->currentText(), "No Printer");
  Click(shown, "Command1");
  EXPECT_EQ(world.asked, 0);
  Choose(kPrintToFile);
  Click(shown, "Command1");  // the user gives no name
  EXPECT_EQ(world.asked, 1);
  EXPECT_TRUE(world.messages.empty());
  EXPECT_TRUE(QDir(folder.path()).isEmpty());
  world.file = folder.filePath("no/such/folder.pdf").toStdString();
  Click(shown, "Command1");
  ASSERT_EQ(world.messages.size(), 1U);
  EXPECT_NE(world.messages[0].find("no/such/folder.pdf"), std::string::npos);
  EXPECT_NE(world.Print("Gone", "text").find("Gone"), std::string::npos);
}

// A program typed on the drawn keys is listed to the printer and printed into a file.
TEST_F(PrintWindowTest, AListingWithItsAccentsInAPdf) {
  Boot();
  OpenTools();
  Type(
      "10 rem árvíztűrő tükörfúrógép\n"
      "20 REM ÁRVÍZTŰRŐ TÜKÖRFÚRÓGÉP\n"
      "30 for i=1 to 9:print i;\"éjfél\":next\n"
      "40 lprint \"öt szép szűzlány\"\n"
      "run\nllist\n");
  RunFrames(50);
  OpenPrinter();
  Choose(kPrintToFile);
  world.file = folder.filePath("list.pdf").toStdString();
  Click(shown, "Command1");
  EXPECT_TRUE(world.messages.empty());
  // The printer's table turns the machine's long i into two other letters of the page.
  const QStringList expected{"öt szép szűzlány", "10 REM árvîztűrő tükörfúrógép",
                             "20 REM ÁRVĺZTŰRŐ TÜKÖRFÚRÓGÉP", "30 FOR I=1 TO 9:PRINT I;\"éjfél\":NEXT",
                             "40 LPRINT \"öt szép szűzlány\""};
  EXPECT_EQ(ReadPdf("list.pdf"), expected.join('\n').toStdString());
  EXPECT_EQ(Paper()->toPlainText().split('\n', Qt::SkipEmptyParts), expected);
}

// Each character of the page comes back from a PDF.
TEST_F(PrintWindowTest, EveryCharacterOfThePageInAPdf) {
  std::string printed;
  QStringList expected;
  for (int byte = 0x21; byte < 0xFF; ++byte) {
    if (byte == 0xF0) continue;  // a soft hyphen is no sign
    printed += "x" + std::string(1, static_cast<char>(byte)) + "x\n";
    const char32_t code = CodePage852(static_cast<uint8_t>(byte));
    expected << (byte == 0x7F ? QString("x.x") : "x" + QString::fromUcs4(&code, 1) + "x");
  }
  Make("page.pdf", PrintedPdf(PrintedText(printed)));
  EXPECT_EQ(ReadPdf("page.pdf"), expected.join('\n').toStdString());
}

size_t ResidentBytes() {
  size_t pages = 0;
  std::ifstream("/proc/self/statm") >> pages >> pages;
  return pages * static_cast<size_t>(sysconf(_SC_PAGESIZE));
}

// Not where memory and time are the sanitizer's.
#if defined(__SANITIZE_ADDRESS__)
constexpr bool kMeasured = false;
#elif defined(__has_feature)
constexpr bool kMeasured = !__has_feature(address_sanitizer);
#else
constexpr bool kMeasured = true;
#endif

// With line ends and without any: no pull may hold the machine up, and all of it is there at the end.
TEST_F(PrintWindowTest, AMillionBytesStayQuick) {
  constexpr size_t kMillion = 1'000'000;
  OpenPrinter();
  const size_t memory = ResidentBytes();
  for (const size_t line : {size_t{40}, kMillion}) {
    Click(shown, "Command2");
    std::chrono::duration<double> longest{0};
    for (size_t i = 1; i <= kMillion; ++i) {
      Senddata(m.printer, i % line == 0 ? '\n' : static_cast<uint8_t>('a' + i % 26));
      if (i % 20000 != 0) continue;
      const auto start = std::chrono::steady_clock::now();
      Settle();
      longest = std::max(longest, std::chrono::duration<double>(std::chrono::steady_clock::now() - start));
    }
    for (int pulls = 0; pulls < 40; ++pulls) Settle();
    const QString text = Paper()->toPlainText();
    EXPECT_EQ(text.size() - text.count('\n'), static_cast<qsizetype>(kMillion - kMillion / line));
    RecordProperty("longest", std::to_string(longest.count()));
    if (!kMeasured) continue;
    EXPECT_LT(longest.count(), 0.1);
    EXPECT_LT(ResidentBytes() - memory, 50'000'000U);
  }
}

// What the user has scrolled to stays; at the end the text goes on.
TEST_F(PrintWindowTest, TheViewStaysWhereItIs) {
  OpenPrinter();
  QScrollBar* bar = Paper()->verticalScrollBar();
  for (int line = 0; line < 100; ++line) Print("line\n");
  Settle();
  EXPECT_GT(bar->maximum(), 0);
  EXPECT_EQ(bar->value(), bar->maximum());
  bar->setValue(3);
  Print("more\n");
  Settle();
  EXPECT_EQ(bar->value(), 3);
}

TEST(PrintedPages, LinesColumnsAndPages) {
  const struct {
    const char* text;
    const char* pages;  // a bar behind each line, a slash between pages
  } rows[] = {
      {"", ""},
      {"a", "a|"},
      {"a\n", "a|"},
      {"\na", "|a|"},
      {"a\n\nb", "a||b|"},
      {"12345", "12345|"},
      {"123456", "12345|6|"},
      {"12345\n6", "12345|6|"},
      {"1\n2\n3\n", "1|2|3|"},
      {"1\n2\n3\n4", "1|2|3|/4|"},
      {"1\f2", "1|/2|"},
      {"1\n\f2\n", "1|/2|"},
      {"1\n2\n3\n\f4", "1|2|3|/4|"},
      {"1\f", "1|"},
      {"\f1", "/1|"},
      {"1\f\f2", "1|/|/2|"},
      {"a\tb", "a    |   b|"},
  };
  for (const auto& row : rows) {
    QStringList pages;
    for (const QStringList& page : PrintedPages(ToQt(row.text), 5, 3))
      pages << (page.isEmpty() ? QString() : page.join('|') + '|');
    EXPECT_EQ(pages.join('/').toStdString(), row.pages) << row.text;
  }
}

}  // namespace
}  // namespace quoll
