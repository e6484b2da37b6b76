// A panel that lies over the picture in the main window. It comes and goes as its record says. Keys and
// clicks in it are not the machine's.
#pragma once

#include <QFrame>

#include "core/Form.h"

namespace quoll {

class Panel : public QFrame {
  Q_OBJECT

 public:
  void Pull();

  // Escape.
  virtual void Cancel() = 0;

 protected:
  // stateOfPanel: of its record.
  Panel(FormState& stateOfPanel, QWidget* parent);

  // Shows the record; only called while the panel is visible, or about to be.
  virtual void ShowRecord() = 0;
  // What has the focus when the panel has been asked for.
  virtual QWidget* FirstFocus() const = 0;

  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  bool focusNextPrevChild(bool next) override;  // Tab stays inside

 private:
  FormState& state;
};

}  // namespace quoll
