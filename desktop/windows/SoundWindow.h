// FDXF: the window of the sound output.
#pragma once

#include "desktop/kit/FormWindow.h"

namespace quoll {

class ScopeBox;

class SoundWindow : public FormWindow {
 public:
  SoundWindow(QtHost& hostOfWindow, Machine& machineOfWindow);

 protected:
  void ShowRecord() override;
  // The sound output is what drives the machine: without its window the program ends.
  void closeEvent(QCloseEvent* event) override;

 private:
  ScopeBox* left;
  ScopeBox* right;
  uint32_t drawings = 0;  // of the record, as last shown
};

}  // namespace quoll
