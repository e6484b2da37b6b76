#include "forms/FDXF.h"

#include <algorithm>
#include <cstring>

#include "core/FormTable.h"
#include "core/NumberText.h"
#include "machine/Machine.h"

namespace quoll {

namespace {

constexpr std::string_view kNoDevice = "No sound device: Timer2";

// The byte at the even place k of the block, or the one after it, stands at x = k / 20, y = 62 - byte / 4.
void Draw(Trace& trace, const std::array<uint8_t, kBlockBytes>& block, size_t side) {
  trace.step = 2.0F / 20.0F;
  trace.y.resize(block.size() / 2);
  for (size_t i = 0; i < trace.y.size(); ++i)
    trace.y[i] = 62.0F - static_cast<float>(block[2 * i + side]) / 4.0F;
  ++trace.drawings;
}

// Makes the output anew and lets it play. What goes wrong is told.
void cmdStartPlay_Click(Machine& m) {
  const SoundFormat format{.SamplesPerSec = 22050, .BitsPerSample = 8, .Channels = 2, .HalfBufferSize = 0};
  const std::string error = m.host->InitializeSound(format);
  if (!error.empty()) {
    m.host->MessageBox(error, "DirectSound Error", MessageIcon::Exclamation);
    return;
  }
  if (m.screen.Label1 == kNoDevice) m.screen.Label1.clear();  // it has come meanwhile
  m.host->SoundPlay();
}

// The output stands, and the machine with it from the end of the present block.
void Cstop_Click(Machine& m) { m.host->SoundStop(); }

constexpr On<&Machine::fdxf> f;

constexpr std::array kControls{
    Button("cmdStartPlay", "Play", cmdStartPlay_Click), Button("Cstop", "Stop", Cstop_Click),
    f.Text<&FDXF::TextR>("TextR", "Blocks delivered"),  f.Check<&FDXF::Check7>("Check7", "Osc"),
    f.Scope<&FDXF::PL>("PL", "Left channel"),           f.Scope<&FDXF::PR>("PR", "Right channel"),
};

}  // namespace

void TellNoSoundDevice(Machine& m) { m.screen.Label1 = kNoDevice; }

void DXinit(Machine& m) { cmdStartPlay_Click(m); }

void DirectSoundPlay_NeedWavData(Machine& m, std::span<uint8_t> data) {
  m.mixer.NeedData = 1;
  const auto& block = m.mixer.BlockBuffer;
  // The block itself may be what is to be filled.
  std::memmove(data.data(), block.data(), std::min(data.size(), block.size()));
  m.fdxf.TextR = std::to_string(int64_t{NumberOfText(m.fdxf.TextR)} + 1);
  if (!m.fdxf.Check7) return;
  Draw(m.fdxf.PL, block, 0);
  Draw(m.fdxf.PR, block, 1);
}

void ForceNeedWavData(Machine& m) { DirectSoundPlay_NeedWavData(m, m.mixer.BlockBuffer); }

constexpr Form kFDXF{"FDXF", "Paiplag", f.State, kControls};

}  // namespace quoll
