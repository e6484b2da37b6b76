#include "core/FolderList.h"

#include <algorithm>
#include <filesystem>

namespace quoll {

namespace {

namespace fs = std::filesystem;

// Goes back to the last star when the rest does not fit, and lets it stand for one character more.
bool FitsOne(std::string_view name, std::string_view pattern) {
  constexpr size_t kNone = std::string_view::npos;
  size_t n = 0, p = 0, star = kNone, taken = 0;
  while (n < name.size()) {
    if (p < pattern.size() && pattern[p] == '*') {
      star = p++;
      taken = n;
    } else if (p < pattern.size() && (pattern[p] == '?' || SmallLetter(pattern[p]) == SmallLetter(name[n]))) {
      ++p;
      ++n;
    } else if (star != kNone) {
      p = star + 1;
      n = ++taken;
    } else {
      return false;
    }
  }
  return pattern.find_first_not_of('*', p) == kNone;
}

template <class Wanted>
FolderList Entries(const std::string& folder, Wanted wanted) {
  FolderList list;
  std::error_code error;
  const fs::path path = folder.empty() ? fs::current_path(error) : fs::path(folder);
  fs::directory_iterator entry(path, error);
  for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
    std::string name = entry->path().filename().string();
    if (wanted(*entry, name)) list.names.push_back(std::move(name));
  }
  if (error) list.error = path.string() + ": " + error.message();
  std::ranges::sort(list.names, [](const std::string& a, const std::string& b) {
    const auto small = std::pair(SmallLetters(a), SmallLetters(b));
    return small.first != small.second ? small.first < small.second : a < b;
  });
  return list;
}

}  // namespace

char SmallLetter(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

std::string SmallLetters(std::string_view text) {
  std::string small(text);
  std::ranges::transform(small, small.begin(), SmallLetter);
  return small;
}

bool FitsPattern(std::string_view name, std::string_view pattern) {
  for (;;) {
    const size_t end = std::min(pattern.find(';'), pattern.size());
    if (FitsOne(name, pattern.substr(0, end))) return true;
    if (end == pattern.size()) return false;
    pattern.remove_prefix(end + 1);
  }
}

FolderList FilesIn(const std::string& folder, std::string_view pattern) {
  return Entries(folder, [pattern](const fs::directory_entry& entry, const std::string& name) {
    std::error_code error;
    return entry.is_regular_file(error) && !name.starts_with('.') && FitsPattern(name, pattern);
  });
}

FolderList FoldersIn(const std::string& folder) {
  return Entries(folder, [](const fs::directory_entry& entry, const std::string& name) {
    std::error_code error;
    return entry.is_directory(error) && !name.starts_with('.');
  });
}

}  // namespace quoll
