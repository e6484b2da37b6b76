// One frame of the sound card: silent, with every voice of every chip, each chip alone; beside the plain
// models that the tests compare the chips with.
#include <benchmark/benchmark.h>

#include "sound/SoundCard.h"
#include "sound/test/ChipTwins.h"

namespace quoll::test {
namespace {

void SilentCard(benchmark::State& state) {
  const auto card = std::make_unique<SoundCard>();
  Random random;
  SoundCardInit(*card);
  SoundCardReset(*card);
  while (state.KeepRunning()) {
    SoundCardRender(*card, {}, random);
    benchmark::ClobberMemory();
  }
}
BENCHMARK(SilentCard)->Unit(benchmark::kMicrosecond);

// Every voice sounds, with noise, envelopes and the chip's filter, the YM3812 with two operators and a wave
// each. The boxes of the windows are as they are at the start: the SID's post filters are off.
void PlayAll(SnTwins& twins) { twins.HoldTone(); }
void PlayAll(AyTwins& twins) { twins.HoldTone(); }
void PlayAll(SaaTwins& twins) {
  twins.HoldTone();
  twins.Write(21, 0x3F);
}
void PlayAll(OpllTwins& twins) { twins.HoldTone(); }
void PlayAll(SidTwins& twins) {
  twins.HoldTone();
  twins.controls = {};
}
void PlayAll(OplTwins& twins) {
  twins.Write(1, 0x20);
  for (int c = 0; c < kOplChannels; ++c) {
    for (const int op : {kOplModulatorOffset[c], kOplCarrierOffset[c]}) {
      twins.Write(0x20 + op, 1 + (c + op) % 5);
      twins.Write(0x40 + op, 4 + c);
      twins.Write(0xE0 + op, c % 4);
    }
    twins.Write(0xA0 + c, 29 * c + 7);
    twins.Write(0xB0 + c, 0x2D + 4 * (c % 3));
    twins.Write(0xC0 + c, 2 * (c % 6));
  }
}

struct AllTwins {
  SaaTwins saa;
  SnTwins sn;
  OplTwins opl;
  SidTwins sid;
  OpllTwins opll;
  AyTwins ay;
};

void FullCard(benchmark::State& state) {
  const auto twins = std::make_unique<AllTwins>();
  const auto card = std::make_unique<SoundCard>();
  const auto play = [](auto& each, auto& chip) {
    PlayAll(each);
    chip = each.chip;
  };
  play(twins->saa, card->saa);
  play(twins->sn, card->sn);
  play(twins->opl, card->opl);
  play(twins->sid, card->sid);
  play(twins->opll, card->opll);
  play(twins->ay, card->ay);
  const SoundCardControls controls{.saa = {}, .opl = {}, .sid = twins->sid.controls, .opll = {}};
  Random random;
  while (state.KeepRunning()) {
    SoundCardRender(*card, controls, random);
    benchmark::ClobberMemory();
  }
}
BENCHMARK(FullCard)->Unit(benchmark::kMicrosecond);

// What the post filters add: all three, twice each.
void SidWithPostFilters(benchmark::State& state) {
  SidTwins twins;
  twins.HoldTone();
  twins.controls.Check1 = twins.controls.Check2 = twins.controls.Check3 = true;
  while (state.KeepRunning()) {
    twins.RenderChip();
    benchmark::ClobberMemory();
  }
}
BENCHMARK(SidWithPostFilters)->Unit(benchmark::kMicrosecond);

template <class Twins>
void Each(benchmark::State& state, void (Twins::*render)()) {
  const auto twins = std::make_unique<Twins>();
  PlayAll(*twins);
  while (state.KeepRunning()) {
    (*twins.*render)();
    benchmark::ClobberMemory();
  }
}

// The chip, and behind it its model.
template <class Twins>
bool Compare(const std::string& name) {
  for (const auto& [what, render] :
       {std::pair("Chip/", &Twins::RenderChip), {"Model/", &Twins::RenderModel}}) {
    benchmark::RegisterBenchmark((what + name).c_str(), Each<Twins>, render)->Unit(benchmark::kMicrosecond);
  }
  return true;
}

[[maybe_unused]] const bool kCompared = Compare<SnTwins>("SN76489") && Compare<AyTwins>("AY-3-8910") &&
                                        Compare<SaaTwins>("SAA1099") && Compare<OplTwins>("YM3812") &&
                                        Compare<OpllTwins>("YM2413") && Compare<SidTwins>("SID6581");

}  // namespace
}  // namespace quoll::test
