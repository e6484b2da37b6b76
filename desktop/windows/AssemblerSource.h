// The source editor of the assembler's window, with what belongs to it: find and replace, status, place.
#pragma once

#include <QWidget>

class QLabel;

namespace quoll {

class CodeEditor;
class FindBar;
class FormKit;

class AssemblerSource : public QWidget {
  Q_OBJECT

 public:
  explicit AssemblerSource(FormKit& kitOfWindow, QWidget* parent = nullptr);

  CodeEditor* Editor() const { return editor; }
  FindBar* Finder() const { return finder; }

  // Follows the record.
  void ShowRecord();
  // To the line that failed in the last compilation.
  void GoToError();

 private:
  QWidget* Status();
  void TakeEdit(int first, int count, int with);
  void TakeSelection();
  void ShowSelection();
  void ShowStatus();

  FormKit& kit;
  CodeEditor* editor;  // RText1
  FindBar* finder;
  QLabel* place;                       // line and column of the caret
  QLabel* file;                        // name, code and whether the text has been saved
  uint32_t texts = 0, selections = 0;  // of the record, that the editor shows
  bool following = false;              // the record, so that nothing goes back there
};

}  // namespace quoll
