// Shape4: a bar as long as the last frame took.
#pragma once

#include "desktop/widgets/ValueBar.h"

namespace quoll {

class SpeedBar : public ValueBar {
  Q_OBJECT

 public:
  explicit SpeedBar(QWidget* parent);

  // Hundred-thousandths of a second; 2000 is full speed and fills half of the bar.
  void SetValue(float value);
};

}  // namespace quoll
