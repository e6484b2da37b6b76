// The floppy card: a controller behind ports 0x0C to 0x0E and 0x10 to 0x14, and four drives. It is a partial
// model that the card's ROM gets along with: it takes every command, keeps a track for each drive and gives
// the bytes of a disk image one by one. It never writes to the image, and nothing takes any time.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace quoll {

inline constexpr size_t kDrives = 5;          // the last one stands for "no drive"
inline constexpr size_t kDiskSize = 0x5A000;  // bytes: 40 tracks, 2 sides, 9 sectors of 512

using DriveBytes = std::array<uint8_t, kDrives>;

// Nothing of it changes at a reset or when the machine is built anew.
struct Floppy {
  // The disks' bytes by offset, then by drive. Empty until the first image comes: all bytes are 0.
  std::vector<DriveBytes> DiskData;

  uint8_t FdcStatus = 0;     // status register; no port gives it to the machine
  uint8_t FdcHwStatus = 0;   // port 0x14: bit 7 a sector begins, bit 0 its last byte was read
  uint8_t FdcTrack = 0;      // track register
  uint8_t FdcSector = 0;     // sector register; no part in what is read
  uint8_t FdcData = 0;       // data register
  uint16_t FdcCount = 0;     // bytes read of the sector, 0 to 511
  uint8_t FdcDrive = 0;      // selected drive 0 to 3, 4 for none
  uint8_t FdcCommand = 0;    // last byte of the command port, for the monitor
  uint8_t FdcParameter = 0;  // last byte of the parameter port, for the monitor

  DriveBytes DriveStepRate{};  // low two bits of the last Restore or Seek
  DriveBytes DriveSide{};      // 0 or 1 from the parameter port, 0 or 8 from Restore and Seek
  DriveBytes DriveTrack{};     // where the head stands
  DriveBytes DriveSector{};    // counts for the place that is read, but stays 0: nothing writes it
  DriveBytes DriveDensity{};   // 0 or 1
  DriveBytes DriveMotor{};     // 0 or 1
  DriveBytes DrivePrecomp{};   // 0 or 1

  std::vector<std::string> Accesses;  // the monitor's list, a line an access; emptied when above 500 lines

  bool operator==(const Floppy&) const = default;
};

// A write to port 0x0C to 0x0E or 0x10 to 0x14; other ports do nothing.
void FloppyWrite(Floppy& floppy, uint8_t port, uint8_t value);

// A read of port 0x10 to 0x14; other ports give 255. Port 0x10 gives the track register: the status itself
// goes to the monitor's list only. Port 0x13 gives the next byte of the sector whether or not a read command
// was given; what lies outside the image reads 0.
uint8_t FloppyRead(Floppy& floppy, uint8_t port);

// Puts an image into drive 0: its first kDiskSize bytes. A shorter one leaves what lies behind it as it was.
// The monitor's list starts anew.
void PlaceDisk(Floppy& floppy, std::span<const uint8_t> image);

// PlaceDisk of a file. Empty when its bytes are in the drive; else the file's name and the reason, and the
// disk stays as it was.
std::string LoadDisk(Floppy& floppy, const std::string& fileName);

// What the boot sector of drive 0 says of the disk; zeros and an empty name when there is none.
struct BootSector {
  bool valid = false;             // looks like one; the fields are read whether it does or not
  std::string name;               // who formatted it: seven characters as they stand in the image
  uint16_t bytesPerSector = 0;    //
  uint8_t sectorsPerCluster = 0;  //
  uint16_t reservedSectors = 0;   //
  uint8_t fats = 0;               // number of allocation tables
  uint16_t rootEntries = 0;       // its high byte is taken from offset 28, where the hidden sectors stand
  uint8_t media = 0;              // media byte
  uint16_t sectorsPerFat = 0;     //
  uint16_t sectorsPerTrack = 0;   //
  uint16_t heads = 0;             //
  uint32_t totalSectors = 0;      // of the 32-bit field, which small disks leave 0
  uint8_t driveNumber = 0;        //

  bool operator==(const BootSector&) const = default;
};
BootSector ReadBootSector(const Floppy& floppy);

}  // namespace quoll
