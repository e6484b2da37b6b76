#include "desktop/widgets/RegisterGrid.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QScrollBar>
#include <algorithm>

#include "desktop/widgets/Colour.h"

namespace quoll {

namespace {

QString Hex(int number) { return QString::number(number, 16).toUpper().rightJustified(2, '0'); }

}  // namespace

RegisterGrid::RegisterGrid(int count, int columns, int digits, QWidget* parent)
    : QTableWidget((count + columns - 1) / columns, columns, parent), cells(count) {
  setEditTriggers(QAbstractItemView::NoEditTriggers);
  setSelectionMode(QAbstractItemView::NoSelection);
  setFont(QFont("monospace", font().pointSize()));
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  horizontalHeader()->hide();
  verticalHeader()->hide();
  for (QHeaderView* header : {horizontalHeader(), verticalHeader()}) {
    header->setSectionResizeMode(QHeaderView::Fixed);
    header->setSectionsClickable(false);
    header->setMinimumSectionSize(1);
  }
  horizontalHeader()->setDefaultSectionSize(fontMetrics().horizontalAdvance(QString(digits + 1, '0')));
  verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 2);
  for (int cell = 0; cell < rowCount() * columns; ++cell) {
    auto* made = new QTableWidgetItem;
    made->setTextAlignment(Qt::AlignCenter);
    if (cell >= cells) made->setFlags(Qt::NoItemFlags);
    setItem(cell / columns, cell % columns, made);
  }
  connect(this, &QTableWidget::cellClicked, this, [this](int row, int column) {
    const int cell = row * columnCount() + column;
    if (cell < cells) Q_EMIT Pressed(cell);
  });
}

void RegisterGrid::ShowHeaders() {
  QStringList across, down;
  for (int i = 0; i < columnCount(); ++i) across << Hex(i);
  for (int i = 0; i < rowCount(); ++i) down << Hex(i * columnCount());
  setHorizontalHeaderLabels(across);
  setVerticalHeaderLabels(down);
  horizontalHeader()->show();
  verticalHeader()->show();
  updateGeometry();
}

void RegisterGrid::SetName(int cell, const QString& name) {
  At(cell)->setToolTip(name);
  At(cell)->setData(Qt::AccessibleDescriptionRole, name);
}

void RegisterGrid::SetValue(int cell, const QString& value) {
  if (At(cell)->text() != value) At(cell)->setText(value);
}

QString RegisterGrid::Value(int cell) const { return At(cell)->text(); }

void RegisterGrid::SetColours(int cell, int32_t fore, int32_t back) {
  const auto brush = [](int32_t colour) {
    return colour == kOwnColour ? QBrush() : QBrush(ToColour(colour));
  };
  if (At(cell)->foreground() != brush(fore)) At(cell)->setForeground(brush(fore));
  if (At(cell)->background() != brush(back)) At(cell)->setBackground(brush(back));
}

QSize RegisterGrid::sizeHint() const {
  constexpr int kMostRows = 16;
  const int frame = 2 * frameWidth();
  const bool headers = !verticalHeader()->isHidden();
  const bool scrolls = rowCount() > kMostRows;
  const QSize heads =
      headers ? QSize(verticalHeader()->sizeHint().width(), horizontalHeader()->sizeHint().height())
              : QSize(0, 0);
  const int bar = scrolls ? verticalScrollBar()->sizeHint().width() : 0;
  return {horizontalHeader()->length() + heads.width() + bar + frame,
          std::min(rowCount(), kMostRows) * verticalHeader()->defaultSectionSize() + heads.height() + frame};
}

void RegisterGrid::keyPressEvent(QKeyEvent* event) {
  const int key = event->key();
  const int cell = currentRow() * columnCount() + currentColumn();
  if (key != Qt::Key_Space && key != Qt::Key_Return && key != Qt::Key_Enter)
    return QTableWidget::keyPressEvent(event);
  if (currentRow() >= 0 && cell < cells && !event->isAutoRepeat()) Q_EMIT Pressed(cell);
}

bool RegisterGrid::focusNextPrevChild(bool next) { return QAbstractScrollArea::focusNextPrevChild(next); }

}  // namespace quoll
