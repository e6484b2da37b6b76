#include "cards/Floppy.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "core/Files.h"

namespace quoll {

namespace {

constexpr size_t kNoDrive = 4;
constexpr size_t kMostAccesses = 500;
constexpr int32_t kSectorSize = 512;
constexpr int32_t kSectorsPerTrack = 4;  // no geometry of a disk: the card's ROM reckons with it

constexpr uint8_t kHwReady = 0x80;  // of FdcHwStatus
constexpr uint8_t kHwDone = 0x01;
constexpr uint8_t kStatusNotReady = 0x80;  // of FdcStatus
constexpr uint8_t kStatusDataRequest = 0x02;

// A record restored or edited from outside may name any drive.
size_t Drive(const Floppy& floppy) { return std::min<size_t>(floppy.FdcDrive, kNoDrive); }

std::string Hex2(uint8_t value) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  return {kDigits[value >> 4], kDigits[value & 15]};
}

void Log(Floppy& floppy, std::string line) {
  if (floppy.Accesses.size() > kMostAccesses) floppy.Accesses.clear();
  floppy.Accesses.push_back(std::move(line));
}

void LogValue(Floppy& floppy, std::string what, uint8_t value) { Log(floppy, std::move(what) + Hex2(value)); }

void TakeStepBits(Floppy& floppy, uint8_t command) {
  floppy.DriveStepRate[Drive(floppy)] = command & 3;
  floppy.DriveSide[Drive(floppy)] = command & 8;
}

void Restore(Floppy& floppy, uint8_t command) {
  LogValue(floppy, "CMD Restore: ", command);
  TakeStepBits(floppy, command);
  floppy.FdcStatus = kStatusNotReady;
  floppy.FdcHwStatus = kHwReady;
  floppy.FdcTrack = 0;
  floppy.DriveTrack[Drive(floppy)] = 0;
}

void Seek(Floppy& floppy, uint8_t command) {
  LogValue(floppy, "CMD Seek: ", command);
  TakeStepBits(floppy, command);
  floppy.FdcStatus = 0;
  floppy.FdcHwStatus = kHwReady;
  floppy.DriveTrack[Drive(floppy)] = floppy.FdcTrack;
}

void ReadSector(Floppy& floppy) {
  Log(floppy, "CMD Read Sector");
  floppy.FdcHwStatus = kHwReady;
  floppy.FdcStatus = kStatusDataRequest;
}

void ReadAddress(Floppy& floppy) {
  Log(floppy, "CMD Read Address");
  floppy.FdcStatus = 0;
  floppy.FdcHwStatus = kHwReady | kHwDone;
}

void Command(Floppy& floppy, uint8_t command) {
  floppy.FdcCommand = command;
  switch (command >> 4) {
    case 0x0: return Restore(floppy, command);
    case 0x1: return Seek(floppy, command);
    case 0x2:
    case 0x3: return Log(floppy, "CMD Step");
    case 0x4:
    case 0x5: return Log(floppy, "CMD Step-in");
    case 0x6:
    case 0x7: return Log(floppy, "CMD Step-out");
    case 0x8:
    case 0x9: return ReadSector(floppy);
    case 0xA:
    case 0xB: return Log(floppy, "CMD Write Sector");
    case 0xC: return ReadAddress(floppy);
    case 0xD: return Log(floppy, "CMD Force Interrupt");
    case 0xE: return Log(floppy, "CMD Read Track");
    default: return Log(floppy, "CMD Write Track");
  }
}

uint8_t Bit(uint8_t value, int bit) { return (value >> bit) & 1; }

// With no drive's bit set the flags go to the entries of "no drive".
void SetParameters(Floppy& floppy, uint8_t value) {
  LogValue(floppy, "Write Parameter REG: ", value);
  floppy.FdcParameter = value;
  floppy.FdcDrive = kNoDrive;
  for (uint8_t drive = 0; drive < kNoDrive; ++drive) {
    if (Bit(value, drive) != 0) floppy.FdcDrive = drive;
  }
  const size_t drive = Drive(floppy);
  floppy.DriveSide[drive] = Bit(value, 4);
  floppy.DriveDensity[drive] = Bit(value, 5);
  floppy.DriveMotor[drive] = Bit(value, 6);
  floppy.DrivePrecomp[drive] = Bit(value, 7);
}

// The place is reckoned in 16 bits with a sign: from track 16 on it is negative, from track 32 on it starts
// at 0 again.
uint8_t DiskByte(const Floppy& floppy) {
  const size_t drive = Drive(floppy);
  const int32_t sector = floppy.DriveSector[drive] + floppy.DriveTrack[drive] * kSectorsPerTrack;
  const auto place = static_cast<int16_t>(sector * kSectorSize + floppy.FdcCount);
  if (place < 0 || static_cast<size_t>(place) >= floppy.DiskData.size()) return 0;
  return floppy.DiskData[static_cast<size_t>(place)][drive];
}

uint8_t ReadData(Floppy& floppy) {
  floppy.FdcData = DiskByte(floppy);
  LogValue(floppy, "Read Data: " + std::to_string(floppy.FdcCount) + "-", floppy.FdcData);
  ++floppy.FdcCount;
  if (floppy.FdcCount == kSectorSize) {
    floppy.FdcCount = 0;
    floppy.FdcStatus = 0;
    floppy.FdcHwStatus = kHwDone;
  }
  return floppy.FdcData;
}

uint8_t ReadRegister(Floppy& floppy, const char* what, uint8_t value) {
  LogValue(floppy, what, value);
  return value;
}

void WriteRegister(Floppy& floppy, const char* what, uint8_t& target, uint8_t value) {
  LogValue(floppy, what, value);
  target = value;
}

}  // namespace

void FloppyWrite(Floppy& floppy, uint8_t port, uint8_t value) {
  switch (port) {
    case 0x0C:
    case 0x0D:
    case 0x0E:
    case 0x10: return Command(floppy, value);
    case 0x11: return WriteRegister(floppy, "Write Track REG ", floppy.FdcTrack, value);
    case 0x12: return WriteRegister(floppy, "Write Sector REG: ", floppy.FdcSector, value);
    case 0x13: return WriteRegister(floppy, "Write Data: ", floppy.FdcData, value);
    case 0x14: return SetParameters(floppy, value);
    default: return;
  }
}

uint8_t FloppyRead(Floppy& floppy, uint8_t port) {
  switch (port) {
    case 0x10: LogValue(floppy, "Read Status REG: ", floppy.FdcStatus); [[fallthrough]];
    case 0x11: return ReadRegister(floppy, "Read Track:", floppy.FdcTrack);
    case 0x12: return ReadRegister(floppy, "Read Sector:", floppy.FdcSector);
    case 0x13: return ReadData(floppy);
    case 0x14: return ReadRegister(floppy, "Read HW status REG:", floppy.FdcHwStatus);
    default: return 255;
  }
}

void PlaceDisk(Floppy& floppy, std::span<const uint8_t> image) {
  floppy.DiskData.resize(kDiskSize);
  const size_t size = std::min(image.size(), kDiskSize);
  for (size_t place = 0; place < size; ++place) floppy.DiskData[place][0] = image[place];
  floppy.Accesses.clear();
}

std::string LoadDisk(Floppy& floppy, const std::string& fileName) {
  floppy.Accesses.clear();  // whatever becomes of the file
  const FileContent file = ReadFile(fileName, kDiskSize);
  if (!file.error.empty()) return file.error;
  if (file.bytes.empty()) return fileName + ": it is empty";
  PlaceDisk(floppy, file.bytes);
  return {};
}

BootSector ReadBootSector(const Floppy& floppy) {
  BootSector boot;
  if (floppy.DiskData.size() < kSectorSize) return boot;
  const auto byte = [&floppy](size_t at) { return floppy.DiskData[at][0]; };
  const auto number = [&byte](size_t low, size_t high) {
    return static_cast<uint16_t>(byte(low) | byte(high) << 8);
  };
  const auto word = [&number](size_t at) { return number(at, at + 1); };
  boot.valid = byte(0) == 0xEB && byte(2) != 'Z';
  for (size_t at = 3; at < 10; ++at) boot.name.push_back(static_cast<char>(byte(at)));
  boot.bytesPerSector = word(11);
  boot.sectorsPerCluster = byte(13);
  boot.reservedSectors = word(14);
  boot.fats = byte(16);
  boot.rootEntries = number(17, 28);
  boot.media = byte(21);
  boot.sectorsPerFat = word(22);
  boot.sectorsPerTrack = word(24);
  boot.heads = word(26);
  boot.totalSectors = word(32) | static_cast<uint32_t>(word(34)) << 16;
  boot.driveNumber = byte(36);
  return boot;
}

}  // namespace quoll
