// Cassette files: the first four bytes say how long the file claims to be beyond the bytes that are there,
// or, when they are odd, the length to which the rest is repeated; then comes the file. Afterwards a program
// is saved from two addresses taken from the file's own end.
#include <algorithm>
#include <cstdlib>
#include <cstring>

#include "fuzz/Fuzz.h"
#include "fuzz/FuzzMachine.h"
#include "fuzz/Tiled.h"
#include "media/Cas.h"

namespace quoll {

namespace {

constexpr size_t kPointers = 0x1728;  // BASIC's pointers lie below
constexpr size_t kStart = 0x19EF;
constexpr size_t kLongest = 300'000;  // beyond the memory's end

void CheckLoad(Machine& m, std::span<const uint8_t> file) {
  const size_t program = file.size() > kCasHeaderSize ? file.size() - kCasHeaderSize : 0;
  const size_t stored = std::min(program, m.MemImage.size() - kStart);
  const auto begin = m.MemImage.begin();
  if (program != 0 && !std::equal(begin + kStart, begin + kStart + static_cast<ptrdiff_t>(stored),
                                  file.begin() + kCasHeaderSize)) {
    std::abort();
  }
  CheckZeros(m, kPointers, kStart);
  CheckZeros(m, kStart + stored, m.MemImage.size());
}

void CheckPointers(const Machine& m, uint64_t size) {
  const auto word = [&m](size_t at) { return m.MemImage[at] + m.MemImage[at + 1] * 0x100; };
  const uint64_t end = size + kStart - kCasHeaderSize;
  if (word(0x1722) != kStart || word(0x1726) != static_cast<int>(end & 0xFFFF)) std::abort();
}

void CheckSave(Machine& m, int32_t s, int32_t e) {
  const CasRange range = ClampCasRange(s, e);
  const size_t length = range.e > range.s ? static_cast<size_t>(range.e - range.s) : 0;
  const std::vector<uint8_t> saved = CasBytes(m, s, e);
  if (range.s < kCasProgramStart || range.e > 0xFFFF) std::abort();
  if (saved.size() != kCasHeaderSize + length) std::abort();
  if (length != 0 && saved.back() != MemRead(m, range.e - 1)) std::abort();
}

}  // namespace

void Fuzz(std::span<const uint8_t> input) {
  static Host host;
  const auto m = FuzzMachine(host);
  uint32_t beyond = 0;
  if (input.size() >= sizeof beyond) {
    std::memcpy(&beyond, input.data(), sizeof beyond);
    input = input.subspan(sizeof beyond);
  }
  std::vector<uint8_t> file(input.begin(), input.end());
  if ((beyond & 1) != 0) {
    file = Tiled(input, (beyond >> 1) % kLongest);
    beyond = 0;
  }
  const uint64_t size = uint64_t{file.size()} + beyond;
  PlaceCas(*m, file, size);
  CheckLoad(*m, file);
  CheckPointers(*m, size);
  int32_t numbers[2] = {0, 0x8000};
  if (input.size() >= sizeof numbers) std::memcpy(numbers, input.last(sizeof numbers).data(), sizeof numbers);
  if (input.size() > sizeof numbers) m->PortShadow[2] = input[0];
  CheckSave(*m, numbers[0], numbers[1]);
  CheckSave(*m, numbers[0] & 0xFFFF, numbers[1] & 0xFFFF);
  std::string start(input.begin(), input.end()), end = std::to_string(numbers[0]);
  const CasRange typed = UseCasBoxes(start, end);
  if (start != std::to_string(typed.s) || end != std::to_string(typed.e)) std::abort();
}

}  // namespace quoll
