#include "desktop/windows/SoundWindow.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace quoll {

SoundWindow::SoundWindow(FormKit& kitOfWindow) : FormWindow(kitOfWindow) {
  constexpr ScopeBox kBox{.units = {222, 64}, .zoom = 2, .dots = true};
  escapeCloses = false;  // too easily pressed for what closing brings
  QLineEdit* count = kit.Text("TextR");
  count->setAlignment(Qt::AlignRight);
  count->setFixedWidth(fontMetrics().horizontalAdvance("000000000000"));

  auto* grid = new QGridLayout(this);
  auto* row = new QHBoxLayout;
  row->addWidget(kit.Button("cmdStartPlay"));
  row->addWidget(kit.Button("Cstop"));
  row->addStretch();
  row->addWidget(kit.Check("Check7"));
  row->addWidget(new QLabel(tr("Blocks")));
  row->addWidget(count);
  grid->addLayout(row, 0, 0, 1, 2);
  grid->addWidget(new QLabel("L"), 1, 0);
  grid->addWidget(kit.Scope("PL", 0, kBox), 1, 1);
  grid->addWidget(new QLabel("R"), 2, 0);
  grid->addWidget(kit.Scope("PR", 0, kBox), 2, 1);
  grid->setSizeConstraint(QLayout::SetFixedSize);
}

void SoundWindow::closeEvent(QCloseEvent* event) {
  FormWindow::closeEvent(event);
  host.SoundStop();
  host.Close();
}

}  // namespace quoll
