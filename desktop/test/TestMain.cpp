#include <gtest/gtest.h>

#include <QApplication>
#include <QTemporaryDir>

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QTemporaryDir settings;  // not the user's own
  qputenv("XDG_CONFIG_HOME", settings.path().toUtf8());
  testing::InitGoogleTest(&argc, argv);
  QApplication application(argc, argv);
  QApplication::setApplicationName("QUOLLEMU");
  QApplication::setQuitOnLastWindowClosed(false);
  return RUN_ALL_TESTS();
}
