// The files of the command line: opened one after the other when the machine has started, since a start would
// wipe what was loaded before.
#pragma once

#include <string>
#include <vector>

#include "desktop/QtHost.h"
#include "desktop/picture/Typist.h"

namespace quoll {

class StartFiles : public RecordView {
 public:
  // run: RUN is typed when the last file is a cassette.
  StartFiles(QtHost& hostOfMachine, std::vector<std::string> filesToOpen, bool run);

  void Pull(Machine& m) override;

 private:
  std::vector<std::string> files;
  bool run;
  Typist typist;
};

}  // namespace quoll
