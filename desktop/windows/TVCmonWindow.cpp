#include "desktop/windows/TVCmonWindow.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>

#include "machine/Machine.h"

namespace quoll {

namespace {

// A lamp is a label with a coloured ground.
void SetLamp(QLabel* lamp, bool on) {
  const QString style = on ? "background: #30c030; color: black;" : "background: #404040; color: #c0c0c0;";
  if (lamp->styleSheet() != style) lamp->setStyleSheet(style);
}

}  // namespace

TVCmonWindow::TVCmonWindow(QtHost& hostOfWindow, Machine& machineOfWindow)
    : FormWindow(hostOfWindow, machineOfWindow, &Windows::TVCmon, "TVCmon") {
  setWindowTitle("HW Monitor");
  setAccessibleName(windowTitle());
  auto* column = new QVBoxLayout(this);
  column->addWidget(SoundFrameBox());
  column->setSizeConstraint(QLayout::SetFixedSize);
}

QGroupBox* TVCmonWindow::SoundFrameBox() {
  auto* frame = new QGroupBox("SOUND");
  frame->setAccessibleName(frame->title());
  auto* grid = new QGridLayout(frame);
  int row = 0;
  const auto addField = [&](const QString& caption, const QString& port, std::string SoundFields::*field) {
    auto* value = new QLabel;
    value->setObjectName("Sound" + caption.simplified().remove(' '));
    value->setAccessibleName(caption.trimmed());
    value->setFrameStyle(QFrame::Panel | QFrame::Sunken);
    value->setAlignment(Qt::AlignRight);
    value->setMinimumWidth(fontMetrics().horizontalAdvance("0000000"));
    grid->addWidget(new QLabel(caption), row, 0);
    grid->addWidget(new QLabel(port), row, 1);
    grid->addWidget(value, row, 2);
    fields.emplace_back([value, field](const SoundFields& now) { ShowText(value, ToQt(now.*field)); });
    ++row;
  };
  addField("Sound IT", "PORT 5", &SoundFields::SoundIT);
  addField("Pitch", "PORT 4,5", &SoundFields::Pitch);
  addField("Volume", "PORT 6", &SoundFields::Volume);
  addField(" Out Enable", "PORT 5", &SoundFields::OutEnable);
  addField(" Counter", "PORT 5", &SoundFields::Counter);

  auto* lamps = new QHBoxLayout;
  const auto addLamp = [&](const QString& caption, bool SoundFields::*field) {
    auto* lamp = new QLabel(caption);
    lamp->setObjectName("Sound" + caption);
    lamp->setAccessibleName(caption);
    lamp->setAlignment(Qt::AlignCenter);
    lamp->setMargin(2);
    lamps->addWidget(lamp);
    fields.emplace_back([lamp, field](const SoundFields& now) { SetLamp(lamp, now.*field); });
  };
  addLamp("IRQ", &SoundFields::irq);
  addLamp("ACTIVE", &SoundFields::active);
  grid->addLayout(lamps, row++, 0, 1, 3);
  grid->addWidget(new QLabel("22KHz / 8bit"), row++, 0, 1, 3);
  grid->addWidget(Add<QCheckBox>("Check1", "Record", tr("Record tape and tone")), row, 0);
  grid->addWidget(Add<QCheckBox>("Check3", "Int enabled", tr("Sound interrupt enabled")), row, 1, 1, 2);
  return frame;
}

void TVCmonWindow::ShowRecord() {
  const SoundFields now = ReadSoundFields(m);
  for (const auto& show : fields) show(now);
}

}  // namespace quoll
