#include "media/Pictures.h"

#include <algorithm>
#include <array>

#include "core/Files.h"
#include "machine/Machine.h"
#include "machine/Ports.h"

namespace quoll {

namespace {

constexpr size_t kVideoSize = 0x4000;
constexpr size_t kRamSize = 0x10000;
constexpr size_t kRoomForScreen = kMemImageSize - kVid0;

constexpr size_t kTimMode = 3;
constexpr size_t kTimPalette = 4;
constexpr int32_t kColours = 4;
constexpr int32_t kModePort = 6;  // bits 1-0
constexpr int32_t kPalettePort = 0x60;

std::span<uint8_t> VideoBank0(Machine& m) { return std::span(m.MemImage).subspan(kVid0, kVideoSize); }

// Any other mode byte, 3 too, is the mode of two colours.
void SetMode(Machine& m, uint8_t mode) {
  m.PortShadow[kModePort] &= 0xFC;
  if (mode == 1 || mode == 2) m.PortShadow[kModePort] |= mode;
}

}  // namespace

void ShowTim(Machine& m, std::span<const uint8_t> file) {
  SetMode(m, file.size() > kTimMode ? file[kTimMode] : 0);
  for (int32_t colour = 0; colour < kColours; ++colour) {
    const size_t place = kTimPalette + static_cast<size_t>(colour);
    if (place >= file.size()) break;
    int32_t value = file[place];
    PortOut(m, kPalettePort + colour, value);
  }
  if (file.size() <= kTimHeaderSize) return;
  const auto screen = file.subspan(kTimHeaderSize);
  std::ranges::copy(screen.first(std::min(screen.size(), kRoomForScreen)), m.MemImage.begin() + kVid0);
}

bool LoadTIM(Machine& m, const std::string& file) {
  const FileContent content = ReadFile(file, kTimHeaderSize + kRoomForScreen);
  if (!content.error.empty()) {
    TellFileError(*m.host, content.error);
    return false;
  }
  ShowTim(m, content.bytes);
  return true;
}

bool SaveScreen(Machine& m) { return SaveFileOrTell(*m.host, kScreenFile, VideoBank0(m)); }

bool LoadScreen(Machine& m) {
  const FileContent content = ReadFile(kScreenFile, kVideoSize);
  if (content.missing) {
    if (!SaveFileOrTell(*m.host, kScreenFile, {})) return false;
  } else if (!content.error.empty()) {
    TellFileError(*m.host, content.error);
    return false;
  }
  std::ranges::fill(VideoBank0(m), uint8_t{0});
  std::ranges::copy(content.bytes, VideoBank0(m).begin());
  return true;
}

bool MemoryDump(Machine& m) {
  return SaveFileOrTell(*m.host, kDumpFile, std::span(m.MemImage).first(kRamSize));
}

}  // namespace quoll
