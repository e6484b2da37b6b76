#include "companion/Joint.h"

#include <algorithm>
#include <array>

namespace quoll {

namespace {

constexpr size_t kMostWaiting = 1024;  // bytes read ahead of the machine

using Piece = std::array<char, kMostWaiting>;

void ReadDevice(SerialQueue& queue, QIODevice& device) {
  if (queue.size() >= kMostWaiting) return;
  Piece piece;
  const qint64 got = device.read(piece.data(), static_cast<qint64>(kMostWaiting - queue.size()));
  for (qint64 i = 0; i < got; ++i) queue.push_back(static_cast<uint8_t>(piece[static_cast<size_t>(i)]));
}

size_t WriteDevice(SerialQueue& queue, QIODevice& device) {
  Piece piece;
  const size_t size = std::min(queue.size(), piece.size());
  std::copy_n(queue.begin(), size, piece.begin());
  const qint64 put = size == 0 ? 0 : device.write(piece.data(), static_cast<qint64>(size));
  queue.erase(queue.begin(), queue.begin() + std::max<qint64>(put, 0));
  return static_cast<size_t>(std::max<qint64>(put, 0));
}

}  // namespace

bool JointMove(Joint& joint, SerialView record, QIODevice* device) {
  if (device != nullptr) ReadDevice(joint.toMachine, *device);
  const size_t handedOver = FillLane(record, kToMachine, joint.toMachine);
  joint.bytesToMachine += handedOver;
  if (device == nullptr) return handedOver != 0;

  if (joint.fromMachine.empty() && device->bytesToWrite() == 0) {
    TakeLane(record, kToCompanion, joint.fromMachine);
  }
  const size_t written = WriteDevice(joint.fromMachine, *device);
  joint.bytesFromMachine += written;
  return handedOver != 0 || written != 0;
}

}  // namespace quoll
