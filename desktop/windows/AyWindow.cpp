#include "desktop/windows/AyWindow.h"

#include <QGroupBox>
#include <QLabel>
#include <QVBoxLayout>

#include "desktop/kit/QtText.h"
#include "desktop/widgets/Readout.h"
#include "desktop/windows/ChipLayout.h"

namespace quoll {

AyWindow::AyWindow(FormKit& kitOfWindow) : FormWindow(kitOfWindow) {
  constexpr int kTones = 3, kNoise = 3, kEnvelope = 4;
  auto* column = new QVBoxLayout;
  for (int tone = 0; tone < kTones; ++tone) {
    QWidget* head = ScreenTitle(tr("Channel %1").arg(QChar('A' + tone)));
    column->addWidget(ChannelScreen(kit, head, "Pic1", tone,
                                    {{"Label2", tone, tr("Hz"), 11},
                                     {"Label3", tone, tr("Level"), 11},
                                     {"Label4", tone, tr("Plays"), 11}}),
                      1);
  }
  column->addWidget(
      ChannelScreen(kit, ScreenTitle(tr("Noise")), "Pic1", kNoise, {{"Label5", 0, tr("Hz"), 11}}), 1);
  column->addWidget(
      ChannelScreen(kit, ScreenTitle(tr("Envelope")), "Pic1", kEnvelope,
                    {{"Label6", 0, tr("Hz"), 11}, {"Label7", 0, tr("Shape"), 11}, {"Label8", 0, {}, 11}}),
      1);
  auto* row = new QHBoxLayout;
  row->addLayout(column, 1);
  row->addWidget(Registers());
  auto* window = new QVBoxLayout(this);
  window->addLayout(ChipHeading("AY-3-8910", tr("three channels, noise, envelope")));
  window->addLayout(row, 1);
  AlignScopes(this);
}

QWidget* AyWindow::Registers() {
  QGroupBox* frame = FormKit::Frame("Registers", tr("Registers"));
  auto* column = new QVBoxLayout(frame);
  const int count = kit.binder.Ref("Label1").control->count;
  for (int reg = 0; reg < count; ++reg) {
    const QString name = ToQt(CaptionOf(kit.binder.Ref("Label1", reg)));
    column->addWidget(ChipReadout(
        kit, {"Label1", reg, QString("%1  %2").arg(reg, 2, 10, QChar(0x2007)).arg(name), 4, true}));
  }
  column->addStretch();
  return frame;
}

}  // namespace quoll
