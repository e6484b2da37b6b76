#include "desktop/windows/FormWindows.h"

#include <array>

#include "desktop/windows/AssemblerWindow.h"
#include "desktop/windows/AyWindow.h"
#include "desktop/windows/CPUmonWindow.h"
#include "desktop/windows/ErrorSimWindow.h"
#include "desktop/windows/FloppyWindow.h"
#include "desktop/windows/FullScreenWindow.h"
#include "desktop/windows/MainWindow.h"
#include "desktop/windows/PrintWindow.h"
#include "desktop/windows/SaaWindow.h"
#include "desktop/windows/SerialWindow.h"
#include "desktop/windows/SidWindow.h"
#include "desktop/windows/SnWindow.h"
#include "desktop/windows/SoundWindow.h"
#include "desktop/windows/TVCmonWindow.h"
#include "desktop/windows/TapeWindow.h"
#include "desktop/windows/ToolsWindow.h"
#include "desktop/windows/Ym2413Window.h"
#include "desktop/windows/Ym3812Window.h"
#include "machine/Machine.h"

namespace quoll {

namespace {

template <class Window>
std::unique_ptr<FormWindow> Make(FormKit& kit) {
  return std::make_unique<Window>(kit);
}

struct Line {
  const Form* form;
  std::unique_ptr<FormWindow> (*make)(FormKit& kit);
};

constexpr std::array kWindows{
    Line{&kTScreen, Make<MainWindow>},        //
    Line{&kFScreen, Make<FullScreenWindow>},  //
    Line{&kTTape, Make<TapeWindow>},          //
    Line{&kCPUmon, Make<CPUmonWindow>},       //
    Line{&kTFloppy, Make<FloppyWindow>},      //
    Line{&kTSerial, Make<SerialWindow>},      //
    Line{&kTPrint, Make<PrintWindow>},        //
    Line{&kTTools, Make<ToolsWindow>},        //
    Line{&kTVCmon, Make<TVCmonWindow>},       //
    Line{&kAsse, Make<AssemblerWindow>},      //
    Line{&kFDXF, Make<SoundWindow>},          //
    Line{&kErrorSim, Make<ErrorSimWindow>},   //
    Line{&kFSN76489, Make<SnWindow>},         //
    Line{&kT8910, Make<AyWindow>},            //
    Line{&kFsaa, Make<SaaWindow>},            //
    Line{&kFYM3812, Make<Ym3812Window>},      //
    Line{&kFYM2413, Make<Ym2413Window>},      //
    Line{&kFSID, Make<SidWindow>},            //
};

}  // namespace

FormWindows::FormWindows(QtHost& hostOfWindows, Machine& machineOfWindows)
    : RecordView(hostOfWindows), m(machineOfWindows), made(kWindows.size()) {}

FormWindows::~FormWindows() = default;

void FormWindows::Pull(Machine& machine) {
  for (size_t i = 0; i < made.size(); ++i) {
    if (made[i].window != nullptr || !kWindows[i].form->state(machine)->visible) continue;
    made[i].kit = std::make_unique<FormKit>(host, m, *kWindows[i].form);
    made[i].window = kWindows[i].make(*made[i].kit);
  }
}

FormWindow* FormWindows::Find(std::string_view form) const {
  for (size_t i = 0; i < made.size(); ++i) {
    if (kWindows[i].form->name == form) return made[i].window.get();
  }
  return nullptr;
}

}  // namespace quoll
