#include "desktop/Main.h"

#include <QApplication>
#include <memory>

#include "machine/Machine.h"
#include "machine/MachineInit.h"
#include "desktop/kit/FormWindow.h"
#include "desktop/windows/FormWindows.h"
#include "desktop/ProgramFolder.h"
#include "desktop/QtHost.h"
#include "desktop/SingleInstance.h"
#include "desktop/windows/MainWindow.h"
#include "sound/WavImage.h"
#include "sound/sdl/frmDX_Play.h"

namespace quoll {

namespace {

// Returns by ProgramEnd alone: with the machine stopped, the user is still served.
[[noreturn]] void RunMachine(QtHost& host, Machine& m) {
  MachineInit(m);
  MachineReset(m);
  TapeOpenFirst(m);
  m.mixer.WavImage = BuildWavImage(1, 22050, 1.0);
  if (SoundDeviceOpens()) {
    host.EnableTimer2(false);  // whatever becomes of the output
    DXinit(m);
  } else {
    TellNoSoundDevice(m);
  }
  CPUmon_Command1_Click(m);
  host.ServeUntilEnd(m);
}

}  // namespace

int Main(QtHost& host) {
  constexpr int kOk = 0;
  constexpr int kFailed = 1;

  const SingleInstance instance(SingleInstanceFile());
  if (instance.OtherRuns()) {
    host.MessageBox("Application is already running!", QApplication::applicationName().toStdString(),
                    MessageIcon::Stop);
    return kFailed;
  }
  const auto machine = std::make_unique<Machine>(host);
  machine->programFolder = ProgramFolder();

  MainWindow window(host, *machine);
  const auto formWindows = MakeFormWindows(host, *machine);
  for (const auto& form : formWindows) form->Pull(*machine);
  host.messageParent = &window;
  machine->screen.Caption = "QUOLLEMU";
  window.Pull(*machine);
  window.show();
  window.activateWindow();
  try {
    host.Pump(*machine);  // the form stands before the machine exists
    RunMachine(host, *machine);
  } catch (const ProgramEnd&) {
    host.SoundStop();
    TapeFlush(*machine);
    return host.ClosedByUser() ? kOk : kFailed;
  } catch (const std::exception& error) {
    host.MessageBox(error.what(), "QUOLLEMU", MessageIcon::Stop);
    return kFailed;
  }
}

}  // namespace quoll
