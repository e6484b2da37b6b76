#include "desktop/windows/FloppyWindow.h"

#include <QLabel>
#include <QVBoxLayout>

#include "desktop/kit/QtText.h"
#include "desktop/widgets/FileList.h"
#include "desktop/widgets/PressLabel.h"
#include "machine/Machine.h"

namespace quoll {

FloppyWindow::FloppyWindow(FormKit& kitOfWindow) : FormWindow(kitOfWindow), folder(new QLabel) {
  PressLabel* disk = kit.Label("Label1");
  disk->setFrameStyle(QFrame::Panel | QFrame::Sunken);
  auto* drive = new QHBoxLayout;
  drive->addWidget(new QLabel(tr("Drive 0")));
  drive->addWidget(disk, 1);
  folder->setTextFormat(Qt::PlainText);
  folder->setWordWrap(true);
  NameWidget(folder, "folder", tr("Folder of the disks"));

  auto* column = new QVBoxLayout(this);
  column->addLayout(drive);
  column->addWidget(kit.List("File1"), 1);
  column->addWidget(folder);
}

void FloppyWindow::ShowRecord() {
  const TFloppy& form = m.tfloppy;
  const QString where = form.folder.empty() ? tr("the working directory") : ToQt(form.folder);
  ShowText(folder, (form.File1.entries.empty() ? tr("No *.dsk in %1") : tr("*.dsk in %1")).arg(where));
}

}  // namespace quoll
