// TTools: the machine's keyboard to press by mouse, the code of the last key, and the rows of a paging value.
#pragma once

#include "desktop/kit/FormWindow.h"

class QGridLayout;

namespace quoll {

class DrawnKeyboard;

class ToolsWindow : public FormWindow {
  Q_OBJECT

 public:
  explicit ToolsWindow(FormKit& kitOfWindow);

 protected:
  void ShowRecord() override;

 private:
  void BindKeys();
  QWidget* PagingBox();
  void AddRow(QGridLayout* grid, int row, const char* name);

  DrawnKeyboard* keyboard;
};

}  // namespace quoll
