#include "forms/FileActions.h"

#include <algorithm>
#include <array>
#include <filesystem>

#include "core/Files.h"
#include "core/FolderList.h"
#include "machine/Machine.h"
#include "media/Cartridge.h"
#include "media/Cas.h"
#include "media/Pictures.h"
#include "media/Snapshot.h"

namespace quoll {

namespace {

// Of these the loaders tell what else is wrong with the file.
template <auto kFunction>
void WithFile(Machine& m, const std::string& file) {
  kFunction(m, file);
}

void SaveCassette(Machine& m, const std::string& file) {
  FilePanel& panel = m.panel;
  const CasRange range = UseCasBoxes(panel.Text6, panel.Text7);
  SaveCAS(m, file, range.s, range.e);
}

constexpr std::array kActions{
    FileAction{"*.cas", WithFile<LoadCAS>, SaveCassette},
    FileAction{"*.tvs", WithFile<LoadSnapShot>, WithFile<SaveSnapshot>},
    FileAction{"*.crt", LoadCRT, nullptr},
    FileAction{"*.tim", WithFile<LoadTIM>, nullptr},
    FileAction{"*.wav", TTape_Insert, nullptr},
    FileAction{"*.dsk", TFloppy_Insert, nullptr},
};

}  // namespace

std::span<const FileAction> FileActions() { return kActions; }

const FileAction* FindFileAction(std::string_view pattern) {
  const auto found = std::ranges::find(kActions, pattern, &FileAction::pattern);
  return found == kActions.end() ? nullptr : &*found;
}

std::string WhyUnreadable(const std::string& file) { return ReadFile(file, 0).error; }

void OpenBySuffix(Machine& m, const std::string& file) {
  const auto tell = [&](const std::string& text) {
    m.host->MessageBox(text, "QUOLLEMU", MessageIcon::Exclamation);
  };
  const FileAction* action =
      FindFileAction("*" + SmallLetters(std::filesystem::path(file).extension().string()));
  if (action == nullptr) return tell("This kind of file can't be opened: " + file);
  if (const std::string reason = WhyUnreadable(file); !reason.empty()) return tell(reason);
  // The panel is hidden first: a load may serve the user's events before it goes on.
  m.panel.window.visible = false;
  action->open(m, file);
  m.screen.focusPicD = true;
}

}  // namespace quoll
