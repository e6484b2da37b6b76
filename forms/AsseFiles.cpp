// Frame2, the file panel, and the files that the window reads and writes.
#include <cstdlib>
#include <filesystem>

#include "core/Files.h"
#include "core/FolderList.h"
#include "devtools/CodePage.h"
#include "devtools/RichText.h"
#include "forms/Asse.h"
#include "forms/AsseParts.h"
#include "machine/Machine.h"

namespace quoll {

namespace {

namespace fs = std::filesystem;

constexpr size_t kMostBytes = size_t{1} << 24;  // of a source; what the assembler reads is much less
constexpr std::string_view kOpen = "OPEN", kSave = "SAVE";

enum Type : int32_t { kNoType = -1, kAsm, kTvcasm, kPicture, kSound };

std::string_view Pattern(int32_t type) {
  switch (type) {
    case kAsm: return "*.asm";
    case kTvcasm: return "*.tvcasm";
    case kPicture: return "*.bmp;*.jpg;*.gif";
    case kSound: return "*.wav";
    default: return "*.asm;*.tvcasm";
  }
}

std::span<const uint8_t> BytesOf(const std::string& text) {
  return {reinterpret_cast<const uint8_t*>(text.data()), text.size()};
}

// Where folders begin: the root, and the user's own folder.
std::vector<std::string> Drives() {
  std::vector<std::string> drives{"/"};
  const char* home = std::getenv("HOME");  // NOLINT(concurrency-mt-unsafe): nothing here sets it
  if (home != nullptr && fs::path(home).is_absolute() && fs::path(home) != "/") drives.emplace_back(home);
  return drives;
}

// The drive that the folder lies on: the one with the longest name.
int32_t DriveOf(const ListBox& drives, const std::string& folder) {
  int32_t best = -1;
  size_t length = 0;
  for (size_t i = 0; i < drives.entries.size(); ++i) {
    const std::string& drive = drives.entries[i];
    const bool inside = folder.starts_with(drive) && (folder.size() == drive.size() || drive.ends_with('/') ||
                                                      folder[drive.size()] == '/');
    if (!inside || drive.size() <= length) continue;
    best = static_cast<int32_t>(i);
    length = drive.size();
  }
  return best;
}

// Lists the folder; one that can't be read is told and not gone to.
void ShowFolder(Machine& m, const fs::path& path) {
  AsseFiles& files = m.asse.files;
  const std::string folder = path.string();
  FolderList folders = FoldersIn(folder);
  if (!folders.error.empty()) return asse::TellFileOpenError(m);
  files.folder = folder;
  if (path.has_relative_path()) folders.names.insert(folders.names.begin(), "..");
  files.Dir1.Fill(std::move(folders.names));
  files.File1.Fill(FilesIn(folder, Pattern(files.Combo1.selected)).names);
  files.Drive1.selected = DriveOf(files.Drive1, folder);
}

void ShowPanel(Machine& m, std::string_view caption) {
  AsseFiles& files = m.asse.files;
  asse::StopHelp(m);
  files.Command14Caption = caption;
  files.Drive1.entries = Drives();
  std::error_code error;
  if (files.folder.empty()) files.folder = fs::current_path(error).string();
  ShowFolder(m, files.folder);
  files.Frame2Look.visible = true;
}

std::string Path(const AsseFiles& files, const std::string& name) {
  return (fs::path(files.folder) / name).string();
}

void Save(Machine& m, const std::string& file) {
  AsseSource& source = m.asse.source;
  const std::string bytes = SourceBytes(source.RText1, source.code);
  if (!SaveFile(file, BytesOf(bytes)).empty()) return asse::TellFileOpenError(m);
  source.folder = fs::path(file).parent_path().string();
  m.asse.editor.savedTexts = m.asse.editor.texts;
}

}  // namespace

bool OpenSource(Machine& m, const std::string& file) {
  const FileContent content = ReadFile(file, kMostBytes);
  if (!content.error.empty() || content.size > kMostBytes) {
    asse::TellFileOpenError(m);
    return false;
  }
  SourceContent source =
      ReadSource({reinterpret_cast<const char*>(content.bytes.data()), content.bytes.size()});
  SetSource(m, source.text);
  Asse& form = m.asse;
  form.source.code = source.code;
  form.source.folder = fs::path(file).parent_path().string();
  form.files.Text16 = fs::path(file).filename().string();
  form.editor.savedTexts = form.editor.texts;
  form.editor.SelStart.value = form.editor.SelLength.value = 0;
  ++form.editor.selections;
  return true;
}

void Asse_Insert(Machine& m, const std::string& file) {
  Asse_Show(m);
  OpenSource(m, file);
}

namespace asse {

void TellFileOpenError(Machine& m) {
  m.host->MessageBox("File Open error!", "Assembler", MessageIcon::Exclamation);
}

void xOpen_Click(Machine& m) { ShowPanel(m, kOpen); }

void xSave_Click(Machine& m) { ShowPanel(m, kSave); }

// The menu's "Edit", and "CANCEL".
void xEdit_Click(Machine& m) { m.asse.files.Frame2Look.visible = false; }

void Drive1_Click(Machine& m) {
  AsseFiles& files = m.asse.files;
  ShowFolder(m, files.Drive1.Selected());
  files.Drive1.selected = DriveOf(files.Drive1, files.folder);
}

void Dir1_DoubleClick(Machine& m) {
  AsseFiles& files = m.asse.files;
  const fs::path folder = (fs::path(files.folder) / files.Dir1.Selected()).lexically_normal();
  ShowFolder(m, folder.has_filename() || !folder.has_relative_path() ? folder : folder.parent_path());
}

void File1_Click(Machine& m) {
  AsseFiles& files = m.asse.files;
  const std::string name = files.File1.Selected();
  if (files.Combo1.selected == kPicture)
    OpenPicture(m, Path(files, name));
  else if (files.Command14Caption == kSave)
    files.Text16 = name;
}

void File1_DoubleClick(Machine& m) { Command14_Click(m); }

void Combo1_Click(Machine& m) { ShowFolder(m, m.asse.files.folder); }

// "OPEN" or "SAVE". Pictures are taken when they are picked; sounds are only listed.
void Command14_Click(Machine& m) {
  AsseFiles& files = m.asse.files;
  if (files.Command14Caption == kSave) {
    Save(m, Path(files, files.Text16));
  } else {
    if (files.Combo1.selected == kPicture || files.Combo1.selected == kSound) return;
    const std::string picked = files.File1.Selected();
    OpenSource(m, Path(files, picked.empty() ? files.Text16 : picked));
  }
  files.Frame2Look.visible = false;
  Format(m);
}

// Saves the listing with its colours.
void RText2_DoubleClick(Machine& m) {
  const AsseListing& listing = m.asse.listing;
  const std::string rich = RichText(listing.RText2, listing.RText2Runs);
  if (!SaveFile("RichTextBox.rtf", BytesOf(rich)).empty()) TellFileOpenError(m);
}

}  // namespace asse
}  // namespace quoll
