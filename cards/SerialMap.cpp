#include "cards/SerialMap.h"

#include <algorithm>
#include <atomic>

namespace quoll {

namespace {

// In the bytes that the companion has for itself.
constexpr size_t kOpen = 514;
constexpr size_t kBaud = 515;  // four bytes, the lowest first
constexpr size_t kDataBits = 519;
constexpr size_t kParity = 520;
constexpr size_t kHalfStopBits = 521;

// Each byte is read once: a second look might see another value. The order of the accesses is the hand-over.
uint8_t Load(SerialView view, size_t at) { return std::atomic_ref(view[at]).load(std::memory_order_acquire); }

void Store(SerialView view, size_t at, uint8_t value) {
  std::atomic_ref(view[at]).store(value, std::memory_order_release);
}

uint8_t Within(uint8_t value, uint8_t least, uint8_t most) {
  return value >= least && value <= most ? value : 0;
}

}  // namespace

bool LaneIsFree(SerialView view, SerialLane lane) { return Load(view, lane.count) == 0; }

size_t FillLane(SerialView view, SerialLane lane, SerialQueue& queue) {
  const size_t count = std::min(queue.size(), kSerialMost);
  if (count == 0 || !LaneIsFree(view, lane)) return 0;
  for (size_t i = 0; i < count; ++i) Store(view, lane.data + i, queue[i]);
  queue.erase(queue.begin(), queue.begin() + static_cast<ptrdiff_t>(count));
  Store(view, lane.count, static_cast<uint8_t>(count));
  return count;
}

size_t TakeLane(SerialView view, SerialLane lane, SerialQueue& queue) {
  const size_t count = Load(view, lane.count);
  if (count == 0) return 0;
  for (size_t i = 0; i < count; ++i) queue.push_back(Load(view, lane.data + i));
  Store(view, lane.count, 0);
  return count;
}

SerialLine ReadLine(SerialView view) {
  SerialLine line;
  line.open = Load(view, kOpen) == 1;
  for (int i = 0; i < 4; ++i) line.baud |= static_cast<uint32_t>(Load(view, kBaud + i)) << (8 * i);
  line.dataBits = Within(Load(view, kDataBits), 5, 8);
  line.parity = static_cast<Parity>(Within(Load(view, kParity), 0, static_cast<uint8_t>(Parity::Space)));
  line.halfStopBits = Within(Load(view, kHalfStopBits), 2, 4);
  return line;
}

void TellLine(SerialView view, const SerialLine& line) {
  Store(view, kOpen, line.open ? 1 : 0);
  for (int i = 0; i < 4; ++i) Store(view, kBaud + i, static_cast<uint8_t>(line.baud >> (8 * i)));
  Store(view, kDataBits, line.dataBits);
  Store(view, kParity, static_cast<uint8_t>(line.parity));
  Store(view, kHalfStopBits, line.halfStopBits);
}

}  // namespace quoll
