#include "desktop/kit/FormWindow.h"

#include <QCloseEvent>
#include <QKeyEvent>

#include "desktop/kit/QtText.h"
#include "desktop/kit/TabOrder.h"

namespace quoll {

FormWindow::FormWindow(FormKit& kitOfWindow, Qt::WindowFlags flags)
    : QWidget(nullptr, flags), RecordView(kitOfWindow.host), kit(kitOfWindow), m(kit.m) {
  setWindowTitle(ToQt(kit.form.caption));
  NameWidget(this, ToQt(kit.form.name), windowTitle());
}

void FormWindow::Pull(Machine& /*machine*/) {
  FormState& state = kit.State();
  if (state.visible && isHidden()) Appear();
  if (!state.visible && !isHidden()) Vanish();
  if (isHidden()) return;
  const QString caption = ToQt(state.caption.empty() ? kit.form.caption : state.caption);
  if (windowTitle() != caption) setWindowTitle(caption);
  // The user may have brought a widget away from its field.
  const bool acted = kit.binder.TakeActed();
  if (RecordChanged() || acted) {
    kit.binder.Pull();
    ShowRecord();
  }
  if (!state.raise) return;
  state.raise = false;
  raise();
  activateWindow();
}

void FormWindow::Appear() {
  if (!tabsSet) TabAsSeen(*this);
  tabsSet = true;
  kit.binder.Pull();  // as large as it needs to be, before it is seen
  ShowAt(*this, place);
}

void FormWindow::Vanish() {
  place = PlaceOf(*this);
  hide();
}

void FormWindow::closeEvent(QCloseEvent* event) {
  place = PlaceOf(*this);
  kit.State().visible = false;
  QWidget::closeEvent(event);
}

void FormWindow::keyPressEvent(QKeyEvent* event) {
  if (escapeCloses && event->key() == Qt::Key_Escape) close();
  QWidget::keyPressEvent(event);
}

}  // namespace quoll
