// The processor's fields by name, for scripts, snapshots and tests.
#pragma once

#include <array>
#include <string_view>

#include "z80/Z80State.h"

namespace quoll {

struct Z80Field {
  std::string_view name;
  int32_t Z80State::*field;
};

// In the order in which a snapshot holds them: first those of a byte, registers and flags, then those of a
// word; the last ones are not in it, or elsewhere.
inline constexpr size_t kZ80Bytes = 30, kZ80Words = 9;
inline constexpr std::array kZ80Fields{
    Z80Field{"A", &Z80State::A},
    Z80Field{"B", &Z80State::B},
    Z80Field{"C", &Z80State::C},
    Z80Field{"D", &Z80State::D},
    Z80Field{"E", &Z80State::E},
    Z80Field{"H", &Z80State::H},
    Z80Field{"L", &Z80State::L},
    Z80Field{"A2", &Z80State::A2},
    Z80Field{"B2", &Z80State::B2},
    Z80Field{"C2", &Z80State::C2},
    Z80Field{"D2", &Z80State::D2},
    Z80Field{"E2", &Z80State::E2},
    Z80Field{"H2", &Z80State::H2},
    Z80Field{"L2", &Z80State::L2},
    Z80Field{"AltFlagS", &Z80State::AltFlagS},
    Z80Field{"AltFlagZ", &Z80State::AltFlagZ},
    Z80Field{"AltFlagY", &Z80State::AltFlagY},
    Z80Field{"AltFlagH", &Z80State::AltFlagH},
    Z80Field{"AltFlagX", &Z80State::AltFlagX},
    Z80Field{"AltFlagPV", &Z80State::AltFlagPV},
    Z80Field{"AltFlagN", &Z80State::AltFlagN},
    Z80Field{"AltFlagC", &Z80State::AltFlagC},
    Z80Field{"FlagS", &Z80State::FlagS},
    Z80Field{"FlagZ", &Z80State::FlagZ},
    Z80Field{"FlagY", &Z80State::FlagY},
    Z80Field{"FlagH", &Z80State::FlagH},
    Z80Field{"FlagX", &Z80State::FlagX},
    Z80Field{"FlagPV", &Z80State::FlagPV},
    Z80Field{"FlagN", &Z80State::FlagN},
    Z80Field{"FlagC", &Z80State::FlagC},
    Z80Field{"IX", &Z80State::IX},
    Z80Field{"IY", &Z80State::IY},
    Z80Field{"SP", &Z80State::SP},
    Z80Field{"PC", &Z80State::PC},
    Z80Field{"I", &Z80State::I},
    Z80Field{"R", &Z80State::R},
    Z80Field{"IFF1", &Z80State::IFF1},
    Z80Field{"IFF2", &Z80State::IFF2},
    Z80Field{"IM", &Z80State::IM},
    Z80Field{"Halted", &Z80State::Halted},
    Z80Field{"IrqLine", &Z80State::IrqLine},
    Z80Field{"PrefixState", &Z80State::PrefixState},
    Z80Field{"CurOpcode", &Z80State::CurOpcode},
    Z80Field{"IndexDisp", &Z80State::IndexDisp},
    Z80Field{"UnDocEnabled", &Z80State::UnDocEnabled},
};
static_assert(sizeof(Z80State) == kZ80Fields.size() * sizeof(int32_t), "a field has no name here");

}  // namespace quoll
