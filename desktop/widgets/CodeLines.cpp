#include "desktop/widgets/CodeLines.h"

#include <QKeyEvent>
#include <QPainter>
#include <QStyledItemDelegate>

#include "desktop/kit/QtText.h"
#include "desktop/widgets/FixedFont.h"

namespace quoll {

namespace {

const QColor kNextGround(0xFF, 0xE0, 0x80), kNextText(Qt::black), kBreakpoint(0xD0, 0x20, 0x20);

// Draws the marks into a margin at the left: a dot for the breakpoint, an arrow for the next line.
class Marks : public QStyledItemDelegate {
 public:
  explicit Marks(CodeLines* owner) : QStyledItemDelegate(owner), lines(owner) {}

  static int Margin(const QFontMetrics& metrics) { return 2 * metrics.height(); }

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override {
    const int row = index.row();
    const bool next = row == lines->Next();
    const QPalette& colours = option.palette;
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    if (next) painter->fillRect(option.rect, kNextGround);
    const double height = option.rect.height(), third = height / 3;
    const QPointF corner = option.rect.topLeft();
    if (lines->IsBreakpoint(row)) {
      painter->setBrush(kBreakpoint);
      painter->drawEllipse(corner + QPointF(height / 2, height / 2), third, third);
    }
    if (next) {
      painter->setBrush(kNextText);
      const QPointF left = corner + QPointF(height, height / 4);
      painter->drawPolygon(
          QPolygonF({left, left + QPointF(0, height / 2), left + QPointF(third * 2, height / 4)}));
    }
    painter->setRenderHint(QPainter::Antialiasing, false);
    painter->setPen(next ? kNextText : colours.color(QPalette::Text));
    painter->drawText(option.rect.adjusted(Margin(option.fontMetrics), 0, 0, 0), Qt::AlignVCenter,
                      index.data().toString());
    painter->setPen(colours.color(QPalette::Highlight));
    painter->setBrush(Qt::NoBrush);
    if (lines->hasFocus() && row == lines->currentRow())
      painter->drawRect(option.rect.adjusted(0, 0, -1, -1));
    painter->restore();
  }

 private:
  CodeLines* lines;
};

}  // namespace

CodeLines::CodeLines(int rows, int columns, QWidget* parent) : QListWidget(parent) {
  setFont(FixedFont(*this));
  setUniformItemSizes(true);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setItemDelegate(new Marks(this));
  for (int row = 0; row < rows; ++row) addItem(QString());
  setCurrentRow(0);
  const int edge = 2 * frameWidth() + 4;
  setMinimumWidth(Marks::Margin(fontMetrics()) + fontMetrics().horizontalAdvance(QString(columns, '0')) +
                  edge);
  setFixedHeight(rows * sizeHintForRow(0) + edge);
  connect(this, &QListWidget::itemDoubleClicked, this,
          [this](QListWidgetItem* item) { Q_EMIT Opened(row(item)); });
}

void CodeLines::Show(std::string_view lines) {
  if (lines == shown) return;
  shown = lines;
  const QStringList texts = ToQt(lines).remove('\r').split('\n');
  for (int row = 0; row < count(); ++row) {
    const QString text = row < texts.size() ? texts[row].trimmed() : QString();
    if (item(row)->text() != text) item(row)->setText(text);
  }
  Describe();
}

void CodeLines::MarkNext(int row) {
  if (next == row) return;
  next = row;
  Describe();
}

void CodeLines::MarkBreakpoint(std::optional<int32_t> address) {
  if (breakpoint == address) return;
  breakpoint = address;
  Describe();
}

bool CodeLines::IsBreakpoint(int row) const {
  const auto address = Address(row);
  return address && address == breakpoint;
}

std::optional<int32_t> CodeLines::Address(int row) const {
  if (row < 0 || row >= count()) return {};
  bool valid = false;
  const int address = item(row)->text().section(' ', 0, 0).toInt(&valid, 16);
  return valid ? std::optional<int32_t>(address) : std::nullopt;
}

// What is painted is told as well.
void CodeLines::Describe() {
  for (int row = 0; row < count(); ++row) {
    QStringList marks;
    if (row == next) marks << tr("next");
    if (IsBreakpoint(row)) marks << tr("breakpoint");
    const QString description = marks.join(", ");
    if (item(row)->data(Qt::AccessibleDescriptionRole).toString() != description)
      item(row)->setData(Qt::AccessibleDescriptionRole, description);
  }
  viewport()->update();
}

void CodeLines::keyPressEvent(QKeyEvent* event) {
  const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  if (!enter) return QListWidget::keyPressEvent(event);
  if (currentRow() >= 0 && !event->isAutoRepeat()) Q_EMIT Opened(currentRow());
}

}  // namespace quoll
