#include "desktop/widgets/CircuitPicture.h"

#include <QPainter>
#include <QPainterPath>
#include <QPolygon>
#include <algorithm>
#include <utility>

#include "desktop/kit/QtText.h"

namespace quoll {

namespace {

constexpr int kTextHeight = 11, kNumberHeight = 9;
constexpr int kPinLetters = 60;  // units from the edge that a pin's name may take

struct Ink {
  QColor line, body, block, text;
};

Ink InkOf(const QPalette& palette) {
  const QColor ground = palette.color(QPalette::Window), text = palette.color(QPalette::WindowText);
  const auto mixed = [&](int percent) {
    const auto mix = [percent](int of, int with) { return (of * (100 - percent) + with * percent) / 100; };
    return QColor(mix(ground.red(), text.red()), mix(ground.green(), text.green()),
                  mix(ground.blue(), text.blue()));
  };
  return {mixed(75), mixed(10), mixed(22), text};
}

void SetTextHeight(QPainter& painter, int height, bool bold = false) {
  QFont font = painter.font();
  font.setPixelSize(height);
  font.setBold(bold);
  painter.setFont(font);
}

void DrawBlock(QPainter& painter, const Ink& ink, const CircuitPlan::Block& block) {
  constexpr int kCorner = 4, kMargin = 6;
  painter.setPen(QPen(ink.line, block.chip ? 2.0 : 1.0));
  painter.setBrush(block.chip ? ink.body : ink.block);
  painter.drawRoundedRect(block.place, kCorner, kCorner);
  painter.setPen(ink.text);
  SetTextHeight(painter, block.chip ? kTextHeight + 2 : kTextHeight, block.chip);
  painter.drawText(block.place.adjusted(0, block.chip ? kMargin : 0, 0, 0),
                   Qt::AlignHCenter | (block.chip ? Qt::AlignTop : Qt::AlignVCenter), block.text);
}

void DrawPin(QPainter& painter, const Ink& ink, const CircuitPlan::Pin& pin) {
  constexpr int kGap = 5, kAbove = 3;
  painter.setPen(QPen(ink.line, 1.5));
  painter.drawLine(pin.at, pin.end);
  const bool leftSide = pin.end.x() < pin.at.x();
  const bool low = pin.name.startsWith('/');
  const QString name = low ? pin.name.mid(1) : pin.name;
  QRect room(pin.at.x() + kGap, pin.at.y() - kTextHeight, kPinLetters, 2 * kTextHeight);
  if (!leftSide) room.moveRight(pin.at.x() - kGap);
  const Qt::Alignment side = leftSide ? Qt::AlignLeft : Qt::AlignRight;
  painter.setPen(ink.text);
  SetTextHeight(painter, kTextHeight);
  QRect taken;
  painter.drawText(room, static_cast<int>(side | Qt::AlignVCenter), name, &taken);
  if (low) painter.drawLine(taken.topLeft(), taken.topRight());
  SetTextHeight(painter, kNumberHeight);
  const QPoint middle = (pin.at + pin.end) / 2;
  painter.drawText(QRect(middle.x() - kPinLetters / 2, middle.y() - kAbove - 2 * kNumberHeight, kPinLetters,
                         2 * kNumberHeight),
                   Qt::AlignHCenter | Qt::AlignBottom, pin.number);
}

void DrawWire(QPainter& painter, const Ink& ink, const CircuitPlan::Wire& wire) {
  constexpr double kBus = 4.0, kPlain = 1.5;
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(ink.line, wire.bus ? kBus : kPlain, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin));
  painter.drawPolyline(wire.points.data(), static_cast<int>(wire.points.size()));
  if (!wire.arrow || wire.points.size() < 2) return;
  constexpr int kLength = 7, kHalf = 4;
  const QPoint tip = wire.points.back(), before = wire.points[wire.points.size() - 2];
  const QPoint step(tip.x() > before.x()   ? 1
                    : tip.x() < before.x() ? -1
                                           : 0,
                    tip.y() > before.y()   ? 1
                    : tip.y() < before.y() ? -1
                                           : 0);
  const QPoint across(step.y(), step.x());
  painter.setPen(Qt::NoPen);
  painter.setBrush(ink.line);
  painter.drawPolygon(
      QPolygon({tip, tip - step * kLength + across * kHalf, tip - step * kLength - across * kHalf}));
}

void DrawGround(QPainter& painter, const Ink& ink, QPoint at) {
  painter.setPen(QPen(ink.line, 1.5));
  for (int bar = 0; bar < 3; ++bar) {
    const int half = 9 - 3 * bar, y = at.y() + 4 * bar;
    painter.drawLine(at.x() - half, y, at.x() + half, y);
  }
}

void DrawSpeaker(QPainter& painter, const Ink& ink, QPoint at) {
  painter.setPen(QPen(ink.line, 1.5));
  painter.setBrush(ink.block);
  painter.drawRect(at.x(), at.y() - 6, 8, 12);
  painter.drawPolygon(
      QPolygon({at + QPoint(8, -6), at + QPoint(18, -14), at + QPoint(18, 14), at + QPoint(8, 6)}));
}

}  // namespace

CircuitPicture::CircuitPicture(CircuitPlan planOfCircuit, const QString& name, QWidget* parent)
    : QWidget(parent), plan(std::move(planOfCircuit)) {
  NameWidget(this, "Circuit", name);
  setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Preferred);
  setAutoFillBackground(true);
}

void CircuitPicture::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const Ink ink = InkOf(palette());
  const double scale = std::min(static_cast<double>(width()) / plan.units.width(),
                                static_cast<double>(height()) / plan.units.height());
  const QSizeF drawn = QSizeF(plan.units) * scale;
  painter.translate((width() - drawn.width()) / 2, (height() - drawn.height()) / 2);
  painter.scale(scale, scale);

  const auto drawBlocks = [&](bool chips) {
    for (const CircuitPlan::Block& block : plan.blocks)
      if (block.chip == chips) DrawBlock(painter, ink, block);
  };
  drawBlocks(true);
  for (const CircuitPlan::Wire& wire : plan.wires) DrawWire(painter, ink, wire);
  drawBlocks(false);
  for (const CircuitPlan::Pin& pin : plan.pins) DrawPin(painter, ink, pin);
  for (const QPoint ground : plan.grounds) DrawGround(painter, ink, ground);
  for (const QPoint speaker : plan.speakers) DrawSpeaker(painter, ink, speaker);
  painter.setPen(ink.text);
  SetTextHeight(painter, kTextHeight);
  for (const CircuitPlan::Note& note : plan.notes)
    painter.drawText(note.place, Qt::AlignLeft | Qt::AlignVCenter, note.text);
}

}  // namespace quoll
