// TSerial: the serial card's window: what its queues hold, the companion's line, and a camera's keys.
#pragma once

#include "desktop/kit/FormWindow.h"

class QLayout;

namespace quoll {

class SerialWindow : public FormWindow {
  Q_OBJECT

 public:
  explicit SerialWindow(FormKit& kitOfWindow);

 private:
  QLayout* LineRow();
  QWidget* ReceivedBox();
  QWidget* SendBox();
  QWidget* CameraBox();
  QLayout* Count(const char* name, const char* count);
};

}  // namespace quoll
