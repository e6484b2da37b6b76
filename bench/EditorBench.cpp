// What a key costs in the assembler's editor: typed into the middle of a source of many lines, with the pump
// that follows.
#include <QApplication>
#include <QElapsedTimer>
#include <QKeyEvent>
#include <algorithm>
#include <cstdio>
#include <memory>
#include <vector>

#include "desktop/QtHost.h"
#include "desktop/widgets/CodeEditor.h"
#include "desktop/windows/FormWindows.h"
#include "machine/Machine.h"

namespace {

constexpr int kLines = 20000, kKeys = 200;

void PressKey(QWidget* widget, int key, const QString& text) {
  QKeyEvent down(QEvent::KeyPress, key, Qt::NoModifier, text);
  QApplication::sendEvent(widget, &down);
}

int Measure() {
  quoll::QtHost host;
  const auto machine = std::make_unique<quoll::Machine>(host);
  const quoll::FormWindows windows(host, *machine);
  quoll::Asse_Show(*machine);
  std::string text;
  for (int i = 0; i < kLines; ++i) text += i % 10 == 0 ? "l" + std::to_string(i) + ":\n" : "ld a,(hl)\n";
  quoll::SetSource(*machine, text);
  host.Pump(*machine);
  const auto all = QApplication::topLevelWidgets();
  quoll::CodeEditor* editor = nullptr;
  for (const QWidget* window : all)
    if (editor == nullptr) editor = window->findChild<quoll::CodeEditor*>("RText1");
  if (editor == nullptr) return 1;

  std::vector<double> times;
  for (int i = 0; i < kKeys; ++i) {
    editor->SelectFrom(kLines / 2 + i, 0, 0);
    host.Pump(*machine);
    QElapsedTimer timer;
    timer.start();
    PressKey(editor, i % 5 == 0 ? Qt::Key_Return : Qt::Key_X, "x");
    host.Pump(*machine);
    times.push_back(static_cast<double>(timer.nsecsElapsed()) / 1e6);
  }
  std::ranges::sort(times);
  std::printf("a key at %d lines: median %.2f ms, longest %.2f ms\n", kLines, times[times.size() / 2],
              times.back());
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  return Measure();
}
