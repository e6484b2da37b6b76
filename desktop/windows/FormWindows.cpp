#include "desktop/windows/FormWindows.h"

#include "desktop/windows/TVCmonWindow.h"
#include "desktop/windows/TapeWindow.h"
#include "desktop/windows/SoundWindow.h"

namespace quoll {

std::vector<std::unique_ptr<FormWindow>> MakeFormWindows(QtHost& host, Machine& m) {
  std::vector<std::unique_ptr<FormWindow>> windows;
  windows.push_back(std::make_unique<TapeWindow>(host, m));
  windows.push_back(std::make_unique<TVCmonWindow>(host, m));
  windows.push_back(std::make_unique<SoundWindow>(host, m));
  return windows;
}

}  // namespace quoll
