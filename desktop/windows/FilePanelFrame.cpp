#include "desktop/windows/FilePanelFrame.h"

#include <QApplication>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStyle>

#include "desktop/QtHost.h"
#include "desktop/kit/QtText.h"
#include "desktop/widgets/FileList.h"
#include "desktop/widgets/PressLabel.h"
#include "machine/Machine.h"

namespace quoll {

namespace {

QIcon FolderIcon(const QString& entry) {
  return QApplication::style()->standardIcon(entry == ".." ? QStyle::SP_FileDialogToParent
                                                           : QStyle::SP_DirIcon);
}

}  // namespace

FilePanelFrame::FilePanelFrame(QtHost& host, Machine& machineOfWindow, QWidget* parent)
    : Panel(machineOfWindow.panel.window, parent),
      kit(host, machineOfWindow, kTScreen),
      title(new QLabel),
      path(kit.Label("Frame4")),
      name(kit.Text("Text3")),
      error(Error()),
      press(kit.Button("Command2")) {
  NameWidget(this, "Frame1", tr("File panel"));
  QFont bold = font();
  bold.setBold(true);
  title->setFont(bold);
  title->setAccessibleName(tr("What the panel does"));

  auto* column = new QVBoxLayout(this);
  column->addWidget(title);
  column->addWidget(Location());
  column->addWidget(Folders());
  column->addWidget(kit.List("File1"), 1);
  auto* boxes = new QFormLayout;
  boxes->addRow(tr("Pattern"), PatternBox());
  boxes->addRow(tr("Name"), name);
  column->addLayout(boxes);
  column->addWidget(CasRow());
  column->addWidget(error);
  auto* buttons = new QHBoxLayout;
  buttons->addStretch();
  buttons->addWidget(press);
  buttons->addWidget(kit.Button("Frame1Cancel"));
  column->addLayout(buttons);
}

QWidget* FilePanelFrame::Location() {
  auto* place = new QWidget;
  auto* row = new QHBoxLayout(place);
  row->setContentsMargins(0, 0, 0, 0);
  row->addWidget(new QLabel(tr("location")));
  path->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  row->addWidget(path, 1);
  return place;
}

FileList* FilePanelFrame::Folders() {
  FileList* folders = kit.List("Dir1");
  folders->SetOneClickOpens();
  folders->SetIcons(FolderIcon);
  folders->setFlow(QListView::LeftToRight);
  folders->setWrapping(false);
  folders->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  folders->setFixedHeight(2 * fontMetrics().height() + style()->pixelMetric(QStyle::PM_ScrollBarExtent));
  return folders;
}

// A pattern that was typed counts also when the box is left without Enter.
QLineEdit* FilePanelFrame::PatternBox() {
  QLineEdit* pattern = kit.Text("Text5");
  connect(pattern, &QLineEdit::editingFinished, this, [this, pattern] {
    if (!pattern->isModified()) return;
    pattern->setModified(false);
    kit.host.Act(kit.m, [this] { PressEnter(kit.m, kit.binder.Ref("Text5")); });
  });
  return pattern;
}

QWidget* FilePanelFrame::CasRow() {
  auto* boxes = new QWidget;
  auto* row = new QHBoxLayout(boxes);
  row->setContentsMargins(0, 0, 0, 0);
  const std::pair<QString, const char*> texts[] = {
      {tr("Start"), "Text6"}, {tr("End"), "Text7"}, {tr("1720"), "Text8"}};
  for (const auto& [caption, control] : texts) {
    row->addWidget(new QLabel(caption));
    row->addWidget(kit.Text(control));
  }
  kit.binder.BindLook(kit.binder.Ref("Text6"), boxes);
  return boxes;
}

QLabel* FilePanelFrame::Error() {
  QLabel* label = kit.Label("Frame1Error");
  label->setStyleSheet("color: #b00020");
  label->setWordWrap(true);
  return label;
}

QWidget* FilePanelFrame::FirstFocus() const { return name; }

void FilePanelFrame::Cancel() {
  kit.host.Act(kit.m, [this] { FilePanelCancel(kit.m); });
}

void FilePanelFrame::ShowRecord() {
  const FilePanel& panel = kit.m.panel;
  const QString caption = ToQt(panel.window.caption);
  ShowText(title, caption + "  " + ToQt(panel.pattern));
  if (press->text() != caption) {
    press->setText(caption);
    press->setAccessibleName(caption);
  }
  kit.binder.Pull();
  path->setToolTip(path->text());
  error->setVisible(!panel.error.empty());
}

}  // namespace quoll
