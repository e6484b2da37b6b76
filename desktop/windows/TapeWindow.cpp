#include "desktop/windows/TapeWindow.h"

#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QStyle>
#include <QVBoxLayout>

#include "desktop/kit/QtText.h"
#include "desktop/widgets/DeckPicture.h"
#include "desktop/widgets/FileList.h"
#include "desktop/widgets/PressLabel.h"
#include "machine/Machine.h"

namespace quoll {

namespace {

// Triangle over a bar, as on every deck.
QIcon EjectIcon(const QPalette& palette) {
  constexpr int kMostScale = 3;
  QIcon icon;
  for (int scale = 1; scale <= kMostScale; ++scale) {
    QPixmap picture(16 * scale, 16 * scale);
    picture.setDevicePixelRatio(scale);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(palette.buttonText());
    painter.drawPolygon(QPolygonF({{8, 2}, {15, 10}, {1, 10}}));
    painter.drawRect(1, 12, 14, 3);
    painter.end();
    icon.addPixmap(picture);
  }
  return icon;
}

}  // namespace

TapeWindow::TapeWindow(FormKit& kitOfWindow) : FormWindow(kitOfWindow), deck(new DeckPicture) {
  auto* keys = new QHBoxLayout;
  keys->addWidget(kit.IconButton("Command1", Icon(QStyle::SP_MediaSeekBackward)));
  keys->addWidget(kit.IconButton("Command2", Icon(QStyle::SP_MediaPlay)));
  keys->addWidget(kit.IconButton("Command3", Icon(QStyle::SP_MediaSeekForward)));
  keys->addWidget(kit.IconButton("Command9", EjectIcon(palette())));
  keys->addStretch();
  keys->addWidget(Counter("Label1"));
  auto* second = new QHBoxLayout;
  second->addWidget(new QLabel(tr("Second deck")));
  second->addStretch();
  second->addWidget(kit.IconButton("Command8", Icon(QStyle::SP_MediaSeekBackward)));
  second->addWidget(Counter("Label2"));

  auto* column = new QVBoxLayout(this);
  column->addWidget(deck);
  column->addLayout(keys);
  column->addLayout(second);
  column->addWidget(kit.List("File1"));
  column->setSizeConstraint(QLayout::SetFixedSize);
}

QIcon TapeWindow::Icon(int standard) const {
  return style()->standardIcon(static_cast<QStyle::StandardPixmap>(standard));
}

QWidget* TapeWindow::Counter(const char* control) {
  PressLabel* label = kit.Label(control);
  label->setFrameStyle(QFrame::Panel | QFrame::Sunken);
  label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  label->setMinimumWidth(fontMetrics().horizontalAdvance("0000000"));
  return label;
}

void TapeWindow::ShowRecord() { deck->Set(ReelPicture(m.ttape), ToQt(m.ttape.Label3)); }

}  // namespace quoll
