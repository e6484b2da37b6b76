#include "desktop/windows/TVCmonWindow.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <array>

#include "desktop/widgets/FileList.h"
#include "desktop/widgets/Lamp.h"
#include "desktop/widgets/Readout.h"
#include "machine/Machine.h"

namespace quoll {

namespace {

// A frame whose controls stand one below the other.
std::pair<QGroupBox*, QVBoxLayout*> Column(const char* name, const QString& title) {
  QGroupBox* frame = FormKit::Frame(name, title);
  auto* column = new QVBoxLayout(frame);
  column->setSpacing(3);
  return {frame, column};
}

}  // namespace

TVCmonWindow::TVCmonWindow(FormKit& kitOfWindow) : ScrolledWindow(kitOfWindow, new QWidget) {
  auto* columns = new QHBoxLayout(content);
  const auto add = [columns](std::initializer_list<QWidget*> frames) {
    auto* column = new QVBoxLayout;
    for (QWidget* frame : frames) column->addWidget(frame);
    column->addStretch();
    columns->addLayout(column);
  };
  add({MemoryFrame(), InterruptFrame(), SlotFrame()});
  add({CrtcFrame()});
  add({PaletteFrame(), SoundFrameBox(), TapeFrame()});
  add({SerialFrame(), FloppyFrame()});
  columns->addWidget(DiskFrame(), 1);
}

QWidget* TVCmonWindow::Value(const char* control, int index, int letters, const char* note) {
  Readout* readout = kit.Readout(control, index, note);
  readout->KeepLetters(letters);
  return readout;
}

QBoxLayout* TVCmonWindow::Lamps(const char* control) {
  auto* row = new QHBoxLayout;
  row->setSpacing(3);
  for (int lamp = 0; lamp < kit.Count(control); ++lamp) row->addWidget(kit.Lamp(control, lamp));
  return row;
}

void TVCmonWindow::AddValues(QBoxLayout* column, const char* control, int letters) {
  for (int i = 0; i < kit.Count(control); ++i) column->addWidget(Value(control, i, letters));
}

QGroupBox* TVCmonWindow::MemoryFrame() {
  const auto [frame, column] = Column("MemoryBank", "Memory Bank");
  AddValues(column, "Slot", 5);
  for (const char* lamps : {"Vid", "Iom", "Hbf"}) column->addLayout(Lamps(lamps));
  for (const char* port : {"Port2", "Port3"}) column->addWidget(Value(port, 0, 3));
  return frame;
}

QGroupBox* TVCmonWindow::InterruptFrame() {
  constexpr int kInARow = 3;
  QGroupBox* frame = FormKit::Frame("Interrupts", "INT (Port 89)");
  auto* grid = new QGridLayout(frame);
  grid->setSpacing(3);
  for (int lamp = 0; lamp < kit.Count("IntLamp"); ++lamp)
    grid->addWidget(kit.Lamp("IntLamp", lamp), lamp / kInARow, lamp % kInARow);
  return frame;
}

QGroupBox* TVCmonWindow::SoundFrameBox() {
  const auto [frame, column] = Column("Sound", "SOUND");
  column->addWidget(Value("SoundIT", 0, 7, "PORT 5"));
  column->addWidget(Value("Pitch", 0, 7, "PORT 4,5"));
  column->addWidget(Value("Volume", 0, 7, "PORT 6"));
  column->addWidget(Value("OutEnable", 0, 7, "PORT 5"));
  column->addWidget(Value("Counter", 0, 7, "PORT 5"));
  column->addLayout(Lamps("SoundLamp"));
  column->addWidget(new QLabel("22KHz / 8bit"));
  auto* boxes = new QHBoxLayout;
  for (const char* box : {"Check1", "Check3"}) boxes->addWidget(kit.Check(box));
  column->addLayout(boxes);
  return frame;
}

QGroupBox* TVCmonWindow::CrtcFrame() {
  const auto [frame, column] = Column("Crtc", "CRTC");
  AddValues(column, "Crtc", 6);
  column->addWidget(kit.Check("Check2"));
  return frame;
}

QGroupBox* TVCmonWindow::PaletteFrame() {
  const auto [frame, column] = Column("Palette", "Palette");
  constexpr std::array kPorts{"PORT 96", "PORT 97", "PORT 98", "PORT 99"};
  for (int colour = 0; colour < kit.Count("Palette"); ++colour)
    column->addWidget(Value("Palette", colour, 5, kPorts[static_cast<size_t>(colour)]));
  column->addWidget(Value("Border", 0, 5, "PORT 0"));
  column->addWidget(Value("Mode", 0, 5, "PORT 6"));
  column->addWidget(Value("SubMode", 0, 5, "PORT 15"));
  return frame;
}

QGroupBox* TVCmonWindow::TapeFrame() {
  const auto [frame, column] = Column("Cas", "CAS");
  AddValues(column, "Cas", 4);
  return frame;
}

QGroupBox* TVCmonWindow::SlotFrame() {
  const auto [frame, column] = Column("SlotId", "Slot ID (Port 90)");
  AddValues(column, "SlotId", 7);
  return frame;
}

QGroupBox* TVCmonWindow::SerialFrame() {
  const auto [frame, column] = Column("Serial", "Serial");
  AddValues(column, "Serial", 7);
  return frame;
}

QGroupBox* TVCmonWindow::FloppyFrame() {
  const auto [frame, column] = Column("Fdd", "FDD");
  column->addWidget(new QLabel("FD1793"));
  AddValues(column, "Fdd", 3);
  column->addLayout(Lamps("FddLamp"));
  return frame;
}

QGroupBox* TVCmonWindow::DiskFrame() {
  constexpr int kLetters = 22;
  const auto [frame, column] = Column("Disk", "Disk info");
  AddValues(column, "Disk", 8);
  accesses = kit.List("List4");
  accesses->setMinimumWidth(fontMetrics().horizontalAdvance(QString(kLetters, '0')));
  column->addWidget(accesses, 1);
  column->addWidget(kit.Button("Command1"));
  return frame;
}

bool TVCmonWindow::RecordChanged() {
  RefreshForm(m, kit.form);
  if (recordShown == m.tvcmon) return false;
  recordShown = m.tvcmon;
  return true;
}

// The list is read from its end.
void TVCmonWindow::ShowRecord() {
  const int count = accesses->count();
  const QString last = QString::number(count) + (count > 0 ? accesses->item(count - 1)->text() : QString());
  if (last == lastAccess) return;
  lastAccess = last;
  accesses->scrollToBottom();
}

}  // namespace quoll
