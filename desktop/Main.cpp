#include "desktop/Main.h"

#include <QApplication>
#include <memory>

#include "core/BinaryFile.h"
#include "desktop/ProgramFolder.h"
#include "desktop/QtHost.h"
#include "desktop/SingleInstance.h"
#include "desktop/StartFiles.h"
#include "desktop/kit/FormWindow.h"
#include "desktop/picture/StandingMachine.h"
#include "desktop/windows/FormWindows.h"
#include "loop/Start.h"
#include "machine/Machine.h"
#include "sound/sdl/frmDX_Play.h"

namespace quoll {

namespace {

// Returns by ProgramEnd alone: with the machine stopped, the user is still served.
[[noreturn]] void RunMachine(QtHost& host, Machine& m) {
  StartMachine(m);
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

int Main(QtHost& host, const CommandLine& line) {
  constexpr int kOk = 0;
  constexpr int kFailed = 1;

  const SingleInstance instance(SingleInstanceFile());
  if (instance.OtherRuns()) {
    host.MessageBox("Application is already running!", QApplication::applicationName().toStdString(),
                    MessageIcon::Stop);
    return kFailed;
  }
  const auto machine = std::make_unique<Machine>(host);
  machine->programFolder = line.folder.empty() ? ProgramFolder() : FullName(line.folder);
  machine->screen.xS6 = line.max;
  if (host.companionFolder.empty()) host.companionFolder = ExecutableFolder();
  host.extras = ReadExtras();

  FormWindows windows(host, *machine);
  StandingMachine standing(host);
  StartFiles files(host, line.files, line.run);
  machine->screen.window.caption = "QUOLLEMU";
  ShowForm(machine->screen.window);
  host.PullViews(*machine);
  try {
    host.Pump(*machine);  // the form stands before the machine exists
    if (line.fullScreen) ShowForm(machine->fscreen.window);
    RunMachine(host, *machine);
  } catch (const ProgramEnd&) {
    host.SoundStop();
    StopMachine(*machine);
    return host.ClosedByUser() ? kOk : kFailed;
  } catch (const std::exception& error) {
    host.MessageBox(error.what(), "QUOLLEMU", MessageIcon::Stop);
    return kFailed;
  }
}

}  // namespace quoll
