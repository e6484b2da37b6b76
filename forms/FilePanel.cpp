#include "forms/FilePanel.h"

#include <filesystem>

#include "core/Files.h"
#include "core/FolderList.h"
#include "forms/FileActions.h"
#include "machine/Machine.h"
#include "media/Cas.h"

namespace quoll {

namespace {

namespace fs = std::filesystem;

using Action = bool (*)(Machine&, const std::string& file);

Action FindAction(std::string_view caption, std::string_view pattern) {
  const FileAction* action = FindFileAction(pattern);
  if (action == nullptr) return nullptr;
  return caption == kSaveCaption ? action->save : action->open;
}

// A file of another kind is opened as what it is: a snapshot loaded as a program would overwrite the machine.
Action ActionFor(const FilePanel& panel, const std::string& file) {
  const FileAction* own = panel.window.caption == kOpenCaption ? FileActionOf(file) : nullptr;
  return own != nullptr ? own->open : FindAction(panel.window.caption, panel.pattern);
}

// "*.cas" gives ".cas".
std::string_view Extension(std::string_view pattern) {
  return pattern.starts_with("*.") ? pattern.substr(1) : std::string_view{};
}

// Start, end and program word are asked for only when a cassette file is saved.
void ShowCasBoxes(Machine& m) {
  FilePanel& panel = m.panel;
  panel.casLook.visible = panel.window.caption == kSaveCaption && panel.pattern == "*.cas";
  if (panel.casLook.visible) ReadCasBoxes(m, panel.Text6, panel.Text7, panel.Text8);
}

fs::path FolderOf(const FilePanel& panel) {
  std::error_code error;
  return panel.folder.empty() ? fs::current_path(error) : fs::path(panel.folder);
}

// A folder inside the one shown, ".." for the one above, or a whole path.
void GoTo(FilePanel& panel, const std::string& name) {
  const fs::path folder = (FolderOf(panel) / name).lexically_normal();
  ShowFolder(panel, folder.has_filename() ? folder.string() : folder.parent_path().string());
}

// The typed name is that of a folder, or can be no file's: nothing is to be opened or saved.
bool WalkInto(FilePanel& panel) {
  std::error_code error;
  const fs::path typed(std::string(panel.Text3));
  if (fs::is_directory(FolderOf(panel) / typed, error)) {
    GoTo(panel, panel.Text3);
    if (panel.error.empty()) panel.Text3.clear();
    return true;
  }
  if (typed.has_filename()) return false;
  panel.error = panel.Text3 + ": there is no such folder";
  return true;
}

}  // namespace

void ShowFolder(FilePanel& panel, const std::string& folder) {
  const FolderList files = FilesIn(folder, panel.Text5);
  panel.error = files.error;
  if (!files.error.empty() && folder != panel.folder) return;
  panel.folder = folder;
  panel.location = FolderOf(panel).string();
  panel.File1.Fill(files.names);
  std::vector<std::string> folders = FoldersIn(folder).names;
  if (FolderOf(panel).has_relative_path()) folders.insert(folders.begin(), "..");
  panel.Dir1.Fill(std::move(folders));
}

void OpenFilePanel(Machine& m, std::string_view caption, std::string_view pattern) {
  FilePanel& panel = m.panel;
  panel.window.caption = caption;
  panel.pattern = panel.Text5 = pattern;
  panel.Text3.clear();
  ShowFolder(panel, panel.folder);
  ShowCasBoxes(m);
  ShowForm(panel.window);
  m.screen.focusPicD = false;  // what an entry before wanted: the panel has the keyboard
}

void ChoosePattern(Machine& m, const std::string& pattern) {
  FilePanel& panel = m.panel;
  panel.Text5 = pattern;
  ShowFolder(panel, panel.folder);
  if (pattern == panel.pattern || FindAction(panel.window.caption, pattern) == nullptr) return;
  panel.pattern = pattern;
  ShowCasBoxes(m);
}

std::string FilePanelFile(const FilePanel& panel) {
  if (panel.Text3.empty()) return {};
  const fs::path typed = FolderOf(panel) / panel.Text3;
  if (panel.window.caption == kOpenCaption && WhyUnreadable(typed.string()).empty()) return typed.string();
  return (FolderOf(panel) / WithExtension(panel.Text3, Extension(panel.pattern))).string();
}

void FilePanelPress(Machine& m) {
  FilePanel& panel = m.panel;
  const std::string file = FilePanelFile(panel);
  if (file.empty()) {
    panel.error = "Choose a file or type its name.";
    return;
  }
  if (WalkInto(panel)) return;
  const Action action = ActionFor(panel, file);
  if (action == nullptr) return;
  panel.error = panel.window.caption == kOpenCaption ? WhyUnreadable(file) : std::string();
  if (!panel.error.empty()) return;
  // Hidden first: a load may serve the user's events before it goes on.
  panel.window.visible = false;
  if (action(m, file)) {
    m.screen.focusPicD = true;
  } else {
    ShowForm(panel.window);  // as it was, so that another name can be tried
  }
}

void FilePanelCancel(Machine& m) {
  m.panel.window.visible = false;
  m.screen.focusPicD = true;
}

void File1_Click(Machine& m) { m.panel.Text3 = m.panel.File1.Selected(); }

void Dir1_DoubleClick(Machine& m) { GoTo(m.panel, m.panel.Dir1.Selected()); }

void Text5_Enter(Machine& m) { ChoosePattern(m, std::string(m.panel.Text5)); }

}  // namespace quoll
