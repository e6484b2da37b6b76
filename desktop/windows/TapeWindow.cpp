#include "desktop/windows/TapeWindow.h"

#include <QDir>
#include <QGridLayout>
#include <QLabel>
#include <QListWidget>
#include <QPainter>
#include <QPushButton>
#include <QStyle>

#include "machine/Machine.h"
#include "desktop/widgets/DeckPicture.h"

namespace quoll {

namespace {

// Triangle over a bar, as on every deck.
QIcon EjectIcon(const QPalette& palette) {
  QPixmap picture(16, 16);
  picture.fill(Qt::transparent);
  QPainter painter(&picture);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(palette.buttonText());
  painter.drawPolygon(QPolygonF({{8, 2}, {15, 10}, {1, 10}}));
  painter.drawRect(1, 12, 14, 3);
  return picture;
}

}  // namespace

TapeWindow::TapeWindow(QtHost& hostOfWindow, Machine& machineOfWindow)
    : FormWindow(hostOfWindow, machineOfWindow, &Windows::TTape, "TTape"),
      deck(new DeckPicture),
      files(new QListWidget) {
  setWindowTitle("Tape");
  setAccessibleName(windowTitle());
  BuildList();
  timer1.setInterval(TTape::kTimer1Milliseconds);
  connect(&timer1, &QTimer::timeout, this, [this] { host.Guard([this] { TTape_Timer1(m); }); });

  auto* keys = new QHBoxLayout;
  keys->addWidget(AddKey("Command1", Icon(QStyle::SP_MediaSeekBackward), tr("Rewind")));
  keys->addWidget(AddKey("Command2", Icon(QStyle::SP_MediaPlay), tr("Play")));
  keys->addWidget(AddKey("Command3", Icon(QStyle::SP_MediaSeekForward), tr("Fast forward")));
  keys->addWidget(AddKey("Command9", EjectIcon(palette()), tr("Eject: choose a tape")));
  keys->addStretch();
  keys->addWidget(Counter("Label1", tr("Counter")));
  auto* second = new QHBoxLayout;
  second->addWidget(new QLabel(tr("Second deck")));
  second->addStretch();
  second->addWidget(AddKey("Command8", Icon(QStyle::SP_MediaSeekBackward), tr("Rewind the second deck")));
  second->addWidget(Counter("Label2", tr("Counter of the second deck")));

  auto* column = new QVBoxLayout(this);
  column->addWidget(deck);
  column->addLayout(keys);
  column->addLayout(second);
  column->addWidget(files);
  column->setSizeConstraint(QLayout::SetFixedSize);
}

QIcon TapeWindow::Icon(int standard) const {
  return style()->standardIcon(static_cast<QStyle::StandardPixmap>(standard));
}

QPushButton* TapeWindow::AddKey(const char* control, const QIcon& icon, const QString& accessibleName) {
  auto* key = Add<QPushButton>(control, QString(), accessibleName);
  key->setIcon(icon);
  key->setToolTip(accessibleName);
  return key;
}

QWidget* TapeWindow::Counter(const char* control, const QString& accessibleName) {
  auto* label = new QLabel;
  label->setObjectName(control);
  label->setAccessibleName(accessibleName);
  label->setFrameStyle(QFrame::Panel | QFrame::Sunken);
  label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  label->setMinimumWidth(fontMetrics().horizontalAdvance("0000000"));
  binder.Bind(control, label);
  return label;
}

void TapeWindow::BuildList() {
  files->setObjectName("File1");
  files->setAccessibleName(tr("Tapes"));
  files->hide();
  connect(files, &QListWidget::itemClicked, this, [this](QListWidgetItem* item) { Choose(item->text()); });
  connect(files, &QListWidget::itemActivated, this, [this](QListWidgetItem* item) { Choose(item->text()); });
}

void TapeWindow::FillList() {
  files->clear();
  const QDir folder(m.ttape.folder.empty() ? QDir::currentPath() : ToQt(m.ttape.folder));
  files->addItems(folder.entryList({"*.wav"}, QDir::Files, QDir::Name | QDir::IgnoreCase));
}

void TapeWindow::Choose(const QString& file) {
  m.ttape.File1 = file.toStdString();
  host.Guard([this] { ControlChanged(m, *FindControl("TTape", "File1")); });
  Pull(m);
}

void TapeWindow::ShowRecord() {
  deck->Set(ReelPicture(m.ttape), ToQt(m.ttape.Label3));
  if (m.ttape.listShown == files->isHidden()) files->setVisible(m.ttape.listShown);
  if (refreshes == m.ttape.listRefreshes) return;
  refreshes = m.ttape.listRefreshes;
  FillList();
}

// The deck's timer runs while there is a deck to be seen.
void TapeWindow::showEvent(QShowEvent* event) {
  timer1.start();
  QWidget::showEvent(event);
}

void TapeWindow::hideEvent(QHideEvent* event) {
  timer1.stop();
  QWidget::hideEvent(event);
}

}  // namespace quoll
