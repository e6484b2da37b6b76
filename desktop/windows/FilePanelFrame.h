// Frame1: the file panel of the main window.
#pragma once

#include "desktop/kit/FormKit.h"
#include "desktop/widgets/Panel.h"

class QHBoxLayout;
class QLabel;
class QLineEdit;
class QPushButton;

namespace quoll {

class FilePanelFrame : public Panel {
  Q_OBJECT

 public:
  FilePanelFrame(QtHost& host, Machine& machineOfWindow, QWidget* parent);

  void Cancel() override;

  QSize sizeHint() const override { return {440, 430}; }

 protected:
  void ShowRecord() override;
  QWidget* FirstFocus() const override;

 private:
  QWidget* Location();
  FileList* Folders();
  QLineEdit* PatternBox();
  QWidget* CasRow();
  QLabel* Error();

  FormKit kit;         // its controls are the main window's
  QLabel* title;       // the frame's caption
  PressLabel* path;    // Frame4 "location"
  QLineEdit* name;     // Text3
  QLabel* error;       // Frame1Error
  QPushButton* press;  // Command2
};

}  // namespace quoll
