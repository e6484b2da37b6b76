#include "desktop/windows/SnWindow.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QSlider>
#include <QVBoxLayout>

#include "desktop/widgets/Readout.h"
#include "desktop/windows/ChipCircuits.h"
#include "desktop/windows/ChipLayout.h"

namespace quoll {

namespace {

constexpr int kTones = 3, kChannels = 4;

QString Name(int channel) {
  return channel < kTones ? SnWindow::tr("Tone %1").arg(channel + 1) : SnWindow::tr("Noise");
}

}  // namespace

SnWindow::SnWindow(FormKit& kitOfWindow) : FormWindow(kitOfWindow) {
  QCheckBox* circuitBox = kit.Check("Check1");
  auto* column = new QVBoxLayout;
  for (int channel = 0; channel < kChannels; ++channel) {
    std::vector<ChipValue> values{{"Label1", channel, tr("Hz")},
                                  {"Label2", channel, tr("Period")},
                                  {"Label3", channel, tr("Attenuation")}};
    column->addWidget(ChannelScreen(kit, Head(channel), "Pic1", channel, values), 1);
  }
  column->addWidget(ByHand());

  auto* circuit = new CircuitPicture(SnCircuit(), tr("Circuit of the SN76489"));
  ShownBy(circuitBox, circuit);
  auto* row = new QHBoxLayout;
  row->addLayout(column, 1);
  row->addWidget(circuit);
  auto* window = new QVBoxLayout(this);
  window->addLayout(ChipHeading("SN76489", tr("three tones and noise"), {circuitBox}));
  window->addLayout(row, 1);
  AlignScopes(this);
}

QWidget* SnWindow::Head(int channel) {
  QLabel* title = ScreenTitle(Name(channel));
  if (channel < kTones) return title;
  auto* head = new QWidget;
  auto* row = new QHBoxLayout(head);
  row->setContentsMargins(0, 0, 0, 0);
  row->addWidget(title);
  row->addWidget(ChipReadout(kit, {"Label4", 0, {}, 17}));
  return head;
}

QWidget* SnWindow::ByHand() {
  QGroupBox* frame = FormKit::Frame("ByHand", tr("By hand"));
  auto* grid = new QGridLayout(frame);
  auto* boxes = new QHBoxLayout;
  boxes->addWidget(kit.Check("Check3"));
  boxes->addWidget(kit.Check("Check2"));
  boxes->addStretch();
  grid->addLayout(boxes, 0, 0, 1, 7);
  for (int channel = 0; channel < kChannels; ++channel) {
    const int row = 1 + channel;
    grid->addWidget(new QLabel(Name(channel)), row, 0);
    if (channel < kTones)
      AddSlider(grid, row, tr("pitch"), kit.Slider("HScroll3", channel),
                ChipReadout(kit, {"Label6", channel, tr("Hz"), 6, true}), 1);
    AddSlider(grid, row, tr("attenuation"), kit.Slider("HScroll4", channel),
              ChipNumber(kit, "Label7", channel), 4);
  }
  return frame;
}

}  // namespace quoll
