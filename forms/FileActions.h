// Which action belongs to which kind of file: for the file panel, for files dropped on a window and for those
// named on a command line.
#pragma once

#include <span>
#include <string>
#include <string_view>

namespace quoll {

struct Machine;

struct FileAction {
  std::string_view pattern;  // "*.cas" and the like
  bool (*open)(Machine&,
               const std::string& file);  // the file can be read; false: the user was told of an error
  bool (*save)(Machine&, const std::string& file);  // the same; nullptr: this kind is only opened
};

std::span<const FileAction> FileActions();

// nullptr when there is none of that pattern.
const FileAction* FindFileAction(std::string_view pattern);

// That of the kind which the file's suffix names, in large or small letters; nullptr for none.
const FileAction* FileActionOf(const std::string& file);

// Why the file can't be opened, with its name: missing, a folder, unreadable. Empty when it can.
std::string WhyUnreadable(const std::string& file);

// Opens a file by its suffix. What keeps it from that is told to the user.
void OpenBySuffix(Machine& m, const std::string& file);

}  // namespace quoll
