#include "sound/SoundCard.h"

#include <array>

namespace quoll {

namespace {

template <auto kChip, auto kSamples>
const FrameSamples& Out(const SoundCard& card) {
  return card.*kChip.*kSamples;
}

// A function that takes the chip's record alone.
template <auto kChip, auto kFunction>
void On(SoundCard& card) {
  kFunction(card.*kChip);
}

// Renderers take random numbers, the window's controls, or both.
template <auto kChip, auto kRender>
void WithRandom(SoundCard& card, const SoundCardControls& /*controls*/, Random& random) {
  kRender(card.*kChip, random);
}
template <auto kChip, auto kRender, auto kControls>
void WithControls(SoundCard& card, const SoundCardControls& controls, Random& /*random*/) {
  kRender(card.*kChip, controls.*kControls);
}
template <auto kChip, auto kRender, auto kControls>
void WithBoth(SoundCard& card, const SoundCardControls& controls, Random& random) {
  kRender(card.*kChip, controls.*kControls, random);
}

constexpr auto kSaa = &SoundCard::saa;
constexpr auto kSn = &SoundCard::sn;
constexpr auto kOpl = &SoundCard::opl;
constexpr auto kSid = &SoundCard::sid;
constexpr auto kOpll = &SoundCard::opll;
constexpr auto kAy = &SoundCard::ay;

// The same on both sides.
template <auto kChip, auto kSamples>
constexpr SoundChip Mono(void (*init)(SoundCard&), void (*reset)(SoundCard&),
                         void (*render)(SoundCard&, const SoundCardControls&, Random&), double weight) {
  return {init, reset, render, weight, Out<kChip, kSamples>, Out<kChip, kSamples>};
}

constexpr std::array kChips{
    Mono<kOpl, &Ym3812::Ym3812Out>(On<kOpl, OplReset>, On<kOpl, OplReset>,
                                   WithControls<kOpl, OplRender, &SoundCardControls::opl>, 0.5),
    Mono<kOpll, &Ym2413::Ym2413Out>(On<kOpll, OpllReset>, On<kOpll, OpllReset>,
                                    WithControls<kOpll, OpllRender, &SoundCardControls::opll>, 0.5),
    SoundChip{nullptr, On<kSaa, SaaReset>, WithBoth<kSaa, SaaRender, &SoundCardControls::saa>, 1.0,
              Out<kSaa, &Saa1099::SaaOutL>, Out<kSaa, &Saa1099::SaaOutR>},
    Mono<kSn, &Sn76489::SnOut>(On<kSn, SnInit>, On<kSn, SnReset>, WithRandom<kSn, SnRender>, 0.1),
    Mono<kSid, &Sid6581::SidOut>(nullptr, On<kSid, SidReset>,
                                 WithBoth<kSid, SidRender, &SoundCardControls::sid>, 0.1),
    Mono<kAy, &Ay38910::AyOut>(On<kAy, AyInit>, On<kAy, AyReset>, WithRandom<kAy, AyRender>, 1.0),
};

}  // namespace

std::span<const SoundChip> SoundChips() { return kChips; }

void SoundCardInit(SoundCard& card) {
  for (const SoundChip& chip : kChips)
    if (chip.init != nullptr) chip.init(card);
}

void SoundCardReset(SoundCard& card) {
  for (const SoundChip& chip : kChips) chip.reset(card);
}

void SoundCardRender(SoundCard& card, const SoundCardControls& controls, Random& random) {
  for (const SoundChip& chip : kChips) chip.render(card, controls, random);
}

}  // namespace quoll
