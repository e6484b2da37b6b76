#include "desktop/windows/ErrorSimWindow.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QRadioButton>

namespace quoll {

ErrorSimWindow::ErrorSimWindow(FormKit& kitOfWindow) : FormWindow(kitOfWindow) {
  auto* column = new QVBoxLayout(this);
  column->addWidget(VideoFrame());
  column->addWidget(SystemFrame());
  column->setSizeConstraint(QLayout::SetFixedSize);
}

QGroupBox* ErrorSimWindow::VideoFrame() {
  constexpr int kBits = 8, kOptions = 3, kRows = 4;
  QGroupBox* frame = FormKit::Frame("Frame1", "Video RAM");
  auto* grid = new QGridLayout(frame);
  grid->addWidget(kit.Check("Check1"), 0, 0, 1, 2);
  for (int bit = 0; bit < kBits; ++bit) grid->addWidget(kit.Check("CH0", bit), 1 + bit % kRows, bit / kRows);
  for (int i = 0; i < kOptions; ++i) grid->addWidget(kit.Option("Option1", i), 1 + i, 2);
  return frame;
}

QGroupBox* ErrorSimWindow::SystemFrame() {
  QGroupBox* frame = FormKit::Frame("Frame2", "Sytem RAM");
  auto* row = new QHBoxLayout(frame);
  for (const char* bank : {"Check2", "Check3", "Check4", "Check5"}) row->addWidget(kit.Check(bank));
  return frame;
}

}  // namespace quoll
