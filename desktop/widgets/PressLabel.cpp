#include "desktop/widgets/PressLabel.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QStyle>
#include <QStyleOptionFocusRect>

namespace quoll {

namespace {

bool IsPressKey(const QKeyEvent& event) {
  return event.key() == Qt::Key_Space || event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
}

}  // namespace

PressLabel::PressLabel(QWidget* parent) : QLabel(parent) { setTextFormat(Qt::PlainText); }

void PressLabel::SetPressable(bool on) {
  pressable = on;
  setFocusPolicy(on ? Qt::StrongFocus : Qt::NoFocus);
}

void PressLabel::GoDown() {
  if (down) return;
  down = true;
  Q_EMIT Pressed();
}

void PressLabel::GoUp(bool inside) {
  if (!down) return;
  down = false;
  Q_EMIT Released();
  if (inside) Q_EMIT Clicked();
}

void PressLabel::mousePressEvent(QMouseEvent* event) {
  if (!pressable || event->button() != Qt::LeftButton) return QLabel::mousePressEvent(event);
  GoDown();
}

void PressLabel::mouseReleaseEvent(QMouseEvent* event) {
  if (!down || event->button() != Qt::LeftButton) return QLabel::mouseReleaseEvent(event);
  GoUp(rect().contains(event->position().toPoint()));
}

void PressLabel::keyPressEvent(QKeyEvent* event) {
  if (!pressable || !IsPressKey(*event)) return QLabel::keyPressEvent(event);
  if (!event->isAutoRepeat()) GoDown();
}

void PressLabel::keyReleaseEvent(QKeyEvent* event) {
  if (!down || !IsPressKey(*event)) return QLabel::keyReleaseEvent(event);
  if (!event->isAutoRepeat()) GoUp(true);
}

void PressLabel::focusInEvent(QFocusEvent* event) {
  QLabel::focusInEvent(event);
  update();
}

// The key may come up somewhere else now.
void PressLabel::focusOutEvent(QFocusEvent* event) {
  GoUp(false);
  QLabel::focusOutEvent(event);
  update();
}

void PressLabel::hideEvent(QHideEvent* event) {
  GoUp(false);
  QLabel::hideEvent(event);
}

void PressLabel::paintEvent(QPaintEvent* event) {
  QLabel::paintEvent(event);
  if (!hasFocus()) return;
  QPainter painter(this);
  QStyleOptionFocusRect option;
  option.initFrom(this);
  option.backgroundColor = palette().color(QPalette::Window);
  style()->drawPrimitive(QStyle::PE_FrameFocusRect, &option, &painter, this);
}

}  // namespace quoll
