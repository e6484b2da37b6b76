#include <unistd.h>

#include <QApplication>
#include <cerrno>
#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <vector>

#include "desktop/CommandLine.h"
#include "desktop/Main.h"
#include "desktop/QtHost.h"

namespace {

constexpr int kBadUsage = 2;

int Complain(const std::string& text) {
  std::fprintf(stderr, "quollemu: %s\nquollemu --help tells more\n", text.c_str());
  return kBadUsage;
}

// The script runner lies beside this program and takes its place.
int RunScript(const quoll::CommandLine& line) {
  std::error_code error;
  const auto self = std::filesystem::read_symlink("/proc/self/exe", error);
  const std::string runner = (self.parent_path() / "quollrun").string();
  std::vector<std::string> words{runner};
  if (!line.folder.empty()) words.insert(words.end(), {"--folder", line.folder});
  words.push_back(line.script);
  words.insert(words.end(), line.files.begin(), line.files.end());
  std::vector<char*> arguments;
  for (std::string& word : words) arguments.push_back(word.data());
  arguments.push_back(nullptr);
  execv(runner.c_str(), arguments.data());
  return Complain(runner + ": " + std::strerror(errno));
}

// Without one the toolkit ends the program, before its own options are taken out of the line.
bool HasDisplay() {
  return std::getenv("DISPLAY") != nullptr || std::getenv("WAYLAND_DISPLAY") != nullptr ||
         std::getenv("QT_QPA_PLATFORM") != nullptr;
}

std::span<const char* const> Arguments(int argc, char** argv) {
  return {argv + 1, static_cast<size_t>(argc > 0 ? argc - 1 : 0)};
}

}  // namespace

int main(int argc, char** argv) {
  // What needs no window is done before one is asked for: there may be no display.
  const quoll::CommandLine first = quoll::ReadCommandLine(Arguments(argc, argv));
  if (first.help || first.version)
    return std::fputs(first.help ? quoll::kHelpText : quoll::kVersionText, stdout) < 0;
  if (!first.script.empty()) return first.error.empty() ? RunScript(first) : Complain(first.error);
  if (!first.error.empty() && !HasDisplay()) return Complain(first.error);

  QApplication application(argc, argv);  // takes its own options away
  std::setlocale(LC_NUMERIC, "C");       // and the user's decimal comma: the machine's numbers have points
  QApplication::setApplicationName("QUOLLEMU");
  // The window's closing ends the program in its own way, and full screen hides it for a while.
  QApplication::setQuitOnLastWindowClosed(false);
  const quoll::CommandLine line = quoll::ReadCommandLine(Arguments(argc, argv));
  if (!line.error.empty()) return Complain(line.error);
  quoll::QtHost host;
  return quoll::Main(host, line);
}
