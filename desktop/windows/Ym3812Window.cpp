#include "desktop/windows/Ym3812Window.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QVBoxLayout>

#include "desktop/kit/QtText.h"
#include "desktop/widgets/PressLabel.h"
#include "desktop/widgets/RegisterGrid.h"
#include "desktop/windows/ChipLayout.h"
#include "machine/Machine.h"

namespace quoll {

Ym3812Window::Ym3812Window(FormKit& kitOfWindow) : FormWindow(kitOfWindow) {
  QCheckBox* direct = kit.Check("Check3");
  QLineEdit* port = kit.Text("Text2");
  port->setFixedWidth(fontMetrics().horizontalAdvance("0000000"));
  auto* lower = new QHBoxLayout;
  lower->addWidget(Operator(), 1);
  lower->addWidget(Registers());
  auto* window = new QVBoxLayout(this);
  window->addLayout(ChipHeading("YM3812", tr("nine voices of two operators"), {direct, port}));
  window->addLayout(
      NineScreens(kit, "Check1",
                  [](int c) {
                    return std::vector<ChipValue>{{"Label4", c, tr("Hz"), 5}, {"Label5", c, tr("key"), 4}};
                  }),
      1);
  window->addLayout(lower);
}

// What an operator is set to, and the sliders that change it.
QWidget* Ym3812Window::Operator() {
  QGroupBox* frame = FormKit::Frame("Operator", tr("Operator"));
  auto* column = new QVBoxLayout(frame);
  auto* grid = new QGridLayout;
  channel = new QLabel;
  QSlider* chosen = kit.Slider("HScroll2");
  chosen->setTickPosition(QSlider::TicksBelow);
  AddSlider(grid, 0, tr("Channel"), chosen, channel);
  auto* options = new QHBoxLayout;
  for (int i = 0; i < 2; ++i) options->addWidget(kit.Option("Option1", i));
  options->addStretch();
  grid->addLayout(options, 1, 0, 1, 3);
  auto* boxes = new QHBoxLayout;
  for (int i = 0; i < FYM3812::kSwitches; ++i) boxes->addWidget(kit.Check("Check2", i));
  boxes->addStretch();
  grid->addLayout(boxes, 2, 0, 1, 3);
  for (int i = 0; i < FYM3812::kSettings; ++i) {
    AddSlider(grid, 3 + i, ToQt(CaptionOf(kit.binder.Ref("HScroll1", i))), kit.Slider("HScroll1", i),
              ChipNumber(kit, "Label3", i));
  }
  column->addLayout(grid);
  column->addStretch();
  return frame;
}

QWidget* Ym3812Window::Registers() {
  QGroupBox* frame = FormKit::Frame("Registers", tr("Registers"));
  auto* column = new QVBoxLayout(frame);
  const QString mode = tr("mode"), level = tr("level"), attack = tr("attack, decay"),
                sustain = tr("sustain, release"), wave = tr("wave");
  RegisterGrid* grid = ChipRegisters(kit, "Label1",
                                     {tr("chip"),
                                      {},
                                      mode,
                                      mode,
                                      level,
                                      level,
                                      attack,
                                      attack,
                                      sustain,
                                      sustain,
                                      tr("pitch"),
                                      tr("key; BD drums"),
                                      tr("feedback"),
                                      {},
                                      wave,
                                      wave});
  for (int cell = 0; cell < grid->Cells(); ++cell) {
    const QString use = ToQt(OplRegisterName(cell));
    grid->SetName(cell, use.isEmpty() ? QString::number(cell) : QString("%1: %2").arg(cell).arg(use));
  }
  QLineEdit* value = kit.Text("Text1");
  value->setFixedWidth(fontMetrics().horizontalAdvance("0000000"));
  auto* row = new QHBoxLayout;
  QLabel* name = kit.Label("Label2");
  name->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  row->addWidget(name, 1);
  row->addWidget(value);
  row->addSpacing(12);
  row->addWidget(kit.Button("Command1"));
  column->addWidget(grid);
  column->addLayout(row);
  return frame;
}

void Ym3812Window::ShowRecord() { ShowText(channel, QString::number(m.fym3812.HScroll2.value)); }

}  // namespace quoll
