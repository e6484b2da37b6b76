// A panel that lies over the picture in the main window. Keys and clicks in it are not the machine's.
#pragma once

#include <QFrame>

namespace quoll {

class Panel : public QFrame {
 public:
  explicit Panel(QWidget* parent);

  // Escape.
  virtual void Cancel() = 0;

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  bool focusNextPrevChild(bool next) override;  // Tab stays inside
};

}  // namespace quoll
