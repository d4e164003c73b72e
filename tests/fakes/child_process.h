#pragma once

#include <gtest/gtest.h>
#include <sys/types.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <functional>
#include <optional>

namespace horalo {

// A copy of the test's process that runs one function. It ends with status 0 where nothing that the
// function expected failed, and is killed with this object at the latest.
class ChildProcess {
 public:
  explicit ChildProcess(const std::function<void()>& run) {
    std::fflush(nullptr);
    pid_ = fork();
    if (pid_ != 0) return;
    run();
    std::fflush(nullptr);
    _exit(testing::Test::HasFailure() ? 1 : 0);
  }
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;
  ~ChildProcess() {
    send(SIGKILL);
    wait();
  }

  void send(int signal) const {
    if (pid_ > 0) kill(pid_, signal);
  }

  // The exit status; nothing where a signal ended the process.
  std::optional<int> wait() {
    if (pid_ <= 0) return ended_;
    int status = 0;
    if (waitpid(pid_, &status, 0) == pid_ && WIFEXITED(status)) ended_ = WEXITSTATUS(status);
    pid_ = -1;
    return ended_;
  }

  // Returns once the process is stopped, as by SIGSTOP.
  void waitUntilStopped() const {
    int status = 0;
    waitpid(pid_, &status, WUNTRACED);
  }

 private:
  pid_t pid_ = -1;
  std::optional<int> ended_;
};

}  // namespace horalo
