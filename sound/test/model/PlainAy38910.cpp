#include "sound/test/model/PlainAy38910.h"

#include <cmath>

namespace quoll {

PlainAy38910::PlainAy38910() {
  volume[0] = 0.0F;
  volume[15] = 1.0F;
  for (int i = 14; i >= 1; --i) volume[i] = static_cast<float>(volume[i + 1] * 0.75);
  Reset();
}

void PlainAy38910::Write(int port, int value) {
  if ((port & 1) == 0) {
    latch = static_cast<uint8_t>(value);
    return;
  }
  if (latch <= 15) reg[latch] = value & 0xFF;
}

void PlainAy38910::Reset() {
  for (int32_t& r : reg) r = 0;
  reg[7] = 255;
}

void PlainAy38910::RenderEnvelope() {
  const int period = envelopePeriod == 0 ? 1 : envelopePeriod;
  envelopeFrequency = static_cast<int32_t>(std::nearbyint(111861.0 / period / 16.0));
  if (envelopeFrequency > 11000) envelopeFrequency = 11000;
  double step = envelopeFrequency / 11025.0;
  float& p = phase[4];
  float& v = envelopeValue;
  const auto wrap = [&p] {
    if (p >= 1.0F) p = static_cast<float>(p - 1.0);
  };
  // From its middle on the envelope stands there.
  const auto stand = [&](float place) {
    if (p < 0.5F) return;
    p = place;
    step = 0.0;
  };
  for (int i = 0; i < 441; ++i) {
    p = static_cast<float>(static_cast<double>(p) + step);
    switch (envelopeShape) {
      case 0:
      case 1:
      case 2:
      case 3:
      case 9:
        stand(0.5F);
        v = static_cast<float>(1.0 - 2.0 * p);
        break;
      case 4:
      case 5:
      case 6:
      case 7:
      case 15:
        wrap();
        stand(0.0F);
        v = static_cast<float>(2.0 * p);
        break;
      case 8:
        wrap();
        if (p >= 0.5F) p = static_cast<float>(p - 0.5);
        if (p < 0.5F) v = static_cast<float>(1.0 - 2.0 * p);
        break;
      case 10:
        wrap();
        if (p < 0.5F) {
          v = static_cast<float>(1.0 - 2.0 * p);
        } else {
          v = static_cast<float>(2.0 * p - 1.0);
        }
        break;
      case 11:
        wrap();
        stand(0.0F);
        if (p < 0.5F) v = static_cast<float>(1.0 - 2.0 * p);
        break;
      case 12:
        if (p >= 0.5F) p = static_cast<float>(p - 0.5);
        if (p < 0.5F) v = static_cast<float>(2.0 * p);
        break;
      case 13:
        stand(0.5F);
        v = static_cast<float>(2.0 * p);
        break;
      case 14:
        wrap();
        if (p < 0.5F) {
          v = static_cast<float>(2.0 * p);
        } else {
          v = static_cast<float>(2.0 - 2.0 * p);
        }
        break;
      default: break;
    }
    rows[i][4] = v;
  }
}

void PlainAy38910::Render(Random& random) {
  const int32_t modes = (reg[8] & 16) + (reg[9] & 16) + (reg[10] & 16);
  if (modes > envelopeModes) phase[4] = 0.0F;
  envelopeModes = modes;

  reg[1] &= 15;
  reg[3] &= 15;
  reg[5] &= 15;
  reg[6] &= 31;

  for (int c = 0; c < 3; ++c) tone[c].period = (reg[2 * c] + reg[2 * c + 1] * 256) * 2;
  noisePeriod = reg[6] * 2;
  const int32_t newEnvelopePeriod = (reg[11] + reg[12] * 256) * 2;
  if (newEnvelopePeriod != envelopePeriod) phase[4] = 0.0F;
  envelopePeriod = newEnvelopePeriod;

  for (int c = 0; c < 3; ++c) tone[c].level = static_cast<float>(volume[reg[8 + c] & 15] * 16.0);

  const int masks[3] = {0x09, 0x12, 0x24};
  for (int c = 0; c < 3; ++c) {
    const int32_t mixer = ~reg[7] & masks[c];
    if (mixer > tone[c].mixer) phase[4] = 0.0F;
    tone[c].mixer = mixer;
  }

  const int32_t shape = reg[13] & 15;
  if (shape != envelopeShape) phase[4] = 0.0F;
  envelopeShape = shape;

  if ((reg[7] & 0x3F) == 0x3F) {
    silent = 1;
    for (int i = 0; i < 441; ++i) out[i] = 0;
    return;
  }
  silent = 0;

  RenderEnvelope();

  {
    const int period = noisePeriod == 0 ? 1 : noisePeriod;
    noiseFrequency = static_cast<int32_t>(std::nearbyint(111861.0 / period));
    if (noiseFrequency > 11000) noiseFrequency = 11000;
    const double step = noiseFrequency / 11025.0;
    for (int i = 0; i < 441; ++i) {
      phase[3] = static_cast<float>(static_cast<double>(phase[3]) + step);
      if (phase[3] >= 1.0F) {
        phase[3] = static_cast<float>(phase[3] - 1.0);
        noiseValue = static_cast<float>((RandomNext(random) * 32.0 - 16.0) / 16.0);
      }
      rows[i][3] = noiseValue;
    }
  }

  for (int c = 0; c < 3; ++c) {
    const int period = tone[c].period == 0 ? 1 : tone[c].period;
    tone[c].frequency = static_cast<int32_t>(std::nearbyint(111861.0 / period));
    if (tone[c].frequency > 11000) tone[c].frequency = 11000;
    for (int i = 0; i < 441; ++i) {
      phase[c] = static_cast<float>(static_cast<double>(phase[c]) + tone[c].frequency / 11025.0);
      if (phase[c] >= 1.0F) phase[c] = static_cast<float>(phase[c] - 1.0);
      rows[i][c] = phase[c] < 0.5F ? -1.0F : 1.0F;
    }
  }

  const int toneMask[3] = {1, 2, 4};
  const int noiseMask[3] = {8, 16, 32};
  for (int i = 0; i < 441; ++i) {
    for (int c = 0; c < 3; ++c) {
      const int m = tone[c].mixer;
      if (m == 0) {
        rows[i][c] = 0.0F;
      } else if (m == noiseMask[c]) {
        rows[i][c] = rows[i][3];
      } else if (m == toneMask[c] + noiseMask[c]) {
        rows[i][c] = static_cast<float>(static_cast<double>(rows[i][c]) + rows[i][3]);
      }
    }
  }

  for (int c = 0; c < 3; ++c) {
    for (int i = 0; i < 441; ++i) {
      if ((reg[8 + c] & 16) == 0) {
        rows[i][c] = static_cast<float>(static_cast<double>(rows[i][c]) * tone[c].level);
      } else {
        const int index = static_cast<int>(std::nearbyint(rows[i][4] * 15.0));
        rows[i][c] = static_cast<float>(static_cast<double>(rows[i][c]) * volume[index] * 16.0);
      }
    }
  }

  for (int i = 0; i < 441; ++i) {
    out[i] = static_cast<int16_t>(std::nearbyint(static_cast<double>(rows[i][0]) + rows[i][1] + rows[i][2]));
  }
}

}  // namespace quoll
