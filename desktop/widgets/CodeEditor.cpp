#include "desktop/widgets/CodeEditor.h"

#include <QDragEnterEvent>
#include <QFontDatabase>
#include <QKeyEvent>
#include <QMimeData>
#include <QPainter>
#include <QSyntaxHighlighter>
#include <QTextBlock>
#include <algorithm>

namespace quoll {

namespace {

constexpr int kTabColumns = 8;
constexpr int kNumberRoom = 4;  // pixels on each side of a line number
const QColor kCurrentLine(0xF0, 0xF4, 0xFF);
const QColor kErrorLine(0xFF, 0xD8, 0xD8);
const QColor kNumberBack(0xF0, 0xF0, 0xF0);
const QColor kNumber(0x80, 0x80, 0x80);
const QColor kErrorNumber(0xD0, 0, 0);

class Highlighter : public QSyntaxHighlighter {
 public:
  Highlighter(QTextDocument* document, CodeEditor::Colouring with)
      : QSyntaxHighlighter(document), colouring(std::move(with)) {}

 protected:
  void highlightBlock(const QString& text) override {
    const std::vector<CodeEditor::Piece> pieces = colouring(currentBlock().blockNumber(), text);
    for (size_t i = 0; i < pieces.size(); ++i) {
      const int end = i + 1 < pieces.size() ? pieces[i + 1].column : static_cast<int>(text.size());
      setFormat(pieces[i].column, end - pieces[i].column, pieces[i].colour);
    }
  }

 private:
  CodeEditor::Colouring colouring;
};

class Numbers : public QWidget {
 public:
  explicit Numbers(CodeEditor* editor) : QWidget(editor), owner(editor) {}

  QSize sizeHint() const override { return {owner->NumbersWidth(), 0}; }

 protected:
  void paintEvent(QPaintEvent* event) override { owner->PaintNumbers(event); }

 private:
  CodeEditor* owner;
};

}  // namespace

CodeEditor::CodeEditor(Colouring colouring, QWidget* parent)
    : QPlainTextEdit(parent),
      highlighter(new Highlighter(document(), std::move(colouring))),
      numbers(new Numbers(this)) {
  QFont fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);
  fixed.setPointSizeF(font().pointSizeF());
  setFont(fixed);
  setTabStopDistance(kTabColumns * QFontMetricsF(fixed).horizontalAdvance(' '));
  setLineWrapMode(NoWrap);
  connect(document(), &QTextDocument::contentsChange, this, &CodeEditor::NoteChange);
  connect(document(), &QTextDocument::contentsChanged, this, &CodeEditor::TellEdit);
  connect(this, &CodeEditor::blockCountChanged, this,
          [this] { setViewportMargins(NumbersWidth(), 0, 0, 0); });
  connect(this, &CodeEditor::updateRequest, this, [this](const QRect& area, int scrolled) {
    if (scrolled != 0)
      numbers->scroll(0, scrolled);
    else
      numbers->update(0, area.y(), numbers->width(), area.height());
  });
  connect(this, &CodeEditor::cursorPositionChanged, this, &CodeEditor::ShowMarks);
  setViewportMargins(NumbersWidth(), 0, 0, 0);
  ShowMarks();
}

void CodeEditor::NoteChange(int place, int /*removed*/, int added) {
  const int to = place + added;
  changedTo = changedFrom < 0 ? to : std::max(changedTo, to);
  changedFrom = changedFrom < 0 ? place : std::min(changedFrom, place);
}

// What lies between the places, and nothing else, has changed; the lines behind it count from the end.
void CodeEditor::TellEdit() {
  if (changedFrom < 0) return;
  const QTextDocument* text = document();
  const int end = std::max(text->characterCount() - 1, 0);
  const int first = text->findBlock(std::min(changedFrom, end)).blockNumber();
  const int with = text->findBlock(std::min(changedTo, end)).blockNumber() - first + 1;
  const int count = with + blocks - text->blockCount();
  blocks = text->blockCount();
  changedFrom = -1;
  if (!quiet) Q_EMIT Edited(first, count, with);
}

void CodeEditor::ReplaceBlocks(int first, int count, const QString& with) {
  QTextCursor cursor(document()->findBlockByNumber(first));
  const QTextBlock last = document()->findBlockByNumber(first + count - 1);
  cursor.setPosition(last.position() + last.length() - 1, QTextCursor::KeepAnchor);
  cursor.insertText(with);
}

void CodeEditor::Show(const QString& text) {
  const QStringList lines = text.split('\n');
  const int now = static_cast<int>(lines.size());
  const int before = blockCount();
  const int most = std::min(now, before) - 1;
  int head = 0;
  QTextBlock block = document()->firstBlock();
  for (; head < most && block.text() == lines[head]; ++head) block = block.next();
  int tail = 0;
  block = document()->lastBlock();
  for (; tail < most - head && block.text() == lines[now - 1 - tail]; ++tail) block = block.previous();
  const QStringList with = lines.mid(head, now - tail - head);
  if (with.size() == 1 && before - tail - head == 1 &&
      document()->findBlockByNumber(head).text() == with.front())
    return;
  quiet = true;
  ReplaceBlocks(head, before - tail - head, with.join('\n'));
  quiet = false;
}

void CodeEditor::ShowAnew(const QString& text) {
  quiet = true;
  setPlainText(text);
  quiet = false;
}

void CodeEditor::MarkError(int line) {
  if (error == line) return;
  error = line;
  ShowMarks();
  numbers->update();
}

void CodeEditor::SelectFrom(int line, int column, int length) {
  const QTextBlock block = document()->findBlockByNumber(line);
  if (!block.isValid()) return;
  QTextCursor cursor = textCursor();
  const int end = std::max(document()->characterCount() - 1, 0);
  // The caret at the front: what a line begins with is seen.
  cursor.setPosition(std::min(block.position() + column + length, end));
  cursor.setPosition(std::min(block.position() + column, end), QTextCursor::KeepAnchor);
  setTextCursor(cursor);
  ensureCursorVisible();
}

void CodeEditor::ShowMarks() {
  QList<QTextEdit::ExtraSelection> marks;
  const auto mark = [&marks](const QTextCursor& at, const QColor& colour) {
    QTextEdit::ExtraSelection line;
    line.format.setBackground(colour);
    line.format.setProperty(QTextFormat::FullWidthSelection, true);
    line.cursor = at;
    line.cursor.clearSelection();
    marks.append(line);
  };
  mark(textCursor(), kCurrentLine);
  const QTextBlock failing = document()->findBlockByNumber(error - 1);
  if (error > 0 && failing.isValid()) mark(QTextCursor(failing), kErrorLine);
  setExtraSelections(marks);
}

int CodeEditor::NumbersWidth() const {
  const auto digits = std::max<qsizetype>(3, QString::number(blockCount()).size());
  return 2 * kNumberRoom + static_cast<int>(digits) * fontMetrics().horizontalAdvance('0');
}

void CodeEditor::PaintNumbers(QPaintEvent* event) {
  QPainter painter(numbers);
  painter.setFont(font());
  painter.fillRect(event->rect(), kNumberBack);
  for (QTextBlock block = firstVisibleBlock(); block.isValid(); block = block.next()) {
    const QRectF place = blockBoundingGeometry(block).translated(contentOffset());
    if (place.top() > event->rect().bottom()) return;
    const int line = block.blockNumber() + 1;
    painter.setPen(line == error ? kErrorNumber : kNumber);
    painter.drawText(QRectF(0, place.top(), numbers->width() - kNumberRoom, place.height()),
                     Qt::AlignRight | Qt::AlignVCenter, QString::number(line));
  }
}

void CodeEditor::resizeEvent(QResizeEvent* event) {
  QPlainTextEdit::resizeEvent(event);
  const QRect inside = contentsRect();
  numbers->setGeometry(inside.left(), inside.top(), NumbersWidth(), inside.height());
}

void CodeEditor::mouseDoubleClickEvent(QMouseEvent* event) {
  QPlainTextEdit::mouseDoubleClickEvent(event);
  Q_EMIT DoubleClicked();
}

// Tab belongs to the text; with Ctrl it leads out of it.
void CodeEditor::keyPressEvent(QKeyEvent* event) {
  const bool control = (event->modifiers() & Qt::ControlModifier) != 0;
  if (control && event->key() == Qt::Key_Tab) return static_cast<void>(QWidget::focusNextPrevChild(true));
  if (control && event->key() == Qt::Key_Backtab)
    return static_cast<void>(QWidget::focusNextPrevChild(false));
  QPlainTextEdit::keyPressEvent(event);
}

void CodeEditor::dragEnterEvent(QDragEnterEvent* event) {
  if (event->mimeData()->hasUrls()) return event->ignore();
  QPlainTextEdit::dragEnterEvent(event);
}

}  // namespace quoll
