#include "companion/Companion.h"

#include <algorithm>

namespace quoll {

namespace {

// Milliseconds between two looks at record and port: 60 KB a second while bytes go through.
constexpr int kBusyTick = 4;
constexpr int kQuietTick = 20;
constexpr int kIdleTick = 1000;  // nobody is at the other side, but the machine has not taken all
constexpr int kLooksUntilQuiet = 100;

}  // namespace

Companion::Companion(const std::string& mapName) {
  map.CreateMap(mapName, kSerialMapName.size);
  TellLine(Record(), {});  // one that was killed may have left another word
  timer.setTimerType(Qt::PreciseTimer);
  timer.setInterval(kQuietTick);
  QObject::connect(&timer, &QTimer::timeout, &timer, [this] { Tick(); });
  end.changed = [this] { PortChanged(); };
}

Companion::~Companion() {
  changed = nullptr;
  end.Close();
}

QString Companion::Open(const EndSettings& settings) {
  Close();
  return end.Open(settings);
}

void Companion::Close() {
  end.Close();
  joint.toMachine.clear();
  joint.fromMachine.clear();
}

void Companion::PortChanged() {
  TellLine(Record(), end.Line());
  if (end.Device() != nullptr) {
    looksInVain = 0;
    timer.start(kBusyTick);
  }
  if (changed) changed();
}

void Companion::Tick() {
  const bool some = JointMove(joint, Record(), end.Device());
  end.AfterRead();
  if (end.Device() == nullptr && joint.toMachine.empty()) timer.stop();
  looksInVain = some ? 0 : std::min(looksInVain + 1, kLooksUntilQuiet);
  const int quiet = end.Device() != nullptr ? kQuietTick : kIdleTick;
  const int interval = looksInVain < kLooksUntilQuiet ? kBusyTick : quiet;
  if (interval != timer.interval()) timer.setInterval(interval);  // which begins it anew
  if (some && moved) moved();
}

}  // namespace quoll
