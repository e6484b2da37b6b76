// What the machine knows of its companion program, which joins the serial card to the world: whether one runs
// for a shared memory, how it is started, and what can be asked of it.
#pragma once

#include <sys/types.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quoll {

inline constexpr std::string_view kCompanionProgram = "QUOLLserial";
inline constexpr std::string_view kCompanionTitle = "QUOLLUART";
inline constexpr std::string_view kCompanionNotFound = "Not Found : QUOLLserial.exe";

enum class CompanionRequest : char {
  Show = 'S',   // show the window
  Close = 'C',  // close the port and put the window away
};

// Held by the companion of a shared memory for as long as it runs: a socket that is known by a name. The
// system itself takes both away when the process ends in whatever way, so a crash leaves nothing behind.
class CompanionLock {
 public:
  // map: name of the shared memory.
  explicit CompanionLock(std::string_view map);
  ~CompanionLock();
  CompanionLock(const CompanionLock&) = delete;
  CompanionLock& operator=(const CompanionLock&) = delete;

  // Serves one caller; to be called when the descriptor becomes readable. What he asks for, if it is
  // anything.
  std::optional<CompanionRequest> Accept() const;

  int descriptor = -1;  // -1: another companion of this memory runs
};

// Whether a companion of this user runs for the shared memory.
bool CompanionRuns(std::string_view map);

// False when none runs.
bool AskCompanion(std::string_view map, CompanionRequest request);

// A companion that this program has started. It ends with this object, and with this program however that
// ends: it waits for the end of its input, a pipe whose other end is held here.
class CompanionProcess {
 public:
  CompanionProcess() = default;
  ~CompanionProcess() { End(); }
  CompanionProcess(const CompanionProcess&) = delete;
  CompanionProcess& operator=(const CompanionProcess&) = delete;

  // Starts the companion program of a folder, with arguments besides those that say which memory it serves
  // and how it ends. Empty, or the reason why it could not be started.
  std::string Start(const std::string& folder, std::string_view map,
                    const std::vector<std::string>& arguments = {"--minimised"});

  // Lets it end and waits for that a moment. Nothing when none was started.
  void End();

  pid_t process = -1;  // -1 when none was started
  int pipe = -1;       // write end of its input
};

}  // namespace quoll
