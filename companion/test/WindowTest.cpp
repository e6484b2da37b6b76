#include <gtest/gtest.h>
#include <unistd.h>

#include <QTcpSocket>

#include "cards/Serial.h"
#include "companion/PseudoTerminal.h"
#include "companion/Window.h"
#include "companion/test/TestLoop.h"

namespace quoll {
namespace {

using test::WaitFor;

class CompanionWindow : public testing::Test {
 protected:
  CompanionWindow() { window.show(); }

  QPushButton& Button() { return *window.findChild<QPushButton*>(); }
  bool Shows(const QString& text) {
    for (const QLabel* const label : window.findChildren<QLabel*>()) {
      if (label->isVisible() && label->text().contains(text)) return true;
    }
    return false;
  }
  void ChooseKind(EndKind kind) {
    QComboBox& box = *window.findChild<QComboBox*>(QString(), Qt::FindDirectChildrenOnly);
    box.setCurrentIndex(box.findData(static_cast<int>(kind)));
  }
  // The only text field that can be seen.
  QLineEdit& Field() {
    for (QLineEdit* const field : window.findChildren<QLineEdit*>()) {
      if (field->isVisible()) return *field;
    }
    throw std::runtime_error("no field");
  }

  Companion companion{"test-" + std::to_string(getpid()) + "-window"};
  Window window{companion};
};

TEST_F(CompanionWindow, IsTitled) { EXPECT_EQ(window.windowTitle(), "QUOLLUART"); }

TEST_F(CompanionWindow, ButtonOpensAndCloses) {
  EXPECT_EQ(Button().text(), "OPEN");
  EXPECT_TRUE(Shows("No port is open"));
  Button().click();
  EXPECT_EQ(Button().text(), "CLOSE");
  EXPECT_TRUE(Shows("/dev/pts/"));
  EXPECT_FALSE(Field().isEnabled());
  Button().click();
  EXPECT_EQ(Button().text(), "OPEN");
  EXPECT_FALSE(companion.Port().IsOpen());
  EXPECT_TRUE(Field().isEnabled());
}

TEST_F(CompanionWindow, WrongAddressIsTold) {
  for (const EndKind kind : {EndKind::TcpListen, EndKind::TcpConnect}) {
    ChooseKind(kind);
    Field().setText("192.168.0.1:80");
    Button().click();
    EXPECT_FALSE(companion.Port().IsOpen());
    EXPECT_TRUE(Shows("This is no address of this computer"));
  }
}

TEST_F(CompanionWindow, MissingPortIsTold) {
  EndSettings settings;
  settings.kind = EndKind::SerialPort;
  settings.port = QStringLiteral("/dev/no-such-port");
  window.Show(settings);
  Button().click();
  EXPECT_EQ(Button().text(), "OPEN");
  EXPECT_TRUE(Shows("/dev/no-such-port: "));
}

TEST_F(CompanionWindow, FieldsAreThePortsSettings) {
  PseudoTerminal wire;
  ASSERT_EQ(wire.Make({}), "");
  EndSettings settings;
  settings.kind = EndKind::SerialPort;
  settings.port = wire.Name();
  for (const SerialLine& line :
       {SerialLine{true, 300, 8, Parity::None, 4}, {true, 31250, 8, Parity::None, 2}}) {
    settings.line = line;
    window.Show(settings);
    Button().click();
    EXPECT_EQ(companion.Port().Line(), line) << companion.Port().Status().toStdString();
    Button().click();
  }
}

TEST_F(CompanionWindow, CountsWhatGoesThrough) {
  ChooseKind(EndKind::TcpListen);
  Field().setText("0");
  Button().click();
  EXPECT_TRUE(Shows("waiting at 127.0.0.1:"));
  QTcpSocket caller;
  caller.connectToHost(QHostAddress::LocalHost, companion.Port().ListensAt());
  caller.write("12345");
  EXPECT_TRUE(WaitFor([this] { return Shows("To the machine: 5 bytes"); }));
  EXPECT_TRUE(Shows("joined at"));
}

}  // namespace
}  // namespace quoll
