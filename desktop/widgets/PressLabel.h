// A label that can be pressed like a key, by the mouse or, with the focus, by Space or Enter.
#pragma once

#include <QLabel>

namespace quoll {

class PressLabel : public QLabel {
  Q_OBJECT

 public:
  explicit PressLabel(QWidget* parent = nullptr);

  // Whether it takes presses and the keyboard's focus; a mere text does neither.
  void SetPressable(bool on);
  bool IsDown() const { return down; }

 Q_SIGNALS:
  void Pressed();
  void Released();
  void Clicked();  // after Released, when it happened on the label

 protected:
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void keyReleaseEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void hideEvent(QHideEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  void GoDown();
  void GoUp(bool inside);

  bool pressable = false;
  bool down = false;
};

}  // namespace quoll
