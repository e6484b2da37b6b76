#include "loop/SoundFrame.h"

#include "machine/Machine.h"

namespace quoll {

namespace {

// The sound card's frame. A chip that sounds draws its window, shown or not.
void CardFrame(Machine& m) {
  FSID_PlayTune(m);
  SoundCardControls controls;
  for (const ChipForm& form : ChipForms())
    if (form.controls != nullptr) form.controls(m, controls);
  SoundCardRender(m.card, controls, m.random);
  const bool scopes = m.mixer.FrameInBlock == kFramesPerBlock - 1;
  for (const ChipForm& form : ChipForms()) form.draw(m, scopes);
}

}  // namespace

void SoundFrame(Machine& m) {
  ToneFrame(m.tone, m.PortShadow);
  if (m.tvcmon.Check1) TapeRecordFrame(m.tape, m.tone.ToneOut);
  // With the card off the mixer goes on adding the last frame that its chips have rendered.
  if (m.screen.xio2) CardFrame(m);
  MixFrame(m.mixer, m.tone.ToneOut, m.card);
  // Counted without a sign, since a script may have put the highest number there.
  m.mixer.FrameInBlock = static_cast<int32_t>(static_cast<uint32_t>(m.mixer.FrameInBlock) + 1U);
  if (m.mixer.FrameInBlock == kFramesPerBlock) m.host->BlockMixed(m);
}

void SoundSync(Machine& m) {
  if (m.screen.xS6) return;
  // Only the flag ends the wait: choosing "Max" meanwhile counts from the next block on.
  while (m.mixer.NeedData == 0) m.host->WaitForBlock(m);
  // Written only when it changes, which it seldom does.
  if (m.mixer.FrameInBlock != kFramesPerBlock || m.fsaa.Label11 != "5")
    m.fsaa.Label11 = std::to_string(m.mixer.FrameInBlock);
  m.mixer.NeedData = 0;
  // The run loop comes with a full block; whoever comes with less gets what is missing.
  for (int frame = 0; frame < kFramesPerBlock && m.mixer.FrameInBlock < kFramesPerBlock; ++frame)
    SoundFrame(m);
  m.mixer.FrameInBlock = 0;
  RecordBlock(m.recording, m.mixer.BlockBuffer);
}

}  // namespace quoll
