// TVCmon: the window of the hardware monitor.
#pragma once

#include <functional>
#include <vector>

#include "desktop/kit/FormWindow.h"

class QGroupBox;
class QLabel;

namespace quoll {

struct SoundFields;

class TVCmonWindow : public FormWindow {
 public:
  TVCmonWindow(QtHost& hostOfWindow, Machine& machineOfWindow);

 protected:
  void ShowRecord() override;

 private:
  QGroupBox* SoundFrameBox();

  // The fields of the frames, each with what fills it.
  std::vector<std::function<void(const SoundFields&)>> fields;
};

}  // namespace quoll
