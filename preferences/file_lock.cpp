#include "preferences/file_lock.h"

#include <fcntl.h>
#include <sys/file.h>

#include <cerrno>

namespace horalo {

FileLock::FileLock(const std::filesystem::path& path)
    : file_(open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NONBLOCK | O_NOCTTY, 0600)) {
  if (!file_) return;
  if (flock(file_.get(), LOCK_EX | LOCK_NB) == 0) {
    state_ = State::ours;
  } else if (errno == EWOULDBLOCK) {
    state_ = State::taken;
  }
}

}  // namespace horalo
