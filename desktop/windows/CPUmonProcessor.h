// The left part of the Z80 monitor: registers and flags, which are typed into, and what has changed of them.
#pragma once

#include <QWidget>
#include <array>

class QGroupBox;
class QLabel;
class QLineEdit;

namespace quoll {

class FormKit;
struct CPUmonShown;

class CPUmonProcessor : public QWidget {
  Q_OBJECT

 public:
  explicit CPUmonProcessor(FormKit& kitOfWindow);

  // What differs from before has a coloured ground; nothing does without it.
  void MarkChanges(const CPUmonShown* before, const CPUmonShown& now);

 private:
  QGroupBox* RegisterFrame();
  QGroupBox* FlagFrame();
  QGroupBox* WideFrame();
  QGroupBox* SpecialFrame();

  FormKit& kit;
  std::array<QLabel*, 8> bits{};
  std::array<QLineEdit*, 14> registers{};
  std::array<QLineEdit*, 16> flags{};
  std::array<QLineEdit*, 6> words{};
  std::array<QLineEdit*, 3> modes{};
};

// A box of the monitor, with room for so many characters. Enter takes its text, and the next one can be typed
// at once.
QLineEdit* MonitorBox(FormKit& kit, const char* control, int index, int characters);

}  // namespace quoll
