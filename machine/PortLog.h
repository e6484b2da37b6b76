// The log of accesses to ports without a function. It empties itself when it has grown past a limit: 35 lines
// on a write, 100 on a read. That costs time on a program that pokes such a port in a loop, and no memory.
#pragma once

#include <array>
#include <cstdint>
#include <string>

namespace quoll {

struct PortLog {
  static constexpr uint32_t kWriteLimit = 35;
  static constexpr uint32_t kReadLimit = 100;

  struct Line {
    char kind = 0;  // 'W' or 'R'
    int32_t port = 0;
    bool operator==(const Line&) const = default;
  };
  std::array<Line, kReadLimit + 1> lines{};
  uint32_t count = 0;
  int32_t selected = -1;  // in the list that shows it; -1 for none

  // Lines from 0 to EntryCount() - 1 as shown: "W" or "R" and the decimal port.
  size_t EntryCount() const { return count; }
  std::string Entry(size_t line) const {
    return line < count ? lines[line].kind + std::to_string(lines[line].port) : std::string();
  }
  bool operator==(const PortLog&) const = default;
};

inline void LogPort(PortLog& log, uint32_t limit, char kind, int32_t port) {
  if (log.count > limit) log.count = 0;
  log.lines[log.count++] = {kind, port};
}
inline void LogPortWrite(PortLog& log, int32_t port) { LogPort(log, PortLog::kWriteLimit, 'W', port); }
inline void LogPortRead(PortLog& log, int32_t port) { LogPort(log, PortLog::kReadLimit, 'R', port); }

}  // namespace quoll
