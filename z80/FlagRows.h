// What a result does to the flags, worked out beforehand: one row for each result, its fields in the order in
// which Z80State keeps its flags, so that a row is copied whole.
#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "z80/Z80State.h"

namespace quoll {

// S, Z and parity of a result of logic, shifts and input; H cleared.
struct ResultRow {
  int32_t S, Z, H, PV;
};

constexpr std::array<ResultRow, 256> MakeResultRows() {
  std::array<ResultRow, 256> rows{};
  for (size_t r = 0; r < rows.size(); ++r) {
    rows[r] = {r > 127, r == 0, 0, std::popcount(r) % 2 == 0};
  }
  return rows;
}
inline constexpr std::array<ResultRow, 256> kResultRows = MakeResultRows();

// Carries of an addition or borrows of a subtraction. The row's number is A xor operand xor (unmasked)
// result, nine bits: bit n is the carry into bit n. The carry out of bit 3 is H, that out of bit 7 is C; they
// overflow when the carries into and out of bit 7 differ.
struct CarryRow {
  int32_t H, PV, C, N;
};

constexpr std::array<CarryRow, 512> MakeCarryRows(int32_t n) {
  std::array<CarryRow, 512> rows{};
  for (size_t carries = 0; carries < rows.size(); ++carries) {
    const bool intoBit7 = (carries & 0x80) != 0;
    const bool outOfBit7 = (carries & 0x100) != 0;
    rows[carries] = {(carries & 0x10) != 0, intoBit7 != outOfBit7, outOfBit7, n};
  }
  return rows;
}
inline constexpr std::array<CarryRow, 512> kAddRows = MakeCarryRows(0);
inline constexpr std::array<CarryRow, 512> kSubRows = MakeCarryRows(1);

// Copies the first `size` bytes of a row over the flags from the one at `offset` on. Said in bytes, since the
// compiler then moves several flags at a time.
template <class Row>
void CopyRow(Z80State& s, size_t offset, const Row& row, size_t size = sizeof(Row)) {
  std::memcpy(reinterpret_cast<unsigned char*>(&s) + offset, &row, size);
}

// S, Z, H and PV of INC and DEC, by the operand.
constexpr std::array<ResultRow, 256> MakeIncRows() {
  std::array<ResultRow, 256> rows{};
  for (size_t v = 0; v < rows.size(); ++v)
    rows[v] = {((v + 1) & 0x80) != 0, v == 255, (v & 15) == 15, v == 127};
  return rows;
}
constexpr std::array<ResultRow, 256> MakeDecRows() {
  std::array<ResultRow, 256> rows{};
  for (size_t v = 0; v < rows.size(); ++v) rows[v] = {((v - 1) & 0x80) != 0, v == 1, (v & 15) == 0, v == 128};
  return rows;
}
inline constexpr std::array<ResultRow, 256> kIncRows = MakeIncRows();
inline constexpr std::array<ResultRow, 256> kDecRows = MakeDecRows();

// All flags of an F byte, in Z80State's order.
struct FRow {
  int32_t S, Z, H, PV, C, N, Y, X;
};
constexpr std::array<FRow, 256> MakeFRows() {
  std::array<FRow, 256> rows{};
  for (size_t f = 0; f < rows.size(); ++f) {
    const auto bit = [f](unsigned n) { return static_cast<int32_t>((f >> n) & 1); };
    rows[f] = {bit(7), bit(6), bit(4), bit(2), bit(0), bit(1), bit(5), bit(3)};
  }
  return rows;
}
inline constexpr std::array<FRow, 256> kFRows = MakeFRows();

// S and Z of a result of 0 to 255.
inline void FlagsSZ(Z80State& s, int32_t result) {
  CopyRow(s, offsetof(Z80State, FlagS), kResultRows[static_cast<uint8_t>(result)], 2 * sizeof(int32_t));
}

// S, Z and parity of a result; H and N cleared. FlagC stays.
inline void FlagsParity(Z80State& s, int32_t result) {
  CopyRow(s, offsetof(Z80State, FlagS), kResultRows[static_cast<uint8_t>(result)]);
  s.FlagN = 0;
}

// The same with FlagC cleared too.
inline void FlagsLogic(Z80State& s, int32_t result) {
  CopyRow(s, offsetof(Z80State, FlagS), kResultRows[static_cast<uint8_t>(result)]);
  s.FlagC = 0;
  s.FlagN = 0;
}

// H, PV, C and N of an addition or subtraction.
inline void FlagsCarry(Z80State& s, const CarryRow& row) { CopyRow(s, offsetof(Z80State, FlagH), row); }

static_assert(offsetof(Z80State, FlagX) == offsetof(Z80State, FlagS) + offsetof(FRow, X));
static_assert(offsetof(Z80State, FlagY) == offsetof(Z80State, FlagS) + offsetof(FRow, Y));
static_assert(offsetof(Z80State, FlagZ) == offsetof(Z80State, FlagS) + offsetof(ResultRow, Z));
static_assert(offsetof(Z80State, FlagH) == offsetof(Z80State, FlagS) + offsetof(ResultRow, H));
static_assert(offsetof(Z80State, FlagPV) == offsetof(Z80State, FlagS) + offsetof(ResultRow, PV));
static_assert(offsetof(Z80State, FlagPV) == offsetof(Z80State, FlagH) + offsetof(CarryRow, PV));
static_assert(offsetof(Z80State, FlagC) == offsetof(Z80State, FlagH) + offsetof(CarryRow, C));
static_assert(offsetof(Z80State, FlagN) == offsetof(Z80State, FlagH) + offsetof(CarryRow, N));

}  // namespace quoll
