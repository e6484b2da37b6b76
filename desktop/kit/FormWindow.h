// A window of its own that shows a form. It comes, goes and is raised as the form's record says, and tells
// there when the user closes it. While it is hidden nothing of the record is looked at but that.
#pragma once

#include <QWidget>
#include <optional>

#include "desktop/QtHost.h"
#include "desktop/kit/FormKit.h"
#include "desktop/kit/WindowPlaces.h"

namespace quoll {

class FormWindow : public QWidget, public RecordView {
  Q_OBJECT

 public:
  void Pull(Machine& machine) final;

 protected:
  // kitOfWindow: made for the window's form; it must live longer.
  explicit FormWindow(FormKit& kitOfWindow, Qt::WindowFlags flags = {});

  // Whether the record may differ from what was last shown; a false answer saves looking at each control.
  virtual bool RecordChanged() { return true; }
  // What a window shows besides its bound controls; only called while it is visible.
  virtual void ShowRecord() {}
  // The record wants the window, which is hidden, or does not want it any more.
  virtual void Appear();
  virtual void Vanish();

  // The user closes the window.
  void closeEvent(QCloseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

  bool escapeCloses = true;
  FormKit& kit;
  Machine& m;

 private:
  std::optional<WindowPlace> place;  // when it was last hidden
  bool tabsSet = false;
};

}  // namespace quoll
