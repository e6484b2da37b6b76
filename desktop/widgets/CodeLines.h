// Lines of a disassembly. One of them is marked as the next to be run, and those at an address as a
// breakpoint. A line is opened by a double click or by Enter.
#pragma once

#include <QListWidget>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace quoll {

class CodeLines : public QListWidget {
  Q_OBJECT

 public:
  // rows: how many there are and are seen. columns: for how many characters each has room at least.
  CodeLines(int rows, int columns, QWidget* parent = nullptr);

  // A line break, of any kind, stands between the lines; each begins with its address.
  void Show(std::string_view lines);
  // Counted from 0; -1 for none.
  void MarkNext(int row);
  int Next() const { return next; }
  void MarkBreakpoint(std::optional<int32_t> address);
  bool IsBreakpoint(int row) const;

  // Of the line; nothing where it has none.
  std::optional<int32_t> Address(int row) const;

 Q_SIGNALS:
  void Opened(int row);

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void Describe();

  std::string shown;
  int next = -1;
  std::optional<int32_t> breakpoint;
};

}  // namespace quoll
