#include "desktop/kit/FormWindow.h"

#include <QCloseEvent>
#include <QKeyEvent>

#include "machine/Machine.h"

namespace quoll {

FormWindow::FormWindow(QtHost& hostOfWindow, Machine& machineOfWindow, WindowState Windows::*state,
                       const char* form)
    : host(hostOfWindow), m(machineOfWindow), binder(host, m, form), which(state) {
  setObjectName(form);
  host.AddView(this);
}

FormWindow::~FormWindow() { host.RemoveView(this); }

void FormWindow::Pull(Machine& /*machine*/) {
  WindowState& state = m.windows.*which;
  if (state.visible == isHidden()) setVisible(state.visible);
  if (!state.visible) return;
  binder.Pull();
  ShowRecord();
  if (!state.raise) return;
  state.raise = false;
  raise();
  activateWindow();
}

void FormWindow::closeEvent(QCloseEvent* event) {
  (m.windows.*which).visible = false;
  QWidget::closeEvent(event);
}

void FormWindow::keyPressEvent(QKeyEvent* event) {
  if (escapeCloses && event->key() == Qt::Key_Escape) close();
  QWidget::keyPressEvent(event);
}

}  // namespace quoll
