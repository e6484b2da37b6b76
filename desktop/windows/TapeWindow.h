// TTape: the window of the tape deck.
#pragma once

#include <QIcon>
#include <QTimer>

#include "desktop/kit/FormWindow.h"

class QListWidget;
class QPushButton;

namespace quoll {

class DeckPicture;

class TapeWindow : public FormWindow {
 public:
  TapeWindow(QtHost& hostOfWindow, Machine& machineOfWindow);

 protected:
  void ShowRecord() override;
  void showEvent(QShowEvent* event) override;
  void hideEvent(QHideEvent* event) override;

 private:
  QIcon Icon(int standard) const;
  QPushButton* AddKey(const char* control, const QIcon& icon, const QString& accessibleName);
  QWidget* Counter(const char* control, const QString& accessibleName);
  void BuildList();
  void FillList();
  void Choose(const QString& file);

  DeckPicture* deck;
  QListWidget* files;
  QTimer timer1;
  uint32_t refreshes = 0;  // of the list, as last shown
};

}  // namespace quoll
