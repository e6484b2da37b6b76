// TScreen: the main window with its menus, the picture, the panels and the speed display.
#pragma once

#include <QMainWindow>
#include <memory>
#include <vector>

#include "desktop/QtHost.h"

class QAction;
class QLabel;

namespace quoll {

class AboutPanel;
class ErrorSimWindow;
class FilePanelFrame;
class FullScreenWindow;
class PictureBox;
class SpeedBar;
struct MenuItem;

class MainWindow : public QMainWindow, public RecordView {
 public:
  MainWindow(QtHost& hostOfWindow, Machine& machineOfWindow);
  ~MainWindow() override;

  void Pull(Machine& machine) override;

  // Action of the menu entry of that name, nullptr for none.
  QAction* Action(std::string_view name) const;

  PictureBox* Picture() const { return picture; }
  FilePanelFrame* Files() const { return files; }
  AboutPanel* About() const { return about; }

  // The form's size on the screen, its frame and menu included, in device-independent pixels. It is made
  // larger where the machine's window would not find room in it.
  static constexpr QSize kOuterSize{648, 640};

 protected:
  void closeEvent(QCloseEvent* event) override;
  bool eventFilter(QObject* object, QEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;

 private:
  void BuildMenus();
  void BuildStatus();
  void Click(const MenuItem& item);
  void PullMenus();
  void PullWindows();
  void TakeOuterSize();
  void LayOut();

  QtHost& host;
  Machine& m;
  QWidget* inside;  // the window without its menu: the picture, and the panels over it
  PictureBox* picture;
  FilePanelFrame* files;
  AboutPanel* about;
  QLabel* status = nullptr;      // Label1
  QLabel* speedText = nullptr;   // Text1
  SpeedBar* speedBar = nullptr;  // Shape4
  std::unique_ptr<FullScreenWindow> fullScreen;
  std::unique_ptr<ErrorSimWindow> errorSim;

  struct Entry {
    const MenuItem* item;
    QAction* action;
  };
  std::vector<Entry> entries;
  QMargins frame;  // for which the outer size was last taken
  bool maximisedBefore = false;
  QPoint placeBefore;     // on the screen, before full screen
  QSize sizeTaken{0, 0};  // the size it gave; another one is the user's choice
};

}  // namespace quoll
