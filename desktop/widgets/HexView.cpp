#include "desktop/widgets/HexView.h"

#include <QCoreApplication>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QTextBlock>
#include <QWheelEvent>

#include "desktop/widgets/Colour.h"
#include "desktop/widgets/FixedFont.h"

namespace quoll {

HexView::HexView(const QString& header, int rows, int rowBytes, QWidget* parent)
    : QWidget(parent), text(new QPlainTextEdit), bar(new QScrollBar(Qt::Vertical)) {
  const QFont fixed = FixedFont(*this);
  text->setFont(fixed);
  text->setReadOnly(true);
  text->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  text->setTabChangesFocus(true);
  text->setLineWrapMode(QPlainTextEdit::NoWrap);
  text->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  text->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  // "0000: ", three places a byte, the characters.
  const QFontMetrics metrics(fixed);
  const int edge = 2 * (text->frameWidth() + static_cast<int>(text->document()->documentMargin()));
  text->setFixedSize(
      metrics.horizontalAdvance(QString(8 + 4 * rowBytes, '0')) + edge,
      rows * metrics.lineSpacing() + edge + static_cast<int>(text->document()->documentMargin()));
  text->installEventFilter(this);
  text->viewport()->installEventFilter(this);
  setFocusProxy(text);
  bar->setSingleStep(rowBytes);
  bar->setPageStep(rows * rowBytes);
  connect(bar, &QScrollBar::valueChanged, this, &HexView::Moved);

  auto* grid = new QGridLayout(this);
  grid->setContentsMargins(0, 0, 0, 0);
  grid->setSpacing(0);
  if (!header.isEmpty()) {
    auto* line = new QLabel(header);
    line->setFont(fixed);
    line->setTextFormat(Qt::PlainText);
    line->setContentsMargins(edge / 2, 0, 0, 0);
    grid->addWidget(line, 0, 0);
  }
  grid->addWidget(text, 1, 0);
  grid->addWidget(bar, 1, 1);
}

void HexView::SetRows(const QString& rows) {
  if (Rows() != rows) text->setPlainText(rows);
}

QString HexView::Rows() const { return text->toPlainText(); }

void HexView::SetMarks(const std::vector<Mark>& parts) {
  QList<QTextEdit::ExtraSelection> marks;
  for (const Mark& part : parts) {
    const QTextBlock row = text->document()->findBlockByNumber(part.row);
    if (!row.isValid() || part.column + part.length >= row.length()) continue;
    QTextEdit::ExtraSelection mark;
    mark.cursor = QTextCursor(row);
    mark.cursor.setPosition(row.position() + part.column);
    mark.cursor.setPosition(row.position() + part.column + part.length, QTextCursor::KeepAnchor);
    mark.format.setBackground(kChangedGround);
    mark.format.setForeground(kChangedText);
    marks << mark;
  }
  text->setExtraSelections(marks);
}

void HexView::SetRange(int first, int last) {
  const QSignalBlocker quiet(bar);
  bar->setRange(first, last);
}

int HexView::Address() const { return bar->value(); }

void HexView::SetAddress(int address) {
  const QSignalBlocker quiet(bar);
  bar->setValue(address);
}

bool HexView::Scroll(int key) {
  switch (key) {
    case Qt::Key_Up: bar->triggerAction(QScrollBar::SliderSingleStepSub); return true;
    case Qt::Key_Down: bar->triggerAction(QScrollBar::SliderSingleStepAdd); return true;
    case Qt::Key_PageUp: bar->triggerAction(QScrollBar::SliderPageStepSub); return true;
    case Qt::Key_PageDown: bar->triggerAction(QScrollBar::SliderPageStepAdd); return true;
    case Qt::Key_Home: bar->triggerAction(QScrollBar::SliderToMinimum); return true;
    case Qt::Key_End: bar->triggerAction(QScrollBar::SliderToMaximum); return true;
    default: return false;
  }
}

bool HexView::eventFilter(QObject* object, QEvent* event) {
  if (object == text && event->type() == QEvent::KeyPress) {
    const auto* key = static_cast<QKeyEvent*>(event);
    // With Shift the keys select text to be copied.
    if (!key->modifiers().testFlag(Qt::ShiftModifier) && Scroll(key->key())) return true;
  }
  if (object == text->viewport() && event->type() == QEvent::Wheel) {
    QCoreApplication::sendEvent(bar, event);
    return true;
  }
  return QWidget::eventFilter(object, event);
}

}  // namespace quoll
