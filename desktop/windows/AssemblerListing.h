// The listing of the assembler's window, in its colours.
#pragma once

#include <QWidget>
#include <vector>

namespace quoll {

class CodeEditor;
class FormKit;

class AssemblerListing : public QWidget {
  Q_OBJECT

 public:
  explicit AssemblerListing(FormKit& kitOfWindow, QWidget* parent = nullptr);

  void ShowRecord();

 private:
  void ShowListing();
  void ShowSelection();

  FormKit& kit;
  std::vector<uint32_t> colours;  // that each line begins with
  CodeEditor* text;               // RText2
  uint32_t listings = 0, selections = 0;
};

}  // namespace quoll
