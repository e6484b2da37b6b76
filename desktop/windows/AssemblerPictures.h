// Pictures in the assembler's window: the one picked, what the machine will show of it, the import.
#pragma once

#include <QWidget>
#include <array>

#include "core/Form.h"

class QComboBox;

namespace quoll {

class FormKit;
class ImageView;

class AssemblerPictures : public QWidget {
  Q_OBJECT

 public:
  explicit AssemblerPictures(FormKit& kitOfWindow, QWidget* parent = nullptr);

  void ShowRecord();

 private:
  QWidget* Buttons();
  void PickFile();

  FormKit& kit;
  QComboBox* mode;
  ImageView* preview;
  std::array<int64_t, 7> shown{};  // what the preview was made from
  uint32_t drawings = 0;
};

}  // namespace quoll
