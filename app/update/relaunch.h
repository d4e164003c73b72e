#pragma once

#include <filesystem>
#include <optional>

#include "base/file_descriptor.h"

namespace horalo {

// The socket between the program and the updater program that it started, which outlives a
// relaunch: the new version inherits it to say that it runs well.
struct UpdaterLink {
  FileDescriptor socket;
  int process = 0;  // the updater's process id
};

// Turns this process into the new version of the program, as the last thing that it does. Belongs
// to main, which lets go of everything else first:
//
//   Relaunch relaunch;
//   int status = runApplication(relaunch);
//   return relaunch.finish(status);
class Relaunch {
 public:
  // Has finish() start `program` instead of returning.
  void request(std::filesystem::path program, UpdaterLink link);

  // Returns `status` where no relaunch was asked for, and 1 where the new program cannot be
  // started; the updater sees that and puts the old one back.
  int finish(int status);

  // What the process before this one handed over; nothing where this is an ordinary start. Clears
  // it from the environment.
  static std::optional<UpdaterLink> inherited();

 private:
  std::filesystem::path program_;
  UpdaterLink link_;
};

}  // namespace horalo
