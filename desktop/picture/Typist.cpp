#include "desktop/picture/Typist.h"

#include "machine/Machine.h"

namespace quoll {

Typist::Typist(QtHost& hostOfMachine) : RecordView(hostOfMachine) {}

void Typist::Type(Machine& m, std::string_view text) {
  Paste more = StartPaste(m, text);
  if (more.keys.empty()) return;
  if (!paste.keys.empty()) {
    paste.keys.insert(paste.keys.end(), more.keys.begin(), more.keys.end());
    return;
  }
  paste = std::move(more);
  max = m.screen.xS6;
  m.screen.xS6 = true;
}

bool Typist::Stop(Machine& m) {
  if (paste.keys.empty()) return false;
  StopPaste(paste, m);
  m.screen.xS6 = max;
  return true;
}

void Typist::FrameEnded(Machine& m) {
  if (!paste.keys.empty() && !PasteFrame(paste, m)) Stop(m);
}

}  // namespace quoll
