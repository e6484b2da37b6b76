// Snapshots "*.tvs": processor, ports, requests, CRTC registers and the whole memory in one file of fixed
// layout. Keyboard, palette histories, sound chips, clocks, floppy and tape are not in it and go on as they
// are.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace quoll {

struct Machine;

inline constexpr size_t kSnapshotSize = 246'360;  // bytes of a whole file

// The machine as the bytes of a snapshot file.
std::vector<uint8_t> SnapshotBytes(const Machine& m);

enum class SnapshotResult {
  Foreign,   // not a snapshot: the machine is as it was
  CutShort,  // what is in it has been taken, of ports and memory the first part; the rest is as it was
  Whole,
};

// Puts a snapshot file's bytes into the machine. What follows after kSnapshotSize is not looked at.
SnapshotResult ApplySnapshot(Machine& m, std::span<const uint8_t> file);

// Saves the machine; the extension ".tvs" is appended to the name unless it is there. False when the file
// could not be saved: the user has been told, and an old file of that name is as it was.
bool SaveSnapshot(Machine& m, const std::string& name);

// Loads the file into the machine. False when it isn't a snapshot or can't be read: the user has been told,
// and the machine is as it was. A file that is cut short is loaded as far as it goes and the user told.
bool LoadSnapShot(Machine& m, const std::string& file);

}  // namespace quoll
