#include "forms/FileActions.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <type_traits>

#include "core/Files.h"
#include "core/FolderList.h"
#include "machine/Machine.h"
#include "media/Cartridge.h"
#include "media/Cas.h"
#include "media/Pictures.h"
#include "media/Snapshot.h"

namespace quoll {

namespace {

// The functions tell themselves what else is wrong with the file.
template <auto kFunction>
bool WithFile(Machine& m, const std::string& file) {
  if constexpr (std::is_void_v<decltype(kFunction(m, file))>) {
    kFunction(m, file);
    return true;
  } else {
    return kFunction(m, file);
  }
}

bool SaveCassette(Machine& m, const std::string& file) {
  FilePanel& panel = m.panel;
  const CasRange range = UseCasBoxes(panel.Text6, panel.Text7);
  return SaveCAS(m, file, range.s, range.e);
}

constexpr std::array kActions{
    FileAction{"*.cas", WithFile<LoadCAS>, SaveCassette},
    FileAction{"*.tvs", WithFile<LoadSnapShot>, WithFile<SaveSnapshot>},
    FileAction{"*.crt", WithFile<LoadCRT>, nullptr},
    FileAction{"*.tim", WithFile<LoadTIM>, nullptr},
    FileAction{"*.wav", WithFile<TTape_Insert>, nullptr},
    FileAction{"*.dsk", WithFile<TFloppy_Insert>, nullptr},
    FileAction{"*.asm", WithFile<Asse_Insert>, nullptr},
    FileAction{"*.tvcasm", WithFile<Asse_Insert>, nullptr},
};

}  // namespace

std::span<const FileAction> FileActions() { return kActions; }

const FileAction* FindFileAction(std::string_view pattern) {
  const auto found = std::ranges::find(kActions, pattern, &FileAction::pattern);
  return found == kActions.end() ? nullptr : &*found;
}

const FileAction* FileActionOf(const std::string& file) {
  return FindFileAction("*" + SmallLetters(std::filesystem::path(file).extension().string()));
}

std::string WhyUnreadable(const std::string& file) { return ReadFile(file, 0).error; }

void OpenBySuffix(Machine& m, const std::string& file) {
  const auto tell = [&](const std::string& text) {
    m.host->MessageBox(text, "QUOLLEMU", MessageIcon::Exclamation);
  };
  const FileAction* action = FileActionOf(file);
  if (action == nullptr) return tell("This kind of file can't be opened: " + file);
  if (const std::string reason = WhyUnreadable(file); !reason.empty()) return tell(reason);
  // The panel is hidden first: a load may serve the user's events before it goes on.
  m.panel.window.visible = false;
  action->open(m, file);
  m.screen.focusPicD = true;
}

}  // namespace quoll
