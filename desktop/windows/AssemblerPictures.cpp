#include "desktop/windows/AssemblerPictures.h"

#include <QComboBox>
#include <QFileDialog>
#include <QGridLayout>
#include <QImageReader>
#include <QLabel>
#include <QPushButton>
#include <QSlider>

#include "desktop/QtHost.h"
#include "desktop/kit/FormKit.h"
#include "desktop/kit/QtText.h"
#include "desktop/widgets/ImageView.h"
#include "machine/Machine.h"

namespace quoll {

namespace {

constexpr QSize kView{256, 240};
constexpr std::array kModes{ScreenColours::Two, ScreenColours::Four, ScreenColours::Sixteen};

}  // namespace

AssemblerPictures::AssemblerPictures(FormKit& kitOfWindow, QWidget* parent)
    : QWidget(parent), kit(kitOfWindow), mode(new QComboBox), preview(new ImageView(kView)) {
  NameWidget(mode, "PreviewMode", tr("Colours of the preview"));
  mode->addItems({tr("2 colours"), tr("4 colours"), tr("16 colours")});
  mode->setCurrentIndex(1);
  NameWidget(preview, "Preview", tr("What the machine will show"));
  auto* pick = new QPushButton(tr("Picture from a file..."));
  pick->setObjectName("PickPicture");
  connect(pick, &QPushButton::clicked, this, &AssemblerPictures::PickFile);

  auto* grid = new QGridLayout(this);
  grid->addWidget(pick, 0, 0);
  grid->addWidget(new QLabel(tr("The machine will show, in")), 0, 1);
  grid->addWidget(mode, 0, 2);
  grid->addWidget(kit.Image("Image1", kView), 1, 0);
  grid->addWidget(preview, 1, 1, 1, 2);
  grid->addWidget(new QLabel(tr("Threshold")), 2, 0);
  grid->addWidget(kit.Slider("HScroll1"), 2, 1, 1, 2);
  grid->addWidget(Buttons(), 3, 0, 1, 3);
  grid->setRowStretch(4, 1);
  grid->setColumnStretch(3, 1);
}

QWidget* AssemblerPictures::Buttons() {
  auto* buttons = new QWidget;
  auto* row = new QGridLayout(buttons);
  row->setContentsMargins(0, 0, 0, 0);
  row->addWidget(kit.Button("Command9"), 0, 0);
  row->addWidget(kit.Button("Command10"), 1, 0);
  row->addWidget(kit.Button("Command17"), 1, 1);
  row->addWidget(kit.Button("Command19"), 1, 2);
  row->addWidget(kit.Button("Command16"), 2, 0);
  row->addWidget(kit.Button("Command18"), 2, 1);
  row->addWidget(kit.Button("Command20"), 2, 2);
  return buttons;
}

// Any kind of picture, not only those that the file panel lists.
void AssemblerPictures::PickFile() {
  QStringList patterns;
  for (const QByteArray& format : QImageReader::supportedImageFormats())
    patterns.append("*." + QString::fromLatin1(format));
  const QString file =
      QFileDialog::getOpenFileName(this, tr("Picture"), ToQt(kit.m.asse.files.folder),
                                   tr("Pictures (%1);;All files (*)").arg(patterns.join(' ')));
  if (!file.isEmpty()) kit.host.Act(kit.m, [&] { OpenPicture(kit.m, file.toStdString()); });
}

void AssemblerPictures::ShowRecord() {
  if (!isVisible()) return;
  const AsseFiles& files = kit.m.asse.files;
  const PortBytes& ports = kit.m.PortShadow;
  const std::array<int64_t, 7> now{
      files.ResPic.drawings, files.HScroll1.value, mode->currentIndex() + 1, ports[0x60], ports[0x61],
      ports[0x62],           ports[0x63]};
  if (now == shown) return;
  shown = now;
  PixelImage image = PicturePreview(kit.m, kModes[static_cast<size_t>(mode->currentIndex())]);
  image.drawings = ++drawings;
  preview->Show(image);
}

}  // namespace quoll
