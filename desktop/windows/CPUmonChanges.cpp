#include "desktop/windows/CPUmonChanges.h"

#include <algorithm>

namespace quoll {

namespace {

constexpr size_t kRowBytes = 16, kByteWidth = 3;

std::vector<std::string_view> Rows(std::string_view text) {
  constexpr std::string_view kLineEnd = "\r\n";
  std::vector<std::string_view> rows;
  for (;;) {
    const size_t end = text.find(kLineEnd);
    rows.push_back(text.substr(0, end));
    if (end == std::string_view::npos) return rows;
    text.remove_prefix(end + kLineEnd.size());
  }
}

std::string_view Address(std::string_view row) { return row.substr(0, row.find(':')); }

bool SameMachine(const CPUmonShown& a, const CPUmonShown& b) {
  return a.Text1 == b.Text1 && a.Text2 == b.Text2 && a.Text3 == b.Text3 && a.Text4 == b.Text4 &&
         a.Picture2 == b.Picture2 && a.Picture3 == b.Picture3;
}

}  // namespace

void FollowChanges(CPUmonChanges& changes, const CPUmonShown& now, bool running) {
  if (running) {
    changes.before = changes.atRest;
    return;
  }
  // Loops that ran inside each other end together, with one machine between them.
  const bool stopped = changes.atRest && changes.atRest->stops != now.stops;
  if (stopped && !SameMachine(*changes.atRest, now)) changes.before = changes.atRest;
  changes.atRest = now;
}

std::vector<HexView::Mark> ChangedBytes(std::string_view before, std::string_view now) {
  const auto rowsBefore = Rows(before), rows = Rows(now);
  std::vector<HexView::Mark> marks;
  for (size_t r = 0; r < rows.size(); ++r) {
    const std::string_view row = rows[r];
    const auto old = std::ranges::find(rowsBefore, Address(row), Address);
    const size_t bytes = Address(row).size() + 2, characters = bytes + kRowBytes * kByteWidth;
    if (old == rowsBefore.end() || row.size() != characters + kRowBytes || old->size() != row.size())
      continue;
    for (size_t i = 0; i < kRowBytes; ++i) {
      const size_t at = bytes + i * kByteWidth;
      if (old->substr(at, 2) == row.substr(at, 2)) continue;
      marks.push_back({static_cast<int>(r), static_cast<int>(at), 2});
      marks.push_back({static_cast<int>(r), static_cast<int>(characters + i), 1});
    }
  }
  return marks;
}

}  // namespace quoll
