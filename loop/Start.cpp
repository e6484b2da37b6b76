#include "loop/Start.h"

#include "machine/Machine.h"
#include "machine/MachineInit.h"
#include "sound/WavImage.h"

namespace quoll {

void StartMachine(Machine& m) {
  m.screen.window.caption = "QUOLLEMU";
  RebuildMachine(m);
  TapeOpenFirst(m.tape, m.programFolder);
  m.mixer.WavImage = BuildWavImage(1, 22050, 1.0);
}

void StopMachine(Machine& m) { TapeFlush(m.tape); }

}  // namespace quoll
