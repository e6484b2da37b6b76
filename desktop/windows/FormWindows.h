// The windows of the forms: one list that has each of them by its form. A window is made when its form's
// record asks for it for the first time.
#pragma once

#include <memory>
#include <string_view>
#include <vector>

#include "desktop/QtHost.h"
#include "desktop/kit/FormKit.h"

namespace quoll {

class FormWindow;

class FormWindows : public RecordView {
 public:
  FormWindows(QtHost& hostOfWindows, Machine& machineOfWindows);
  ~FormWindows() override;

  // Makes the windows that are wanted for the first time.
  void Pull(Machine& machine) override;

  // nullptr while it has not been wanted, or for a form that has no window.
  FormWindow* Find(std::string_view form) const;

 private:
  struct Made {
    std::unique_ptr<FormKit> kit;
    std::unique_ptr<FormWindow> window;
  };

  Machine& m;
  std::vector<Made> made;  // in the list's order, empty for those that were not wanted yet
};

}  // namespace quoll
