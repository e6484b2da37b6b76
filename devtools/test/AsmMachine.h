// An assembler with a memory of its own, for the tests.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <initializer_list>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "devtools/Assembler.h"
#include "devtools/ToolText.h"

namespace quoll {

struct AsmMachine {
  Assembler a;
  AsmHost host;
  std::map<int32_t, uint8_t> memory;  // what has been written
  std::map<std::string, std::vector<uint8_t>> files;
  std::vector<int32_t> pages;      // what PMEM= has stored
  std::vector<std::string> shown;  // status and pass at each refresh
  int32_t milliseconds = 1000;

  AsmMachine() {
    host.Write = [this](int32_t address, uint8_t value) { memory[address] = value; };
    host.ReadFile = [this](const std::string& name) -> std::optional<std::vector<uint8_t>> {
      if (!files.contains(name)) return std::nullopt;
      return files[name];
    };
    host.SetPage = [this](uint8_t value) { pages.push_back(value); };
    host.Milliseconds = [this] { return milliseconds += 7; };
    host.Refresh = [this] { shown.push_back(a.Text14 + "/" + a.Text13); };
  }
  AsmMachine(const AsmMachine&) = delete;
  AsmMachine& operator=(const AsmMachine&) = delete;

  // Both passes over lines parted by "|", so that a source fits a line of a test. True when it is complete.
  bool Assemble(const std::string& source) { return Compile(a, host, Lines(source)); }

  static std::string Lines(const std::string& source) { return ReplaceText(source, "|", "\r\n"); }

  // What has been written from an address on, up to the first gap: "3E 05".
  std::string Bytes(int32_t address) const {
    std::string text;
    for (auto at = memory.find(address); at != memory.end() && at->first == address; ++at, ++address) {
      text += (text.empty() ? "" : " ") + Hex2(at->second);
    }
    return text;
  }

  // The same with the status of a source that fails.
  std::string Outcome(const std::string& source) {
    const bool complete = Assemble(source);
    return complete ? Bytes(0) : a.Text13;
  }
};

inline constexpr const char* kSyntax = "Syntax Error!";
inline constexpr const char* kOverflow = "OverFlow Error!";
inline constexpr const char* kInternal1 = "Internal Error P1!";
inline constexpr const char* kInternal2 = "Internal Error P2!";

struct AsmCase {
  const char* source;
  const char* outcome;  // bytes from address 0 on, or the status
};

inline void Check(std::initializer_list<AsmCase> cases) {
  for (const AsmCase& c : cases) EXPECT_EQ(AsmMachine().Outcome(c.source), c.outcome) << c.source;
}

}  // namespace quoll
