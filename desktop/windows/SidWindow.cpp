#include "desktop/windows/SidWindow.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QVBoxLayout>
#include <array>

#include "desktop/widgets/FileList.h"
#include "desktop/widgets/Readout.h"
#include "desktop/windows/ChipLayout.h"
#include "sound/Sid6581.h"

namespace quoll {

namespace {

// Of a voice, then of the rest.
constexpr std::array kVoiceRegisters{"frequency, low",    "frequency, high", "pulse width, low",
                                     "pulse width, high", "control",         "attack, decay",
                                     "sustain, release"};
constexpr std::array kOtherRegisters{"cutoff, low", "cutoff, high", "resonance, voices", "mode, volume",
                                     "paddle X",    "paddle Y",     "oscillator 3",      "envelope 3"};
constexpr int kFirstOther = kSidVoices * static_cast<int>(kVoiceRegisters.size());
static_assert(kFirstOther + static_cast<int>(kOtherRegisters.size()) == kSidRegisters);

}  // namespace

SidWindow::SidWindow(FormKit& kitOfWindow) : FormWindow(kitOfWindow) {
  QCheckBox* extendedBox = kit.Check("Check8");
  auto* column = new QVBoxLayout;
  for (int voice = 0; voice < kSidVoices; ++voice) {
    column->addWidget(ChannelScreen(kit, kit.Check("Check9", voice), "Pic1", voice,
                                    {{"Label4", voice, tr("Hz"), 11},
                                     {"Label5", voice, tr("Wave"), 11},
                                     {"Label6", voice, tr("ADSR"), 11},
                                     {"Label7", voice, tr("Pulse"), 5}}),
                      1);
  }
  column->addWidget(ChipFilter());
  column->addWidget(Dumps());
  QWidget* extended = Extended();
  ShownBy(extendedBox, extended);
  auto* row = new QHBoxLayout;
  row->addLayout(column, 1);
  row->addWidget(extended, 1);
  auto* window = new QVBoxLayout(this);
  window->addLayout(ChipHeading("SID 6581", tr("three voices, filter"), {extendedBox}));
  window->addLayout(row, 1);
  AlignScopes(this);
}

QWidget* SidWindow::ChipFilter() {
  QGroupBox* frame = FormKit::Frame("Sound", tr("Sound"));
  auto* column = new QVBoxLayout(frame);
  auto* boxes = new QHBoxLayout;
  for (const char* box : {"Check6", "Check7", "Check10"}) boxes->addWidget(kit.Check(box));
  boxes->addStretch();
  column->addLayout(boxes);
  auto* filter = new QHBoxLayout;
  filter->addWidget(ChipReadout(kit, {"Label8", 0, tr("Filter"), 14}));
  filter->addSpacing(12);
  filter->addWidget(ChipReadout(kit, {"Label17", 0, tr("Cutoff"), 5}));
  filter->addWidget(ChipReadout(kit, {"Label16", 0, tr("in force, %"), 4}));
  QSlider* inForce = kit.Slider("HScroll6");
  inForce->setFocusPolicy(Qt::NoFocus);  // the chip moves it, nobody else
  inForce->setAttribute(Qt::WA_TransparentForMouseEvents);
  filter->addWidget(inForce, 1);
  column->addLayout(filter);
  auto* peaks = new QHBoxLayout;
  peaks->addWidget(ChipReadout(kit, {"Label25", 0, tr("Highest sample"), 6}));
  peaks->addSpacing(12);
  peaks->addWidget(ChipReadout(kit, {"Label26", 0, tr("lowest"), 6}));
  peaks->addWidget(new QLabel(tr("since a click on the first")));
  peaks->addStretch();
  column->addLayout(peaks);
  return frame;
}

QWidget* SidWindow::Dumps() {
  constexpr int kRowsSeen = 4;
  QGroupBox* frame = FormKit::Frame("Dumps", tr("Play a dump"));
  auto* row = new QHBoxLayout(frame);
  auto* options = new QVBoxLayout;
  for (const char* option : {"Option1", "Option2", "Option3"}) options->addWidget(kit.Option(option));
  row->addLayout(options);
  FileList* list = kit.List("File1");
  list->setFixedHeight(kRowsSeen * (fontMetrics().height() + 4));
  row->addWidget(list, 1);
  return frame;
}

QWidget* SidWindow::Extended() {
  auto* part = new QWidget;
  auto* column = new QVBoxLayout(part);
  column->setContentsMargins(0, 0, 0, 0);
  column->addWidget(PostFilters());
  column->addWidget(TimeScales());
  column->addWidget(Sweep(), 1);
  column->addWidget(Poke());
  column->addWidget(Registers());
  return part;
}

QWidget* SidWindow::PostFilters() {
  QGroupBox* frame = FormKit::Frame("PostFilters", tr("Filters behind the chip"));
  auto* grid = new QGridLayout(frame);
  constexpr std::array kFilters{std::pair("Check1", "HScroll1"), std::pair("Check2", "HScroll2"),
                                std::pair("Check3", "HScroll3")};
  int row = 0;
  for (const auto& [box, strength] : kFilters) {
    grid->addWidget(kit.Check(box), row, 0);
    AddSlider(grid, row, tr("strength"), kit.Slider(strength), ChipNumber(kit, "Label1", row), 1);
    ++row;
  }
  QLineEdit* repeats = kit.Text("Text1");
  repeats->setFixedWidth(fontMetrics().horizontalAdvance("00000000"));
  grid->addWidget(NameFor(tr("Repeats"), repeats), row, 0);
  grid->addWidget(repeats, row, 1, 1, 2);
  return frame;
}

QWidget* SidWindow::TimeScales() {
  QGroupBox* frame = FormKit::Frame("TimeScales", tr("Time scale of the envelopes"));
  auto* grid = new QGridLayout(frame);
  AddSlider(grid, 0, tr("Attack and release"), kit.Slider("HScroll4"), ChipNumber(kit, "Label2", 0));
  AddSlider(grid, 1, tr("Decay"), kit.Slider("HScroll5"), ChipNumber(kit, "Label2", 1));
  return frame;
}

QWidget* SidWindow::Sweep() {
  constexpr ScopeBox kBox{.units = {917, 256}, .grows = true};  // 11000 Hz, 12 to a unit
  auto* boxes = new QHBoxLayout;
  boxes->addWidget(kit.Check("Check4"));
  boxes->addWidget(kit.Check("Check5"));
  boxes->addStretch();
  boxes->addWidget(ChipReadout(kit, {"Label15", 0, tr("Hz"), 6}));
  Scope* picture = kit.Scope("PIC2", 0, kBox);
  picture->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Ignored);
  picture->setMinimumSize(kBox.units / 3);
  QFrame* screen = ChipScreen();
  auto* column = new QVBoxLayout(screen);
  column->addLayout(boxes);
  column->addWidget(picture, 1);
  return screen;
}

QWidget* SidWindow::Poke() {
  QGroupBox* frame = FormKit::Frame("Poke", tr("Poke"));
  auto* row = new QHBoxLayout(frame);
  for (const auto& [control, name] : {std::pair("Text2", tr("Address")), {"Text3", tr("value")}}) {
    QLineEdit* box = kit.Text(control);
    box->setFixedWidth(fontMetrics().horizontalAdvance("00000000"));
    row->addWidget(NameFor(name, box));
    row->addWidget(box);
  }
  row->addWidget(kit.Button("Command1"));
  row->addStretch();
  return frame;
}

QWidget* SidWindow::Registers() {
  QGroupBox* frame = FormKit::Frame("Registers", tr("Registers"));
  auto* grid = new QGridLayout(frame);
  for (int voice = 0; voice < kSidVoices; ++voice)
    grid->addWidget(new QLabel(tr("Voice %1").arg(voice + 1)), 0, 1 + voice);
  const auto add = [&](int reg, const QString& name, int row, int column) {
    grid->addWidget(ChipReadout(kit, {"Label3", reg, name, 4, true}), row, column);
  };
  const int rows = static_cast<int>(kVoiceRegisters.size());
  for (int reg = 0; reg < kFirstOther; ++reg) {
    if (reg < rows) grid->addWidget(new QLabel(tr(kVoiceRegisters[reg])), 1 + reg, 0);
    add(reg, QString::number(reg), 1 + reg % rows, 1 + reg / rows);
  }
  for (int reg = kFirstOther; reg < kSidRegisters; ++reg) {
    const QString name = QString("%1  %2").arg(reg).arg(tr(kOtherRegisters[reg - kFirstOther]));
    add(reg, name, reg - kFirstOther, 1 + kSidVoices);
  }
  grid->setVerticalSpacing(2);
  grid->setHorizontalSpacing(16);
  grid->setColumnStretch(2 + kSidVoices, 1);
  return frame;
}

}  // namespace quoll
