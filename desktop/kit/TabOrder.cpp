#include "desktop/kit/TabOrder.h"

#include <QFormLayout>
#include <QGridLayout>
#include <QWidget>
#include <algorithm>
#include <vector>

namespace quoll {

namespace {

void Collect(QLayoutItem* item, std::vector<QWidget*>& seen);

// The items of a layout as they are seen: a grid's may have been added in any order.
std::vector<QLayoutItem*> Items(QLayout& layout) {
  std::vector<int> places(static_cast<size_t>(layout.count()));
  for (size_t i = 0; i < places.size(); ++i) places[i] = static_cast<int>(i);
  if (auto* grid = qobject_cast<QGridLayout*>(&layout)) {
    const auto position = [grid](int place) {
      int row = 0, column = 0, rows = 0, columns = 0;
      grid->getItemPosition(place, &row, &column, &rows, &columns);
      return std::pair(row, column);
    };
    std::ranges::stable_sort(places, {}, position);
  }
  std::vector<QLayoutItem*> items;
  for (const int place : places) items.push_back(layout.itemAt(place));
  return items;
}

void Collect(QLayout* layout, std::vector<QWidget*>& seen) {
  if (layout == nullptr) return;
  for (QLayoutItem* item : Items(*layout)) Collect(item, seen);
}

void Collect(QLayoutItem* item, std::vector<QWidget*>& seen) {
  Collect(item->layout(), seen);
  QWidget* widget = item->widget();
  if (widget == nullptr) return;
  if ((widget->focusPolicy() & Qt::TabFocus) != 0 && widget->focusProxy() == nullptr) seen.push_back(widget);
  Collect(widget->layout(), seen);
}

}  // namespace

void TabAsSeen(QWidget& window) {
  std::vector<QWidget*> seen;
  Collect(window.layout(), seen);
  for (size_t i = 1; i < seen.size(); ++i) QWidget::setTabOrder(seen[i - 1], seen[i]);
}

}  // namespace quoll
