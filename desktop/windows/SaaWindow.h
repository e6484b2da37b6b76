// Fsaa: the window of the SAA1099.
#pragma once

#include "desktop/kit/FormWindow.h"

namespace quoll {

class SaaWindow : public FormWindow {
  Q_OBJECT

 public:
  explicit SaaWindow(FormKit& kitOfWindow);

 private:
  QWidget* Settings();
  QWidget* Channels();
  QWidget* Envelopes();
};

}  // namespace quoll
