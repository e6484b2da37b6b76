#include "desktop/windows/ErrorSimWindow.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QKeyEvent>
#include <QRadioButton>

#include "machine/Machine.h"
#include "desktop/QtHost.h"

namespace quoll {

ErrorSimWindow::ErrorSimWindow(QtHost& hostOfWindow, Machine& machineOfWindow)
    : m(machineOfWindow), binder(hostOfWindow, m, "ErrorSim") {
  setObjectName("ErrorSim");
  setWindowTitle("Error simulation");
  setAccessibleName(windowTitle());
  auto* column = new QVBoxLayout(this);
  column->addWidget(VideoFrame());
  column->addWidget(SystemFrame());
  column->setSizeConstraint(QLayout::SetFixedSize);
}

template <typename Button>
Button* ErrorSimWindow::Add(const char* control, const QString& caption, const QString& accessibleName,
                            int index) {
  auto* button = new Button(caption);
  button->setObjectName(QString::fromLatin1(control) + (index > 0 ? QString::number(index) : QString()));
  button->setAccessibleName(accessibleName);
  binder.Bind(control, button, index);
  return button;
}

QGroupBox* ErrorSimWindow::VideoFrame() {
  constexpr int kBits = 8;
  auto* frame = new QGroupBox("Video RAM");
  frame->setObjectName("Frame1");
  frame->setAccessibleName(frame->title());
  auto* grid = new QGridLayout(frame);
  grid->addWidget(Add<QCheckBox>("Check1", "Enabled", tr("Video RAM errors enabled")), 0, 0, 1, 2);
  for (int bit = 0; bit < kBits; ++bit) {
    const QString caption = QString::number(bit) + " bit";
    grid->addWidget(Add<QCheckBox>("CH0", caption, caption, bit), 1 + bit % 4, bit / 4);
  }
  const QStringList options{"bit=0", "bit=1", "bit=Random"};
  for (int i = 0; i < options.size(); ++i)
    grid->addWidget(Add<QRadioButton>("Option1", options[i], options[i], i), 1 + i, 2);
  return frame;
}

QGroupBox* ErrorSimWindow::SystemFrame() {
  auto* frame = new QGroupBox("Sytem RAM");
  frame->setObjectName("Frame2");
  frame->setAccessibleName(frame->title());
  auto* row = new QHBoxLayout(frame);
  row->addWidget(Add<QCheckBox>("Check2", "U0", tr("U0 missing")));
  row->addWidget(Add<QCheckBox>("Check3", "U1", tr("U1 missing")));
  row->addWidget(Add<QCheckBox>("Check4", "U2", tr("U2 missing")));
  row->addWidget(Add<QCheckBox>("Check5", "U3", tr("U3 missing")));
  return frame;
}

void ErrorSimWindow::Pull() {
  WindowState& state = m.windows.ErrorSim;
  if (state.visible == isHidden()) setVisible(state.visible);
  if (!state.visible) return;
  binder.Pull();
  if (!state.raise) return;
  state.raise = false;
  raise();
  activateWindow();
}

void ErrorSimWindow::closeEvent(QCloseEvent* event) {
  m.windows.ErrorSim.visible = false;
  QWidget::closeEvent(event);
}

void ErrorSimWindow::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape) close();
  QWidget::keyPressEvent(event);
}

}  // namespace quoll
