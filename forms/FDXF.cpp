#include "forms/FDXF.h"

#include <algorithm>
#include <cstring>

#include "machine/Machine.h"
#include "core/NumberText.h"

namespace quoll {

namespace {

constexpr std::string_view kNoDevice = "No sound device: Timer2";

constexpr std::array kControls{
    Control{"cmdStartPlay", ControlKind::Button, nullptr,
            [](Machine& m, int) { FDXF_cmdStartPlay_Click(m); }},
    Control{"Cstop", ControlKind::Button, nullptr, [](Machine& m, int) { FDXF_Cstop_Click(m); }},
    Control{"TextR", ControlKind::Text, [](Machine& m) -> ControlField { return &m.fdxf.TextR; }},
    Control{"Check7", ControlKind::Check, [](Machine& m) -> ControlField { return &m.fdxf.Check7; }},
};

void Draw(FDXF& form, const std::array<uint8_t, kBlockBytes>& block) {
  form.drawn = block;
  ++form.drawings;
}

}  // namespace

ScopePoint ScopePointAt(int k, uint8_t byte) {
  return {static_cast<float>(k) / 20.0F, 62.0F - static_cast<float>(byte) / 4.0F};
}

void TellNoSoundDevice(Machine& m) { m.screen.Label1 = kNoDevice; }

void DXinit(Machine& m) { FDXF_cmdStartPlay_Click(m); }

void DirectSoundPlay_NeedWavData(Machine& m, std::span<uint8_t> data) {
  m.mixer.NeedData = 1;
  // The block itself may be what is to be filled.
  std::memmove(data.data(), m.mixer.BlockBuffer.data(), std::min(data.size(), m.mixer.BlockBuffer.size()));
  m.fdxf.TextR = std::to_string(int64_t{NumberOfText(m.fdxf.TextR)} + 1);
  if (m.fdxf.Check7) Draw(m.fdxf, m.mixer.BlockBuffer);
}

void ForceNeedWavData(Machine& m) { DirectSoundPlay_NeedWavData(m, m.mixer.BlockBuffer); }

void FDXF_cmdStartPlay_Click(Machine& m) {
  const SoundFormat format{.SamplesPerSec = 22050, .BitsPerSample = 8, .Channels = 2, .HalfBufferSize = 0};
  const std::string error = m.host->InitializeSound(format);
  if (!error.empty()) {
    m.host->MessageBox(error, "DirectSound Error", MessageIcon::Exclamation);
    return;
  }
  if (m.screen.Label1 == kNoDevice) m.screen.Label1.clear();  // it has come meanwhile
  m.host->SoundPlay();
}

void FDXF_Cstop_Click(Machine& m) { m.host->SoundStop(); }

std::span<const Control> FDXFControls() { return kControls; }

}  // namespace quoll
