#include "desktop/widgets/KeyCap.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <algorithm>
#include <utility>

namespace quoll {

namespace {

constexpr QColor kCharacterKey(58, 56, 54);
constexpr QColor kFunctionKey(128, 70, 54);
constexpr QColor kLitKey(60, 130, 70);
constexpr QColor kLegend(245, 242, 232);
constexpr QColor kAltLegend(255, 196, 90);

QFont Sized(QFont font, qreal pixels) {
  font.setPixelSize(std::max(4, qRound(pixels)));
  return font;
}

}  // namespace

KeyCap::KeyCap(Look lookOfKey, QWidget* parent) : PressLabel(parent), look(std::move(lookOfKey)) {
  connect(this, &PressLabel::Pressed, this, qOverload<>(&QWidget::update));
  connect(this, &PressLabel::Released, this, qOverload<>(&QWidget::update));
}

void KeyCap::SetHeld(bool on) {
  if (held == on) return;
  held = on;
  update();
}

void KeyCap::mousePressEvent(QMouseEvent* event) {
  if (event->button() == Qt::RightButton) return Q_EMIT HoldAsked();
  PressLabel::mousePressEvent(event);
}

void KeyCap::keyPressEvent(QKeyEvent* event) {
  const bool asks = event->key() == Qt::Key_Menu ||
                    (event->key() == Qt::Key_Space && event->modifiers() == Qt::ShiftModifier);
  if (!asks) return PressLabel::keyPressEvent(event);
  if (!event->isAutoRepeat()) Q_EMIT HoldAsked();
}

// A cap with a smaller face on it, which moves down with the key.
void KeyCap::paintEvent(QPaintEvent* /*event*/) {
  const qreal unit = height() / 12.0;
  const QRectF cap = QRectF(rect()).adjusted(unit / 2, unit / 2, -unit / 2, -unit / 2);
  QColor colour = look.function ? kFunctionKey : kCharacterKey;
  if (held) colour = kLitKey;
  if (IsDown()) colour = colour.lighter(150);
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(colour.darker(160));
  painter.drawRoundedRect(cap, unit, unit);
  const QRectF face = cap.adjusted(unit, unit / 2, -unit, IsDown() ? -unit / 2 : -unit * 3 / 2);
  painter.setBrush(colour);
  painter.drawRoundedRect(face, unit, unit);
  DrawLegends(painter, face.adjusted(unit / 2, 0, -unit / 2, 0));
  if (!hasFocus()) return;
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(kAltLegend, unit / 2, Qt::DotLine));
  painter.drawRoundedRect(face, unit, unit);
}

void KeyCap::DrawLegends(QPainter& painter, const QRectF& face) const {
  const bool name = look.legend.size() > 1;
  const bool two = !look.shift.isEmpty();
  const QRectF upper(face.topLeft(), QSizeF(face.width(), face.height() / 2));
  const QRectF lower(upper.bottomLeft(), upper.size());
  const qreal high = height() > width() ? face.height() / 2 : face.height();  // of a key in one row
  painter.setPen(kLegend);
  painter.setFont(Sized(font(), high * (name ? 0.32 : two ? 0.42 : 0.55)));
  const bool left = !look.alt.isEmpty();
  const auto across = left && !name ? Qt::AlignLeft : Qt::AlignHCenter;
  if (two) painter.drawText(upper, across | Qt::AlignVCenter, look.shift);
  painter.drawText(two ? lower : face, across | Qt::AlignVCenter, look.legend);
  if (!left) return;
  painter.setPen(kAltLegend);
  painter.setFont(Sized(font(), high * 0.38));
  painter.drawText(lower, Qt::AlignRight | Qt::AlignVCenter, look.alt);
}

}  // namespace quoll
