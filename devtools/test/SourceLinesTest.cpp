#include <gtest/gtest.h>

#include <random>
#include <vector>

#include "devtools/SourceLines.h"

namespace quoll {
namespace {

using Lines = std::vector<std::string>;

TEST(SourceLines, LinesAndTheirPlaces) {
  struct Row {
    std::string_view text;
    Lines lines;
  };
  for (const Row& row : {Row{"", {""}},
                         {"a", {"a"}},
                         {"a\n", {"a", ""}},
                         {"a\r\nbc\rd\n\r\n", {"a", "bc", "d", "", ""}},
                         {"\r\r\n\n", {"", "", "", ""}}}) {
    EXPECT_EQ(CountLines(row.text), row.lines.size());
    for (size_t line = 0; line < row.lines.size(); ++line) {
      const LinePlace place = PlaceOfLine(row.text, line);
      EXPECT_EQ(row.text.substr(place.start, place.length), row.lines[line]);
      EXPECT_EQ(LineOfPlace(row.text, place.start), line) << row.text;
      EXPECT_EQ(LineOfPlace(row.text, place.start + place.length), line) << row.text;
    }
    EXPECT_EQ(PlaceOfLine(row.text, row.lines.size()).start, row.text.size());
  }
  EXPECT_EQ(LineOfPlace("a\r\nb", 2), 0U);  // between the two characters
}

TEST(SourceLines, OneLineEndForAll) {
  EXPECT_EQ(LineEndOf("ab"), "\n");
  EXPECT_EQ(LineEndOf("ab\r\nc\n"), "\r\n");
  EXPECT_EQ(LineEndOf("ab\rc\n"), "\r");
  EXPECT_EQ(WithLineEnd("a\r\nb\rc\n", "\n"), "a\nb\nc\n");
  EXPECT_EQ(WithLineEnd("a\nb", "\r\n"), "a\r\nb");
}

TEST(SourceLines, ReplacedLinesKeepTheirEnds) {
  struct Row {
    std::string text;
    size_t first, count;
    Lines with;
    std::string result;
  };
  for (const Row& row : {
           Row{"a\r\nb\nc", 1, 1, {"x"}, "a\r\nx\nc"},
           {"a\r\nb\nc", 1, 1, {"x", "y"}, "a\r\nx\r\ny\nc"},  // new lines end as the first one
           {"a\r\nb\nc\rd", 1, 2, {"bc"}, "a\r\nbc\rd"},       // joined: the last one's end
           {"a\nb\r\nc\rd", 1, 2, {"x", "y"}, "a\nx\r\ny\rd"},
           {"a\nb\r\nc\rd", 1, 2, {"x", "y", "z"}, "a\nx\r\ny\nz\rd"},
           {"a\r\nb", 1, 1, {"b", ""}, "a\r\nb\r\n"},
           {"a\r\nb\r\n", 0, 3, {""}, ""},
           {"", 0, 1, {"x", "y"}, "x\ny"},
           {"a", 0, 1, {""}, ""},
       }) {
    std::string text = row.text;
    ReplaceLines(text, row.first, row.count, row.with);
    EXPECT_EQ(text, row.result) << row.text;
  }
}

// Any editing gives the lines that an editor without line ends would have.
TEST(SourceLines, RandomEdits) {
  std::mt19937 random(7);
  const auto upTo = [&random](size_t most) { return std::uniform_int_distribution<size_t>(0, most)(random); };
  std::string text = "a\r\nb\nc\rd\r\n";
  Lines model{"a", "b", "c", "d", ""};
  for (int i = 0; i < 3000; ++i) {
    const size_t first = upTo(model.size() - 1);
    const size_t count = 1 + upTo(std::min<size_t>(3, model.size() - first - 1));
    Lines with(1 + upTo(model.size() > 30 ? 0 : 3));
    for (std::string& line : with) line = std::string(upTo(3), static_cast<char>('a' + upTo(25)));
    ReplaceLines(text, first, count, with);
    const auto at = model.erase(model.begin() + static_cast<ptrdiff_t>(first),
                                model.begin() + static_cast<ptrdiff_t>(first + count));
    model.insert(at, with.begin(), with.end());
    ASSERT_EQ(CountLines(text), model.size());
    for (size_t line = 0; line < model.size(); ++line) {
      const LinePlace place = PlaceOfLine(text, line);
      ASSERT_EQ(text.substr(place.start, place.length), model[line]);
    }
  }
}

TEST(SourceLines, AnyBytesComeBack) {
  std::mt19937 random(3);
  for (int i = 0; i < 2000; ++i) {
    std::string bytes(random() % 12, 0);
    for (char& byte : bytes) byte = static_cast<char>(random() % (i % 2 == 0 ? 256 : 0x90));
    SourceContent content = ReadSource(bytes);
    EXPECT_EQ(SourceBytes(content.text, content.code), bytes);
  }
}

TEST(SourceLines, CaseOfWhatTheCodePageHas) {
  EXPECT_EQ(UpperCaseUtf8("a\xC5\x91\xC3\xBC\xCF\x80\xE2\x82\xAC"), "A\xC5\x90\xC3\x9C\xCF\x80\xE2\x82\xAC");
  EXPECT_EQ(LowerCaseUtf8("A\xC5\x90\xC3\x9C\xCE\xA0"), "a\xC5\x91\xC3\xBC\xCE\xA0");
}

}  // namespace
}  // namespace quoll
