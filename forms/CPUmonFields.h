// Which field of the processor stands behind each box of the Z80 monitor, by the boxes' indices.
#pragma once

#include <array>
#include <cstddef>

#include "z80/Z80State.h"

namespace quoll {

using MonitorField = int32_t Z80State::*;

inline constexpr std::array<MonitorField, 14> kMonitorRegisters{
    &Z80State::A,  &Z80State::B,  &Z80State::C,  &Z80State::D,  &Z80State::E,  &Z80State::H,  &Z80State::L,
    &Z80State::A2, &Z80State::B2, &Z80State::C2, &Z80State::D2, &Z80State::E2, &Z80State::H2, &Z80State::L2};

inline constexpr std::array<MonitorField, 16> kMonitorFlags{
    &Z80State::FlagS,    &Z80State::FlagZ,     &Z80State::FlagY,    &Z80State::FlagH,
    &Z80State::FlagX,    &Z80State::FlagPV,    &Z80State::FlagN,    &Z80State::FlagC,
    &Z80State::AltFlagS, &Z80State::AltFlagZ,  &Z80State::AltFlagY, &Z80State::AltFlagH,
    &Z80State::AltFlagX, &Z80State::AltFlagPV, &Z80State::AltFlagN, &Z80State::AltFlagC};

// The first four have four digits.
inline constexpr size_t kMonitorWide = 4;
inline constexpr std::array<MonitorField, 6> kMonitorWords{&Z80State::IX, &Z80State::SP, &Z80State::IY,
                                                           &Z80State::PC, &Z80State::I,  &Z80State::R};

inline constexpr std::array<MonitorField, 3> kMonitorModes{&Z80State::IFF1, &Z80State::IFF2, &Z80State::IM};

}  // namespace quoll
