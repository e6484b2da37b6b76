// Frame1: the file panel of the main window. Shows the record FilePanel and the files there are.
#pragma once

#include <QElapsedTimer>
#include <string>

#include "desktop/widgets/Panel.h"

class QGroupBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QListWidgetItem;
class QPushButton;

namespace quoll {

class QtHost;
struct Machine;

class FilePanelFrame : public Panel {
 public:
  FilePanelFrame(QtHost& hostOfWindow, Machine& machineOfWindow, QWidget* parent);

  void Pull();
  void Cancel() override;

  QSize sizeHint() const override { return {440, 430}; }

 private:
  QLineEdit* AddBox(const char* objectName, const QString& name, std::string* field);
  void BuildLists();
  void BuildBoxes();
  void Fill();
  void ShowBoxes();
  void Press();
  void TakePattern();
  void FolderActivated(QListWidgetItem* item);
  void OpenFolder(const QString& name);

  QtHost& host;
  Machine& m;
  QLabel* title;         // the frame's caption
  QLabel* path;          // Frame4 "location"
  QListWidget* folders;  // a row above the files
  QListWidget* files;    // File1
  QLineEdit* pattern;    // Text5: which files are listed
  QLineEdit* name;       // Text3
  QWidget* casRow;
  QLineEdit *start, *end, *word;  // Text6 to Text8
  QLabel* error;
  QPushButton* press;  // Command2
  QPushButton* cancel;
  QElapsedTimer sinceWalk;
  std::string filled;  // caption, pattern and folder that the lists were filled for
};

}  // namespace quoll
