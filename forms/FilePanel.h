// The file panel of the main window: a plain record of what it shows, and what its button does. The files to
// choose from are the window's own business.
#pragma once

#include <string>
#include <string_view>

#include "media/Cas.h"

namespace quoll {

struct Machine;

struct FilePanel {
  bool visible = false;
  std::string caption;  // "Open" or "Save": on the frame and on its button Command2
  std::string pattern;  // Text5: "*.cas" and the like; with the caption it tells what the button does
  std::string folder;   // stays as chosen until the program ends; empty: the working directory
  std::string name;     // Text3
  CasBoxes boxes;       // Text6 to Text8, shown when a cassette file is saved
  std::string error;    // what kept the button from doing its work, empty for nothing
};

inline constexpr std::string_view kOpenCaption = "Open";
inline constexpr std::string_view kSaveCaption = "Save";

// Shows the panel for this action.
void OpenFilePanel(Machine& m, std::string_view caption, std::string_view pattern);

// Start, end and program word are asked for only when a cassette file is saved.
bool ShowsCasBoxes(const FilePanel& panel);

// The path that name and folder stand for, the pattern's extension at its end; to be opened, a file of just
// that name comes first. Empty without a name.
std::string FilePanelFile(const FilePanel& panel);

// The user has changed the pattern. One that belongs to a file action with the panel's caption becomes the
// panel's: the button then does that. Any other leaves the panel as it is.
void ChoosePattern(Machine& m, const std::string& pattern);

// The button: does the work on that file and hides the panel. Without a name, or when the file to be opened
// isn't there, it stays and says so.
void FilePanelPress(Machine& m);

// Opens a file by its suffix as the panel would, in large or small letters. False for an unknown suffix, and
// when there is no file that can be read.
bool OpenBySuffix(Machine& m, const std::string& file);

}  // namespace quoll
