#include "companion/Window.h"

#include <QFormLayout>
#include <QSerialPortInfo>
#include <QVBoxLayout>

#include "cards/Companion.h"

namespace quoll {

namespace {

constexpr int kCountsEvery = 200;  // milliseconds
const QString kFirstPlace = QStringLiteral("127.0.0.1:4000");

// Which choice of a box stands for a value; the first one when none does.
void Choose(QComboBox& box, int value) { box.setCurrentIndex(std::max(0, box.findData(value))); }

int Chosen(const QComboBox& box) { return box.currentData().toInt(); }

}  // namespace

Window::Window(Companion& served)
    : companion(&served),
      kind(new QComboBox),
      pages(new QStackedWidget),
      open(new QPushButton),
      state(new QLabel),
      counts(new QLabel) {
  setWindowTitle(QString::fromUtf8(kCompanionTitle.data()));
  const auto add = [this](const QString& text, EndKind value, QWidget* page) {
    kind->addItem(text, static_cast<int>(value));
    pages->addWidget(page);
  };
  add(tr("Serial port"), EndKind::SerialPort, SerialPortPage());
  add(tr("Pseudo terminal"), EndKind::PseudoTerminal, PseudoTerminalPage());
  add(tr("TCP: wait for a call"), EndKind::TcpListen, TcpPage(listenAt));
  add(tr("TCP: call"), EndKind::TcpConnect, TcpPage(call));

  state->setTextInteractionFlags(Qt::TextSelectableByMouse);
  state->setWordWrap(true);
  auto* const layout = new QVBoxLayout(this);
  for (QWidget* const widget :
       {static_cast<QWidget*>(kind), static_cast<QWidget*>(pages), static_cast<QWidget*>(open),
        static_cast<QWidget*>(state), static_cast<QWidget*>(counts)}) {
    layout->addWidget(widget);
  }
  layout->addStretch();

  countsLater.setSingleShot(true);
  countsLater.setInterval(kCountsEvery);
  connect(&countsLater, &QTimer::timeout, this, [this] { PullCounts(); });
  connect(kind, &QComboBox::currentIndexChanged, pages, &QStackedWidget::setCurrentIndex);
  connect(open, &QPushButton::clicked, this, [this] { OpenOrClose(); });
  companion->moved = [this] {
    if (isVisible() && !countsLater.isActive()) countsLater.start();
  };
  companion->changed = [this] { PullState(); };
  Choose(*kind, static_cast<int>(EndKind::PseudoTerminal));
  PullState();
}

QWidget* Window::SerialPortPage() {
  auto* const page = new QWidget;
  auto* const form = new QFormLayout(page);
  const auto box = [form](const QString& label) {
    auto* const made = new QComboBox;
    form->addRow(label, made);
    return made;
  };
  port = box(tr("Port"));
  port->setEditable(true);
  FillPorts();
  speed = box(tr("Speed"));
  for (const int baud : {50, 75, 110, 150, 300, 600, 1200, 2400, 4800, 9600, 19200, 38400, 57600, 115200}) {
    speed->addItem(QString::number(baud), baud);
  }
  bits = box(tr("Data bits"));
  for (int count = 8; count >= 5; --count) bits->addItem(QString::number(count), count);
  parity = box(tr("Parity"));
  int value = 0;
  for (const QString& text : {tr("None"), tr("Even"), tr("Odd"), tr("Mark"), tr("Space")}) {
    parity->addItem(text, value++);
  }
  stop = box(tr("Stop bits"));
  value = 2;
  for (const char* text : {"1", "1.5", "2"}) stop->addItem(QString::fromLatin1(text), value++);
  Choose(*speed, 9600);
  return page;
}

void Window::FillPorts() {
  const QString before = port->currentText();
  port->clear();
  for (const QSerialPortInfo& found : QSerialPortInfo::availablePorts()) port->addItem(found.portName());
  if (!before.isEmpty()) port->setEditText(before);
}

QWidget* Window::PseudoTerminalPage() {
  auto* const page = new QWidget;
  link = new QLineEdit;
  link->setPlaceholderText(tr("none"));
  (new QFormLayout(page))->addRow(tr("Link to it"), link);
  return page;
}

QWidget* Window::TcpPage(QLineEdit*& place) {
  auto* const page = new QWidget;
  place = new QLineEdit(kFirstPlace);
  (new QFormLayout(page))->addRow(tr("Address:port"), place);
  return page;
}

void Window::Show(const EndSettings& settings) {
  Choose(*kind, static_cast<int>(settings.kind));
  port->setEditText(settings.port);
  const int baud = static_cast<int>(settings.line.baud);
  if (speed->findData(baud) < 0) speed->addItem(QString::number(baud), baud);
  Choose(*speed, baud);
  Choose(*bits, settings.line.dataBits);
  Choose(*parity, static_cast<int>(settings.line.parity));
  Choose(*stop, settings.line.halfStopBits);
  link->setText(settings.link);
  if (settings.kind == EndKind::TcpListen || settings.kind == EndKind::TcpConnect) {
    (settings.kind == EndKind::TcpListen ? listenAt : call)
        ->setText(TcpPlaceText(settings.address, settings.tcpPort));
  }
}

void Window::BringUp() {
  showNormal();
  raise();
  activateWindow();
  PullState();
}

std::optional<EndSettings> Window::Settings() {
  EndSettings settings;
  settings.kind = static_cast<EndKind>(Chosen(*kind));
  settings.port = port->currentText().trimmed();
  settings.line = {true, static_cast<uint32_t>(Chosen(*speed)), static_cast<uint8_t>(Chosen(*bits)),
                   static_cast<Parity>(Chosen(*parity)), static_cast<uint8_t>(Chosen(*stop))};
  settings.link = link->text().trimmed();
  if (settings.kind == EndKind::TcpListen || settings.kind == EndKind::TcpConnect) {
    const auto place = ParseTcpPlace((settings.kind == EndKind::TcpListen ? listenAt : call)->text());
    if (!place) {
      state->setText(tr("This is no address of this computer"));
      return {};
    }
    settings.address = place->address;
    settings.tcpPort = place->port;
  }
  return settings;
}

void Window::OpenOrClose() {
  if (companion->Port().IsOpen()) {
    companion->Close();
    FillPorts();
  } else if (const auto settings = Settings()) {
    companion->Open(*settings);
  }
}

void Window::PullState() {
  const End& end = companion->Port();
  open->setText(end.IsOpen() ? tr("CLOSE") : tr("OPEN"));
  kind->setEnabled(!end.IsOpen());
  pages->setEnabled(!end.IsOpen());
  state->setText(end.Status().isEmpty() ? tr("No port is open") : end.Status());
  PullCounts();
}

void Window::PullCounts() {
  const Joint& joint = companion->Bytes();
  counts->setText(tr("To the machine: %1 bytes\nFrom the machine: %2 bytes")
                      .arg(joint.bytesToMachine)
                      .arg(joint.bytesFromMachine));
}

}  // namespace quoll
