// What lies in a folder, as the file lists of the forms show it.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace quoll {

struct FolderList {
  std::vector<std::string> names;
  std::string error;  // why the folder can't be read; empty for nothing
};

// Ordinary files whose names fit the pattern, in the order of the alphabet whatever the letters' case.
// folder: empty for the working directory. pattern: "*" stands for any characters, "?" for one, ";" between
// patterns of which one has to fit; a letter's case does not matter.
FolderList FilesIn(const std::string& folder, std::string_view pattern);

// The folders inside, without hidden ones, in the same order.
FolderList FoldersIn(const std::string& folder);

// Whether a name fits such a pattern.
bool FitsPattern(std::string_view name, std::string_view pattern);

// A letter of the English alphabet as a small one.
char SmallLetter(char c);
// The same for a whole text.
std::string SmallLetters(std::string_view text);

}  // namespace quoll
