// Frame2: what the program is, its port table, and the log of accesses to ports without a function.
#pragma once

#include "desktop/kit/FormKit.h"
#include "desktop/widgets/Panel.h"

class QBoxLayout;
class QPushButton;

namespace quoll {

class AboutPanel : public Panel {
  Q_OBJECT

 public:
  AboutPanel(QtHost& host, Machine& machineOfWindow, QWidget* parent);

  void Cancel() override;

  QSize sizeHint() const override { return {520, 430}; }

 protected:
  void ShowRecord() override { kit.binder.Pull(); }
  QWidget* FirstFocus() const override;

 private:
  void AddTitles(QBoxLayout* column);
  QWidget* PortTable();

  FormKit kit;  // the log is a control of the main window
  QPushButton* close;
};

}  // namespace quoll
