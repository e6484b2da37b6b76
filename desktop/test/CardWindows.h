// The windows of the cards, in a folder of their own.
#pragma once

#include <QDir>
#include <QPushButton>
#include <QTemporaryDir>

#include "desktop/test/DrawnKeys.h"

namespace quoll {

struct CardWindowsTest : DrawnKeysTest {
  QTemporaryDir folder;
  QString before = QDir::currentPath();

  void SetUp() override {
    DrawnKeysTest::SetUp();
    QDir::setCurrent(folder.path());
  }
  void TearDown() override { QDir::setCurrent(before); }

  QWidget* Open(const char* entry, const char* form) {
    Select(entry);
    Settle();
    QWidget* shown = Shown(form);
    EXPECT_NE(shown, nullptr) << form;
    return shown;
  }
  static void Make(const QString& name, const QByteArray& bytes) {
    QFile file(name);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
  }
  static void Click(QWidget* shown, const char* button) {
    QTest::mouseClick(shown->findChild<QPushButton*>(button), Qt::LeftButton);
  }
  void Print(std::string_view bytes) {
    for (const char byte : bytes) Senddata(m.printer, static_cast<uint8_t>(byte));
  }
};

}  // namespace quoll
