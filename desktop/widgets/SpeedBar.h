// Shape4: a bar as long as the last frame took.
#pragma once

#include <QWidget>

namespace quoll {

class SpeedBar : public QWidget {
  Q_OBJECT

 public:
  explicit SpeedBar(QWidget* parent);

  // Hundred-thousandths of a second; 2000 is full speed and fills half of the bar.
  void SetValue(float value);

  QSize sizeHint() const override { return {60, 10}; }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  int length = 0;  // pixels
};

}  // namespace quoll
