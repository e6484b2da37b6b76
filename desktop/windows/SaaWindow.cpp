#include "desktop/windows/SaaWindow.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QSlider>
#include <QVBoxLayout>

#include "desktop/widgets/Readout.h"
#include "desktop/windows/ChipCircuits.h"
#include "desktop/windows/ChipLayout.h"
#include "sound/Saa1099.h"

namespace quoll {

namespace {

constexpr int kEnvelopes = 2;

// The two halves of the chip, three channels each.
constexpr int kHalf = kSaaChannels / 2;

}  // namespace

SaaWindow::SaaWindow(FormKit& kitOfWindow) : FormWindow(kitOfWindow) {
  QCheckBox* circuitBox = kit.Check("Check10");
  auto* screens = new QGridLayout;
  for (int c = 0; c < kSaaChannels; ++c) {
    QFrame* screen = ChannelScreen(kit, ScreenTitle(tr("Channel %1").arg(c)), "Pic1", c,
                                   {{"Label5", c, tr("Hz")},
                                    {"Label3", c, tr("Freq.")},
                                    {"Label4", c, tr("Octave")},
                                    {"Label1", c, tr("Left"), 3},
                                    {"Label2", c, tr("Right"), 3},
                                    {"Label6", c, {}, 11}});
    screens->addWidget(screen, c % kHalf, c / kHalf);
    screens->setRowStretch(c % kHalf, 1);
  }
  auto* column = new QVBoxLayout;
  column->addLayout(screens, 1);
  column->addWidget(Settings());
  column->addWidget(Channels());
  column->addWidget(Envelopes());

  auto* circuit = new CircuitPicture(SaaCircuit(), tr("Circuit of the SAA1099"));
  ShownBy(circuitBox, circuit);
  auto* row = new QHBoxLayout;
  row->addLayout(column, 1);
  row->addWidget(circuit);
  auto* window = new QVBoxLayout(this);
  window->addLayout(
      ChipHeading("SAA1099", tr("six channels in stereo, two noises, two envelopes"), {circuitBox}));
  window->addLayout(row, 1);
  AlignScopes(this);
}

// What the chip's halves and the whole chip are set to.
QWidget* SaaWindow::Settings() {
  QFrame* screen = ChipScreen();
  auto* grid = new QGridLayout(screen);
  for (int e = 0; e < kEnvelopes; ++e) {
    grid->addWidget(ScreenTitle(tr("Envelope %1").arg(e)), e, 0);
    grid->addWidget(ChipReadout(kit, {e == 0 ? "Label8" : "Label9", 0, tr("Mode"), 11, true}), e, 1);
    grid->addWidget(ChipReadout(kit, {"Label10", e, {}, 31}), e, 2);
    grid->addWidget(ChipReadout(kit, {"Label7", e, tr("Clock of noise %1").arg(e), 3, true}), e, 3);
  }
  grid->addWidget(ChipReadout(kit, {"Label12", 0, tr("Sound"), 4, true}), 0, 4);
  grid->addWidget(ChipReadout(kit, {"Label11", 0, tr("Frames"), 4, true}), 1, 4);
  grid->setHorizontalSpacing(12);
  grid->setColumnStretch(5, 1);
  return screen;
}

QWidget* SaaWindow::Channels() {
  QGroupBox* frame = FormKit::Frame("ByHand", tr("By hand"));
  auto* column = new QVBoxLayout(frame);
  auto* boxes = new QHBoxLayout;
  for (const char* box : {"Check2", "Check8", "Check9"}) boxes->addWidget(kit.Check(box));
  boxes->addStretch();
  for (const auto& [control, channel] : {std::pair("Check11", 2), {"Check12", 5}}) {
    QCheckBox* patch = kit.Check(control);
    patch->setAccessibleDescription(tr("The tone of channel %1 is always on.").arg(channel));
    patch->setToolTip(patch->accessibleDescription());
    boxes->addWidget(NameFor(tr("Channel %1:").arg(channel), patch));
    boxes->addWidget(patch);
  }
  boxes->addStretch();
  boxes->addWidget(kit.Button("Command1"));
  column->addLayout(boxes);

  auto* grid = new QGridLayout;
  for (int c = 0; c < kSaaChannels; ++c) {
    int spot = 0;
    grid->addWidget(new QLabel(QString::number(c)), c, spot++);
    grid->addWidget(kit.Check("Check1", c), c, spot++);
    grid->addWidget(kit.Check("Check3", c), c, spot++);
    for (const auto& [control, name] : {std::pair("HScroll3", tr("frequency")),
                                        {"HScroll4", tr("octave")},
                                        {"HScroll1", tr("left")},
                                        {"HScroll2", tr("right")}}) {
      QSlider* slider = kit.Slider(control, c);
      grid->addWidget(NameFor(name, slider), c, spot++);
      grid->setColumnStretch(spot, 1);
      grid->addWidget(slider, c, spot++);
    }
  }
  column->addLayout(grid);
  return frame;
}

QWidget* SaaWindow::Envelopes() {
  QGroupBox* frame = FormKit::Frame("Envelopes", tr("Envelopes by hand"));
  auto* grid = new QGridLayout(frame);
  for (int e = 0; e < kEnvelopes; ++e) {
    int spot = 0;
    grid->addWidget(new QLabel(QString::number(e)), e, spot++);
    for (const char* box : {"Check7", "Check4", "Check5", "Check6"})
      grid->addWidget(kit.Check(box, e), e, spot++);
    QSlider* mode = kit.Slider("HScroll6", e);
    mode->setTickPosition(QSlider::TicksBelow);
    grid->addWidget(NameFor(tr("mode"), mode), e, spot++);
    grid->addWidget(mode, e, spot++);
  }
  return frame;
}

}  // namespace quoll
