// The record through which the machine's serial card and its companion program exchange bytes. There is no
// lock: each direction has a buffer and a count. The side that finds a count of 0 may fill the buffer and
// then sets the count; the other side takes the bytes and then clears it. Nobody writes what is not his
// turn's, so that neither side ever undoes what the other one has just done.
//
// The other side is another program: all of its bytes may have any value and may change at any time.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <span>

namespace quoll {

inline constexpr size_t kSerialMapSize = 535;
inline constexpr size_t kSerialMost = 255;  // bytes that one exchange can hand over: the count is a byte

using SerialView = std::span<uint8_t, kSerialMapSize>;
using SerialQueue = std::deque<uint8_t>;

struct SerialLane {
  size_t data;   // offset of its buffer of 256 bytes
  size_t count;  // offset of its count
};
inline constexpr SerialLane kToMachine{0, 512};
inline constexpr SerialLane kToCompanion{256, 513};

// The lane holds nothing: this side may fill it.
bool LaneIsFree(SerialView view, SerialLane lane);

// Hands the queue's first bytes over, at most kSerialMost. Number of bytes, 0 when the lane is not free.
size_t FillLane(SerialView view, SerialLane lane, SerialQueue& queue);

// Puts the lane's bytes at the queue's end and frees it. Number of bytes.
size_t TakeLane(SerialView view, SerialLane lane, SerialQueue& queue);

enum class Parity : uint8_t { None, Even, Odd, Mark, Space };

// What the companion tells of its line, in the record's last 21 bytes. The machine leaves them alone.
struct SerialLine {
  bool open = false;             // a port is open and joined
  uint32_t baud = 0;             // bits a second; 0 for a line without a speed
  uint8_t dataBits = 0;          // 5 to 8; 0 as above
  Parity parity = Parity::None;  //
  uint8_t halfStopBits = 0;      // stop bits times two: 2, 3 or 4; 0 as above

  bool operator==(const SerialLine&) const = default;
};

// Numbers out of their range read as 0.
SerialLine ReadLine(SerialView view);
void TellLine(SerialView view, const SerialLine& line);

}  // namespace quoll
