// The assembler's window over its form.
#include <QAction>
#include <QClipboard>
#include <QDir>
#include <QDragEnterEvent>
#include <QFile>
#include <QLineEdit>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QTemporaryDir>
#include <QTextBlock>
#include <random>

#include "desktop/test/WindowTest.h"
#include "desktop/widgets/CodeEditor.h"
#include "desktop/widgets/FileList.h"
#include "desktop/widgets/FindBar.h"

namespace quoll {
namespace {

struct Assembling : WindowTest {
  QTemporaryDir folder;
  QWidget* shown = nullptr;
  CodeEditor* editor = nullptr;
  CodeEditor* listing = nullptr;

  void SetUp() override {
    WindowTest::SetUp();
    Select("xAsse");
    shown = Shown("asse");
    ASSERT_NE(shown, nullptr);
    ASSERT_TRUE(QTest::qWaitForWindowActive(shown));
    editor = Find<CodeEditor>(shown, "RText1");
    listing = Find<CodeEditor>(shown, "RText2");
    m.asse.files.folder = folder.path().toStdString();
  }

  const std::string& Source() const { return m.asse.source.RText1; }
  void Button(const char* name) {
    QTest::mouseClick(Find<QPushButton>(shown, name), Qt::LeftButton);
    Settle();
  }
  void Source(const std::string& text) {
    SetSource(m, text);
    Settle();
  }
  void CaretTo(int line, int column) {
    editor->SelectFrom(line, column, 0);
    Settle();
  }
  std::string SelectedBytes() const {
    const AsseEditor& record = m.asse.editor;
    return Source().substr(static_cast<size_t>(record.SelStart.value),
                           static_cast<size_t>(record.SelLength.value));
  }
};

TEST_F(Assembling, TypingReachesTheRecordAndTheRecordTheEditor) {
  EXPECT_TRUE(editor->hasFocus());
  QTest::keyClicks(editor, "org 10000");
  QTest::keyClick(editor, Qt::Key_Return);
  QTest::keyClick(editor, Qt::Key_Tab);
  QTest::keyClicks(editor, "ret");
  EXPECT_EQ(Source(), "org 10000\n\tret");
  EXPECT_EQ(m.asse.editor.SelStart.value, 14);
  Button("Command4");
  EXPECT_EQ(editor->toPlainText(), "ORG 10000\n\tRET");
  editor->undo();
  Settle();
  EXPECT_EQ(Source(), "org 10000\n\tret");
  editor->redo();
  EXPECT_EQ(Source(), "ORG 10000\n\tRET");
  Button("Command2");
  EXPECT_EQ(Source(), "");
  editor->undo();
  EXPECT_EQ(Source(), "ORG 10000\n\tRET");
}

// Line ends and characters stay as they are wherever nothing is edited.
TEST_F(Assembling, EditingKeepsWhatItDoesNotTouch) {
  Source("'\xC3\xA1\xE2\x86\x92\xF0\x9F\x98\x80\r\nnop\n\xC2\xA0x\xE2\x80\xA9y\rdi\r\n");
  EXPECT_EQ(editor->blockCount(), 5);
  CaretTo(1, 3);
  QTest::keyClicks(editor, "5");
  CaretTo(3, 0);
  QTest::keyClick(editor, Qt::Key_Backspace);
  EXPECT_EQ(Source().substr(0, 18), "'\xC3\xA1\xE2\x86\x92\xF0\x9F\x98\x80\r\nnop5\n\xC2");
  EXPECT_TRUE(Source().ends_with("ydi\r\n"));
  editor->undo();
  editor->undo();
  EXPECT_EQ(editor->blockCount(), 5);
  CaretTo(0, 5);
  QTest::keyClicks(editor, "z");
  EXPECT_EQ(m.asse.editor.SelStart.value, 11);
  EXPECT_TRUE(Source().starts_with("'\xC3\xA1\xE2\x86\x92\xF0\x9F\x98\x80z\r\nnop\n"));
}

// Any way of editing: afterwards the record has the editor's text.
TEST_F(Assembling, RandomEditing) {
  std::mt19937 random(5);
  const auto upTo = [&random](int most) {
    return static_cast<int>(random() % static_cast<uint32_t>(most + 1));
  };
  const std::vector<QString> pieces{"a",    "\n", "nop\nret\n", "x\n\ny", QString::fromUtf8("\xC5\x91"),
                                    "\n\n", ""};
  for (int i = 0; i < 600; ++i) {
    QTextCursor cursor = editor->textCursor();
    const int end = editor->document()->characterCount() - 1;
    cursor.setPosition(upTo(end));
    cursor.setPosition(std::min(end, cursor.position() + upTo(2)), QTextCursor::KeepAnchor);
    editor->setTextCursor(cursor);
    switch (upTo(9)) {
      case 0: editor->undo(); break;
      case 1: editor->redo(); break;
      case 2: QTest::keyClick(editor, Qt::Key_Backspace); break;
      default: cursor.insertText(pieces[static_cast<size_t>(upTo(6))]);
    }
    ASSERT_EQ(WithLineEnd(Source(), "\n"), editor->toPlainText().toStdString()) << i;
    if (i % 50 == 0) {
      Press(m, TheControl("asse", upTo(1) == 0 ? "Command4" : "Command5"));
      Settle();
      ASSERT_EQ(WithLineEnd(Source(), "\n"), editor->toPlainText().toStdString()) << i;
    }
  }
  EXPECT_GT(Source().size(), 100U);
}

TEST_F(Assembling, AnErrorIsMarkedAndLedTo) {
  Source("nop\nnop\nfoo\nnop");
  QTest::keyClick(shown, Qt::Key_F7);
  Settle();
  EXPECT_EQ(Find<QLineEdit>(shown, "Text13")->text(), "Internal Error P1!");
  EXPECT_EQ(Find<QLineEdit>(shown, "Text13")->palette().color(QPalette::Base), QColor(0xFF, 0x80, 0x80));
  EXPECT_EQ(editor->textCursor().selectedText(), "foo");
  ASSERT_EQ(editor->extraSelections().size(), 2);
  EXPECT_EQ(editor->extraSelections()[1].cursor.blockNumber(), 2);
  CaretTo(0, 0);
  QTest::keyClick(shown, Qt::Key_F4);
  EXPECT_EQ(editor->textCursor().blockNumber(), 2);
  QTest::keyClick(editor, Qt::Key_End, Qt::ShiftModifier);
  QTest::keyClicks(editor, "ret");
  EXPECT_EQ(editor->extraSelections().size(), 1);
  QTest::keyClick(shown, Qt::Key_F7);
  Settle();
  EXPECT_TRUE(Find<QLineEdit>(shown, "Text13")->text().startsWith("Completed: "));
  EXPECT_EQ(listing->toPlainText(), "0x0000\tNOP\n0x0001\tNOP\n0x0002\tRET\n0x0003\tNOP\n");
}

QColor ColourAt(const QPlainTextEdit* edit, int line, int column) {
  for (const QTextLayout::FormatRange& range : edit->document()->findBlockByNumber(line).layout()->formats())
    if (range.start <= column && column < range.start + range.length)
      return range.format.foreground().color();
  return {};
}

TEST_F(Assembling, Colours) {
  Source("l:\nx: equ 5\n*break\ndb 1 '\xC5\x91 \xCF\x80\nnop");
  EXPECT_EQ(ColourAt(editor, 0, 0), QColor(0, 0, 255));
  EXPECT_EQ(ColourAt(editor, 2, 0), QColor(222, 25, 25));
  EXPECT_EQ(ColourAt(editor, 3, 0), QColor(222, 25, 225));
  EXPECT_EQ(ColourAt(editor, 3, 7), QColor(55, 155, 55));
  EXPECT_EQ(ColourAt(editor, 4, 0), QColor(0, 0, 0));
  CaretTo(4, 3);
  QTest::keyClicks(editor, ":");
  EXPECT_EQ(ColourAt(editor, 4, 0), QColor(0, 0, 255));
  Source("l:\nnop\n'x");
  Button("Command1");
  EXPECT_EQ(ColourAt(listing, 0, 0), QColor(0, 0, 255));
  EXPECT_EQ(ColourAt(listing, 1, 0), QColor(120, 20, 110));
  EXPECT_EQ(ColourAt(listing, 1, 7), QColor(0, 0, 0));
  EXPECT_EQ(ColourAt(listing, 2, 0), QColor(55, 155, 55));
}

TEST_F(Assembling, FindAndReplace) {
  Source("ld a,1\nLD b,2\nld c,3");
  QTest::keyClick(shown, Qt::Key_F, Qt::ControlModifier);
  auto* what = Find<QLineEdit>(shown, "FindText");
  EXPECT_TRUE(what->hasFocus());
  QTest::keyClicks(what, "ld");
  QTest::keyClick(what, Qt::Key_Return);
  EXPECT_EQ(SelectedBytes(), "ld");
  QTest::keyClick(shown, Qt::Key_F3);
  EXPECT_EQ(SelectedBytes(), "LD");
  QTest::keyClick(shown, Qt::Key_F3, Qt::ShiftModifier);
  QTest::keyClick(shown, Qt::Key_F3, Qt::ShiftModifier);  // from the other end
  EXPECT_EQ(editor->textCursor().blockNumber(), 2);
  QTest::keyClicks(Find<QLineEdit>(shown, "ReplaceText"), "inc");
  Button("FindReplace");
  EXPECT_EQ(Source(), "ld a,1\nLD b,2\ninc c,3");
  Button("FindReplaceAll");
  EXPECT_EQ(Source(), "inc a,1\ninc b,2\ninc c,3");
  editor->undo();
  EXPECT_EQ(Source(), "ld a,1\nLD b,2\ninc c,3");
  QTest::keyClick(what, Qt::Key_Escape);
  EXPECT_FALSE(Find<FindBar>(shown, "")->isVisible());
  EXPECT_TRUE(editor->hasFocus());
}

TEST_F(Assembling, HelpFollowsTheCaret) {
  QTest::keyClicks(editor, "djnz");
  auto* list = Find<FileList>(shown, "List2");
  ASSERT_TRUE(QTest::qWaitFor([&] {
    host.Pump(m);
    return list->count() == 1;
  }));
  EXPECT_EQ(list->item(0)->text(), "DJNZ (PC+e)");
  EXPECT_EQ(Find<QLineEdit>(shown, "Text10")->text(), "13/8");
  QGuiApplication::clipboard()->clear();
  DoubleClickEntry(m, TheControl("asse", "List2"), 0);
  EXPECT_EQ(QGuiApplication::clipboard()->text(), "DJNZ (PC+e)");
}

TEST_F(Assembling, ASymbolLeadsToItsLine) {
  Source("nop\n\nloop:\njp @loop");
  Button("Command1");
  DoubleClickEntry(m, TheControl("asse", "List3"), 0);
  Settle();
  EXPECT_EQ(editor->textCursor().blockNumber(), 2);
  EXPECT_EQ(editor->textCursor().selectedText(), "loop:");
}

TEST_F(Assembling, TheListingFollowsTheSteps) {
  Source("org 10000\nnop\ninc a");
  Button("Command1");
  Button("Command6");
  m.PortShadow[2] = 0x70;  // as while BASIC runs: RAM below, where the program lies
  PressButton("CPUmon", "Command7");
  Settle();
  EXPECT_EQ(listing->textCursor().selectedText(), "0x2711");
}

TEST_F(Assembling, FilesOpenAndSaveByTheKeyboard) {
  const QString path = folder.filePath("one.asm");
  const QByteArray content("'\xC1rv\xEDz\r\nnop\n");
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write(content);
  file.close();
  QTest::keyClick(shown, Qt::Key_O, Qt::ControlModifier);
  Settle();
  auto* names = Find<FileList>(shown, "File1");
  EXPECT_TRUE(names->isVisible());
  EXPECT_TRUE(names->hasFocus());
  QTest::keyClick(names, Qt::Key_Down);
  QTest::keyClick(names, Qt::Key_Return);
  Settle();
  EXPECT_FALSE(names->isVisible());
  EXPECT_EQ(editor->toPlainText().toStdString(), "'\xC3\x81rv\xC3\xADz\nnop\n");
  EXPECT_TRUE(editor->hasFocus());

  CaretTo(1, 3);
  QTest::keyClicks(editor, " ");
  QTest::keyClick(shown, Qt::Key_S, Qt::ControlModifier);
  Settle();
  auto* name = Find<QLineEdit>(shown, "Text16");
  EXPECT_TRUE(name->hasFocus());
  EXPECT_EQ(name->text(), "one.asm");
  QTest::keyClick(name, Qt::Key_Return);
  Settle();
  EXPECT_FALSE(name->isVisible());
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  EXPECT_EQ(file.readAll(), QByteArray("'\xC1rv\xEDz\r\nnop \n"));

  QTest::keyClick(shown, Qt::Key_O, Qt::ControlModifier);
  Settle();
  QTest::keyClick(names, Qt::Key_Escape);
  Settle();
  EXPECT_FALSE(names->isVisible());
  EXPECT_TRUE(shown->isVisible());
}

TEST_F(Assembling, EveryKindOfPictureThatQtReads) {
  QImage image(512, 480, QImage::Format_RGB32);
  image.fill(QColor(255, 0, 0));
  image.setPixelColor(1, 0, QColor(0, 255, 0));
  for (const char* name : {"p.png", "p.bmp", "p.ppm"}) {
    const QString path = folder.filePath(name);
    ASSERT_TRUE(image.save(path));
    ASSERT_TRUE(OpenPicture(m, path.toStdString())) << name;
    EXPECT_EQ(m.asse.files.ResPic.width, 512);
    EXPECT_EQ(m.asse.files.ResPic.pixels[0], 0x0000FF);
    EXPECT_EQ(m.asse.files.ResPic.pixels[1], 0x00FF00);
    m.MemImage[0x10000] = 0;
    PressButton("asse", "Command10");
    EXPECT_EQ(m.MemImage[0x10000], 0x2D);  // red but for the second point
  }
  QFile broken(folder.filePath("b.gif"));
  ASSERT_TRUE(broken.open(QIODevice::WriteOnly));
  broken.write("GIF89a no picture");
  broken.close();
  EXPECT_FALSE(OpenPicture(m, broken.fileName().toStdString()));
  EXPECT_EQ(host.messages, std::vector<std::string>{"Assembler|File Open error!"});
}

// On the editor too, which would take the name as a text.
TEST_F(Assembling, FilesAreDropped) {
  const auto make = [this](const QString& name, const QByteArray& bytes) {
    QFile file(folder.filePath(name));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
    return file.fileName();
  };
  const auto drop = [this](const QString& file) {
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(file)});
    data.setText(file);
    QDragEnterEvent enter(QPoint(10, 10), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(editor->viewport(), &enter);
    EXPECT_TRUE(enter.isAccepted());
    QDropEvent event(QPointF(10, 10), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(editor->viewport(), &event);
    Settle();
  };
  drop(make("one.asm", "nop\r\n"));
  EXPECT_EQ(Source(), "nop\r\n");
  EXPECT_EQ(m.asse.source.folder, folder.path().toStdString());
  drop(make("TWO.TVCASM", "x EQU 5"));
  EXPECT_EQ(editor->toPlainText(), "x EQU 5");
  drop(make("notes.inc", "ret"));
  EXPECT_EQ(Source(), "ret");
  editor->undo();
  Settle();
  EXPECT_EQ(Source(), "x EQU 5");

  QImage image(8, 4, QImage::Format_RGB32);
  image.fill(Qt::red);
  ASSERT_TRUE(image.save(folder.filePath("p.PNG"), "png"));
  drop(folder.filePath("p.PNG"));
  EXPECT_EQ(m.asse.files.ResPic.width, 8);
  EXPECT_TRUE(Find<QWidget>(shown, "Preview")->isVisible());
  drop(make("a.cas", QByteArray(144, '\0') + "\x44"));
  EXPECT_EQ(m.MemImage[0x19EF], 0x44);
  EXPECT_EQ(Source(), "x EQU 5");
  EXPECT_TRUE(host.messages.empty());
  drop(folder.filePath("none.asm"));
  EXPECT_EQ(host.messages, std::vector<std::string>{"Assembler|File Open error!"});
  EXPECT_EQ(Source(), "x EQU 5");
}

TEST_F(Assembling, ReachedByTheKeyboardAlone) {
  std::set<QString> names;
  editor->setFocus();
  QTest::keyClick(editor, Qt::Key_Tab, Qt::ControlModifier);
  for (int i = 0; i < 80 && QApplication::focusWidget() != editor; ++i) {
    names.insert(QApplication::focusWidget()->objectName());
    const bool edit = qobject_cast<CodeEditor*>(QApplication::focusWidget()) != nullptr;
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab, edit ? Qt::ControlModifier : Qt::NoModifier);
  }
  EXPECT_EQ(QApplication::focusWidget(), editor);
  for (const char* name :
       {"Command1", "Command6", "Command13", "Command12", "Command7", "Command2", "Command3", "Command4",
        "Command5", "Command11", "Text5", "Text6", "RText2", "Check2", "List2", "Check1"})
    EXPECT_TRUE(names.contains(name)) << name;
}

TEST_F(Assembling, ASourceOfManyLines) {
  std::string text;
  for (int i = 0; i < 20000; ++i) text += i % 10 == 0 ? "l" + std::to_string(i) + ":\r\n" : "ret\n";
  Source(text);
  CaretTo(10000, 0);
  QTest::keyClick(editor, Qt::Key_X);
  CaretTo(19999, 3);
  QTest::keyClick(editor, Qt::Key_Return);
  text.insert(text.find("l10000:"), "x");
  EXPECT_EQ(Source(), text.substr(0, text.size() - 1) + "\r\n\n");
}

}  // namespace
}  // namespace quoll
