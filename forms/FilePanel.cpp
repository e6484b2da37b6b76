#include "forms/FilePanel.h"

#include <array>
#include <filesystem>
#include <fstream>

#include "machine/Machine.h"
#include "media/Cartridge.h"
#include "core/Files.h"
#include "media/Pictures.h"
#include "media/Snapshot.h"

namespace quoll {

namespace {

constexpr std::string_view kCasPattern = "*.cas";

void SavePanelCAS(Machine& m, const std::string& file) {
  const CasRange range = UseCasBoxes(m.panel.boxes);
  SaveCAS(m, file, range.s, range.e);
}

struct FileAction {
  std::string_view caption;
  std::string_view pattern;
  void (*run)(Machine&, const std::string& file);
};

// The panel makes sure that a file to be opened is there. What else can go wrong is told by these; a cassette
// file that can't be read only sets the pointers.
constexpr std::array kActions{
    FileAction{kOpenCaption, kCasPattern, [](Machine& m, const std::string& file) { LoadCAS(m, file); }},
    FileAction{kSaveCaption, kCasPattern, SavePanelCAS},
    FileAction{kOpenCaption, "*.tvs", [](Machine& m, const std::string& file) { LoadSnapShot(m, file); }},
    FileAction{kSaveCaption, "*.tvs", [](Machine& m, const std::string& file) { SaveSnapshot(m, file); }},
    FileAction{kOpenCaption, "*.crt", [](Machine& m, const std::string& file) { LoadCRT(m, file); }},
    FileAction{kOpenCaption, "*.tim", [](Machine& m, const std::string& file) { LoadTIM(m, file); }},
    FileAction{kOpenCaption, "*.wav", TTape_Insert},
};

const FileAction* FindAction(std::string_view caption, std::string_view pattern) {
  for (const FileAction& action : kActions) {
    if (action.caption == caption && action.pattern == pattern) return &action;
  }
  return nullptr;
}

// A file with content, not a folder or a pipe, that the user may read.
bool IsFile(const std::filesystem::path& path) {
  std::error_code error;
  return std::filesystem::is_regular_file(path, error) && std::ifstream(path).good();
}

// The panel is hidden first: a load may serve the user's events before it goes on.
void Run(Machine& m, const FileAction& action, const std::string& file) {
  m.panel.visible = false;
  action.run(m, file);
  m.screen.focusPicD = true;
}

// "*.cas" gives ".cas".
std::string_view Extension(std::string_view pattern) {
  return pattern.starts_with("*.") ? pattern.substr(1) : std::string_view{};
}

// A letter's case doesn't matter in a suffix.
char Small(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

}  // namespace

void OpenFilePanel(Machine& m, std::string_view caption, std::string_view pattern) {
  m.panel.caption = caption;
  m.panel.pattern = pattern;
  m.panel.name.clear();
  m.panel.error.clear();
  if (ShowsCasBoxes(m.panel)) m.panel.boxes = ReadCasBoxes(m);
  m.panel.visible = true;
}

bool ShowsCasBoxes(const FilePanel& panel) {
  return panel.caption == kSaveCaption && panel.pattern == kCasPattern;
}

void ChoosePattern(Machine& m, const std::string& pattern) {
  if (pattern == m.panel.pattern || FindAction(m.panel.caption, pattern) == nullptr) return;
  m.panel.pattern = pattern;
  if (ShowsCasBoxes(m.panel)) m.panel.boxes = ReadCasBoxes(m);
}

std::string FilePanelFile(const FilePanel& panel) {
  if (panel.name.empty()) return {};
  std::error_code error;
  const auto folder =
      panel.folder.empty() ? std::filesystem::current_path(error) : std::filesystem::path(panel.folder);
  const auto typed = folder / panel.name;
  if (panel.caption == kOpenCaption && IsFile(typed)) return typed.string();
  return (folder / WithExtension(panel.name, Extension(panel.pattern))).string();
}

void FilePanelPress(Machine& m) {
  const std::string file = FilePanelFile(m.panel);
  if (file.empty()) {
    m.panel.error = "Choose a file or type its name.";
    return;
  }
  const FileAction* action = FindAction(m.panel.caption, m.panel.pattern);
  if (action == nullptr) return;
  if (action->caption == kOpenCaption && !IsFile(file)) {
    m.panel.error = "There is no such file.";
    return;
  }
  m.panel.error.clear();
  Run(m, *action, file);
}

bool OpenBySuffix(Machine& m, const std::string& file) {
  std::string pattern = "*" + std::filesystem::path(file).extension().string();
  for (char& c : pattern) c = Small(c);
  const FileAction* action = FindAction(kOpenCaption, pattern);
  if (action == nullptr || !IsFile(file)) return false;
  Run(m, *action, file);
  return true;
}

}  // namespace quoll
