// The file panel of the main window: what it shows, and what its button does.
#pragma once

#include <string>
#include <string_view>

#include "core/Form.h"

namespace quoll {

struct FilePanel {
  FormState window;      // its caption, "Open" or "Save", stands on the frame and on the button Command2
  std::string pattern;   // "*.cas" and the like; with the caption it tells what the button does
  std::string folder;    // stays as chosen until the program ends; empty: the working directory
  std::string location;  // the folder as it is shown

  std::string Text3;                // name
  std::string Text5;                // pattern of the listed files
  std::string Text6, Text7, Text8;  // start, end and program word, shown when a cassette file is saved
  Look casLook;                     // theirs
  ListBox Dir1;                     // folders, ".." first where there is one above
  ListBox File1;
  std::string error;  // what kept the button from doing its work, empty for nothing

  bool operator==(const FilePanel&) const = default;
};

inline constexpr std::string_view kOpenCaption = "Open";
inline constexpr std::string_view kSaveCaption = "Save";

// Shows the panel for this action.
void OpenFilePanel(Machine& m, std::string_view caption, std::string_view pattern);

// Lists another folder; one that can't be read is told in error and not gone to.
void ShowFolder(FilePanel& panel, const std::string& folder);

// The path that name and folder stand for, the pattern's extension at its end; to be opened, a file of just
// that name comes first. Empty without a name.
std::string FilePanelFile(const FilePanel& panel);

// The user has changed the pattern. One that belongs to a file action with the panel's caption becomes the
// panel's: the button then does that. Any other only filters the list.
void ChoosePattern(Machine& m, const std::string& pattern);

// The button: does the work on that file and hides the panel. Without a name, or when the file to be opened
// can't be read, it stays and says so.
void FilePanelPress(Machine& m);
void FilePanelCancel(Machine& m);

// The panel's lists and pattern box.
void File1_Click(Machine& m);
void Dir1_DoubleClick(Machine& m);
void Text5_Enter(Machine& m);

}  // namespace quoll
