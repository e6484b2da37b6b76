#include "sound/SidFilters.h"

#include <algorithm>
#include <cmath>

namespace quoll {
namespace {

constexpr double kCutoffScale = 22000.0;
constexpr double kButterflyLimit = 65000.0;
// A frame of this many rounds takes longer than the frame lasts.
constexpr int kMostRounds = 1000;

double LowPassed(double a, const SidMemory& memory, double input) {
  return (1.0 - a) * memory.output + a * input;
}

double HighPassed(double a, const SidMemory& memory, double input) {
  return (input - memory.input) * a + a * memory.output;
}

bool Routed(const Sid6581& chip, int voice) { return (chip.SidRoute >> voice & 1) != 0; }

// The routed voices advance together: each sample waits for the last one of its own voice only.
void LowPassVoices(Sid6581& chip) {
  const double a = std::clamp(chip.SidCutoff / kCutoffScale, 0.2, 1.0);
  chip.cutoffPercent = static_cast<int32_t>(std::nearbyint(a * 100.0));
  std::array<SidMemory, kSidVoices> memory = chip.lowPass;
  for (int i = 0; i < kFrameSamples; ++i) {
    for (int v = 0; v < kSidVoices; ++v) {
      if (!Routed(chip, v)) continue;
      float& sample = chip.SidVoiceOut[v][i];
      const auto output = static_cast<float>(LowPassed(a, memory[v], sample));
      memory[v] = {.output = output, .input = sample};
      sample = output;
    }
  }
  chip.lowPass = memory;
}

// Each routed voice's output goes to voice 1, after what that voice had there: the last routed one is heard.
void HighPassVoices(Sid6581& chip) {
  const double a = std::clamp(1.0 - chip.SidCutoff / kCutoffScale, 0.0, 0.8);
  std::array<SidMemory, kSidVoices> memory = chip.highPass;
  for (int i = 0; i < kFrameSamples; ++i) {
    for (int v = 0; v < kSidVoices; ++v) {
      if (!Routed(chip, v)) continue;
      const float sample = chip.SidVoiceOut[v][i];
      const auto output = static_cast<float>(HighPassed(a, memory[v], sample));
      memory[v] = {.output = output, .input = sample};
      chip.SidVoiceOut[0][i] = output;
    }
  }
  chip.highPass = memory;
}

double Strength(int32_t slider) { return std::clamp(slider, 0, 100) / 100.0; }

template <class Next>
void RunPostFilter(FrameSamples& samples, SidMemory& memory, double inputScale, double outputScale,
                   Next next) {
  for (int16_t& sample : samples) {
    const auto input = static_cast<float>(sample * inputScale);
    const auto output = static_cast<float>(next(memory, input));
    memory = {.output = output, .input = input};
    sample = SidSample(output / outputScale);
  }
}

}  // namespace

int16_t SidSample(double value) {
  // Written so that what is no number takes an end, too.
  const double above = value > -32768.0 ? value : -32768.0;
  return static_cast<int16_t>(std::nearbyint(above < 32767.0 ? above : 32767.0));
}

void SidChipFilter(Sid6581& chip) {
  if ((chip.SidRoute & 7) == 0) return;
  // A low pass works on its own voice, so all of them can come before the first high pass.
  if ((chip.SidMode & 1) != 0) LowPassVoices(chip);
  if ((chip.SidMode & 4) != 0) HighPassVoices(chip);
}

void SidPostFilters(Sid6581& chip, const SidControls& controls) {
  const double high = 1.0 - Strength(controls.HScroll1);
  const double low = Strength(controls.HScroll2);
  const double both = Strength(controls.HScroll3);
  const auto highPass = [&](const SidMemory& m, double x) { return HighPassed(high, m, x); };
  const auto lowPass = [&](const SidMemory& m, double x) { return LowPassed(low, m, x); };
  const auto butterfly = [&](const SidMemory& m, double x) {
    return std::clamp(LowPassed(both, m, x) - HighPassed(both, m, x), -kButterflyLimit, kButterflyLimit);
  };
  const int rounds = std::min(controls.Text1, kMostRounds - 1) + 1;
  for (int round = 0; round < rounds; ++round) {
    if (controls.Check1) RunPostFilter(chip.SidOut, chip.postHighPass, 1.0, 1.0, highPass);
    if (controls.Check2) RunPostFilter(chip.SidOut, chip.postLowPass, 100.0, 100.0, lowPass);
    if (controls.Check3) RunPostFilter(chip.SidOut, chip.postButterfly, 2.0, 1.0, butterfly);
  }
}

}  // namespace quoll
