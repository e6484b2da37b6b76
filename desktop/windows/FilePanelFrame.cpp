#include "desktop/windows/FilePanelFrame.h"

#include <QApplication>
#include <QDir>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QShortcut>
#include <QStyle>

#include "machine/Machine.h"
#include "desktop/kit/ControlBinder.h"
#include "desktop/QtHost.h"

namespace quoll {

namespace {

QDir Folder(const FilePanel& panel) {
  return panel.folder.empty() ? QDir::current() : QDir(ToQt(panel.folder));
}

std::string FilledFor(const FilePanel& panel) {
  return panel.caption + '\n' + panel.pattern + '\n' + panel.folder;
}

}  // namespace

FilePanelFrame::FilePanelFrame(QtHost& hostOfWindow, Machine& machineOfWindow, QWidget* parent)
    : Panel(parent),
      host(hostOfWindow),
      m(machineOfWindow),
      title(new QLabel(this)),
      path(new QLabel(this)),
      folders(new QListWidget(this)),
      files(new QListWidget(this)),
      casRow(new QWidget(this)),
      error(new QLabel(this)),
      press(new QPushButton(this)),
      cancel(new QPushButton(tr("Cancel"), this)) {
  setObjectName("Frame1");
  setAccessibleName(tr("File panel"));
  BuildLists();
  BuildBoxes();

  auto* column = new QVBoxLayout(this);
  column->addWidget(title);
  auto* place = new QHBoxLayout;
  place->addWidget(new QLabel(tr("location"), this));
  place->addWidget(path, 1);
  column->addLayout(place);
  column->addWidget(folders);
  column->addWidget(files, 1);
  auto* form = new QFormLayout;
  form->addRow(tr("Pattern"), pattern);
  form->addRow(tr("Name"), name);
  column->addLayout(form);
  column->addWidget(casRow);
  column->addWidget(error);
  auto* buttons = new QHBoxLayout;
  buttons->addStretch();
  buttons->addWidget(press);
  buttons->addWidget(cancel);
  column->addLayout(buttons);
}

void FilePanelFrame::BuildLists() {
  QFont bold = font();
  bold.setBold(true);
  title->setFont(bold);
  title->setAccessibleName(tr("What the panel does"));
  path->setAccessibleName(tr("Location"));
  path->setTextFormat(Qt::PlainText);
  path->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);

  folders->setObjectName("Dir1");
  folders->setAccessibleName(tr("Folders"));
  folders->setFlow(QListView::LeftToRight);
  folders->setWrapping(false);
  folders->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  folders->setFixedHeight(2 * fontMetrics().height() + style()->pixelMetric(QStyle::PM_ScrollBarExtent));
  connect(folders, &QListWidget::itemActivated, this, &FilePanelFrame::FolderActivated);

  files->setObjectName("File1");
  files->setAccessibleName(tr("Files"));
  connect(files, &QListWidget::currentItemChanged, this, [this](QListWidgetItem* item) {
    if (item == nullptr) return;
    m.panel.name = item->text().toStdString();
    Pull();
  });
  connect(files, &QListWidget::itemClicked, this, [this](QListWidgetItem* item) {
    m.panel.name = item->text().toStdString();
    Pull();
  });
  connect(files, &QListWidget::itemDoubleClicked, this, [this] { Press(); });
  for (const int key : {Qt::Key_Return, Qt::Key_Enter}) {
    auto* shortcut = new QShortcut(key, files, nullptr, nullptr, Qt::WidgetShortcut);
    connect(shortcut, &QShortcut::activated, this, [this] { Press(); });
  }
}

QLineEdit* FilePanelFrame::AddBox(const char* objectName, const QString& accessibleName, std::string* field) {
  auto* box = new QLineEdit(this);
  box->setObjectName(objectName);
  box->setAccessibleName(accessibleName);
  if (field != nullptr) {
    connect(box, &QLineEdit::textEdited, this, [field](const QString& text) { *field = text.toStdString(); });
  }
  connect(box, &QLineEdit::returnPressed, this, [this] { Press(); });
  return box;
}

void FilePanelFrame::BuildBoxes() {
  pattern = new QLineEdit(this);
  pattern->setObjectName("Text5");
  pattern->setAccessibleName(tr("Pattern of the listed files"));
  connect(pattern, &QLineEdit::editingFinished, this, [this] { TakePattern(); });
  name = AddBox("Text3", tr("File name"), &m.panel.name);

  start = AddBox("Text6", tr("Start address"), &m.panel.boxes.Text6);
  end = AddBox("Text7", tr("End address"), &m.panel.boxes.Text7);
  word = AddBox("Text8", tr("Word at 1720"), &m.panel.boxes.Text8);
  auto* row = new QHBoxLayout(casRow);
  row->setContentsMargins(0, 0, 0, 0);
  row->addWidget(new QLabel(tr("Start"), casRow));
  row->addWidget(start);
  row->addWidget(new QLabel(tr("End"), casRow));
  row->addWidget(end);
  row->addWidget(new QLabel(tr("1720"), casRow));
  row->addWidget(word);

  error->setAccessibleName(tr("Error"));
  error->setTextFormat(Qt::PlainText);
  error->setStyleSheet("color: #b00020");
  press->setObjectName("Command2");
  press->setAccessibleName(tr("Do it"));
  press->setAutoDefault(true);
  connect(press, &QPushButton::clicked, this, [this] { Press(); });
  cancel->setObjectName("Cancel");
  cancel->setAccessibleName(tr("Cancel"));
  cancel->setAutoDefault(true);
  connect(cancel, &QPushButton::clicked, this, [this] { Cancel(); });
}

void FilePanelFrame::Press() {
  host.Guard([&] { FilePanelPress(m); });
  Pull();
}

void FilePanelFrame::Cancel() {
  m.panel.visible = false;
  m.screen.focusPicD = true;
  Pull();
}

// A pattern that belongs to another kind of file changes what the button does; any other only filters the
// list.
void FilePanelFrame::TakePattern() {
  ChoosePattern(m, pattern->text().toStdString());
  Fill();
  Pull();
}

// The list is filled anew, which must not happen under its own event. Where one click activates, the second
// click of a double click would walk on to whatever lies under the mouse then.
void FilePanelFrame::FolderActivated(QListWidgetItem* item) {
  const bool oneClick =
      style()->styleHint(QStyle::SH_ItemView_ActivateItemOnSingleClick, nullptr, folders) != 0;
  if (oneClick && sinceWalk.isValid() && sinceWalk.elapsed() < QApplication::doubleClickInterval()) return;
  sinceWalk.start();
  const QString folderName = item->text();
  QMetaObject::invokeMethod(
      this, [this, folderName] { OpenFolder(folderName); }, Qt::QueuedConnection);
}

void FilePanelFrame::OpenFolder(const QString& folderName) {
  QDir folder = Folder(m.panel);
  if (!folder.cd(folderName)) {
    m.panel.error = "This folder can't be opened.";
  } else {
    m.panel.folder = folder.absolutePath().toStdString();
    m.panel.error.clear();
  }
  Pull();
}

void FilePanelFrame::Fill() {
  const QDir folder = Folder(m.panel);
  path->setText(QDir::toNativeSeparators(folder.absolutePath()));
  path->setToolTip(path->text());

  const QIcon folderIcon = style()->standardIcon(QStyle::SP_DirIcon);
  folders->clear();
  if (!folder.isRoot())
    new QListWidgetItem(style()->standardIcon(QStyle::SP_FileDialogToParent), "..", folders);
  for (const QString& entry :
       folder.entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name | QDir::IgnoreCase))
    new QListWidgetItem(folderIcon, entry, folders);

  const QSignalBlocker quiet(files);  // filling chooses nothing
  files->clear();
  for (const QString& entry : folder.entryList({pattern->text()}, QDir::Files, QDir::Name | QDir::IgnoreCase))
    files->addItem(entry);
}

void FilePanelFrame::ShowBoxes() {
  ShowText(name, ToQt(m.panel.name));
  ShowText(start, ToQt(m.panel.boxes.Text6));
  ShowText(end, ToQt(m.panel.boxes.Text7));
  ShowText(word, ToQt(m.panel.boxes.Text8));
  ShowText(error, ToQt(m.panel.error));
  error->setVisible(!m.panel.error.empty());
}

void FilePanelFrame::Pull() {
  if (!m.panel.visible) {
    if (!isHidden()) hide();
    return;
  }
  const bool opening = isHidden();
  if (opening || filled != FilledFor(m.panel)) {
    const bool other = !filled.starts_with(m.panel.caption + '\n' + m.panel.pattern + '\n');
    filled = FilledFor(m.panel);
    const QString caption = ToQt(m.panel.caption);
    title->setText(caption + "  " + ToQt(m.panel.pattern));
    press->setText(caption);
    press->setAccessibleName(caption);
    if (opening || other) pattern->setText(ToQt(m.panel.pattern));
    casRow->setVisible(ShowsCasBoxes(m.panel));
    Fill();
  }
  ShowBoxes();
  if (!opening) return;
  show();
  raise();
  name->setFocus();
}

}  // namespace quoll
