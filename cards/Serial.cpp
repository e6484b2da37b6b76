#include "cards/Serial.h"

#include <algorithm>

namespace quoll {

namespace {

constexpr uint8_t kFrameStart = 0xA0;
constexpr uint8_t kFrameEnd = 0xAF;
constexpr uint8_t kHalfSpeed = 0x20;  // of 0x3F

uint8_t MoveBit(CameraMove move) {
  switch (move) {
    case CameraMove::Stop: break;
    case CameraMove::Right: return 0x02;
    case CameraMove::Left: return 0x04;
    case CameraMove::Up: return 0x08;
    case CameraMove::Down: return 0x10;
  }
  return 0;
}

char Shown(uint8_t byte) { return byte >= 0x20 && byte < 0x7F ? static_cast<char>(byte) : '.'; }

}  // namespace

void SerialWrite(Serial& serial, uint8_t value) { serial.SerialTx.push_back(value); }

uint8_t SerialRead(Serial& serial) {
  if (serial.SerialRx.empty()) return 0;
  const uint8_t byte = serial.SerialRx.front();
  serial.SerialRx.pop_front();
  return byte;
}

uint8_t SerialStatus(const Serial& serial) { return serial.SerialRx.empty() ? 0 : 0xFF; }

void SerialSend(Serial& serial, std::span<const uint8_t> bytes) {
  serial.SerialTx.insert(serial.SerialTx.end(), bytes.begin(), bytes.end());
}

SerialExchanged SerialExchange(Serial& serial, SerialView view) {
  SerialExchanged done;
  const bool tooLong = serial.SerialTx.size() > kSerialMost;
  if (FillLane(view, kToCompanion, serial.SerialTx) != 0 && tooLong && !serial.underrunTold) {
    serial.underrunTold = true;
    done.underrun = true;
  }
  if (serial.SerialTx.empty()) serial.underrunTold = false;
  done.received = serial.SerialRx.size() < kMostReceived && TakeLane(view, kToMachine, serial.SerialRx) != 0;
  serial.line = ReadLine(view);
  return done;
}

std::string SerialText(const SerialQueue& queue, size_t most) {
  const size_t length = std::min(queue.size(), most);
  std::string text(length, ' ');
  std::transform(queue.end() - static_cast<ptrdiff_t>(length), queue.end(), text.begin(), Shown);
  return text;
}

std::array<uint8_t, 8> PelcoP(uint8_t address, CameraMove move) {
  const uint8_t bit = MoveBit(move);
  const bool pans = move == CameraMove::Left || move == CameraMove::Right;
  const bool tilts = move == CameraMove::Up || move == CameraMove::Down;
  std::array<uint8_t, 8> frame = {kFrameStart,
                                  address,
                                  0,  // focus, iris and camera switches
                                  bit,
                                  pans ? kHalfSpeed : uint8_t{0},
                                  tilts ? kHalfSpeed : uint8_t{0},
                                  kFrameEnd,
                                  0};
  for (size_t i = 0; i < 7; ++i) frame[7] ^= frame[i];
  return frame;
}

}  // namespace quoll
