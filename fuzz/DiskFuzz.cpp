// Disk images and programs of the floppy card. The first two bytes say how long the image is, a number and
// its binary exponent; the third how many of the bytes that follow are a program of port accesses, two bytes
// each; the rest is repeated up to the image's length.
#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <span>

#include "cards/Floppy.h"
#include "fuzz/Fuzz.h"
#include "fuzz/Tiled.h"

namespace quoll {

namespace {

constexpr size_t kHeader = 3;
constexpr unsigned kExponents = 12;  // 255 << 11 is beyond the disk's end
constexpr size_t kMostLines = 501;
constexpr int kRegisters = 64;  // accesses after which the registers are damaged, as by a bad snapshot

void CheckRecord(const Floppy& floppy) {
  if (floppy.Accesses.size() > kMostLines) std::abort();
  if (!floppy.DiskData.empty() && floppy.DiskData.size() != kDiskSize) std::abort();
}

// Comparing bytes in one go keeps the fuzzer quick.
bool Same(std::span<const DriveBytes> a, std::span<const DriveBytes> b) {
  return a.size() == b.size() && std::memcmp(a.data(), b.data(), a.size_bytes()) == 0;
}

void CheckImage(const Floppy& floppy, std::span<const uint8_t> image) {
  static const std::vector<DriveBytes> zeros(kDiskSize);
  const std::span<const DriveBytes> disk(floppy.DiskData);
  const size_t size = std::min(image.size(), kDiskSize);
  for (size_t place = 0; place < size; ++place) {
    if (disk[place] != DriveBytes{image[place]}) std::abort();
  }
  if (!Same(disk.subspan(size), std::span(zeros).subspan(size))) std::abort();
}

// Low bit of the first byte: read or write; the bits above choose among the ports and a few that are none.
void Access(Floppy& floppy, uint8_t what, uint8_t value) {
  const auto port = static_cast<uint8_t>(0x0B + (what >> 1) % 12);
  if ((what & 1) != 0) {
    FloppyWrite(floppy, port, value);
    return;
  }
  const uint8_t got = FloppyRead(floppy, port);
  if (port == 0x13 && got != floppy.FdcData) std::abort();
}

void Damage(Floppy& floppy, uint8_t byte) {
  floppy.FdcDrive = byte;
  floppy.FdcCount = static_cast<uint16_t>(byte * 257);
  floppy.DriveSector.fill(byte);
  floppy.DriveTrack.fill(static_cast<uint8_t>(byte * 3));
}

}  // namespace

void Fuzz(std::span<const uint8_t> input) {
  if (input.size() < kHeader) return;
  const size_t length = size_t{input[0]} << (input[1] % kExponents);
  const size_t programSize = std::min<size_t>(input[2] * 2U, (input.size() - kHeader) / 2 * 2);
  const std::span<const uint8_t> program = input.subspan(kHeader, programSize);
  const std::vector<uint8_t> image = Tiled(input.subspan(kHeader + programSize), length);

  static std::vector<DriveBytes> disk(kDiskSize);  // made once: it is large
  std::memset(disk.data(), 0, disk.size() * sizeof disk.front());
  Floppy floppy;
  floppy.DiskData.swap(disk);
  PlaceDisk(floppy, image);
  CheckImage(floppy, image);
  const BootSector boot = ReadBootSector(floppy);
  if (boot.name.size() != 7) std::abort();
  for (size_t at = 0; at + 1 < program.size(); at += 2) {
    Access(floppy, program[at], program[at + 1]);
    CheckRecord(floppy);
    if (at / 2 % kRegisters == kRegisters - 1) Damage(floppy, program[at]);
  }
  CheckImage(floppy, image);
  floppy.DiskData.swap(disk);
}

}  // namespace quoll
