#include "desktop/widgets/ValueBar.h"

#include <QPainter>
#include <algorithm>

namespace quoll {

ValueBar::ValueBar(QWidget* parent) : QWidget(parent) {
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  setMinimumSize(ValueBar::sizeHint());
}

int ValueBar::Length(float of) const { return static_cast<int>(of * static_cast<float>(width() - 2)); }

void ValueBar::SetShare(float wanted) {
  wanted = std::clamp(wanted, 0.0F, 1.0F);
  const bool seen = Length(wanted) != Length(share);
  share = wanted;
  if (seen) update();
}

void ValueBar::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setPen(palette().color(QPalette::Mid));
  painter.setBrush(palette().color(QPalette::Base));
  painter.drawRect(rect().adjusted(0, 0, -1, -1));
  painter.fillRect(1, 1, Length(share), height() - 2, palette().color(QPalette::Highlight));
}

}  // namespace quoll
