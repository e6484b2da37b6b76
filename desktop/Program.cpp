#include <QApplication>

#include "desktop/Main.h"
#include "desktop/QtHost.h"

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  QApplication::setApplicationName("QUOLLEMU");
  // The window's closing ends the program in its own way, and full screen hides it for a while.
  QApplication::setQuitOnLastWindowClosed(false);
  quoll::QtHost host;
  return quoll::Main(host);
}
