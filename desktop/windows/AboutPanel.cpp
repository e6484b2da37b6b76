#include "desktop/windows/AboutPanel.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>

#include "desktop/QtHost.h"
#include "desktop/kit/QtText.h"
#include "desktop/widgets/FileList.h"
#include "machine/Machine.h"

namespace quoll {

namespace {

// Whom to write to is the user's choice.
constexpr const char* kContact = R"(<a href="mailto:?subject=QUOLLEMU">Write a mail about QUOLLEMU</a>)";

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

QLabel* AddLabel(QBoxLayout* column, const char* objectName, const QString& text,
                 const QString& accessibleName) {
  auto* label = new QLabel(text);
  NameWidget(label, objectName, accessibleName);
  column->addWidget(label);
  return label;
}

}  // namespace

AboutPanel::AboutPanel(QtHost& host, Machine& machineOfWindow, QWidget* parent)
    : Panel(machineOfWindow.frame2.window, parent),
      kit(host, machineOfWindow, kTScreen),
      close(new QPushButton(tr("Close"))) {
  NameWidget(this, ToQt(kFrame2.name), ToQt(kFrame2.caption));
  auto* column = new QVBoxLayout(this);
  AddTitles(column);

  auto* row = new QHBoxLayout;
  column->addLayout(row, 1);
  row->addWidget(PortTable(), 3);
  auto* logColumn = new QVBoxLayout;
  row->addLayout(logColumn, 1);
  logColumn->addWidget(new QLabel(tr("Unknown ports")));
  logColumn->addWidget(kit.List("List1"));

  NameWidget(close, "Close", close->text());
  close->setAutoDefault(true);
  column->addWidget(close, 0, Qt::AlignRight);
  connect(close, &QPushButton::clicked, this, &AboutPanel::Cancel);
}

void AboutPanel::AddTitles(QBoxLayout* column) {
  const QString program = "QUOLLEMU  V.3.1", machine = "Videoton TV Computer emulator";
  QLabel* name = AddLabel(column, "Label3", program, program);
  QFont large = font();
  large.setPointSizeF(large.pointSizeF() * 1.6);
  large.setBold(true);
  name->setFont(large);
  AddLabel(column, "Label4", machine, machine);
  QLabel* mail = AddLabel(column, "Label7", kContact, tr("Write a mail"));
  mail->setTextInteractionFlags(Qt::TextBrowserInteraction);
  mail->setOpenExternalLinks(true);
}

QWidget* AboutPanel::PortTable() {
  auto* ports = new QPlainTextEdit(kPorts);
  NameWidget(ports, "Picture3", tr("Port table"));
  ports->setReadOnly(true);
  ports->setTabChangesFocus(true);
  ports->setFont(QFont("monospace", font().pointSize()));
  return ports;
}

QWidget* AboutPanel::FirstFocus() const { return close; }

void AboutPanel::Cancel() {
  kit.host.Act(kit.m, [this] {
    kit.m.frame2.window.visible = false;
    kit.m.screen.focusPicD = true;
  });
}

}  // namespace quoll
