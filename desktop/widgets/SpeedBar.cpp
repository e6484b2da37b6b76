#include "desktop/widgets/SpeedBar.h"

#include <QPainter>
#include <algorithm>

namespace quoll {

namespace {

constexpr float kLongest = 4000;

}  // namespace

SpeedBar::SpeedBar(QWidget* parent) : QWidget(parent) {
  setObjectName("Shape4");
  setAccessibleName(tr("Speed bar"));
  setFixedSize(SpeedBar::sizeHint());
}

void SpeedBar::SetValue(float value) {
  const float share = std::clamp(value / kLongest, 0.0F, 1.0F);
  const int wanted = static_cast<int>(share * static_cast<float>(width() - 2));
  if (wanted == length) return;
  length = wanted;
  update();
}

void SpeedBar::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setPen(palette().color(QPalette::Mid));
  painter.setBrush(palette().color(QPalette::Base));
  painter.drawRect(rect().adjusted(0, 0, -1, -1));
  painter.fillRect(1, 1, length, height() - 2, palette().color(QPalette::Highlight));
}

}  // namespace quoll
