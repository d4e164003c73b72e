#pragma once

#include <filesystem>

#include "base/file_descriptor.h"

namespace horalo {

// An attempt to lock a file between processes, which never waits. The system drops the lock with
// the process that holds it, however that ends; the empty file stays.
class FileLock {
 public:
  enum class State {
    ours,         // until this object goes away
    taken,        // by someone else, at the moment
    unavailable,  // no such file can be made or locked here
  };

  explicit FileLock(const std::filesystem::path& path);

  State state() const { return state_; }

 private:
  FileDescriptor file_;
  State state_ = State::unavailable;
};

}  // namespace horalo
