#include "desktop/widgets/Panel.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>

#include "desktop/kit/TabOrder.h"

namespace quoll {

Panel::Panel(FormState& stateOfPanel, QWidget* parent) : QFrame(parent), state(stateOfPanel) {
  setFrameStyle(QFrame::StyledPanel | QFrame::Raised);
  setAutoFillBackground(true);
  hide();
}

void Panel::Pull() {
  if (!state.visible) {
    if (!isHidden()) hide();
    return;
  }
  ShowRecord();
  if (!isHidden() && !state.raise) return;
  state.raise = false;
  TabAsSeen(*this);
  show();
  raise();
  FirstFocus()->setFocus();
}

void Panel::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape) return Cancel();
  QFrame::keyPressEvent(event);
}

void Panel::mousePressEvent(QMouseEvent* event) { event->accept(); }

bool Panel::focusNextPrevChild(bool next) {
  QWidget* start = QApplication::focusWidget();
  if (start == nullptr || !isAncestorOf(start)) return false;
  const auto step = [next](QWidget* widget) {
    return next ? widget->nextInFocusChain() : widget->previousInFocusChain();
  };
  for (QWidget* widget = step(start); widget != start; widget = step(widget)) {
    if (!isAncestorOf(widget) || !widget->isVisible() || !widget->isEnabled()) continue;
    if ((widget->focusPolicy() & Qt::TabFocus) == 0 || widget->focusProxy() != nullptr) continue;
    widget->setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
    return true;
  }
  return false;
}

}  // namespace quoll
