// TVCmon: the window of the hardware monitor.
#pragma once

#include <optional>

#include "desktop/windows/ScrolledWindow.h"
#include "forms/TVCmon.h"

class QBoxLayout;
class QGroupBox;

namespace quoll {

class FileList;

class TVCmonWindow : public ScrolledWindow {
  Q_OBJECT

 public:
  explicit TVCmonWindow(FormKit& kitOfWindow);

 protected:
  bool RecordChanged() override;
  void ShowRecord() override;

 private:
  QGroupBox* MemoryFrame();
  QGroupBox* InterruptFrame();
  QGroupBox* SoundFrameBox();
  QGroupBox* CrtcFrame();
  QGroupBox* PaletteFrame();
  QGroupBox* TapeFrame();
  QGroupBox* SlotFrame();
  QGroupBox* SerialFrame();
  QGroupBox* FloppyFrame();
  QGroupBox* DiskFrame();
  // A control with its name, in a place that keeps its width.
  QWidget* Value(const char* control, int index, int letters, const char* note = "");
  QBoxLayout* Lamps(const char* control);
  void AddValues(QBoxLayout* column, const char* control, int letters);

  FileList* accesses = nullptr;
  QString lastAccess;
  std::optional<TVCmon> recordShown;
};

}  // namespace quoll
