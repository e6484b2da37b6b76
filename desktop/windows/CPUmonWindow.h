// CPUmon: the window of the Z80 monitor.
#pragma once

#include <optional>

#include "desktop/windows/CPUmonChanges.h"
#include "desktop/windows/ScrolledWindow.h"

class QGroupBox;
class QKeySequence;
class QLabel;
class QLayout;

namespace quoll {

class CPUmonProcessor;
class CodeLines;
class HexView;

class CPUmonWindow : public ScrolledWindow {
  Q_OBJECT

 public:
  explicit CPUmonWindow(FormKit& kitOfWindow);

 protected:
  bool RecordChanged() override;
  void ShowRecord() override;
  void Appear() override;
  void keyPressEvent(QKeyEvent* event) override;
  bool eventFilter(QObject* object, QEvent* event) override;

 private:
  QLayout* RunRow();
  QLayout* CodeRow();
  QLayout* BreakRow();
  QLayout* ViewRow();
  QGroupBox* PokeFrame();
  QGroupBox* LoadFrame();
  QGroupBox* SpeedFrame();
  void PressByKey(const char* control, const QKeySequence& keys, bool repeats);
  void BreakAt(const CodeLines* lines, int row);
  void ShowStatus();
  void ShowChanges();

  CPUmonProcessor* processor = nullptr;
  CodeLines *code = nullptr, *history = nullptr;
  HexView *memory = nullptr, *ports = nullptr;
  QLabel* status = nullptr;
  CPUmonChanges changes;
  std::optional<uint32_t> redrawsShown;
  CPUmon recordShown;
  uint8_t runningShown = 0, armedShown = 0;
};

}  // namespace quoll
