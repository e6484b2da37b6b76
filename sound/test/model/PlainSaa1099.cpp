#include "sound/test/model/PlainSaa1099.h"

#include <cmath>
#include <cstring>

namespace quoll {
namespace {

uint8_t ByteOf(double value) { return static_cast<uint8_t>(std::nearbyint(value)); }

int16_t Limited(double sum) {
  const double whole = std::nearbyint(sum);
  return static_cast<int16_t>(whole > 120.0 ? 120.0 : whole);
}

}  // namespace

PlainSaa1099::PlainSaa1099() {
  for (int octave = 0; octave < 8; ++octave) {
    for (int number = 0; number < 256; ++number) {
      const double onFile = std::nearbyint(8192.0 * 15625.0 * (1 << octave) / (511 - number));
      hertz[octave * 256 + number] = static_cast<int32_t>(std::nearbyint(onFile / 8192.0));
    }
  }
}

void PlainSaa1099::Write(int port, int value) {
  const int v = value & 0xFF;
  if ((port & 1) == 1) {
    address = static_cast<uint8_t>(v & 31);
    return;
  }
  const int r = address;
  if (r <= 5) {
    amp[r] = static_cast<uint8_t>(v & 15);
    amp[r + 6] = static_cast<uint8_t>(v >> 4);
  }
  if (r >= 8 && r <= 13) freq[r - 8].number = static_cast<uint8_t>(v);
  if (r >= 16 && r <= 18) {
    freq[2 * (r - 16)].octave = static_cast<uint8_t>(v & 7);
    freq[2 * (r - 16) + 1].octave = static_cast<uint8_t>(v >> 4 & 7);
  }
  if (r == 20) {
    for (int c = 0; c < 6; ++c) enable[c].tone = static_cast<uint8_t>(v >> c & 1);
  }
  if (r == 21) {
    for (int c = 0; c < 6; ++c) enable[c].noise = static_cast<uint8_t>(v >> c & 1);
  }
  if (r == 22) {
    noise[0] = static_cast<uint8_t>(v & 3);
    noise[1] = static_cast<uint8_t>(v >> 4 & 3);
  }
  if (r == 24 || r == 25) {
    Envelope& e = env[r - 24];
    e.enable = static_cast<uint8_t>(v >> 7 & 1);
    e.invertRight = static_cast<uint8_t>(v & 1);
    e.external = static_cast<uint8_t>(v >> 5 & 1);
    e.threeBit = static_cast<uint8_t>(v >> 4 & 1);
    e.mode = static_cast<uint8_t>(v >> 1 & 7);
  }
  if (r == 28) {
    soundEnable = static_cast<uint8_t>(v & 1);
    resetRequest = static_cast<uint8_t>(v >> 1 & 1);
  }
}

void PlainSaa1099::Reset() {
  env = {};
  enable = {};
  freq = {};
  amp = {};
  address = 0;
  silent = 1;
}

void PlainSaa1099::RenderNoises(Random& random) {
  double rate = 0.0;
  if (noise[0] == 0) rate = 10500.0;
  if (noise[0] == 1) rate = 6500.0;
  if (noise[0] == 2) rate = 4000.0;
  if (noise[0] == 3) rate = HertzOf(0) * 2.0;
  double step = rate / 11025.0;
  double phase = 0.0;
  int toggle = 255;
  int lastToggle = 0;
  uint8_t value = 0;
  for (int i = 0; i < 441; ++i) {
    if (phase >= 1.0) {
      phase -= 1.0;
      toggle = 255 - toggle;
    }
    phase += step;
    if (toggle != lastToggle) value = ByteOf(RandomNext(random) * 255.0);
    noise0[i] = value;
    lastToggle = toggle;
  }

  rate = step;
  if (noise[1] == 0) rate = 10500.0;
  if (noise[1] == 1) rate = 6500.0;
  if (noise[1] == 2) rate = 4000.0;
  if (noise[0] == 3) rate = HertzOf(3) * 2.0;
  step = rate / 11025.0;
  phase = 0.0;
  toggle = 255;
  lastToggle = 0;
  value = 0;
  for (int i = 0; i < 441; ++i) {
    if (phase >= 1.0) {
      phase -= 1.0;
      toggle = 255 - toggle;
    }
    if (toggle != lastToggle) value = ByteOf(RandomNext(random) * 255.0);
    noise1[i] = value;
    phase += step;
    lastToggle = toggle;
  }
}

void PlainSaa1099::RenderTones() {
  for (int c = 0; c < 6; ++c) {
    const double step = HertzOf(c) / 11000.0;
    for (int i = 0; i < 441; ++i) {
      if (std::trunc(tonePhase[c]) >= 1.0) {
        tonePhase[c] -= 1.0;
        toneLevel[c] = toneLevel[c] == 0.0 ? 255.0 : 0.0;
      }
      wave[i][c] = static_cast<uint8_t>(toneLevel[c]);
      tonePhase[c] += step;
    }
  }
}

void PlainSaa1099::RenderEnvelope(int which, uint8_t* values) {
  const int mode = env[which].mode;
  int channel = 1;
  int flag = env[0].threeBit;
  if (which == 1 && mode != 2 && mode != 6) {
    channel = 4;
    flag = env[1].threeBit;
  }
  double rate = HertzOf(channel) / 4.0;
  if (flag == 0) rate /= 2.0;
  const double step = rate / 11025.0;

  double p = 0.0;
  double level = 250.0;
  float& kept = envPhase[which];
  for (int i = 0; i < 441; ++i) {
    if (mode == 3 || mode == 5 || mode == 7) {
      if (kept >= 1.0F) {
        kept = static_cast<float>(kept - 1.0);
        envLevel[which] = envLevel[which] == 0.0F ? 250.0F : 0.0F;
      }
    }
    switch (mode) {
      case 0: values[i] = 0; break;
      case 1: values[i] = 250; break;
      case 2:
        if (p >= 1.0) {
          p -= 1.0;
          level = 0.0;
        }
        values[i] = ByteOf((1.0 - p) * level);
        p += step;
        break;
      case 3: values[i] = ByteOf((1.0 - kept) * 250.0); break;
      case 4:
        if (p >= 1.0) level = 0.0;
        values[i] = ByteOf(p <= 0.5 ? 2.0 * level * p : 2.0 * level * (1.0 - p));
        p += step;
        break;
      case 5: values[i] = ByteOf(std::fabs(kept - 0.5) * 500.0); break;
      case 6:
        if (p >= 1.0) {
          p -= 1.0;
          level = 0.0;
        }
        values[i] = ByteOf(level * p);
        p += step;
        break;
      case 7: values[i] = ByteOf(kept * 250.0); break;
      default: break;
    }
    if (mode == 3 || mode == 5 || mode == 7) kept = static_cast<float>(kept + step);
  }
}

void PlainSaa1099::ApplyLevels() {
  for (int side = 0; side < 2; ++side) {
    for (int c = 0; c < 6; ++c) {
      const double a = amp[c + 6 * side];
      const double d = c < 3 ? 31.0 : 30.0;
      for (int i = 0; i < 441; ++i) {
        uint8_t x = 0;
        if (enable[c].tone != 0) x = ByteOf(wave[i][c] / d * a);
        const uint8_t n = c < 3 ? noise0[i] : noise1[i];
        if (enable[c].noise != 0) x = ByteOf(n / 31.0 * a + x);
        (side == 0 ? left : right)[i][c] = x;
      }
    }
  }
}

void PlainSaa1099::ApplyEnvelopes() {
  for (int i = 0; i < 441; ++i) {
    if (env[0].enable != 0) {
      const double e = env0[i];
      left[i][2] = ByteOf(e * left[i][2] / 255.0);
      right[i][2] = ByteOf((env[0].invertRight != 0 ? 255.0 - e : e) * right[i][2] / 255.0);
    }
    if (env[1].enable != 0) {
      const double e = env1[i];
      if (env[1].invertRight == 0) {
        left[i][5] = ByteOf(left[i][5] / 255.0);
        right[i][5] = ByteOf(e * right[i][5] / 255.0);
      } else {
        left[i][5] = ByteOf(e * left[i][5] / 255.0);
        right[i][5] = ByteOf((255.0 - e) * right[i][5] / 255.0);
      }
    }
  }
}

void PlainSaa1099::Render(Random& random, bool patch2, bool patch5) {
  uint8_t sum = 0;
  for (const uint8_t level : amp) sum = static_cast<uint8_t>(sum + level);
  if (sum == 0) {
    silent = 1;
    for (int i = 0; i < 441; ++i) outL[i] = outR[i] = 0;
    return;
  }
  silent = 0;

  std::memset(wave, 0, sizeof wave);
  std::memset(left, 0, sizeof left);
  std::memset(right, 0, sizeof right);
  std::memset(noise0, 0, sizeof noise0);
  std::memset(noise1, 0, sizeof noise1);
  std::memset(env0, 0, sizeof env0);
  std::memset(env1, 0, sizeof env1);

  if (resetRequest != 0) {
    Reset();
    resetRequest = 0;
  } else if (soundEnable != 0) {
    if (patch2) enable[2].tone = 1;
    if (patch5) enable[5].tone = 1;
    RenderNoises(random);
    RenderTones();
    RenderEnvelope(0, env0);
    RenderEnvelope(1, env1);
    ApplyLevels();
    ApplyEnvelopes();
  }

  for (int i = 0; i < 441; ++i) {
    double sumLeft = 0.0;
    double sumRight = 0.0;
    for (int c = 0; c < 6; ++c) {
      sumLeft += left[i][c] / 8.0;
      sumRight += right[i][c] / 8.0;
    }
    outL[i] = Limited(sumLeft);
    outR[i] = Limited(sumRight);
  }
}

}  // namespace quoll
