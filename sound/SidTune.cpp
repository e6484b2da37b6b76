#include "sound/SidTune.h"

#include <algorithm>
#include <array>
#include <optional>

#include "core/Files.h"

namespace quoll {
namespace {

std::string_view TextOf(const SidTune& tune) {
  return {reinterpret_cast<const char*>(tune.bytes.data()), tune.bytes.size()};
}

// The next line without its end, which is a carriage return, a line feed or both.
std::string_view NextLine(SidTune& tune) {
  const std::string_view rest = TextOf(tune).substr(std::min(tune.place, tune.bytes.size()));
  const size_t length = std::min(rest.find_first_of("\r\n"), rest.size());
  size_t used = std::min(length + 1, rest.size());
  if (rest.substr(length).starts_with("\r\n")) ++used;
  tune.place += used;
  return rest.substr(0, length);
}

bool AtEnd(const SidTune& tune) { return tune.place >= tune.bytes.size(); }

// Columns count from 1. Shorter, or empty, where the line ends before.
std::string_view Columns(std::string_view line, size_t first, size_t count) {
  return first <= line.size() ? line.substr(first - 1, count) : std::string_view{};
}

// One or two hexadecimal digits; nothing for dots, and for a field that is missing or no number.
std::optional<int> Field(std::string_view line, size_t first, size_t count) {
  const std::string_view text = Columns(line, first, count);
  if (text.size() < count) return {};
  int value = 0;
  for (const char c : text) {
    int digit = 0;
    if (c >= '0' && c <= '9') {
      digit = c - '0';
    } else if (c >= 'A' && c <= 'F') {
      digit = c - 'A' + 10;
    } else if (c >= 'a' && c <= 'f') {
      digit = c - 'a' + 10;
    } else {
      return {};
    }
    value = value * 16 + digit;
  }
  return value;
}

// A field that is a whole register, or its high or low half.
enum Part { Whole, High, Low };
struct FieldPlace {
  size_t column;
  size_t count;
  int reg;
  Part part;
};

// The columns of each voice, from its first one on.
constexpr size_t kVoiceColumn = 11, kVoiceColumns = 28;
constexpr std::array kVoiceFields{
    FieldPlace{0, 2, 1, Whole},   // frequency
    FieldPlace{2, 2, 0, Whole},   //
    FieldPlace{14, 2, 4, Whole},  // control
    FieldPlace{17, 1, 5, High},   // attack
    FieldPlace{18, 1, 5, Low},    // decay
    FieldPlace{19, 1, 6, High},   // sustain
    FieldPlace{20, 1, 6, Low},    // release
    FieldPlace{22, 1, 3, Whole},  // pulse width
    FieldPlace{23, 2, 2, Whole},  //
};
constexpr std::array kFilterFields{
    FieldPlace{95, 2, 22, Whole},  // cutoff
    FieldPlace{97, 2, 21, Whole},
    FieldPlace{100, 1, 23, High},
    FieldPlace{101, 1, 23, Low},
};
constexpr size_t kFilterWordColumn = 103, kVolumeColumn = 107;
constexpr int kVolumeRegister = 24;

void TakeField(std::string_view line, size_t column, const FieldPlace& field, int32_t& reg) {
  const std::optional<int> value = Field(line, column, field.count);
  if (!value) return;
  switch (field.part) {
    case Whole: reg = *value; break;
    case High: reg = *value * 16 + (reg & 15); break;
    case Low: reg = (reg & 0xF0) + *value; break;
  }
}

struct FilterWord {
  std::string_view word;
  int value;  // added to the volume
};
// That "Hi " gives nothing is wanted, like the words that stand for no change.
constexpr std::array kFilterWords{
    FilterWord{"Low", 16}, FilterWord{"Bnd", 32},  FilterWord{"L+B", 48}, FilterWord{"L+H", 80},
    FilterWord{"B+H", 96}, FilterWord{"LBH", 112}, FilterWord{"Off", 0},  FilterWord{"Hi ", 0},
    FilterWord{"...", 0},  FilterWord{"Typ", 0},   FilterWord{"---", 0},  FilterWord{"", 0},
};

}  // namespace

SidTuneResult SidTuneOpen(SidTune& tune, SidTuneFormat format, std::span<const uint8_t> bytes) {
  if (bytes.empty()) return {.opened = false, .message = "The file is empty."};
  if (bytes.size() > kSidTuneMostBytes) {
    return {.opened = false, .message = "The file is larger than 16 MB, which no tune is."};
  }
  SidTune opened{.bytes = {bytes.begin(), bytes.end()}};
  SidTuneResult result{.opened = true, .message = {}};
  if (format == SidTuneFormat::Dmp) {
    if (bytes.size() < kDmpRecordBytes) {
      return {.opened = false, .message = "The file is shorter than one record of 25 bytes."};
    }
    if (bytes.size() % kDmpRecordBytes != 0) {
      result.message = "The file's last record is cut short. It is not played.";
    }
  } else {
    for (int line = 0; line < kSidxHeaderLines; ++line) NextLine(opened);
    if (AtEnd(opened)) {
      return {.opened = false, .message = "The file ends with its header of seven lines, or within it."};
    }
  }
  tune = std::move(opened);
  return result;
}

SidTuneResult SidTuneOpenFile(SidTune& tune, SidTuneFormat format, const std::string& file) {
  SidTuneClose(tune);
  const FileContent content = ReadFile(file, kSidTuneMostBytes + 1);
  if (content.missing) return {};
  if (!content.error.empty()) return {.opened = false, .message = content.error};
  SidTuneResult result = SidTuneOpen(tune, format, content.bytes);
  if (!result.message.empty()) result.message = file + ": " + result.message;
  return result;
}

void SidTuneClose(SidTune& tune) { tune = SidTune{}; }

std::string SidTuneStep(SidTune& tune, SidTuneFormat format, Sid6581& chip) {
  if (AtEnd(tune)) return {};
  if (format == SidTuneFormat::Sidx) return SidxLine(NextLine(tune), chip);
  if (format == SidTuneFormat::Dmp) {
    if (tune.bytes.size() - tune.place < kDmpRecordBytes) {
      tune.place = tune.bytes.size();
      return {};
    }
    for (size_t i = 0; i < kDmpRecordBytes; ++i) chip.SID_Reg[i] = tune.bytes[tune.place + i];
    tune.place += kDmpRecordBytes;
  }
  return {};
}

std::string SidxLine(std::string_view line, Sid6581& chip) {
  for (int voice = 0; voice < kSidVoices; ++voice) {
    const size_t first = kVoiceColumn + kVoiceColumns * static_cast<size_t>(voice);
    for (const FieldPlace& field : kVoiceFields) {
      TakeField(line, first + field.column, field, chip.SID_Reg[7 * voice + field.reg]);
    }
  }
  for (const FieldPlace& field : kFilterFields) TakeField(line, field.column, field, chip.SID_Reg[field.reg]);

  const std::string_view word = Columns(line, kFilterWordColumn, 3);
  const auto* known = std::find_if(kFilterWords.begin(), kFilterWords.end(),
                                   [&](const FilterWord& w) { return w.word == word; });
  const bool isKnown = known != kFilterWords.end();
  const std::optional<int> volume = Field(line, kVolumeColumn, 1);
  if (volume) chip.SID_Reg[kVolumeRegister] = *volume + (isKnown ? known->value : 0);
  return isKnown ? std::string{} : std::string(word);
}

}  // namespace quoll
