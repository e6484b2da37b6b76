#include "loop/Start.h"

#include <filesystem>

#include "cards/Companion.h"
#include "machine/Machine.h"
#include "machine/MachineInit.h"
#include "sound/WavImage.h"

namespace quoll {

namespace {

// A disk that is missing or can't be read leaves the drive empty: nobody has asked for it.
void LoadFirstDisk(Machine& m) {
  const std::string name = "default.dsk";
  if (LoadDisk(m.floppy, (std::filesystem::path(m.programFolder) / name).string()).empty())
    m.tfloppy.Label1 = name;
}

// Without them the machine runs all the same, joined to nothing.
void JoinOtherPrograms(Machine& m) {
  if (const std::string error = m.host->CreateMaps(); !error.empty())
    m.host->MessageBox(error, "QUOLLEMU", MessageIcon::Exclamation);
  if (!m.host->CallCompanion(CompanionCall::Start, m.programFolder))
    m.host->MessageBox(kCompanionNotFound, "QUOLLEMU", MessageIcon::Exclamation);
}

}  // namespace

void StartMachine(Machine& m) {
  m.screen.window.caption = "QUOLLEMU";
  RebuildMachine(m);
  TapeOpenFirst(m.tape, m.programFolder);
  LoadFirstDisk(m);
  m.mixer.WavImage = BuildWavImage(1, 22050, 1.0);
  JoinOtherPrograms(m);
}

void StopMachine(Machine& m) { TapeStopRecording(m.tape); }

}  // namespace quoll
