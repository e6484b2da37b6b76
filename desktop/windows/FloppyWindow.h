// TFloppy: the window of the disk drive.
#pragma once

#include "desktop/kit/FormWindow.h"

class QLabel;

namespace quoll {

class FloppyWindow : public FormWindow {
  Q_OBJECT

 public:
  explicit FloppyWindow(FormKit& kitOfWindow);

 protected:
  void ShowRecord() override;

 private:
  QLabel* folder;  // that is listed
};

}  // namespace quoll
