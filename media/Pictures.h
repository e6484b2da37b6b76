// Pictures "*.tim", and plain copies of video RAM and of RAM as files without a header.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

namespace quoll {

struct Machine;

inline constexpr const char* kScreenFile = "screen.bin";
inline constexpr const char* kDumpFile = "ramdump.bin";
inline constexpr size_t kTimHeaderSize = 16;  // byte 3 the mode, bytes 4 to 7 the palette; then the screen

// Shows a picture file's bytes: mode into port 6, palette into ports 0x60 to 0x63, the screen to video bank 0
// whichever is displayed, on through the memory array to its end if there is so much. Palette and screen
// bytes that a short file does not hold stay as they are; without a mode byte the mode is that of two
// colours.
void ShowTim(Machine& m, std::span<const uint8_t> file);

// ShowTim of a file. False when it can't be read: the user has been told and the machine is as it was.
bool LoadTIM(Machine& m, const std::string& file);

// Video bank 0 to "screen.bin" of the working directory, 16384 bytes. False when it could not be saved: the
// user has been told, and an old file is as it was.
bool SaveScreen(Machine& m);

// Video bank 0 from "screen.bin"; what the file lacks is black. A file that isn't there is made, empty. False
// when it can't be read or made: the user has been told and the machine is as it was.
bool LoadScreen(Machine& m);

// The four RAM pages to "ramdump.bin" of the working directory, 65536 bytes. False as for SaveScreen.
bool MemoryDump(Machine& m);

}  // namespace quoll
