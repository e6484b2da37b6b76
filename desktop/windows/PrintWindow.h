// TPrint: the printer's window.
#pragma once

#include "cards/CodePage852.h"
#include "desktop/kit/FormWindow.h"

class QPlainTextEdit;

namespace quoll {

class PrintWindow : public FormWindow {
  Q_OBJECT

 public:
  explicit PrintWindow(FormKit& kitOfWindow);

 protected:
  // Takes over what has been printed, a piece at each pull: the machine must not wait for a long text.
  void ShowRecord() override;

 private:
  void Append(const QString& text);

  QPlainTextEdit* paper;  // Text1
  PrintedFollower follower;
};

}  // namespace quoll
