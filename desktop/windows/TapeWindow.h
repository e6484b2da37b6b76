// TTape: the window of the tape deck.
#pragma once

#include "desktop/kit/FormWindow.h"

namespace quoll {

class DeckPicture;

class TapeWindow : public FormWindow {
  Q_OBJECT

 public:
  explicit TapeWindow(FormKit& kitOfWindow);

 protected:
  void ShowRecord() override;

 private:
  QIcon Icon(int standard) const;
  QWidget* Counter(const char* control);

  DeckPicture* deck;
};

}  // namespace quoll
