// TScreen: the main window with its menus, the picture, the panels and the speed display.
#pragma once

#include <string_view>

#include "desktop/kit/FormWindow.h"

class QAction;
class QMenuBar;

namespace quoll {

class AboutPanel;
class FilePanelFrame;
class PictureBox;
class SpeedBar;

class MainWindow : public FormWindow {
  Q_OBJECT

 public:
  explicit MainWindow(FormKit& kitOfWindow);
  ~MainWindow() override;

  // Action of the menu entry of that name, nullptr for none.
  QAction* Action(std::string_view name) const;

  QMenuBar* Menus() const { return menus; }
  PictureBox* Picture() const { return picture; }
  FilePanelFrame* Files() const { return files; }
  AboutPanel* About() const { return about; }

  // The form's size on the screen, its frame and menu included, in device-independent pixels. It is made
  // larger where the machine's window would not find room in it.
  static constexpr QSize kOuterSize{648, 640};

 protected:
  void ShowRecord() override;
  void Appear() override;
  void closeEvent(QCloseEvent* event) override;
  bool eventFilter(QObject* object, QEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;

 private:
  QWidget* TopLine();
  void TakeOuterSize();
  void LayOut();

  QMenuBar* menus;
  QWidget* inside;  // the window without its menu: the picture, and the panels over it
  PictureBox* picture;
  FilePanelFrame* files;
  AboutPanel* about;
  SpeedBar* speedBar = nullptr;  // Shape4
  OuterSize outerSize;
};

}  // namespace quoll
