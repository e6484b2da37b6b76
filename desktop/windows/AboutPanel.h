// Frame2: what the program is, its port table, and the log of accesses to ports without a function.
#pragma once

#include "forms/TScreen.h"
#include "desktop/widgets/Panel.h"

class QListWidget;

namespace quoll {

struct Machine;

class AboutPanel : public Panel {
 public:
  AboutPanel(Machine& machineOfWindow, QWidget* parent);

  void Pull();
  void Cancel() override;

  QSize sizeHint() const override { return {520, 430}; }

 private:
  void PullLog();

  Machine& m;
  QListWidget* log;  // List1
  PortLog shown;     // what it lists
};

}  // namespace quoll
