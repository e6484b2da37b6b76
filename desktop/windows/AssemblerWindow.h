// asse: the assembler's window.
#pragma once

#include "desktop/kit/FormWindow.h"

class QAction;
class QMenuBar;
class QPushButton;
class QTabWidget;

namespace quoll {

class AssemblerListing;
class AssemblerPictures;
class AssemblerSource;

class AssemblerWindow : public FormWindow {
  Q_OBJECT

 public:
  explicit AssemblerWindow(FormKit& kitOfWindow);

  QSize sizeHint() const override { return {1080, 700}; }

 protected:
  void ShowRecord() override;
  void Appear() override;
  void keyPressEvent(QKeyEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;

 private:
  QMenuBar* Menus();
  QWidget* Left();
  QWidget* Right();
  QWidget* Converter();
  void PressByKey(QMenu* menu, const char* control, const QKeySequence& keys);

  AssemblerSource* source;
  AssemblerListing* listing;
  AssemblerPictures* pictures;
  QTabWidget* tabs;
  QWidget* picturePane = nullptr;  // the tab with the pictures
  QWidget* files;                  // Frame2
  QPushButton* press = nullptr;    // Command14
  QString filesShown;              // what the file panel is seen for, empty while it is hidden
};

}  // namespace quoll
