// The tape recorder. A wave file is the tape: each read of the status port takes one sample of it, each write
// to the output port makes an edge in "save.wav". The speed of reading is that of the program's own loop.
//
// The record holds no open files but names, places and what has been read ahead or not been written yet. So a
// machine stays a plain value, and a port access seldom reaches the disk.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>

namespace quoll {

struct Host;

// The tape that is played.
struct TapeInput {
  static constexpr size_t kChunk = 0x4000;

  std::string file;      // full name; empty: no tape
  int64_t position = 0;  // in the file, of the byte that follows those read ahead
  std::array<uint8_t, kChunk> ahead{};
  uint32_t aheadCount = 0;  // bytes read ahead, 0 to kChunk
  uint32_t next = 0;        // place in them of the next sample, 0 to aheadCount
  bool ended = false;       // the file has no more; it is not looked at again until the tape is rewound

  bool operator==(const TapeInput&) const = default;
};

// A wave file that grows.
struct TapeOutput {
  static constexpr size_t kChunk = 0x4000;

  std::string file;           // full name; empty: it is not open
  int64_t written = 0;        // place in the file, from 0, of the first byte of pending
  uint32_t pendingCount = 0;  // bytes that are still to be written, 0 to kChunk
  std::array<uint8_t, kChunk> pending{};

  bool operator==(const TapeOutput&) const = default;
};

struct Tape {
  static constexpr uint8_t kLow = 0x1E, kHigh = 0xDC;  // output levels as samples

  int32_t Level = 0;  // what the last read gave, 0 or 1: bit 5 of port 0x59
  TapeInput input;

  int32_t TapeOutPos = 45;    // place of the next sample in "save.wav", counted from 1
  int32_t TapeLastCycle = 0;  // FrameClock at the last edge
  uint8_t TapeLevel = 0;      // kLow or kHigh; 0 before the first edge
  TapeOutput save;            // "save.wav": the edges
  TapeOutput record;          // "record.wav": the tone generator

  bool operator==(const Tape&) const = default;
};

// Puts the wave file into the deck, at its very first byte. A file that is missing is made, empty. What can't
// be opened, or is no ordinary file, plays as an empty tape.
void TapeOpen(Tape& tape, const std::string& fileName);

// The tape that is in the deck when the program starts: "load.wav" of the program folder.
void TapeOpenFirst(Tape& tape, const std::string& programFolder);

// To the first sample, which follows the header of 44 bytes.
void TapeRewind(Tape& tape);

// The next sample as a level: 1 from 91 on, 0 up to 90 and after the end.
int32_t TapeRead(Tape& tape);

// An edge of the output at this T-state of the frame: the level changes, and the new one fills the time since
// the last edge, 80 T-states a sample. Gives the level that is heard then, 0 or 1. An edge after more than
// 62000 T-states only starts a new measurement and is not heard.
std::optional<int32_t> TapeWriteEdge(Tape& tape, int32_t frameClock);

// Starts the recording of both "save.wav" and "record.wav" anew, in the working directory. A failure is told,
// and nothing is recorded then; false.
bool TapeStartRecording(Tape& tape, Host& host);

// Ends it: the lengths go into the headers.
void TapeStopRecording(Tape& tape);

// A frame of the tone generator for "record.wav". Everything recorded so far reaches the disk.
void TapeRecordFrame(Tape& tape, std::span<const int16_t> samples);

// Everything recorded so far reaches the disk: for the end of a program that still records. The headers keep
// the lengths of an empty recording.
void TapeFlush(Tape& tape);

}  // namespace quoll
