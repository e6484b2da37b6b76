#include "desktop/windows/Ym2413Window.h"

#include <QGroupBox>
#include <QVBoxLayout>

#include "desktop/widgets/RegisterGrid.h"
#include "desktop/windows/ChipLayout.h"

namespace quoll {

Ym2413Window::Ym2413Window(FormKit& kitOfWindow) : FormWindow(kitOfWindow) {
  QGroupBox* frame = FormKit::Frame("Registers", tr("Registers"));
  auto* registers = new QHBoxLayout(frame);
  registers->addWidget(ChipRegisters(kit, "Label1",
                                     {tr("own instrument; 0E drums"), tr("pitch"),
                                      tr("pitch, octave, key, sustain"), tr("instrument, volume")}));
  registers->addStretch();

  auto* window = new QVBoxLayout(this);
  window->addLayout(ChipHeading("YM2413", tr("nine voices of fifteen instruments")));
  window->addLayout(NineScreens(kit, "Check7",
                                [](int c) {
                                  return std::vector<ChipValue>{{"Label2", c, {}, 12},
                                                                {"Label3", c, tr("Hz"), 5},
                                                                {"Label4", c, tr("vol."), 3},
                                                                {"Label5", c, tr("key"), 4}};
                                }),
                    1);
  window->addWidget(frame);
}

}  // namespace quoll
