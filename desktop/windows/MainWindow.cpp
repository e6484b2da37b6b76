#include "desktop/windows/MainWindow.h"

#include <QAction>
#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenuBar>
#include <QMimeData>
#include <QScreen>
#include <QUrl>
#include <QWindow>

#include "machine/Machine.h"
#include "desktop/kit/ControlBinder.h"
#include "desktop/windows/AboutPanel.h"
#include "desktop/windows/ErrorSimWindow.h"
#include "desktop/windows/FilePanelFrame.h"
#include "desktop/windows/FullScreenWindow.h"
#include "desktop/picture/PictureBox.h"
#include "desktop/widgets/SpeedBar.h"
#include "media/Cartridge.h"

namespace quoll {

namespace {

constexpr std::chrono::milliseconds kPlacingTime{100};

}  // namespace

MainWindow::MainWindow(QtHost& hostOfWindow, Machine& machineOfWindow)
    : host(hostOfWindow),
      m(machineOfWindow),
      inside(new QWidget),
      picture(new PictureBox(host, m, inside)),
      files(new FilePanelFrame(host, m, inside)),
      about(new AboutPanel(m, inside)),
      fullScreen(std::make_unique<FullScreenWindow>(host, m)),
      errorSim(std::make_unique<ErrorSimWindow>(host, m)) {
  setObjectName("TScreen");
  setAccessibleName("QUOLLEMU");
  setAcceptDrops(true);
  setContextMenuPolicy(Qt::NoContextMenu);
  setCentralWidget(inside);
  inside->setMinimumSize(picture->minimumSizeHint());
  inside->installEventFilter(this);
  BuildMenus();
  BuildStatus();
  picture->setFocus();
  TakeOuterSize();
  host.AddView(this);
}

MainWindow::~MainWindow() { host.RemoveView(this); }

// The menu table is the one source of what stands in the menus.
void MainWindow::BuildMenus() {
  menuBar()->setNativeMenuBar(false);
  menuBar()->setAccessibleName(tr("Menus"));
  QMenu* menu = nullptr;
  std::string_view menuName;
  for (const MenuItem& item : MenuItems()) {
    if (menu == nullptr || item.menu != menuName) {
      menuName = item.menu;
      menu = menuBar()->addMenu("&" + ToQt(menuName));
      menu->setAccessibleName(ToQt(menuName));
      connect(menu, &QMenu::aboutToShow, this, [this] { PullMenus(); });
    }
    QAction* action = menu->addAction(ToQt(item.caption));
    action->setObjectName(ToQt(item.name));
    action->setCheckable(item.tick != nullptr);
    // An entry without a handler and without a tick has nothing behind it yet.
    action->setEnabled(item.click != nullptr || item.tick != nullptr);
    connect(action, &QAction::triggered, this, [this, &item] { Click(item); });
    entries.push_back({&item, action});
  }
  PullMenus();
}

// Status and speed share the menu's line, so that the picture has the rest of the window.
void MainWindow::BuildStatus() {
  auto* corner = new QWidget(menuBar());
  auto* row = new QHBoxLayout(corner);
  row->setContentsMargins(0, 2, 6, 0);  // on the menus' base line
  row->setSpacing(4);
  status = new QLabel(corner);
  status->setObjectName("Label1");
  status->setAccessibleName(tr("Status"));
  // The menu bar gives its corner no more room later on: the longest text finds its own here.
  status->setMinimumWidth(fontMetrics().horizontalAdvance("No sound device: Timer2"));
  status->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  speedText = new QLabel(corner);
  speedText->setObjectName("Text1");
  speedText->setAccessibleName(tr("Speed: hundred-thousandths of a second for a frame"));
  speedText->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  speedText->setMinimumWidth(fontMetrics().horizontalAdvance("000000"));
  auto* unit = new QLabel("MHz", corner);
  unit->setObjectName("Label5");
  unit->setAccessibleName(tr("Unit of the speed"));
  speedBar = new SpeedBar(corner);
  for (QWidget* widget : {static_cast<QWidget*>(status), static_cast<QWidget*>(speedText),
                          static_cast<QWidget*>(unit), static_cast<QWidget*>(speedBar)})
    row->addWidget(widget);
  menuBar()->setCornerWidget(corner);
}

QAction* MainWindow::Action(std::string_view name) const {
  for (const Entry& entry : entries) {
    if (entry.item->name == name) return entry.action;
  }
  return nullptr;
}

void MainWindow::Click(const MenuItem& item) {
  host.Guard([&] { ClickMenu(m, item); });
  Pull(m);
}

// Qt flips a tick by itself when its entry is selected; the record has the last word.
void MainWindow::PullMenus() {
  for (const Entry& entry : entries) {
    if (entry.item->tick != nullptr) entry.action->setChecked(m.screen.*entry.item->tick);
    if (entry.item->name == "xUnloadCRT") entry.action->setText(ToQt(UnloadCaption(m)));
  }
}

void MainWindow::PullWindows() {
  files->Pull();
  about->Pull();
  errorSim->Pull();
  fullScreen->Pull(*screen());
  // The full screen is shown before this window goes, and goes after this one has come back.
  if (m.windows.FScreen.visible && isVisible()) {
    placeBefore = pos();
    maximisedBefore = isMaximized();
    hide();
  }
  if (!m.windows.FScreen.visible && !isVisible() && fullScreen->HidMain()) {
    if (maximisedBefore) {
      showMaximized();
    } else {
      show();
      // The window manager has looked for a new place, and tells of it only later.
      QTimer::singleShot(kPlacingTime, this, [this] { move(placeBefore); });
    }
    picture->setFocus();
    fullScreen->Leave();
  }
}

void MainWindow::Pull(Machine& /*machine*/) {
  PullMenus();
  PullWindows();
  if (m.screen.focusPicD) {
    m.screen.focusPicD = false;
    picture->setFocus();
  }
  if (!isVisible()) return;
  TakeOuterSize();
  const QString caption = ToQt(m.screen.Caption);
  if (windowTitle() != caption) setWindowTitle(caption);
  ShowText(status, ToQt(m.screen.Label1));
  ShowText(speedText, ToQt(m.screen.Text1));
  speedBar->SetValue(m.screen.Shape4Width);
  picture->ShowPicture();
}

// The frame's width is known only after the window has been shown.
void MainWindow::TakeOuterSize() {
  const QMargins now = windowHandle() != nullptr ? windowHandle()->frameMargins() : QMargins();
  if (!sizeTaken.isEmpty() && (now == frame || size() != sizeTaken)) return;
  frame = now;
  const QSize wanted = kOuterSize.shrunkBy(frame);
  const QSize needed(kCanvasWidth, kCanvasHeight + menuBar()->sizeHint().height());
  sizeTaken = wanted.expandedTo(needed);
  resize(sizeTaken);
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
  return QMainWindow::eventFilter(object, event);
}

void MainWindow::closeEvent(QCloseEvent* event) {
  host.Close();
  event->accept();
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event) {
  if (event->mimeData()->hasUrls()) event->acceptProposedAction();
}

void MainWindow::dropEvent(QDropEvent* event) {
  event->acceptProposedAction();
  for (const QUrl& url : event->mimeData()->urls()) {
    if (!url.isLocalFile()) continue;
    const std::string file = url.toLocalFile().toStdString();
    host.Guard([&] {
      if (!OpenBySuffix(m, file))
        host.MessageBox("This kind of file can't be opened: " + file, "QUOLLEMU", MessageIcon::Exclamation);
    });
    break;
  }
  Pull(m);
}

}  // namespace quoll
