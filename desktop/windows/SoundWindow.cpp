#include "desktop/windows/SoundWindow.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include "machine/Machine.h"
#include "desktop/widgets/ScopeBox.h"

namespace quoll {

SoundWindow::SoundWindow(QtHost& hostOfWindow, Machine& machineOfWindow)
    : FormWindow(hostOfWindow, machineOfWindow, &Windows::FDXF, "FDXF"),
      left(new ScopeBox("PL", tr("Left channel"))),
      right(new ScopeBox("PR", tr("Right channel"))) {
  escapeCloses = false;  // too easily pressed for what closing brings
  setWindowTitle("Paiplag");
  setAccessibleName(windowTitle());
  auto* count = new QLineEdit;
  count->setObjectName("TextR");
  count->setAccessibleName(tr("Blocks delivered"));
  count->setAlignment(Qt::AlignRight);
  count->setFixedWidth(fontMetrics().horizontalAdvance("000000000000"));
  binder.Bind("TextR", count);

  auto* grid = new QGridLayout(this);
  auto* row = new QHBoxLayout;
  row->addWidget(Add<QPushButton>("cmdStartPlay", "Play"));
  row->addWidget(Add<QPushButton>("Cstop", "Stop"));
  row->addStretch();
  row->addWidget(Add<QCheckBox>("Check7", "Osc", tr("Oscilloscope")));
  row->addWidget(new QLabel(tr("Blocks")));
  row->addWidget(count);
  grid->addLayout(row, 0, 0, 1, 2);
  grid->addWidget(new QLabel("L"), 1, 0);
  grid->addWidget(left, 1, 1);
  grid->addWidget(new QLabel("R"), 2, 0);
  grid->addWidget(right, 2, 1);
  grid->setSizeConstraint(QLayout::SetFixedSize);
}

void SoundWindow::ShowRecord() {
  if (drawings == m.fdxf.drawings) return;
  drawings = m.fdxf.drawings;
  left->Draw(m.fdxf.drawn, 0);
  right->Draw(m.fdxf.drawn, 1);
}

void SoundWindow::closeEvent(QCloseEvent* event) {
  FormWindow::closeEvent(event);
  host.SoundStop();
  host.Close();
}

}  // namespace quoll
