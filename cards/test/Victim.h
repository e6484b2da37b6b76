// A process to be killed.
#pragma once

#include <gtest/gtest.h>
#include <sys/types.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <functional>

namespace quoll::test {

// Does its work in another process, which then holds what it has until it is killed.
class Victim {
 public:
  explicit Victim(const std::function<void()>& work) {
    std::array<int, 2> ready{};
    EXPECT_EQ(pipe(ready.data()), 0);
    process = fork();
    if (process == 0) {
      work();
      const char byte = 1;
      if (write(ready[1], &byte, 1) != 1) _exit(1);
      for (;;) pause();
    }
    char byte = 0;
    EXPECT_EQ(read(ready[0], &byte, 1), 1);
    close(ready[0]);
    close(ready[1]);
  }
  ~Victim() { Kill(); }
  Victim(const Victim&) = delete;
  Victim& operator=(const Victim&) = delete;

  void Kill() {
    if (process <= 0) return;
    kill(process, SIGKILL);
    waitpid(process, nullptr, 0);
    process = -1;
  }

 private:
  pid_t process = -1;
};

}  // namespace quoll::test
