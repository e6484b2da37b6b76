// FDXF: the window of the sound output.
#pragma once

#include "desktop/kit/FormWindow.h"

namespace quoll {

class SoundWindow : public FormWindow {
  Q_OBJECT

 public:
  explicit SoundWindow(FormKit& kitOfWindow);

 protected:
  // The sound output is what drives the machine: without its window the program ends.
  void closeEvent(QCloseEvent* event) override;
};

}  // namespace quoll
