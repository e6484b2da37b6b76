#include "devtools/SourceLines.h"

#include <algorithm>
#include <vector>

#include "devtools/CodePage.h"

namespace quoll {

namespace {

constexpr std::string_view kMark = "\xEF\xBB\xBF";
constexpr std::string_view kBoth = "\r\n";

// Length of the line end that stands at a carriage return or a line feed.
size_t EndLength(std::string_view text, size_t at) { return text.substr(at).starts_with(kBoth) ? 2 : 1; }

size_t FindLineEnd(std::string_view text, size_t from) {
  while (from < text.size() && text[from] != '\r' && text[from] != '\n') ++from;
  return from;
}

// Calls use(start, end) for each line, end being that of its text; stops when use gives false.
template <class Use>
void ForEachLine(std::string_view text, Use use) {
  for (size_t start = 0;;) {
    const size_t end = FindLineEnd(text, start);
    if (!use(start, end) || end == text.size()) return;
    start = end + EndLength(text, end);
  }
}

// The line end behind a line; empty behind the last one.
std::string_view EndBehind(std::string_view text, const LinePlace& place) {
  const size_t at = std::min(place.start + place.length, text.size());
  return at == text.size() ? std::string_view() : text.substr(at, EndLength(text, at));
}

std::string EachCharacter(std::string_view text, std::string (*change)(std::string_view)) {
  std::string result;
  result.reserve(text.size());
  for (size_t at = 0; at < text.size();) {
    size_t end = at + 1;
    while (end < text.size() && (text[end] & 0xC0) == 0x80) ++end;
    const std::string_view character = text.substr(at, end - at);
    const auto letter = Cp1250FromUtf8(character);
    const bool known = letter && Utf8FromCp1250(*letter) == character;
    result += known ? Utf8FromCp1250(change(*letter)) : std::string(character);
    at = end;
  }
  return result;
}

}  // namespace

SourceContent ReadSource(std::string_view bytes) {
  if (!Cp1250FromUtf8(bytes)) return {Utf8FromCp1250(bytes), SourceCode::Cp1250};
  if (!bytes.starts_with(kMark)) return {std::string(bytes), SourceCode::Utf8};
  return {std::string(bytes.substr(kMark.size())), SourceCode::Utf8WithMark};
}

std::string SourceBytes(std::string_view text, SourceCode& code) {
  if (code == SourceCode::Cp1250) {
    const auto bytes = Cp1250FromUtf8(text);
    if (bytes && Utf8FromCp1250(*bytes) == text) return *bytes;
    code = SourceCode::Utf8;
  }
  return std::string(code == SourceCode::Utf8WithMark ? kMark : std::string_view()) + std::string(text);
}

size_t CountLines(std::string_view text) {
  size_t lines = 0;
  ForEachLine(text, [&](size_t, size_t) {
    ++lines;
    return true;
  });
  return lines;
}

LinePlace PlaceOfLine(std::string_view text, size_t line) {
  LinePlace place{text.size(), 0};
  ForEachLine(text, [&](size_t start, size_t end) {
    if (line-- > 0) return true;
    place = {start, end - start};
    return false;
  });
  return place;
}

size_t LineOfPlace(std::string_view text, size_t place) {
  size_t line = 0;
  ForEachLine(text, [&](size_t, size_t end) {
    if (end >= place || end == text.size()) return false;
    // Between the two characters of a line end is still that line.
    if (place < end + EndLength(text, end)) return false;
    ++line;
    return true;
  });
  return line;
}

std::string_view LineEndOf(std::string_view text) {
  const size_t end = FindLineEnd(text, 0);
  return end == text.size() ? "\n" : text.substr(end, EndLength(text, end));
}

std::string WithLineEnd(std::string_view text, std::string_view end) {
  std::string result;
  result.reserve(text.size());
  ForEachLine(text, [&](size_t start, size_t endOfLine) {
    result += text.substr(start, endOfLine - start);
    if (endOfLine < text.size()) result += end;
    return true;
  });
  return result;
}

void ReplaceLines(std::string& text, size_t first, size_t count, std::span<const std::string> with) {
  const std::string ownEnd(LineEndOf(text));
  const size_t start = PlaceOfLine(text, first).start;

  // The lines that go: their ends, and where the last one's text ends.
  std::vector<std::string_view> ends;
  size_t end = start;
  const std::string_view rest = std::string_view(text).substr(start);
  ForEachLine(rest, [&](size_t from, size_t to) {
    if (ends.size() == count) return false;
    ends.push_back(EndBehind(rest, {from, to - from}));
    end = start + to;
    return true;
  });

  std::string lines;
  for (size_t i = 0; i < with.size(); ++i) {
    lines += with[i];
    if (i + 1 == with.size()) break;  // what stood behind the last one stays there
    const bool had = i + 1 < ends.size() && !ends[i].empty();
    lines += had ? ends[i] : ownEnd;
  }
  text.replace(start, end - start, lines);
}

std::string UpperCaseUtf8(std::string_view text) { return EachCharacter(text, UpperCase); }

std::string LowerCaseUtf8(std::string_view text) { return EachCharacter(text, LowerCase); }

}  // namespace quoll
