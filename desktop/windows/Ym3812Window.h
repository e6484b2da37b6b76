// FYM3812: the window of the YM3812.
#pragma once

#include "desktop/kit/FormWindow.h"

class QLabel;

namespace quoll {

class Ym3812Window : public FormWindow {
  Q_OBJECT

 public:
  explicit Ym3812Window(FormKit& kitOfWindow);

 protected:
  void ShowRecord() override;

 private:
  QWidget* Operator();
  QWidget* Registers();

  QLabel* channel = nullptr;  // number of the one that is edited
};

}  // namespace quoll
