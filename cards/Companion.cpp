#include "cards/Companion.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/time.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <cstddef>
#include <cstring>
#include <system_error>
#include <thread>

extern char** environ;  // NOLINT(readability-redundant-declaration): POSIX leaves it to the program

namespace quoll {

namespace {

constexpr int kCallersWaiting = 8;
constexpr timeval kLongestRequest{0, 200'000};  // microseconds that a silent caller is waited for
constexpr std::chrono::milliseconds kLook{5};
constexpr int kLooksForEnd = 100;

struct SocketName {
  sockaddr_un address{};
  socklen_t length = 0;  // 0: too long to be one
};

// Linux's own kind of name, which begins with a zero byte and is no file.
SocketName NameOf(std::string_view map) {
  SocketName socketName;
  socketName.address.sun_family = AF_UNIX;
  const std::string name = "quollserial-" + std::to_string(getuid()) + "-" + std::string(map);
  if (name.size() + 1 > sizeof socketName.address.sun_path) return socketName;
  std::memcpy(socketName.address.sun_path + 1, name.data(), name.size());
  socketName.length = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + 1 + name.size());
  return socketName;
}

const sockaddr* Address(const SocketName& name) { return reinterpret_cast<const sockaddr*>(&name.address); }

// Names of this kind can be taken by any user of the computer.
bool PeerIsThisUser(int descriptor) {
  ucred peer{};
  socklen_t length = sizeof peer;
  return getsockopt(descriptor, SOL_SOCKET, SO_PEERCRED, &peer, &length) == 0 && peer.uid == getuid();
}

// A descriptor joined to the companion; -1 when there is none. One that is too busy to answer, EAGAIN, runs
// as well, but can't be asked.
int Join(std::string_view map, bool& busy) {
  busy = false;
  const SocketName name = NameOf(map);
  if (name.length == 0) return -1;
  const int descriptor = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
  if (descriptor < 0) return -1;
  if (connect(descriptor, Address(name), name.length) == 0) {
    if (PeerIsThisUser(descriptor)) return descriptor;
  } else {
    busy = errno == EAGAIN;
  }
  close(descriptor);
  return -1;
}

}  // namespace

CompanionLock::CompanionLock(std::string_view map) {
  const SocketName name = NameOf(map);
  if (name.length == 0) return;
  const int made = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
  if (made < 0) return;
  if (bind(made, Address(name), name.length) == 0 && listen(made, kCallersWaiting) == 0) {
    descriptor = made;
  } else {
    close(made);
  }
}

CompanionLock::~CompanionLock() {
  if (descriptor >= 0) close(descriptor);
}

std::optional<CompanionRequest> CompanionLock::Accept() const {
  const int caller = accept4(descriptor, nullptr, nullptr, SOCK_CLOEXEC);
  if (caller < 0) return {};
  char request = 0;
  ssize_t got = 0;
  if (PeerIsThisUser(caller)) {
    setsockopt(caller, SOL_SOCKET, SO_RCVTIMEO, &kLongestRequest, sizeof kLongestRequest);
    got = recv(caller, &request, sizeof request, 0);
  }
  close(caller);
  if (got != 1) return {};
  for (const CompanionRequest known : {CompanionRequest::Show, CompanionRequest::Close}) {
    if (request == static_cast<char>(known)) return known;
  }
  return {};
}

bool CompanionRuns(std::string_view map) {
  bool busy = false;
  const int descriptor = Join(map, busy);
  if (descriptor >= 0) close(descriptor);
  return descriptor >= 0 || busy;
}

bool AskCompanion(std::string_view map, CompanionRequest request) {
  bool busy = false;
  const int descriptor = Join(map, busy);
  if (descriptor < 0) return false;
  const char byte = static_cast<char>(request);
  const bool sent = send(descriptor, &byte, sizeof byte, MSG_NOSIGNAL) == 1;
  close(descriptor);
  return sent;
}

std::string CompanionProcess::Start(const std::string& folder, std::string_view map,
                                    const std::vector<std::string>& arguments) {
  End();
  const std::string program =
      folder.empty() ? "./" + std::string(kCompanionProgram) : folder + "/" + std::string(kCompanionProgram);
  std::vector<std::string> words = {program, "--map", std::string(map), "--end-with-input"};
  words.insert(words.end(), arguments.begin(), arguments.end());
  std::vector<char*> list;
  list.reserve(words.size() + 1);
  for (std::string& word : words) list.push_back(word.data());
  list.push_back(nullptr);

  std::array<int, 2> ends{};
  if (pipe2(ends.data(), O_CLOEXEC) != 0) return std::generic_category().message(errno);
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, ends[0], STDIN_FILENO);
  const int error = posix_spawn(&process, program.c_str(), &actions, nullptr, list.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  close(ends[0]);
  if (error != 0) {
    close(ends[1]);
    process = -1;
    return program + ": " + std::generic_category().message(error);
  }
  pipe = ends[1];
  return {};
}

void CompanionProcess::End() {
  if (pipe >= 0) close(pipe);
  pipe = -1;
  for (int looks = 0; process > 0 && looks < kLooksForEnd; ++looks) {
    if (waitpid(process, nullptr, WNOHANG) != 0) break;
    std::this_thread::sleep_for(kLook);
  }
  process = -1;
}

}  // namespace quoll
