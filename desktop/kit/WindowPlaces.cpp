#include "desktop/kit/WindowPlaces.h"

#include <QGuiApplication>
#include <QLayout>
#include <QScreen>
#include <QTimer>
#include <QWidget>
#include <QWindow>
#include <chrono>

namespace quoll {

namespace {

constexpr std::chrono::milliseconds kPlacingTime{100};

bool HasFixedSize(const QWidget& window) {
  return window.layout() != nullptr && window.layout()->sizeConstraint() == QLayout::SetFixedSize;
}

}  // namespace

WindowPlace PlaceOf(const QWidget& window) { return {window.pos(), window.size(), window.isMaximized()}; }

void ShowAt(QWidget& window, const std::optional<WindowPlace>& place) {
  if (!place || QGuiApplication::screenAt(place->corner + QPoint(place->size.width() / 2, 0)) == nullptr)
    return window.show();
  if (place->maximised) return window.showMaximized();
  if (!HasFixedSize(window)) window.resize(place->size);
  window.move(place->corner);
  window.show();
  // A window manager may have looked for a new place, and tells of it only later.
  QTimer::singleShot(kPlacingTime, &window, [&window, corner = place->corner] {
    if (window.isVisible()) window.move(corner);
  });
}

void OuterSize::Take(QWidget& window, QSize wanted, QSize atLeast) {
  const QMargins now = window.windowHandle() != nullptr ? window.windowHandle()->frameMargins() : QMargins();
  if (!taken.isEmpty() && (now == frame || window.size() != taken)) return;
  frame = now;
  // Larger than the screen, its lower end could not be reached.
  taken =
      wanted.shrunkBy(frame).expandedTo(atLeast).boundedTo(window.screen()->availableSize().shrunkBy(frame));
  window.resize(taken);
}

}  // namespace quoll
