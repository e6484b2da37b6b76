#include "testkit/TestHost.h"

#include <algorithm>

#include "machine/Machine.h"

namespace quoll::test {

TestHost::TestHost() = default;
TestHost::~TestHost() = default;

void TestHost::Note(const char* event, Machine& m, const std::function<void(Machine&)>& react) {
  events.emplace_back(event);
  if (react) react(m);
}

void TestHost::Pump(Machine& m) { Note("Pump", m, onPump); }

void TestHost::Stalled(Machine& m) {
  ++stalls;
  if (onStalled) onStalled(m);
  if (stalls >= stallsAllowed) m.run.CpuRunning = 0;
}

void TestHost::FrameEnded(Machine& m) {
  Note("FrameEnded", m, onFrameEnded);
  ticks += frameTicks;
  if (++frames >= framesAllowed) m.run.CpuRunning = 0;
}

void TestHost::WaitForBlock(Machine& m) {
  ++waits;
  Note("WaitForBlock", m, onWait);
  if (waits >= waitsNeeded) m.mixer.NeedData = 1;
}

void TestHost::BlockMixed(Machine& m) { Note("BlockMixed", m, onBlockMixed); }

std::string TestHost::InitializeSound(const SoundFormat& wanted) {
  events.emplace_back("InitializeSound");
  format = wanted;
  return soundError;
}

bool TestHost::SoundPlay() { return events.emplace_back("SoundPlay"), true; }
bool TestHost::SoundStop() { return events.emplace_back("SoundStop"), true; }

uint32_t TestHost::TickCount() {
  Note("TickCount", *machine, onTicks);
  return ticks;
}

int64_t TestHost::PerformanceCounter() {
  events.emplace_back("PerformanceCounter");
  return counter;
}

void TestHost::MessageBox(std::string_view text, std::string_view title, MessageIcon icon) {
  messages.push_back({std::string(text), std::string(title), icon});
}

bool TestHost::DirectOut(uint16_t port, uint16_t value) {
  if (hasPorts) direct.emplace_back(port, value);
  return hasPorts;
}

void TestHost::Beep(int hertz, int milliseconds) { beeps.emplace_back(hertz, milliseconds); }

int TestHost::Count(std::string_view event) const {
  return static_cast<int>(std::ranges::count(events, event));
}

}  // namespace quoll::test
