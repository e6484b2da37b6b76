// A list of names of which one is chosen: by a click, or by the keys that move within the list. Coming to it
// with Tab chooses nothing.
#pragma once

#include <QElapsedTimer>
#include <QIcon>
#include <QListWidget>
#include <string>
#include <vector>

#include "core/Form.h"

namespace quoll {

class FileList : public QListWidget {
  Q_OBJECT

 public:
  explicit FileList(QWidget* parent = nullptr);

  // Lists these entries and shows which of them is selected. What is the same stays as it is.
  void Show(const ListRef& entries);

  // For each entry.
  void SetIcons(QIcon (*iconOf)(const QString& entry));
  // An entry is opened by one click where the desktop's style wants that, as folders are.
  void SetOneClickOpens() { oneClickOpens = true; }

 Q_SIGNALS:
  void Chosen(int entry);
  // By a double click or the Enter key, from the event loop: the list may be filled anew then.
  void Opened(int entry);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;

 private:
  void Open(int entry);
  void Clicked(int entry);

  std::vector<std::string> shown;
  QIcon (*icon)(const QString&) = nullptr;
  bool oneClickOpens = false;
  QElapsedTimer sinceOpened;
};

}  // namespace quoll
