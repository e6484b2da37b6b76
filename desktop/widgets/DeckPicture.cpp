#include "desktop/widgets/DeckPicture.h"

#include <QPainter>

#include "forms/TTape.h"

namespace quoll {

namespace {

constexpr QSize kSize(320, 190);
constexpr QRect kShell(10, 10, 300, 170);
constexpr QRect kLabel(30, 24, 260, 30);
constexpr QRect kWindow(70, 74, 180, 56);
constexpr int kHubRadius = 20;
constexpr int kSpokes = 3;  // the reel looks the same after a third of a turn, which its pictures make up

// Wound tape around a hub whose spokes stand at this angle, in degrees.
void DrawReel(QPainter& painter, QPoint centre, int tapeRadius, double angle) {
  painter.save();
  painter.translate(centre);
  painter.setPen(Qt::NoPen);
  painter.setBrush(QColor(70, 45, 30));
  painter.drawEllipse(QPoint(0, 0), tapeRadius, tapeRadius);
  painter.setBrush(QColor(240, 240, 235));
  painter.drawEllipse(QPoint(0, 0), kHubRadius, kHubRadius);
  painter.rotate(angle);
  painter.setBrush(QColor(60, 60, 60));
  for (int spoke = 0; spoke < kSpokes; ++spoke) {
    painter.drawRect(-3, -kHubRadius, 6, 9);
    painter.rotate(360.0 / kSpokes);
  }
  painter.restore();
}

}  // namespace

DeckPicture::DeckPicture() {
  setObjectName("Picture3");
  setAccessibleName(tr("Cassette"));
  setFixedSize(kSize);
}

void DeckPicture::Set(int reel, const QString& label) {
  if (reel == reelShown && label == labelShown) return;
  reelShown = reel;
  labelShown = label;
  update();
}

void DeckPicture::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.fillRect(rect(), QColor(40, 42, 46));
  painter.setPen(Qt::NoPen);
  painter.setBrush(QColor(175, 178, 182));
  painter.drawRoundedRect(kShell, 10, 10);
  painter.setBrush(QColor(250, 246, 230));
  painter.drawRoundedRect(kLabel, 4, 4);
  painter.setPen(Qt::black);
  const QString text = fontMetrics().elidedText(labelShown, Qt::ElideMiddle, kLabel.width() - 12);
  painter.drawText(kLabel.adjusted(6, 0, -6, 0), Qt::AlignVCenter | Qt::AlignLeft, text);

  painter.setPen(Qt::NoPen);
  painter.setBrush(QColor(25, 25, 28));
  painter.drawRoundedRect(kWindow, 6, 6);
  painter.setClipRect(kWindow);
  const double angle = reelShown * 360.0 / kSpokes / TTape::kPictures;
  const QPoint half(kWindow.width() / 4, 0);
  DrawReel(painter, kWindow.center() - half, 46, angle);
  DrawReel(painter, kWindow.center() + half, 34, angle);
  painter.setClipping(false);

  painter.setBrush(QColor(140, 143, 148));
  painter.drawRect(kShell.left() + 60, kShell.bottom() - 26, kShell.width() - 120, 26);
}

}  // namespace quoll
