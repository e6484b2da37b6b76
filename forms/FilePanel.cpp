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

using Action = void (*)(Machine&, const std::string& file);

Action FindAction(std::string_view caption, std::string_view pattern) {
  const FileAction* action = FindFileAction(pattern);
  if (action == nullptr) return nullptr;
  return caption == kSaveCaption ? action->save : action->open;
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
  const Action action = FindAction(panel.window.caption, panel.pattern);
  if (action == nullptr) return;
  panel.error = panel.window.caption == kOpenCaption ? WhyUnreadable(file) : std::string();
  if (!panel.error.empty()) return;
  // Hidden first: a load may serve the user's events before it goes on.
  panel.window.visible = false;
  action(m, file);
  m.screen.focusPicD = true;
}

void FilePanelCancel(Machine& m) {
  m.panel.window.visible = false;
  m.screen.focusPicD = true;
}

void File1_Click(Machine& m) { m.panel.Text3 = m.panel.File1.Selected(); }

void Dir1_DoubleClick(Machine& m) {
  const fs::path folder = (FolderOf(m.panel) / m.panel.Dir1.Selected()).lexically_normal();
  ShowFolder(m.panel, folder.has_filename() ? folder.string() : folder.parent_path().string());
}

void Text5_Enter(Machine& m) { ChoosePattern(m, std::string(m.panel.Text5)); }

}  // namespace quoll
