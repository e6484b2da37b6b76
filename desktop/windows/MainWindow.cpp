#include "desktop/windows/MainWindow.h"

#include <QAction>
#include <QCloseEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenuBar>
#include <QMimeData>
#include <QUrl>

#include "desktop/kit/QtText.h"
#include "desktop/picture/PictureBox.h"
#include "desktop/widgets/ElidedLabel.h"
#include "desktop/widgets/PressLabel.h"
#include "desktop/widgets/SpeedBar.h"
#include "desktop/windows/AboutPanel.h"
#include "desktop/windows/ExtrasMenu.h"
#include "desktop/windows/FilePanelFrame.h"
#include "forms/FileActions.h"
#include "machine/Machine.h"
#include "media/Cartridge.h"

namespace quoll {

namespace {

constexpr int kLongestCaption = 260;  // pixels, of a menu entry that names a file

}  // namespace

MainWindow::MainWindow(FormKit& kitOfWindow)
    : FormWindow(kitOfWindow),
      menus(kit.Menus()),
      inside(new QWidget),
      picture(new PictureBox(host, m, inside)),
      files(new FilePanelFrame(host, m, inside)),
      about(new AboutPanel(host, m, inside)) {
  AddExtrasMenu(*menus, host);
  escapeCloses = false;
  setAccessibleName("QUOLLEMU");
  setAcceptDrops(true);
  inside->setMinimumSize(picture->minimumSizeHint());
  inside->installEventFilter(this);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setMenuBar(TopLine());
  column->addWidget(inside);
  picture->setFocus();
  TakeOuterSize();
  host.messageParent = this;
}

MainWindow::~MainWindow() {
  if (host.messageParent == this) host.messageParent = nullptr;
}

// Status and speed share the menus' line, so that the picture has the rest of the window. The menus come
// first, the status takes what is left.
QWidget* MainWindow::TopLine() {
  auto* line = new QWidget;
  auto* both = new QHBoxLayout(line);
  both->setContentsMargins(0, 0, 0, 0);
  both->setSpacing(0);
  menus->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Preferred);
  both->addWidget(menus);
  auto* rest = new QWidget;
  rest->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  both->addWidget(rest, 1);

  auto* row = new QHBoxLayout(rest);
  row->setSizeConstraint(QLayout::SetNoConstraint);  // in a narrow window its end is cut off
  row->setContentsMargins(4, 0, 6, 0);
  row->setSpacing(4);
  auto* status = new ElidedLabel;
  NameWidget(status, "Label1", ToQt(CaptionOf(kit.binder.Ref("Label1"))));
  kit.binder.Bind(kit.binder.Ref("Label1"), static_cast<QLabel*>(status));
  PressLabel* speedText = kit.Label("Text1");
  speedText->setFixedWidth(fontMetrics().horizontalAdvance("000000"));
  for (QLabel* label : {static_cast<QLabel*>(status), static_cast<QLabel*>(speedText)})
    label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  auto* unit = new QLabel("MHz");
  NameWidget(unit, "Label5", tr("Unit of the speed"));
  speedBar = new SpeedBar(rest);
  row->addWidget(status, 1);
  row->addWidget(speedText);
  row->addWidget(unit);
  row->addWidget(speedBar);
  return line;
}

QAction* MainWindow::Action(std::string_view name) const { return menus->findChild<QAction*>(ToQt(name)); }

void MainWindow::Appear() {
  FormWindow::Appear();
  if (!m.panel.window.visible && !m.frame2.window.visible) picture->setFocus();
}

void MainWindow::ShowRecord() {
  Action("xUnloadCRT")->setText(PlainCaption(ToQt(UnloadCaption(m)), fontMetrics(), kLongestCaption));
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

// A window that fills the screen keeps to that.
void MainWindow::TakeOuterSize() {
  if (isMaximized() || isFullScreen()) return;
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
  if (event->mimeData()->hasUrls() || event->mimeData()->hasText()) event->acceptProposedAction();
}

// All files, one after the other; a text is typed.
void MainWindow::dropEvent(QDropEvent* event) {
  event->acceptProposedAction();
  if (!event->mimeData()->hasUrls()) {
    const std::string text = event->mimeData()->text().toStdString();
    return host.Act(m, [&] { picture->TypeText(text); });
  }
  for (const QUrl& url : event->mimeData()->urls()) {
    host.Act(m, [&] {
      if (url.isLocalFile()) return OpenBySuffix(m, url.toLocalFile().toStdString());
      host.MessageBox("Only files of this computer can be opened: " + url.toDisplayString().toStdString(),
                      kProgramName, MessageIcon::Exclamation);
    });
  }
}

}  // namespace quoll
