#include "desktop/widgets/Lamp.h"

namespace quoll {

Lamp::Lamp(const QString& name, QWidget* parent) : QLabel(name, parent) {
  setTextFormat(Qt::PlainText);
  setAlignment(Qt::AlignCenter);
  setMargin(2);
  setAutoFillBackground(true);
  Colour();
}

void Lamp::Set(bool lit) {
  if (lit == on) return;
  on = lit;
  Colour();
}

void Lamp::Colour() {
  QPalette colours;
  colours.setColor(QPalette::Window, on ? QColor(0x30, 0xC0, 0x30) : QColor(0x40, 0x40, 0x40));
  colours.setColor(QPalette::WindowText, on ? QColor(Qt::black) : QColor(0xC0, 0xC0, 0xC0));
  setPalette(colours);
  setAccessibleDescription(on ? tr("on") : tr("off"));
}

}  // namespace quoll
