// Types a text into the machine, as fast as the machine takes it.
#pragma once

#include <string_view>

#include "desktop/QtHost.h"
#include "typing/Paste.h"

namespace quoll {

class Typist : public RecordView {
 public:
  explicit Typist(QtHost& hostOfMachine);

  // Begins; a text that is under way comes first. The machine runs as fast as it can meanwhile.
  void Type(Machine& m, std::string_view text);
  // What has not been typed is forgotten; false when nothing was under way.
  bool Stop(Machine& m);

  void Pull(Machine& /*m*/) override {}
  void FrameEnded(Machine& m) override;

 private:
  Paste paste;
  bool max = false;  // the tick of "Max" before
};

}  // namespace quoll
