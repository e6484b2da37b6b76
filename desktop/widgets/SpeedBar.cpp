#include "desktop/widgets/SpeedBar.h"

namespace quoll {

SpeedBar::SpeedBar(QWidget* parent) : ValueBar(parent) {
  setObjectName("Shape4");
  setAccessibleName(tr("Speed bar"));
  setFixedSize(40, sizeHint().height());  // the menus beside it need the room
}

void SpeedBar::SetValue(float value) {
  constexpr float kLongest = 4000;
  SetShare(value / kLongest);
}

}  // namespace quoll
