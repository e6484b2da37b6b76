// The companion's small window: which port, open or close, and what went through.
#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStackedWidget>
#include <QTimer>
#include <QWidget>

#include "companion/Companion.h"

namespace quoll {

class Window : public QWidget {
 public:
  explicit Window(Companion& companion);

  // Puts an open port's settings into the fields.
  void Show(const EndSettings& settings);
  // In front of the others, not minimised.
  void BringUp();

 private:
  QWidget* SerialPortPage();
  QWidget* PseudoTerminalPage();
  QWidget* TcpPage(QLineEdit*& place);
  void FillPorts();
  // Nothing, with the reason shown, when a field is wrong.
  std::optional<EndSettings> Settings();
  void OpenOrClose();
  void PullState();
  void PullCounts();

  Companion* companion;
  QComboBox* kind;
  QStackedWidget* pages;
  QComboBox* port = nullptr;
  QComboBox* speed = nullptr;
  QComboBox* bits = nullptr;
  QComboBox* parity = nullptr;
  QComboBox* stop = nullptr;
  QLineEdit* link = nullptr;
  QLineEdit* listenAt = nullptr;
  QLineEdit* call = nullptr;
  QPushButton* open;
  QLabel* state;
  QLabel* counts;
  QTimer countsLater;
};

}  // namespace quoll
