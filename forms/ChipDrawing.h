// What the windows of the sound chips share: scopes, and labels that show numbers.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "core/Form.h"

namespace quoll {

struct SoundCardControls;

// A chip's form as the frame's sound meets it.
struct ChipForm {
  void (*controls)(const Machine& m,
                   SoundCardControls& controls);  // what its boxes tell the renderer; or nullptr
  // Draws what a chip that is not silent has played in this frame; scopes: it is the block's last one.
  void (*draw)(Machine& m, bool scopes);
};

// All of them: Forms.cpp has the list.
std::span<const ChipForm> ChipForms();

// A scope shows half a frame, a point for each sample, in a box of this size whose middle is silence.
inline constexpr int kScopePoints = 221;
inline constexpr float kScopeHeight = 64, kScopeMiddle = kScopeHeight / 2;
// Height above and below it to which waves between -1 and 1 reach.
inline constexpr float kScopeReach = 28;

// Draws a scope anew; yOf gives the height of each of the points 0 to 220.
template <class HeightOf>
void DrawScope(Trace& scope, HeightOf yOf) {
  scope.y.resize(kScopePoints);
  for (int i = 0; i < kScopePoints; ++i) scope.y[static_cast<size_t>(i)] = static_cast<float>(yOf(i));
  ++scope.drawings;
}

// count scroll bars of one range, all at one value.
template <size_t kCount>
constexpr std::array<Scroll, kCount> Scrolls(int32_t first, int32_t last, int32_t value) {
  std::array<Scroll, kCount> scrolls{};
  scrolls.fill({value, first, last});
  return scrolls;
}

template <size_t kCount>
constexpr std::array<bool, kCount> AllTicked() {
  std::array<bool, kCount> ticks{};
  ticks.fill(true);
  return ticks;
}

// Captions of an array of registers: "00|01|02" and so on.
template <int kCount>
inline constexpr auto kHexNumberChars = [] {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  std::array<char, 3 * kCount> chars{};
  for (int i = 0; i < kCount; ++i) {
    chars[3 * i] = kDigits[i / 16];
    chars[3 * i + 1] = kDigits[i % 16];
    chars[3 * i + 2] = '|';
  }
  return chars;
}();
template <int kCount>
inline constexpr std::string_view kHexNumbers{kHexNumberChars<kCount>.data(), 3 * kCount - 1};

// Labels are written only when their text changes: most timers find nothing new.
void ShowText(std::string& label, std::string_view text);
void ShowNumber(std::string& label, int64_t number);
// Rounded to a whole number.
void ShowHertz(std::string& label, double hertz);
// Two digits.
void ShowHex(std::string& label, uint8_t number);

}  // namespace quoll
