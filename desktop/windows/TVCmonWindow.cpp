#include "desktop/windows/TVCmonWindow.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QVBoxLayout>

#include "desktop/widgets/Lamp.h"
#include "desktop/widgets/Readout.h"

namespace quoll {

TVCmonWindow::TVCmonWindow(FormKit& kitOfWindow) : FormWindow(kitOfWindow) {
  auto* column = new QVBoxLayout(this);
  column->addWidget(SoundFrameBox());
  column->setSizeConstraint(QLayout::SetFixedSize);
}

QGroupBox* TVCmonWindow::SoundFrameBox() {
  QGroupBox* frame = FormKit::Frame("", "SOUND");
  auto* column = new QVBoxLayout(frame);
  column->addWidget(kit.Readout("SoundIT", 0, "PORT 5"));
  column->addWidget(kit.Readout("Pitch", 0, "PORT 4,5"));
  column->addWidget(kit.Readout("Volume", 0, "PORT 6"));
  column->addWidget(kit.Readout("OutEnable", 0, "PORT 5"));
  column->addWidget(kit.Readout("Counter", 0, "PORT 5"));
  auto* lamps = new QHBoxLayout;
  for (int lamp = 0; lamp < kit.Count("SoundLamp"); ++lamp) lamps->addWidget(kit.Lamp("SoundLamp", lamp));
  column->addLayout(lamps);
  column->addWidget(new QLabel("22KHz / 8bit"));
  auto* boxes = new QHBoxLayout;
  boxes->addWidget(kit.Check("Check1"));
  boxes->addWidget(kit.Check("Check3"));
  column->addLayout(boxes);
  return frame;
}

}  // namespace quoll
