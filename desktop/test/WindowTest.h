// A machine with its windows on a platform without a display.
#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QMimeData>
#include <QTest>
#include <QtGui/QDropEvent>
#include <functional>
#include <memory>

#include "desktop/QtHost.h"
#include "desktop/picture/PictureBox.h"
#include "desktop/windows/FormWindows.h"
#include "desktop/windows/MainWindow.h"
#include "forms/Forms.h"
#include "loop/Redraw.h"
#include "loop/RunLoop.h"
#include "machine/Machine.h"
#include "machine/MachineInit.h"

namespace quoll {

// Stops the machine or does whatever else a test wants at each frame end, and notes message boxes.
struct TestHost : QtHost {
  // A serial card that no other program is joined to.
  TestHost() { links.serialName = "window-test-" + std::to_string(QCoreApplication::applicationPid()); }
  void FrameEnded(Machine& m) override {
    QtHost::FrameEnded(m);
    ++frames;
    if (atFrame) atFrame(m);
  }
  void MessageBox(std::string_view text, std::string_view title, MessageIcon icon) override {
    messages.emplace_back(std::string(title) + "|" + std::string(text));
    lastIcon = icon;
  }

  int frames = 0;
  std::function<void(Machine&)> atFrame;
  std::vector<std::string> messages;
  MessageIcon lastIcon = MessageIcon::None;
};

struct WindowTest : testing::Test {
  TestHost host;
  std::unique_ptr<Machine> machine = std::make_unique<Machine>(host);
  Machine& m = *machine;
  std::unique_ptr<FormWindows> windows = std::make_unique<FormWindows>(host, m);
  MainWindow* window = nullptr;

  void SetUp() override {
    m.programFolder = ROM_FOLDER;
    m.screen.window.caption = "QUOLLEMU";
    MachineInit(m);
    MachineReset(m);
    host.PullViews(m);
    window = dynamic_cast<MainWindow*>(windows->Find("TScreen"));
    ASSERT_NE(window, nullptr);
    ASSERT_TRUE(QTest::qWaitForWindowActive(window));
    window->Picture()->setFocus();
    Settle();
  }

  // Lets the windows do what is due.
  void Settle() {
    QApplication::processEvents();
    host.PullViews(m);
    QApplication::processEvents();
  }

  // As the user does with the control. Of a button, a press.
  void PressButton(const char* form, const char* control) { Press(m, TheControl(form, control)); }

  // Runs the machine for so many frames as fast as the host can. Few of them are drawn then; the last one is.
  void RunFrames(int count) {
    const bool max = m.screen.xS6;
    m.screen.xS6 = true;
    const int last = host.frames + count;
    host.atFrame = [this, last](Machine&) {
      if (host.frames >= last) m.run.CpuRunning = 0;
    };
    m.run.CpuRunning = 1;
    RunLoop(m);
    host.atFrame = nullptr;
    m.screen.xS6 = max;
    redraw(m);
    PALchNull(m.palette);
    Settle();
  }

  // Until the system ROM has drawn its screen.
  void Boot() { RunFrames(100); }

  // The entry as the user selects it; an entry that can't be selected does nothing.
  void Select(const char* name) {
    QAction* action = window->Action(name);
    ASSERT_NE(action, nullptr) << name;
    action->trigger();
    Settle();
  }

  template <typename Widget>
  Widget* Find(QWidget* in, const char* name) {
    auto* found = in->findChild<Widget*>(name);
    EXPECT_NE(found, nullptr) << name;
    return found;
  }

  // Drops it on the main window.
  void Drop(QMimeData& data) {
    QDragEnterEvent enter(QPoint(10, 10), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(window, &enter);
    ASSERT_TRUE(enter.isAccepted());
    QDropEvent event(QPointF(10, 10), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(window, &event);
    Settle();
  }
  void Drop(const QString& file) {
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(file)});
    Drop(data);
  }

  // A top-level window of that object name, nullptr while it is hidden.
  static QWidget* Shown(const char* name) {
    for (QWidget* widget : QApplication::topLevelWidgets()) {
      if (widget->objectName() == name && widget->isVisible()) return widget;
    }
    return nullptr;
  }
};

}  // namespace quoll
