// The layout of the file, offsets from its start, numbers with the low byte first:
//
//      0  "QUOLLEMU02", then 9 bytes of zero
//     19  registers, one byte each: A B C D E H L, then the alternate ones
//     33  flags, one byte each, 0 or 1: alternate ones, then the main ones
//     49  IX IY SP PC I R IFF1 IFF2 IM, four bytes each; 14 bytes of zero
//     99  PortShadow; 48 bytes of zero
//    403  requests for reset, interrupt and NMI, four bytes each
//    415  run flag; 83 bytes of zero
//    499  CrtcRegs, 19 times four bytes; 24 bytes of zero
//    599  MemImage to the file's end
#include "media/Snapshot.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "core/Files.h"
#include "machine/Machine.h"
#include "z80/Z80Fields.h"

namespace quoll {

namespace {

constexpr std::string_view kMagic = "QUOLLEMU02";

constexpr size_t kBytesOffset = 19;
constexpr size_t kWordsOffset = 49;
constexpr size_t kWordSize = 4;
constexpr size_t kCrtcOffset = 499;

// Calls visit with place, size and value of each number of processor, requests and CRTC. The machine may be
// const.
template <class AnyMachine, class Visit>
void VisitNumbers(AnyMachine& m, Visit visit) {
  for (size_t i = 0; i < kZ80Bytes; ++i) visit(kBytesOffset + i, size_t{1}, m.z80.*kZ80Fields[i].field);
  for (size_t i = 0; i < kZ80Words; ++i)
    visit(kWordsOffset + kWordSize * i, kWordSize, m.z80.*kZ80Fields[kZ80Bytes + i].field);
  visit(size_t{403}, kWordSize, m.run.ResetRequest);
  visit(size_t{407}, kWordSize, m.z80.IrqLine);
  visit(size_t{411}, kWordSize, m.run.NmiRequest);
  for (size_t i = 0; i < m.crtc.CrtcRegs.size(); ++i)
    visit(kCrtcOffset + kWordSize * i, kWordSize, m.crtc.CrtcRegs[i]);
}

constexpr size_t kPcOffset = 61;
constexpr size_t kPortsOffset = 99;
constexpr size_t kRunFlagOffset = 415;
constexpr size_t kMemoryOffset = 599;
static_assert(kMemoryOffset + kMemImageSize == kSnapshotSize);

void PutNumber(std::span<uint8_t> place, int32_t value) {
  const auto bits = static_cast<uint32_t>(value);
  for (size_t byte = 0; byte < place.size(); ++byte) place[byte] = static_cast<uint8_t>(bits >> (8 * byte));
}

int32_t Number(std::span<const uint8_t> place) {
  uint32_t bits = 0;
  for (size_t byte = 0; byte < place.size(); ++byte) bits |= static_cast<uint32_t>(place[byte]) << (8 * byte);
  return static_cast<int32_t>(bits);
}

// Calls take with the bytes of a field, or not at all when the file ends before the field does.
template <class Take>
void TakeField(std::span<const uint8_t> file, size_t offset, size_t size, Take take) {
  if (file.size() >= offset + size) take(file.subspan(offset, size));
}

// As many of the bytes as the file has.
void TakeBytes(std::span<const uint8_t> file, size_t offset, std::span<uint8_t> bytes) {
  const auto there = file.subspan(std::min(offset, file.size()));
  std::ranges::copy(there.first(std::min(bytes.size(), there.size())), bytes.begin());
}

void TakeNumbers(Machine& m, std::span<const uint8_t> file) {
  VisitNumbers(m, [file](size_t offset, size_t size, int32_t& value) {
    TakeField(file, offset, size, [&value](auto bytes) { value = Number(bytes); });
  });
  // Not in the file: PC rests on a HALT, which halts the processor again. Left set by the program that ran
  // before, it would move the loaded one by a byte at its next interrupt.
  TakeField(file, kPcOffset, kWordSize, [&m](auto) { m.z80.Halted = 0; });
}

}  // namespace

std::vector<uint8_t> SnapshotBytes(const Machine& m) {
  std::vector<uint8_t> file(kSnapshotSize);
  std::ranges::copy(kMagic, file.begin());
  const std::span<uint8_t> bytes(file);
  VisitNumbers(m, [bytes](size_t offset, size_t size, int32_t value) {
    PutNumber(bytes.subspan(offset, size), value);
  });
  std::ranges::copy(m.PortShadow, file.begin() + kPortsOffset);
  file[kRunFlagOffset] = m.run.CpuRunning;
  std::ranges::copy(m.MemImage, file.begin() + kMemoryOffset);
  return file;
}

SnapshotResult ApplySnapshot(Machine& m, std::span<const uint8_t> file) {
  if (file.size() < kMagic.size() || !std::ranges::equal(file.first(kMagic.size()), kMagic)) {
    return SnapshotResult::Foreign;
  }
  TakeNumbers(m, file);
  TakeBytes(file, kPortsOffset, m.PortShadow);
  TakeField(file, kRunFlagOffset, 1, [&](auto bytes) { m.run.CpuRunning = bytes[0]; });
  TakeBytes(file, kMemoryOffset, m.MemImage);
  KeepBytes(m.z80);
  RenewPages(m);
  return file.size() < kSnapshotSize ? SnapshotResult::CutShort : SnapshotResult::Whole;
}

bool SaveSnapshot(Machine& m, const std::string& name) {
  return SaveFileOrTell(*m.host, WithExtension(name, ".tvs"), SnapshotBytes(m));
}

bool LoadSnapShot(Machine& m, const std::string& file) {
  const FileContent content = ReadFile(file, kSnapshotSize);
  if (!content.error.empty()) {
    TellFileError(*m.host, content.error);
    return false;
  }
  const SnapshotResult result = ApplySnapshot(m, content.bytes);
  if (result == SnapshotResult::Foreign) {
    m.host->MessageBox("Snapshot not valid!", "Error", MessageIcon::None);
  } else if (result == SnapshotResult::CutShort) {
    TellFileError(*m.host, file + ": the file was cut short: it has " + std::to_string(content.bytes.size()) +
                               " of " + std::to_string(kSnapshotSize) + " bytes");
  }
  return result != SnapshotResult::Foreign;
}

}  // namespace quoll
