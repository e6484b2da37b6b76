#include "media/Cas.h"

#include <algorithm>

#include "core/Files.h"
#include "core/NumberText.h"
#include "machine/Machine.h"

namespace quoll {

namespace {

// BASIC's pointers in U0, low byte first.
constexpr int32_t kThirdPointer = 0x1720;  // shown in the save panel, used by nothing
constexpr int32_t kStartPointer = 0x1722;
constexpr int32_t kEndPointer = 0x1726;

// Port 2 while BASIC runs, without the bits that select nothing: U0, U1, U2 and SYS.
constexpr uint8_t kPagingBits = 0xFC;
constexpr uint8_t kBasicPaging = 0x70;

constexpr int32_t kBlockSize = 128;
constexpr size_t kRoomForProgram = kMemImageSize - kCasProgramStart;

uint8_t Low(int64_t value) { return static_cast<uint8_t>(value & 0xFF); }
uint8_t High(int64_t value) { return static_cast<uint8_t>((value >> 8) & 0xFF); }

int32_t PagedWord(Machine& m, int32_t address) {
  const int32_t low = MemRead(m, address);
  return low + 256 * MemRead(m, address + 1);
}

void StoreWord(Machine& m, int32_t offset, int64_t value) {
  m.MemImage[static_cast<size_t>(offset)] = Low(value);
  m.MemImage[static_cast<size_t>(offset) + 1] = High(value);
}

}  // namespace

CasRange ClampCasRange(int32_t s, int32_t e) {
  // Only s has a lower bound: an end below the start is let through.
  return {std::max(std::min(s, 0xFFFF), kCasProgramStart), std::min(e, 0xFFFF)};
}

void ReadCasBoxes(Machine& m, std::string& start, std::string& end, std::string& word) {
  start = std::to_string(PagedWord(m, kStartPointer));
  end = std::to_string(PagedWord(m, kEndPointer));
  word = std::to_string(PagedWord(m, kThirdPointer));
}

CasRange UseCasBoxes(std::string& start, std::string& end) {
  const CasRange range = ClampCasRange(NumberOfText(start), NumberOfText(end));
  start = std::to_string(range.s);
  end = std::to_string(range.e);
  return range;
}

std::vector<uint8_t> CasBytes(Machine& m, int32_t s, int32_t e) {
  const CasRange range = ClampCasRange(s, e);
  const int64_t length = int64_t{range.e} - range.s;
  const int64_t total = length + int64_t{kCasHeaderSize};
  std::vector<uint8_t> file(kCasHeaderSize);
  file[0] = 0x11;
  file[2] = Low(total / kBlockSize);
  file[3] = High(total / kBlockSize);
  file[4] = Low(total % kBlockSize);
  file[129] = 1;
  file[130] = Low(length);
  file[131] = High(length);
  for (int32_t address = range.s; address < range.e; ++address) file.push_back(MemRead(m, address));
  return file;
}

bool SaveCAS(Machine& m, const std::string& name, int32_t s, int32_t e) {
  return SaveFileOrTell(*m.host, WithExtension(name, ".cas"), CasBytes(m, s, e));
}

void PlaceCas(Machine& m, std::span<const uint8_t> file, uint64_t fileSize) {
  if (file.size() > kCasHeaderSize) {
    const auto program = file.subspan(kCasHeaderSize);
    std::ranges::copy(program.first(std::min(program.size(), kRoomForProgram)),
                      m.MemImage.begin() + kCasProgramStart);
  }
  StoreWord(m, kStartPointer, kCasProgramStart);
  // By the whole file's length, stored or not; 16 bits of the sum are kept.
  const auto length = static_cast<int64_t>(fileSize & 0xFFFF) - int64_t{kCasHeaderSize};
  StoreWord(m, kEndPointer, length + kCasProgramStart);
}

bool LoadCAS(Machine& m, const std::string& file) {
  if ((m.PortShadow[2] & kPagingBits) != kBasicPaging) m.host->Pump(m);
  const FileContent content = ReadFile(file, kCasHeaderSize + kRoomForProgram);
  PlaceCas(m, content.bytes, content.size);
  return content.error.empty();
}

}  // namespace quoll
