#include "desktop/windows/AboutPanel.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <algorithm>

#include "machine/Machine.h"
#include "desktop/kit/ControlBinder.h"

namespace quoll {

namespace {

constexpr const char* kContact =
    R"(<a href="mailto:quollemu@example.org?subject=QUOLLEMU">quollemu@example.org</a>)";

constexpr const char* kPorts =
    "Ports of the machine, in hexadecimal\n"
    "\n"
    "00     W  border colour\n"
    "02     W  memory pages\n"
    "03     W  keyboard row, I/O card page\n"
    "04     W  tone, low byte\n"
    "05     W  tone, high bits, sound and interrupt\n"
    "06     W  video mode, amplitude, printer strobe\n"
    "07     W  cursor and tone interrupt served\n"
    "0F     W  video page\n"
    "10-4F     I/O cards 0 to 3\n"
    "58     R  keyboard row\n"
    "59     R  interrupts, tape, colour\n"
    "5B     R  tone counter\n"
    "60-63  W  palette\n"
    "70     W  CRTC register number\n"
    "71     RW CRTC register\n";

QLabel* AddLabel(QBoxLayout* column, const char* objectName, const QString& text) {
  auto* label = new QLabel(text);
  label->setObjectName(objectName);
  column->addWidget(label);
  return label;
}

}  // namespace

AboutPanel::AboutPanel(Machine& machineOfWindow, QWidget* parent)
    : Panel(parent), m(machineOfWindow), log(new QListWidget(this)) {
  setObjectName("Frame2");
  setAccessibleName(tr("About"));
  auto* column = new QVBoxLayout(this);

  QLabel* name = AddLabel(column, "Label3", "QUOLLEMU  V.3.1");
  name->setAccessibleName(name->text());
  QFont large = font();
  large.setPointSizeF(large.pointSizeF() * 1.6);
  large.setBold(true);
  name->setFont(large);
  QLabel* what = AddLabel(column, "Label4", "Videoton TV Computer emulator");
  what->setAccessibleName(what->text());
  QLabel* mail = AddLabel(column, "Label7", kContact);
  mail->setAccessibleName(tr("Write a mail"));
  mail->setTextInteractionFlags(Qt::TextBrowserInteraction);
  mail->setOpenExternalLinks(true);

  auto* row = new QHBoxLayout;
  column->addLayout(row, 1);
  auto* ports = new QPlainTextEdit(kPorts, this);
  ports->setObjectName("Picture3");
  ports->setAccessibleName(tr("Port table"));
  ports->setReadOnly(true);
  ports->setTabChangesFocus(true);
  ports->setFont(QFont("monospace", font().pointSize()));
  row->addWidget(ports, 3);
  auto* logColumn = new QVBoxLayout;
  row->addLayout(logColumn, 1);
  logColumn->addWidget(new QLabel(tr("Unknown ports"), this));
  logColumn->addWidget(log);
  log->setObjectName("List1");
  log->setAccessibleName(tr("Accesses to unknown ports"));
  log->setUniformItemSizes(true);

  auto* close = new QPushButton(tr("Close"), this);
  close->setObjectName("Close");
  close->setAccessibleName(tr("Close"));
  close->setAutoDefault(true);
  column->addWidget(close, 0, Qt::AlignRight);
  connect(close, &QPushButton::clicked, this, [this] { Cancel(); });
}

void AboutPanel::Cancel() {
  m.windows.Frame2.visible = false;
  m.screen.focusPicD = true;
  Pull();
}

// A program can fill the log thousands of times a frame: only what it holds now is listed.
void AboutPanel::PullLog() {
  const PortLog& now = m.screen.List1;
  const bool same = shown.count == now.count &&
                    std::equal(now.lines.begin(), now.lines.begin() + now.count, shown.lines.begin());
  if (same) return;
  shown = now;
  const int count = static_cast<int>(shown.count);
  while (log->count() > count) delete log->takeItem(log->count() - 1);
  for (int i = 0; i < count; ++i) {
    const QString text = ToQt(shown.Text(static_cast<uint32_t>(i)));
    if (i == log->count()) log->addItem(text);
    if (log->item(i)->text() != text) log->item(i)->setText(text);
  }
}

void AboutPanel::Pull() {
  WindowState& state = m.windows.Frame2;
  if (!state.visible) {
    if (!isHidden()) hide();
    return;
  }
  PullLog();
  if (!isHidden() && !state.raise) return;
  state.raise = false;
  show();
  raise();
  findChild<QPushButton*>("Close")->setFocus();
}

}  // namespace quoll
