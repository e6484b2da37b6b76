// The serial card's record with another program on its other side that keeps to no rule. The input is a list
// of steps of four bytes: what to do, a place of the record, a byte for it, and a length.
#include <algorithm>
#include <array>
#include <cstdlib>
#include <span>
#include <string>
#include <vector>

#include "cards/Serial.h"
#include "fuzz/Fuzz.h"

namespace quoll {

namespace {

constexpr size_t kStep = 4;
constexpr size_t kFence = 64;  // bytes on both sides of the record that must stay
constexpr uint8_t kFenceByte = 0xA5;
constexpr size_t kLongestQueue = 5000;

struct Fenced {
  std::array<uint8_t, kFence + kSerialMapSize + kFence> bytes{};

  Fenced() {
    std::fill_n(bytes.begin(), kFence, kFenceByte);
    std::fill_n(bytes.end() - kFence, kFence, kFenceByte);
  }
  SerialView Record() { return std::span(bytes).subspan<kFence, kSerialMapSize>(); }
  bool Whole() const {
    const auto isFence = [](uint8_t byte) { return byte == kFenceByte; };
    return std::all_of(bytes.begin(), bytes.begin() + kFence, isFence) &&
           std::all_of(bytes.end() - kFence, bytes.end(), isFence);
  }
};

// An exchange moves what the counts say and touches nothing else.
void Exchange(Serial& serial, Fenced& fenced) {
  const SerialView record = fenced.Record();
  const std::vector<uint8_t> before(record.begin(), record.end());
  const size_t queued = serial.SerialTx.size();
  const size_t waiting = serial.SerialRx.size();
  const SerialExchanged done = SerialExchange(serial, record);

  const size_t sent = before[kToCompanion.count] == 0 ? std::min(queued, kSerialMost) : 0;
  if (serial.SerialTx.size() != queued - sent) std::abort();
  if (record[kToCompanion.count] != (sent != 0 ? sent : before[kToCompanion.count])) std::abort();
  if (serial.SerialRx.size() != waiting + before[kToMachine.count]) std::abort();
  if (record[kToMachine.count] != 0 || done.received != (before[kToMachine.count] != 0)) std::abort();
  if (done.underrun && (queued <= kSerialMost || sent == 0)) std::abort();
  for (size_t i = 0; i < before[kToMachine.count]; ++i) {
    if (serial.SerialRx[waiting + i] != before[i]) std::abort();
  }
  if (!std::equal(before.begin(), before.begin() + kToCompanion.data, record.begin())) std::abort();
  if (!std::equal(before.begin() + 514, before.end(), record.begin() + 514)) std::abort();
}

}  // namespace

void Fuzz(std::span<const uint8_t> input) {
  Serial serial;
  SerialQueue companion;
  Fenced fenced;
  for (; input.size() >= kStep; input = input.subspan(kStep)) {
    const size_t place = (input[1] + input[2] * 256U) % kSerialMapSize;
    const uint8_t value = input[3];
    switch (input[0] % 8) {
      case 0: fenced.Record()[place] = value; break;
      case 1: fenced.Record()[kToMachine.count] = value; break;
      case 2: fenced.Record()[kToCompanion.count] = value; break;
      case 3: SerialSend(serial, std::vector<uint8_t>(place, value)); break;
      case 4:
        for (size_t i = 0; i < place; ++i) SerialRead(serial);
        break;
      case 5: TakeLane(fenced.Record(), kToCompanion, companion); break;
      case 6: FillLane(fenced.Record(), kToMachine, companion); break;
      default: Exchange(serial, fenced); break;
    }
    if (serial.SerialTx.size() > kLongestQueue) serial.SerialTx.clear();
    if (serial.SerialRx.size() > kLongestQueue) serial.SerialRx.clear();
    if (companion.size() > kLongestQueue) companion.clear();
    if (SerialText(serial.SerialRx).size() > serial.SerialRx.size() || !fenced.Whole()) std::abort();
  }
}

}  // namespace quoll
