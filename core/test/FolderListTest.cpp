// What the file lists show: patterns, order, and what is left out.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <string>
#include <vector>

#include "core/FolderList.h"
#include "testkit/BadDisk.h"
#include "testkit/Files.h"

namespace quoll::test {
namespace {

namespace fs = std::filesystem;
using Names = std::vector<std::string>;

TEST(FitsPattern, Cases) {
  struct Case {
    const char *name, *pattern;
    bool fits;
  };
  for (const auto& [name, pattern, fits] : {
           Case{"game.cas", "*.cas", true},
           Case{"GAME.CAS", "*.cas", true},
           Case{"game.cas", "*.CAS", true},
           Case{"game.cas.old", "*.cas", false},
           Case{"game.cas.cas", "*.cas", true},
           Case{"cas", "*.cas", false},
           Case{".cas", "*.cas", true},
           Case{"game.cas", "*.tvs", false},
           Case{"game.cas", "*.tvs;*.cas", true},
           Case{"game.tvs", "*.tvs;*.cas", true},
           Case{"game.tim", "*.tvs;*.cas", false},
           Case{"game.cas", "game.cas;", true},
           Case{"game.tim", "*.cas;", false},
           Case{"game.cas", ";*.cas", true},
           Case{"game", "*", true},
           Case{"game", "", false},
           Case{"", "", true},
           Case{"", "*", true},
           Case{"", "?", false},
           Case{"game1.cas", "game?.cas", true},
           Case{"game.cas", "game?.cas", false},
           Case{"game12.cas", "game?.cas", false},
           Case{"abcabd", "*ab?d*", false},
           Case{"abcabxd", "*ab?d*", true},
           Case{"aaab", "*a*ab", true},
           Case{"\xC1rv\xEDz", "?rv*", true},
           Case{"\xC1", "\xE1", false},  // only the English alphabet has small letters here
       }) {
    EXPECT_EQ(FitsPattern(name, pattern), fits) << name << " and " << pattern;
  }
}

// The rule as it is said: a star is any rest, a question mark any letter, anything else itself.
bool Fits(std::string_view name, std::string_view pattern) {
  if (pattern.empty()) return name.empty();
  if (pattern[0] == '*')
    return Fits(name, pattern.substr(1)) || (!name.empty() && Fits(name.substr(1), pattern));
  if (name.empty()) return false;
  const bool same = pattern[0] == '?' || SmallLetter(pattern[0]) == SmallLetter(name[0]);
  return same && Fits(name.substr(1), pattern.substr(1));
}

// All words of up to so many of these letters.
Names Words(std::string_view letters, int longest) {
  Names words{""};
  for (size_t from = 0; longest > 0; --longest) {
    const size_t end = words.size();
    for (; from < end; ++from)
      for (const char letter : letters) words.push_back(words[from] + letter);
  }
  return words;
}

TEST(FitsPattern, EveryShortNameAndPattern) {
  const Names names = Words("aB.", 4), patterns = Words("ab.*?", 4);
  EXPECT_EQ(names.size(), 121U);
  EXPECT_EQ(patterns.size(), 781U);
  for (const std::string& name : names)
    for (const std::string& pattern : patterns)
      ASSERT_EQ(FitsPattern(name, pattern), Fits(name, pattern)) << name << " and " << pattern;
}

TEST(SmallLetters, AreThoseOfTheEnglishAlphabet) {
  for (int code = 0; code < 256; ++code) {
    const char letter = static_cast<char>(code);
    EXPECT_EQ(SmallLetter(letter), static_cast<char>(code >= 0x41 && code <= 0x5A ? code + 0x20 : code))
        << code;
  }
  EXPECT_EQ(SmallLetters("Game.CAS \xC1"), "game.cas \xC1");
}

struct FolderListTest : testing::Test {
  TempFolder folder;
  const std::string where = folder.path.string();

  void Touch(const Names& names) const {
    for (const std::string& name : names) folder.Write(name, {1});
  }
  Names Files(std::string_view pattern = "*") const {
    const FolderList list = FilesIn(where, pattern);
    EXPECT_EQ(list.error, "");
    return list.names;
  }
};

TEST_F(FolderListTest, StandsInTheOrderOfTheAlphabet) {
  Touch({"b", "A", "a", "B", "c10", "c2", "_", "Zz", "z"});
  EXPECT_EQ(Files(), (Names{"_", "A", "a", "B", "b", "c10", "c2", "z", "Zz"}));
}

TEST_F(FolderListTest, HasOrdinaryFilesThatFit) {
  Touch({"a.cas", "B.CAS", "c.tvs", ".hidden.cas"});
  fs::create_directory(folder.path / "folder.cas");
  ASSERT_EQ(mkfifo(folder.Path("pipe.cas").c_str(), 0600), 0);
  fs::create_symlink("a.cas", folder.path / "link.cas");
  fs::create_symlink("nowhere", folder.path / "broken.cas");
  EXPECT_EQ(Files("*.cas"), (Names{"a.cas", "B.CAS", "link.cas"}));
  EXPECT_EQ(Files("*.tim"), Names());
  EXPECT_EQ(Files("*.tvs;?.cas"), (Names{"a.cas", "B.CAS", "c.tvs"}));
}

TEST_F(FolderListTest, FoldersHaveAListOfTheirOwn) {
  for (const char* name : {"b", "A", ".git", "c.cas"}) fs::create_directory(folder.path / name);
  Touch({"file"});
  const FolderList list = FoldersIn(where);
  EXPECT_EQ(list.error, "");
  EXPECT_EQ(list.names, (Names{"A", "b", "c.cas"}));
}

TEST_F(FolderListTest, WithoutANameItIsTheWorkingDirectory) {
  Touch({"here"});
  fs::create_directory(folder.path / "inside");
  const WorkingIn working(folder.path);
  EXPECT_EQ(FilesIn("", "*").names, Names{"here"});
  EXPECT_EQ(FoldersIn("").names, Names{"inside"});
}

TEST_F(FolderListTest, WhatKeepsItFromReadingIsTold) {
  Touch({"file"});
  fs::create_directory(folder.path / "closed");
  fs::permissions(folder.path / "closed", fs::perms::none);
  const ReadOnlyFolder asNobody(folder.path);
  for (const auto& [name, reason] : {std::pair("none", "No such file or directory"),
                                     {"file", "Not a directory"},
                                     {"closed", "Permission denied"}}) {
    for (const FolderList& list : {FilesIn(folder.Path(name), "*"), FoldersIn(folder.Path(name))}) {
      EXPECT_EQ(list.error, folder.Path(name) + ": " + reason);
      EXPECT_EQ(list.names, Names());
    }
  }
}

}  // namespace
}  // namespace quoll::test
