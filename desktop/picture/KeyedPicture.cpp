#include "desktop/picture/KeyedPicture.h"

#include <QKeyEvent>
#include <QMouseEvent>

#include "machine/Machine.h"

namespace quoll {

KeyedPicture::KeyedPicture(QtHost& hostOfWindow, Machine& machineOfWindow, QWidget* parent, const char* name)
    : QWidget(parent), host(hostOfWindow), m(machineOfWindow), keys(host, m), mark(new StandMark(this)) {
  setObjectName(name);
  setAccessibleName(tr("Screen of the TV Computer"));
  setFocusPolicy(Qt::StrongFocus);
  setMouseTracking(true);
  setAttribute(Qt::WA_OpaquePaintEvent);
  setAttribute(Qt::WA_InputMethodEnabled, false);
}

bool KeyedPicture::event(QEvent* event) {
  if (ClaimShortcut(event)) return true;
  return QWidget::event(event);
}

void KeyedPicture::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape && Escape()) return;
  keys.Pressed(event);
}

void KeyedPicture::keyReleaseEvent(QKeyEvent* event) { keys.Released(event); }

void KeyedPicture::mouseMoveEvent(QMouseEvent* event) {
  QPoint pixel;
  if (ToPicture(event->position(), pixel)) picd_MouseMove(m.pen, pixel.x(), pixel.y());
}

void KeyedPicture::mousePressEvent(QMouseEvent* event) {
  setFocus(Qt::MouseFocusReason);
  QPoint pixel;
  if (ToPicture(event->position(), pixel)) keys.Clear();
}

void KeyedPicture::focusInEvent(QFocusEvent* event) {
  keys.Clear();
  QWidget::focusInEvent(event);
}

void KeyedPicture::focusOutEvent(QFocusEvent* event) {
  keys.Clear();
  QWidget::focusOutEvent(event);
}

}  // namespace quoll
