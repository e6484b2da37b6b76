// Which action belongs to which kind of file: for the file panel, for files dropped on a window and for those
// named on a command line.
#pragma once

#include <span>
#include <string>
#include <string_view>

namespace quoll {

struct Machine;

struct FileAction {
  std::string_view pattern;                         // "*.cas" and the like
  void (*open)(Machine&, const std::string& file);  // the file can be read
  void (*save)(Machine&, const std::string& file);  // nullptr: this kind is only opened
};

std::span<const FileAction> FileActions();

// nullptr when there is none of that pattern.
const FileAction* FindFileAction(std::string_view pattern);

// Why the file can't be opened, with its name: missing, a folder, unreadable. Empty when it can.
std::string WhyUnreadable(const std::string& file);

// Opens a file by its suffix, in large or small letters. What keeps it from that is told to the user.
void OpenBySuffix(Machine& m, const std::string& file);

}  // namespace quoll
