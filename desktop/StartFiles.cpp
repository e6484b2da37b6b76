#include "desktop/StartFiles.h"

#include <utility>

#include "core/BinaryFile.h"
#include "core/FolderList.h"
#include "forms/FileActions.h"
#include "machine/Machine.h"

namespace quoll {

namespace {

// The system ROM is at its prompt by then.
constexpr int64_t kStarted = 100;

}  // namespace

StartFiles::StartFiles(QtHost& hostOfMachine, std::vector<std::string> filesToOpen, bool runLast)
    : RecordView(hostOfMachine), files(std::move(filesToOpen)), run(runLast), typist(host) {
  run = run && !files.empty() && SmallLetters(files.back()).ends_with(".cas");
}

void StartFiles::Pull(Machine& m) {
  const int64_t frame = m.run.TotalCycles / kFrameTStates;
  if (m.loops == 0 || frame < kStarted) return;
  // Each is taken off the list before it is opened: a load may serve the user, and come here again.
  const std::vector<std::string> now = std::exchange(files, {});
  for (const std::string& file : now) host.Guard([&] { OpenBySuffix(m, FullName(file)); });
  if (!now.empty() && run) typist.Type(m, "RUN\n");
}

}  // namespace quoll
