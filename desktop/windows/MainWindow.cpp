#include "desktop/windows/MainWindow.h"

#include <QAction>
#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenuBar>
#include <QMimeData>
#include <QUrl>

#include "desktop/kit/QtText.h"
#include "desktop/picture/PictureBox.h"
#include "desktop/widgets/PressLabel.h"
#include "desktop/widgets/SpeedBar.h"
#include "desktop/windows/AboutPanel.h"
#include "desktop/windows/FilePanelFrame.h"
#include "forms/FileActions.h"
#include "machine/Machine.h"
#include "media/Cartridge.h"

namespace quoll {

MainWindow::MainWindow(FormKit& kitOfWindow)
    : FormWindow(kitOfWindow),
      menus(kit.Menus()),
      inside(new QWidget),
      picture(new PictureBox(host, m, inside)),
      files(new FilePanelFrame(host, m, inside)),
      about(new AboutPanel(host, m, inside)) {
  escapeCloses = false;
  setAccessibleName("QUOLLEMU");
  setAcceptDrops(true);
  inside->setMinimumSize(picture->minimumSizeHint());
  inside->installEventFilter(this);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setMenuBar(menus);
  column->addWidget(inside);
  // Status and speed share the menu's line, so that the picture has the rest of the window.
  menus->setCornerWidget(StatusAndSpeed());
  picture->setFocus();
  TakeOuterSize();
  host.messageParent = this;
}

MainWindow::~MainWindow() {
  if (host.messageParent == this) host.messageParent = nullptr;
}

QWidget* MainWindow::StatusAndSpeed() {
  auto* corner = new QWidget(menus);
  auto* row = new QHBoxLayout(corner);
  row->setContentsMargins(0, 2, 6, 0);  // on the menus' base line
  row->setSpacing(4);
  PressLabel* status = kit.Label("Label1");
  PressLabel* speedText = kit.Label("Text1");
  // The menu bar gives its corner no more room later on: the longest text finds its own here.
  status->setMinimumWidth(fontMetrics().horizontalAdvance("No sound device: Timer2"));
  speedText->setMinimumWidth(fontMetrics().horizontalAdvance("000000"));
  for (QLabel* label : {status, speedText}) label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  auto* unit = new QLabel("MHz");
  NameWidget(unit, "Label5", tr("Unit of the speed"));
  speedBar = new SpeedBar(corner);
  row->addWidget(status, 1);
  row->addWidget(speedText);
  row->addWidget(unit);
  row->addWidget(speedBar);
  return corner;
}

QAction* MainWindow::Action(std::string_view name) const { return menus->findChild<QAction*>(ToQt(name)); }

void MainWindow::Appear() {
  FormWindow::Appear();
  picture->setFocus();
}

void MainWindow::ShowRecord() {
  Action("xUnloadCRT")->setText(ToQt(UnloadCaption(m)));
  files->Pull();
  about->Pull();
  if (m.screen.focusPicD) {
    m.screen.focusPicD = false;
    picture->setFocus();
  }
  TakeOuterSize();
  speedBar->SetValue(m.screen.Shape4Width);
  picture->ShowPicture();
}

void MainWindow::TakeOuterSize() {
  outerSize.Take(*this, kOuterSize, {kCanvasWidth, kCanvasHeight + menus->sizeHint().height()});
}

void MainWindow::LayOut() {
  picture->setGeometry(inside->rect());
  for (QWidget* panel : {static_cast<QWidget*>(files), static_cast<QWidget*>(about)}) {
    panel->resize(panel->sizeHint().boundedTo(inside->size()));
    panel->move((inside->width() - panel->width()) / 2, (inside->height() - panel->height()) / 2);
  }
}

bool MainWindow::eventFilter(QObject* object, QEvent* event) {
  if (object == inside && event->type() == QEvent::Resize) LayOut();
  return FormWindow::eventFilter(object, event);
}

void MainWindow::closeEvent(QCloseEvent* event) {
  FormWindow::closeEvent(event);
  host.Close();
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event) {
  if (event->mimeData()->hasUrls()) event->acceptProposedAction();
}

void MainWindow::dropEvent(QDropEvent* event) {
  event->acceptProposedAction();
  for (const QUrl& url : event->mimeData()->urls()) {
    if (!url.isLocalFile()) continue;
    host.Act(m, [&] { OpenBySuffix(m, url.toLocalFile().toStdString()); });
    break;
  }
}

}  // namespace quoll
