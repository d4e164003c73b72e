#pragma once

#include <chrono>
#include <string>
#include <string_view>

#include "app/instance_address.h"

namespace horalo {

// The running program's answer to a command.
struct InstanceReply {
  enum class Outcome {
    answered,    // the command was carried out
    notRunning,  // no program runs in this session
    noAnswer     // one runs, but did not answer in time or does not know the command
  };
  Outcome outcome = Outcome::notRunning;
  std::string text;  // what it answered, such as its status; empty for most commands
};

// Whether a program holds the lock of `address`.
bool isRunning(const InstanceAddress& address);

// Hands `command` to the running program and waits for its answer. A program that is only just
// starting is waited for as well.
InstanceReply ask(const InstanceAddress& address, std::string_view command,
                  std::chrono::milliseconds limit);

// The same, and then waits until the process itself has ended; noAnswer where it still lives at
// the end of `limit`.
InstanceReply askToQuit(const InstanceAddress& address, std::chrono::milliseconds limit);

}  // namespace horalo
