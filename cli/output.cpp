#include "cli/output.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace horalo {
namespace {

constexpr std::size_t kPieceSize = 65'536;

}  // namespace

void Output::write(std::string_view text) {
  pending_ += text;
  if (pending_.size() >= kPieceSize) flush();
}

void Output::flush() {
  std::string_view rest = pending_;
  while (!rest.empty() && error_ == 0) {
    const ssize_t count = ::write(descriptor_, rest.data(), rest.size());
    if (count >= 0) {
      rest.remove_prefix(static_cast<std::size_t>(count));
    } else if (errno != EINTR) {
      error_ = errno;
    }
  }
  pending_.clear();
}

bool Output::leadsWhere(const Output& other) const {
  struct stat ours {};
  struct stat theirs {};
  return ::fstat(descriptor_, &ours) == 0 && ::fstat(other.descriptor_, &theirs) == 0 &&
         ours.st_dev == theirs.st_dev && ours.st_ino == theirs.st_ino;
}

}  // namespace horalo
