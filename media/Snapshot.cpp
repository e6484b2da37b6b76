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

#include "machine/Machine.h"
#include "core/Files.h"

namespace quoll {

namespace {

using Z = Z80State;

constexpr std::string_view kMagic = "QUOLLEMU02";

struct CpuRow {
  size_t offset;
  int32_t Z80State::*field;
};

struct RunRow {
  size_t offset;
  int32_t RunState::*field;
};

constexpr std::array kCpuBytes = {
    CpuRow{19, &Z::A},        CpuRow{20, &Z::B},        CpuRow{21, &Z::C},        CpuRow{22, &Z::D},
    CpuRow{23, &Z::E},        CpuRow{24, &Z::H},        CpuRow{25, &Z::L},        CpuRow{26, &Z::A2},
    CpuRow{27, &Z::B2},       CpuRow{28, &Z::C2},       CpuRow{29, &Z::D2},       CpuRow{30, &Z::E2},
    CpuRow{31, &Z::H2},       CpuRow{32, &Z::L2},       CpuRow{33, &Z::AltFlagS}, CpuRow{34, &Z::AltFlagZ},
    CpuRow{35, &Z::AltFlagY}, CpuRow{36, &Z::AltFlagH}, CpuRow{37, &Z::AltFlagX}, CpuRow{38, &Z::AltFlagPV},
    CpuRow{39, &Z::AltFlagN}, CpuRow{40, &Z::AltFlagC}, CpuRow{41, &Z::FlagS},    CpuRow{42, &Z::FlagZ},
    CpuRow{43, &Z::FlagY},    CpuRow{44, &Z::FlagH},    CpuRow{45, &Z::FlagX},    CpuRow{46, &Z::FlagPV},
    CpuRow{47, &Z::FlagN},    CpuRow{48, &Z::FlagC},
};

constexpr size_t kPcOffset = 61;
constexpr std::array kCpuWords = {
    CpuRow{49, &Z::IX}, CpuRow{53, &Z::IY},       CpuRow{57, &Z::SP},   CpuRow{kPcOffset, &Z::PC},
    CpuRow{65, &Z::I},  CpuRow{69, &Z::R},        CpuRow{73, &Z::IFF1}, CpuRow{77, &Z::IFF2},
    CpuRow{81, &Z::IM}, CpuRow{407, &Z::IrqLine},
};

constexpr std::array kRunWords = {
    RunRow{403, &RunState::ResetRequest},
    RunRow{411, &RunState::NmiRequest},
};

constexpr size_t kPortsOffset = 99;
constexpr size_t kRunFlagOffset = 415;
constexpr size_t kCrtcOffset = 499;
constexpr size_t kMemoryOffset = 599;
static_assert(kMemoryOffset + kMemImageSize == kSnapshotSize);

void PutWord(std::vector<uint8_t>& file, size_t offset, int32_t value) {
  const auto bits = static_cast<uint32_t>(value);
  for (size_t byte = 0; byte < 4; ++byte) file[offset + byte] = static_cast<uint8_t>(bits >> (8 * byte));
}

int32_t Word(std::span<const uint8_t> file, size_t offset) {
  uint32_t bits = 0;
  for (size_t byte = 0; byte < 4; ++byte) bits |= static_cast<uint32_t>(file[offset + byte]) << (8 * byte);
  return static_cast<int32_t>(bits);
}

// Calls take with the bytes of a field, or not at all when the file ends before the field does.
template <class Take>
void TakeField(std::span<const uint8_t> file, size_t offset, size_t size, Take take) {
  if (file.size() >= offset + size) take(file.subspan(offset, size));
}

void TakeCpu(Z80State& z80, std::span<const uint8_t> file) {
  for (const CpuRow& row : kCpuBytes) {
    TakeField(file, row.offset, 1, [&](auto bytes) { z80.*row.field = bytes[0]; });
  }
  for (const CpuRow& row : kCpuWords) {
    TakeField(file, row.offset, 4, [&](auto bytes) { z80.*row.field = Word(bytes, 0); });
  }
  // Not in the file: PC rests on a HALT, which halts the processor again. Left set by the program that ran
  // before, it would move the loaded one by a byte at its next interrupt.
  TakeField(file, kPcOffset, 4, [&](auto) { z80.Halted = 0; });
}

}  // namespace

std::vector<uint8_t> SnapshotBytes(const Machine& m) {
  std::vector<uint8_t> file(kSnapshotSize);
  std::ranges::copy(kMagic, file.begin());
  for (const CpuRow& row : kCpuBytes) file[row.offset] = static_cast<uint8_t>(m.z80.*row.field);
  for (const CpuRow& row : kCpuWords) PutWord(file, row.offset, m.z80.*row.field);
  for (const RunRow& row : kRunWords) PutWord(file, row.offset, m.run.*row.field);
  std::ranges::copy(m.PortShadow, file.begin() + kPortsOffset);
  file[kRunFlagOffset] = m.run.CpuRunning;
  size_t offset = kCrtcOffset;
  for (const int32_t value : m.crtc.CrtcRegs) {
    PutWord(file, offset, value);
    offset += 4;
  }
  std::ranges::copy(m.MemImage, file.begin() + kMemoryOffset);
  return file;
}

SnapshotResult ApplySnapshot(Machine& m, std::span<const uint8_t> file) {
  if (file.size() < kMagic.size() || !std::ranges::equal(file.first(kMagic.size()), kMagic)) {
    return SnapshotResult::Foreign;
  }
  TakeCpu(m.z80, file);
  for (const RunRow& row : kRunWords) {
    TakeField(file, row.offset, 4, [&](auto bytes) { m.run.*row.field = Word(bytes, 0); });
  }
  TakeField(file, kPortsOffset, m.PortShadow.size(),
            [&](auto bytes) { std::ranges::copy(bytes, m.PortShadow.begin()); });
  TakeField(file, kRunFlagOffset, 1, [&](auto bytes) { m.run.CpuRunning = bytes[0]; });
  auto& registers = m.crtc.CrtcRegs;
  TakeField(file, kCrtcOffset, 4 * registers.size(), [&](auto bytes) {
    for (size_t number = 0; number < registers.size(); ++number) registers[number] = Word(bytes, 4 * number);
  });
  TakeField(file, kMemoryOffset, m.MemImage.size(),
            [&](auto bytes) { std::ranges::copy(bytes, m.MemImage.begin()); });
  KeepRanges(m.z80);
  RenewPages(m);
  return file.size() < kSnapshotSize ? SnapshotResult::CutShort : SnapshotResult::Whole;
}

bool SaveSnapshot(Machine& m, const std::string& name) {
  return SaveFileOrTell(*m.host, WithExtension(name, ".tvs"), SnapshotBytes(m));
}

bool LoadSnapShot(Machine& m, const std::string& file) {
  const FileContent content = ReadFile(file, kSnapshotSize);
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
