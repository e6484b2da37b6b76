#include "desktop/widgets/DrawnKeyboard.h"

#include <QKeyEvent>
#include <QPainter>
#include <algorithm>
#include <climits>
#include <cstdlib>

#include "desktop/kit/QtText.h"
#include "desktop/widgets/KeyCap.h"

namespace quoll {

namespace {

constexpr int kMargin = 2;  // of the case round the keys, in quarters of a plain key
constexpr int kWide = kToolKeysWidth + 2 * kMargin, kHigh = kToolKeysHeight + 2 * kMargin;
constexpr int kUnit = 11, kLeastUnit = 6;  // pixels of a quarter
constexpr int kArrowUp = 0x26;             // of a key cross that lies in a dish of its own

constexpr QColor kCase(222, 214, 196);
constexpr QColor kDish(196, 187, 168);

bool GivesNoCharacter(const ToolKey& key) {
  return key.control != "Label1" || key.legend.size() > 3 || key.legend == "ESC" || key.legend == "INS";
}

QString LegendOf(const ToolKey& key) { return key.legend == " " ? QString() : ToQt(key.legend); }

// What those hear who can't see the key.
QString NameOf(const ToolKey& key) {
  return key.legend == " " ? DrawnKeyboard::tr("Space") : ToQt(key.legend);
}

}  // namespace

DrawnKeyboard::DrawnKeyboard(QWidget* parent) : QWidget(parent) {
  NameWidget(this, "keyboard", tr("The machine's keyboard"));
  QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Expanding);
  setSizePolicy(policy);
  for (const ToolKey& key : kToolKeys) {
    auto* cap = new KeyCap({LegendOf(key), ToQt(key.shift), ToQt(key.alt), GivesNoCharacter(key)}, this);
    NameWidget(cap, ToQt(key.control), NameOf(key));
    cap->installEventFilter(this);
    keys.push_back(cap);
  }
}

QSize DrawnKeyboard::sizeHint() const { return {kWide * kUnit, kHigh * kUnit}; }
QSize DrawnKeyboard::minimumSizeHint() const { return {kWide * kLeastUnit, kHigh * kLeastUnit}; }

QRectF DrawnKeyboard::Place() const {
  const QSizeF size = QSizeF(kWide, kHigh).scaled(this->size(), Qt::KeepAspectRatio);
  return {QPointF((width() - size.width()) / 2, (height() - size.height()) / 2), size};
}

void DrawnKeyboard::resizeEvent(QResizeEvent* /*event*/) {
  const QRectF place = Place();
  const qreal unit = place.width() / kWide;
  for (size_t i = 0; i < keys.size(); ++i) {
    const ToolKey& key = kToolKeys[i];
    const QPointF corner = place.topLeft() + QPointF(key.x + kMargin, key.y + kMargin) * unit;
    keys[i]->setGeometry(QRectF(corner, QSizeF(key.width, key.height) * unit).toRect());
  }
}

void DrawnKeyboard::paintEvent(QPaintEvent* /*event*/) {
  const QRectF place = Place();
  const qreal unit = place.width() / kWide;
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(kCase.darker(130), unit / 4));
  painter.setBrush(kCase);
  painter.drawRoundedRect(place.adjusted(1, 1, -1, -1), unit, unit);
  const auto up = std::ranges::find(kToolKeys, kArrowUp, &ToolKey::code);
  if (up == kToolKeys.end()) return;
  painter.setPen(Qt::NoPen);
  painter.setBrush(kDish);
  const QPointF centre(up->x + up->width / 2.0 + kMargin, up->y + up->height + kMargin);
  painter.drawEllipse(place.topLeft() + centre * unit, unit * 7, unit * 6);
}

size_t DrawnKeyboard::Next(size_t from, int key) const {
  const QPoint start = keys[from]->geometry().center();
  size_t nearest = from;
  int least = INT_MAX;
  for (size_t i = 0; i < keys.size(); ++i) {
    const QPoint way = keys[i]->geometry().center() - start;
    int along = 0, aside = 0;
    switch (key) {
      case Qt::Key_Left: along = -way.x(), aside = way.y(); break;
      case Qt::Key_Right: along = way.x(), aside = way.y(); break;
      case Qt::Key_Up: along = -way.y(), aside = way.x(); break;
      default: along = way.y(), aside = way.x(); break;
    }
    if (along <= 0) continue;
    const int cost = along + 3 * std::abs(aside);
    if (cost < least) least = cost, nearest = i;
  }
  return nearest;
}

void DrawnKeyboard::MoveTo(size_t key) {
  keys[current]->setFocusPolicy(Qt::NoFocus);
  current = key;
  keys[current]->setFocusPolicy(Qt::TabFocus);
  keys[current]->setFocus(Qt::OtherFocusReason);
}

bool DrawnKeyboard::eventFilter(QObject* object, QEvent* event) {
  if (event->type() != QEvent::KeyPress) return QWidget::eventFilter(object, event);
  const int key = static_cast<QKeyEvent*>(event)->key();
  const bool arrow = key == Qt::Key_Left || key == Qt::Key_Right || key == Qt::Key_Up || key == Qt::Key_Down;
  const auto from = std::ranges::find(keys, object);
  if (!arrow || from == keys.end()) return QWidget::eventFilter(object, event);
  MoveTo(Next(static_cast<size_t>(from - keys.begin()), key));
  return true;
}

}  // namespace quoll
