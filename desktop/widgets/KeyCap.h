// A key of a drawn keyboard. It goes down and up like any label that can be pressed; a click of the right
// button, the menu key, or Shift and Space ask for it to be held.
#pragma once

#include <QColor>

#include "desktop/widgets/PressLabel.h"

namespace quoll {

class KeyCap : public PressLabel {
  Q_OBJECT

 public:
  struct Look {
    QString legend;         // what the key gives alone, or its name
    QString shift{};        // with Shift, above the other
    QString alt{};          // with Alt, in a colour of its own
    bool function = false;  // a key that gives no character
  };

  KeyCap(Look lookOfKey, QWidget* parent);

  // Lit while it is held.
  void SetHeld(bool on);
  bool IsHeld() const { return held; }

 Q_SIGNALS:
  void HoldAsked();

 protected:
  void mousePressEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  void DrawLegends(QPainter& painter, const QRectF& top) const;

  Look look;
  bool held = false;
};

}  // namespace quoll
