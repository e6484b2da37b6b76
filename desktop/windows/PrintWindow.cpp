#include "desktop/windows/PrintWindow.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QVBoxLayout>

#include "desktop/Printing.h"
#include "desktop/kit/QtText.h"
#include "machine/Machine.h"

namespace quoll {

namespace {

constexpr int kColumns = 80;
constexpr int kRows = 24;
// A text without line ends goes on in a new line: the box is slow with long ones.
constexpr int kLongestLine = 1000;

}  // namespace

PrintWindow::PrintWindow(FormKit& kitOfWindow) : FormWindow(kitOfWindow), paper(new QPlainTextEdit) {
  paper->setReadOnly(true);
  paper->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  paper->setTabChangesFocus(true);
  paper->setUndoRedoEnabled(false);
  paper->setLineWrapMode(QPlainTextEdit::NoWrap);
  paper->setFont(PrinterFont());
  const QFontMetrics metrics(paper->font());
  paper->setMinimumSize(metrics.horizontalAdvance('M') * kColumns / 3, metrics.lineSpacing() * kRows / 4);
  NameWidget(paper, "Text1", ToQt(CaptionOf(kit.binder.Ref("Text1"))));

  auto* printing = new QHBoxLayout;
  printing->addWidget(kit.Combo("Combo1"), 1);
  printing->addWidget(kit.Button("Command1"));
  printing->addWidget(kit.Button("Command2"));
  auto* saving = new QHBoxLayout;
  saving->addWidget(kit.Text("Text2"), 1);
  saving->addWidget(kit.Button("Command3"));
  auto* column = new QVBoxLayout(this);
  column->addLayout(printing);
  column->addWidget(paper, 1);
  column->addLayout(saving);
  resize(metrics.horizontalAdvance('M') * (kColumns + 4), metrics.lineSpacing() * (kRows + 6));
}

void PrintWindow::ShowRecord() {
  const PrintedPiece piece = FollowPrinted(follower, m.printer);
  if (piece.fromStart) paper->clear();
  if (!piece.text.empty()) Append(ToQt(piece.text));
}

// The view stays where the user has put it, and at the end when it stands there.
void PrintWindow::Append(const QString& text) {
  QScrollBar* bar = paper->verticalScrollBar();
  const bool atEnd = bar->value() == bar->maximum();
  QTextCursor end(paper->document());
  end.movePosition(QTextCursor::End);
  qsizetype column = end.positionInBlock();
  QString folded;
  folded.reserve(text.size() + text.size() / kLongestLine);
  for (const QChar c : text) {
    if (c != '\n' && column == kLongestLine) {
      folded += '\n';
      column = 0;
    }
    folded += c;
    column = c == '\n' ? 0 : column + 1;
  }
  end.insertText(folded);
  if (atEnd) bar->setValue(bar->maximum());
}

}  // namespace quoll
