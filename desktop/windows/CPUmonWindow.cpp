#include "desktop/windows/CPUmonWindow.h"

#include <QAction>
#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include "core/NumberText.h"
#include "desktop/kit/QtText.h"
#include "desktop/widgets/CodeLines.h"
#include "desktop/widgets/FileList.h"
#include "desktop/widgets/FixedFont.h"
#include "desktop/widgets/PressLabel.h"
#include "desktop/widgets/Readout.h"
#include "desktop/windows/CPUmonProcessor.h"
#include "desktop/windows/ChipLayout.h"
#include "machine/Machine.h"

namespace quoll {

namespace {

constexpr int kCodeRows = 10, kCodeColumns = 24, kViewRows = 8;

void KeepRoom(QWidget* part) {
  QSizePolicy policy = part->sizePolicy();
  policy.setRetainSizeWhenHidden(true);
  part->setSizePolicy(policy);
}

}  // namespace

CPUmonWindow::CPUmonWindow(FormKit& kitOfWindow) : ScrolledWindow(kitOfWindow, new QWidget) {
  escapeCloses = false;
  auto* grid = new QGridLayout(content);
  grid->addLayout(RunRow(), 0, 0, 1, 2);
  processor = new CPUmonProcessor(kit);
  grid->addWidget(processor, 1, 0, 3, 1);
  grid->addLayout(CodeRow(), 1, 1);
  grid->addLayout(BreakRow(), 2, 1);
  grid->addLayout(ViewRow(), 3, 1);
  grid->setColumnStretch(1, 1);
  grid->setRowStretch(3, 1);

  PressByKey("Command1", Qt::Key_F5, false);
  PressByKey("Command6", Qt::SHIFT | Qt::Key_F5, false);
  PressByKey("Command7", Qt::Key_F8, true);
}

// A key held down must not start one loop inside the other.
void CPUmonWindow::PressByKey(const char* control, const QKeySequence& keys, bool repeats) {
  const ControlRef ref = kit.binder.Ref(control);
  auto* action = new QAction(ToQt(CaptionOf(ref)), this);
  action->setShortcut(keys);
  action->setAutoRepeat(repeats);
  connect(action, &QAction::triggered, this, [this, ref] { host.Act(m, [this, ref] { Press(m, ref); }); });
  addAction(action);
  auto* button = findChild<QPushButton*>(control);
  button->setToolTip(keys.toString(QKeySequence::NativeText));
  if (!repeats) button->installEventFilter(this);
}

bool CPUmonWindow::eventFilter(QObject* object, QEvent* event) {
  if (event->type() == QEvent::KeyPress) {
    const auto* key = static_cast<QKeyEvent*>(event);
    if (key->isAutoRepeat() && (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter)) return true;
  }
  return ScrolledWindow::eventFilter(object, event);
}

QLayout* CPUmonWindow::RunRow() {
  auto* row = new QHBoxLayout;
  for (const char* button : {"Command1", "Command6", "Command7"}) row->addWidget(kit.Button(button));
  row->addSpacing(16);
  for (const char* button : {"Command5", "Command4", "Command2"}) row->addWidget(kit.Button(button));
  row->addSpacing(16);
  status = new QLabel;
  status->setTextFormat(Qt::PlainText);
  NameWidget(status, "Status", tr("State"));
  row->addWidget(status, 1);
  for (const char* box : {"Check5", "Check6"}) row->addWidget(kit.Check(box));
  return row;
}

QGroupBox* CPUmonWindow::SpeedFrame() {
  QGroupBox* frame = FormKit::Frame("Speed", tr("Speed"));
  auto* column = new QVBoxLayout(frame);
  column->setSpacing(2);
  for (const auto& [control, letters] : {std::pair("Text7", 7), {"Text8", 13}}) {
    Readout* readout = kit.Readout(control);
    readout->KeepLetters(letters);
    column->addWidget(readout);
  }
  auto* row = new QHBoxLayout;
  PressLabel* megahertz = kit.Label("Label5");
  megahertz->setFrameStyle(QFrame::Panel | QFrame::Sunken);
  KeepSize(megahertz, 7, 6);
  megahertz->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  row->addWidget(kit.Label("Label3"));
  row->addStretch();
  row->addWidget(megahertz);
  column->addLayout(row);
  return frame;
}

QLayout* CPUmonWindow::CodeRow() {
  auto* grid = new QGridLayout;
  int column = 0;
  for (const auto& [control, lines] : {std::pair("Picture1", &code), {"Picture4", &history}}) {
    const ControlRef ref = kit.binder.Ref(control);
    auto* made = new CodeLines(kCodeRows, kCodeColumns);
    NameWidget(made, control, ToQt(CaptionOf(ref)));
    made->setToolTip(tr("A double click or Enter sets the breakpoint here"));
    connect(made, &CodeLines::Opened, this, [this, made](int row) { BreakAt(made, row); });
    *lines = made;
    const QString name = column == 0 ? tr("&Disassembly") : tr("&Last instructions");
    grid->addWidget(NameFor(name, made), 0, column);
    grid->addWidget(made, 1, column);
    ++column;
  }
  return grid;
}

QLayout* CPUmonWindow::BreakRow() {
  auto* row = new QHBoxLayout;
  row->addWidget(kit.Check("Check4"));
  QLineEdit* address = MonitorBox(kit, "Text5", 0, 8);
  QLineEdit* count = MonitorBox(kit, "Text6", 0, 8);
  address->setToolTip(tr("Decimal, or hexadecimal behind &H"));
  row->addWidget(kit.Check("Check2"));
  row->addWidget(address);
  row->addSpacing(8);
  row->addWidget(kit.Check("Check3"));
  row->addWidget(count);
  for (const char* box : {"Check7", "Check8", "Check9"}) row->addWidget(kit.Check(box));
  for (int i = 0; i < row->count(); ++i) {
    if (QWidget* part = row->itemAt(i)->widget()) KeepRoom(part);
  }
  row->addStretch();
  return row;
}

QLayout* CPUmonWindow::ViewRow() {
  auto* grid = new QGridLayout;
  const auto add = [&](HexView*& view, int row, const QString& name, const char* box, const char* rows,
                       const char* bar) {
    const ControlRef ref = kit.binder.Ref(rows);
    view = kit.Hex(rows, bar, ToQt(CaptionOf(ref)), kViewRows);
    QLineEdit* address = MonitorBox(kit, box, 0, 8);
    auto* head = new QHBoxLayout;
    head->addWidget(NameFor(name, address));
    head->addWidget(address);
    head->addWidget(new QLabel(tr("decimal")));
    head->addStretch();
    grid->addLayout(head, row, 0);
    grid->addWidget(view, row + 1, 0, Qt::AlignLeft | Qt::AlignTop);
  };
  add(memory, 0, tr("&Memory from"), "Text10", "Picture2", "VScroll1");
  add(ports, 2, tr("&Ports from"), "Text11", "Picture3", "VScroll2");
  auto* tools = new QVBoxLayout;
  tools->addWidget(PokeFrame());
  tools->addWidget(LoadFrame(), 1);
  tools->addWidget(SpeedFrame());
  grid->addLayout(tools, 0, 1, 5, 1);
  grid->setColumnStretch(1, 1);
  grid->setRowStretch(4, 1);
  return grid;
}

QGroupBox* CPUmonWindow::PokeFrame() {
  QGroupBox* frame = FormKit::Frame("Poke", tr("Poke"));
  auto* grid = new QGridLayout(frame);
  QLineEdit* address = MonitorBox(kit, "Text12", 0, 8);
  QLineEdit* value = MonitorBox(kit, "Text13", 0, 8);
  QPushButton* poke = kit.Button("Command3");
  grid->addWidget(NameFor(tr("Add&ress"), address), 0, 0);
  grid->addWidget(address, 0, 1);
  grid->addWidget(NameFor(tr("&Value"), value), 1, 0);
  grid->addWidget(value, 1, 1);
  grid->addWidget(poke, 2, 0, 1, 2);
  for (QLineEdit* box : {address, value}) {
    box->setToolTip(tr("Decimal, or hexadecimal behind &H"));
    connect(box, &QLineEdit::returnPressed, poke, &QPushButton::click);
  }
  return frame;
}

QGroupBox* CPUmonWindow::LoadFrame() {
  QGroupBox* frame = FormKit::Frame("Load", tr("Load"));
  auto* column = new QVBoxLayout(frame);
  FileList* list = kit.List("File1");
  list->setMinimumHeight(4 * fontMetrics().height());
  list->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Ignored);  // it takes what the others leave
  column->addWidget(list, 1);
  column->addWidget(kit.Button("Command8"));
  return frame;
}

// By the controls, as the user would.
void CPUmonWindow::BreakAt(const CodeLines* lines, int row) {
  const auto address = lines->Address(row);
  if (!address) return;
  host.Act(m, [this, at = *address] {
    SetText(m, kit.binder.Ref("Text5"),
            "&H" + QString::number(at, 16).toUpper().rightJustified(4, '0').toStdString());
    SetTick(m, kit.binder.Ref("Check2"), true);
    SetTick(m, kit.binder.Ref("Check4"), true);
  });
}

bool CPUmonWindow::RecordChanged() {
  RefreshForm(m, kit.form);
  const bool same = redrawsShown && runningShown == m.run.CpuRunning && armedShown == m.run.BreakArmed &&
                    recordShown == m.cpumon;
  if (same) return false;
  runningShown = m.run.CpuRunning;
  armedShown = m.run.BreakArmed;
  recordShown = m.cpumon;
  return true;
}

void CPUmonWindow::ShowRecord() {
  const CPUmonShown& shown = m.cpumon.shown;
  const bool running = m.run.CpuRunning == 1;
  const bool armed = m.run.BreakArmed != 0 && m.cpumon.Check2;
  code->Show(shown.Picture1);
  history->Show(shown.Picture4);
  code->MarkNext(running ? -1 : 0);
  for (CodeLines* lines : {code, history})
    lines->MarkBreakpoint(armed ? std::optional(NumberOfText(m.cpumon.Text5)) : std::nullopt);
  ShowStatus();
  if (redrawsShown == shown.redrawsDone) return;
  redrawsShown = shown.redrawsDone;
  FollowChanges(changes, shown, running);
  ShowChanges();
}

void CPUmonWindow::ShowStatus() {
  if (m.run.CpuRunning == 1) return ShowText(status, tr("Running: Shift+F5 stops"));
  ShowText(status, code->IsBreakpoint(0) ? tr("At the breakpoint: F8 steps, F5 runs on")
                                         : tr("Stopped: F8 steps, F5 runs on"));
}

void CPUmonWindow::ShowChanges() {
  const CPUmonShown& now = m.cpumon.shown;
  const CPUmonShown* before = changes.before ? &*changes.before : nullptr;
  processor->MarkChanges(before, now);
  if (before == nullptr) return;
  memory->SetMarks(ChangedBytes(before->Picture2, now.Picture2));
  ports->SetMarks(ChangedBytes(before->Picture3, now.Picture3));
}

void CPUmonWindow::Appear() {
  ScrolledWindow::Appear();
  code->setFocus();
}

// What was typed into a register and not entered is taken back.
void CPUmonWindow::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape) return host.Act(m, [this] { ++m.cpumon.shown.redraws; });
  ScrolledWindow::keyPressEvent(event);
}

}  // namespace quoll
