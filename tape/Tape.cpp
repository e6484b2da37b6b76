#include "tape/Tape.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <filesystem>
#include <span>

#include "core/BinaryFile.h"
#include "core/Host.h"
#include "core/RunState.h"
#include "core/WaveHeader.h"
#include "core/Wrap.h"

namespace quoll {

namespace {

constexpr double kHalfLevel = 180.0;     // a sample divided by this, rounded, is the level
constexpr int32_t kLongestGap = 62000;   // T-states; what is longer is no half wave
constexpr double kSampleTStates = 80.0;  // 3125000 / 80 is 39062 samples a second

void WindTo(TapeInput& input, int64_t position) {
  input.position = position;
  input.aheadCount = input.next = 0;
  input.ended = false;
}

// Reads ahead; false when the tape has ended.
bool Refill(TapeInput& input) {
  if (input.ended) return false;
  input.next = input.aheadCount = 0;
  if (!input.file.empty()) {
    const BinaryFile file(input.file, BinaryFile::Read);
    if (file) input.aheadCount = static_cast<uint32_t>(file.ReadAt(input.ahead, input.position));
  }
  input.position += input.aheadCount;
  input.ended = input.aheadCount == 0;
  return !input.ended;
}

void Flush(TapeOutput& output) {
  if (output.pendingCount == 0) return;
  const BinaryFile file(output.file, BinaryFile::Write);
  // What can't be written is lost without a word; the place moves on all the same.
  if (file) file.WriteAt(std::span(output.pending).first(output.pendingCount), output.written);
  output.written += output.pendingCount;
  output.pendingCount = 0;
}

// Room for so many bytes at the end of what is pending, at most kChunk.
uint8_t* Append(TapeOutput& output, uint32_t count) {
  if (output.pendingCount + count > TapeOutput::kChunk) Flush(output);
  uint8_t* room = output.pending.data() + output.pendingCount;
  output.pendingCount += count;
  return room;
}

// Makes the file anew with this header. False when it can't be made.
bool Create(TapeOutput& output, const char* name, const std::array<uint8_t, kWaveHeaderBytes>& header) {
  output.file = FullName(name);
  output.pendingCount = 0;
  output.written = kWaveHeaderBytes;
  RemoveFile(output.file);
  const BinaryFile file(output.file, BinaryFile::Create);
  const bool made = file && file.WriteAt(header, 0);
  if (!made) output.file.clear();
  return made;
}

// The length goes into both size fields, the first one too high by 8: that is how these files are.
void Finish(TapeOutput& output) {
  if (output.file.empty()) return;
  Flush(output);
  const BinaryFile file(output.file, BinaryFile::Write);
  const int64_t length = file ? file.Length() : -1;
  const auto store = [&](int64_t value, int64_t position) {
    std::array<uint8_t, 4> bytes{};
    for (size_t i = 0; i < bytes.size(); ++i) bytes[i] = static_cast<uint8_t>(value >> (8 * i));
    file.WriteAt(bytes, position);
  };
  if (length >= 0) {
    constexpr int64_t kRiffSize = 4, kDataSize = 40;
    store(length, kRiffSize);
    store(length - kWaveHeaderBytes, kDataSize);
  }
  output.file.clear();
}

void FillSave(Tape& tape, int32_t count) {
  if (!tape.save.file.empty()) {
    std::memset(Append(tape.save, static_cast<uint32_t>(count)), tape.TapeLevel, static_cast<size_t>(count));
  }
  tape.TapeOutPos = WrappingAdd(tape.TapeOutPos, count);
}

}  // namespace

void TapeOpen(Tape& tape, const std::string& fileName) {
  TapeInput& input = tape.input;
  Flush(tape.save);  // it may be the very tape
  WindTo(input, 0);
  input.file = FullName(fileName);
  if (input.file.empty()) return;
  std::error_code error;
  if (!std::filesystem::exists(input.file, error)) const BinaryFile made(input.file, BinaryFile::Create);
}

void TapeOpenFirst(Tape& tape, const std::string& programFolder) {
  TapeOpen(tape, (std::filesystem::path(programFolder) / "load.wav").string());
}

void TapeRewind(Tape& tape) { WindTo(tape.input, kWaveHeaderBytes); }

int32_t TapeRead(Tape& tape) {
  TapeInput& input = tape.input;
  const bool any = input.next < input.aheadCount || Refill(input);
  const int sample = any ? input.ahead[input.next++] : 0;
  tape.Level = static_cast<int32_t>(std::lrint(sample / kHalfLevel));
  return tape.Level;
}

std::optional<int32_t> TapeWriteEdge(Tape& tape, int32_t frameClock) {
  int64_t passed = int64_t{frameClock} - tape.TapeLastCycle;
  if (passed < 0) passed += kFrameTStates;
  tape.TapeLastCycle = frameClock;
  if (passed > kLongestGap) return {};
  tape.TapeLevel = tape.TapeLevel == Tape::kLow ? Tape::kHigh : Tape::kLow;
  // A clock that was set back by more than a frame leaves nothing to be filled.
  FillSave(tape,
           std::max(0, static_cast<int32_t>(std::lrint(static_cast<double>(passed) / kSampleTStates)) + 1));
  return tape.TapeLevel == Tape::kLow ? 0 : 1;
}

bool TapeStartRecording(Tape& tape, Host& host) {
  constexpr WaveFormat kSave{1, 44100, 44100, 1, 8};
  constexpr WaveFormat kRecord{1, 22050, 44100, 2, 16};
  const bool record = Create(tape.record, "record.wav", WaveHeader(kRecord, 0));
  const bool save = Create(tape.save, "save.wav", WaveHeader(kSave, 0));
  tape.TapeOutPos = kWaveHeaderBytes + 1;
  if (record && save) return true;
  TapeStopRecording(tape);
  host.MessageBox("Wav File create error", "QUOLLEMU", MessageIcon::None);
  return false;
}

void TapeStopRecording(Tape& tape) {
  Finish(tape.record);
  Finish(tape.save);
}

void TapeRecordFrame(Tape& tape, std::span<const int16_t> samples) {
  TapeOutput& record = tape.record;
  if (!record.file.empty()) {
    uint8_t* out = Append(record, static_cast<uint32_t>(2 * samples.size()));
    for (const int16_t sample : samples) {
      *out++ = static_cast<uint8_t>(sample);
      *out++ = static_cast<uint8_t>(sample >> 8);
    }
  }
  TapeFlush(tape);
}

void TapeFlush(Tape& tape) {
  for (TapeOutput* output : {&tape.save, &tape.record}) {
    if (!output->file.empty()) Flush(*output);
  }
}

}  // namespace quoll
