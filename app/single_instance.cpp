#include "app/single_instance.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <utility>

#include "app/instance_socket.h"

namespace horalo {
namespace {

// Whether `path` still names the open file, which a clean-up of the folder may have removed.
bool isStillAt(const std::string& path, int file) {
  struct stat opened {};
  struct stat named {};
  return fstat(file, &opened) == 0 && stat(path.c_str(), &named) == 0 &&
         opened.st_ino == named.st_ino && opened.st_dev == named.st_dev;
}

}  // namespace

std::optional<SingleInstance> SingleInstance::acquire(const InstanceAddress& address) {
  while (true) {
    FileDescriptor lock(open(address.lockPath.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600));
    if (lock) {
      if (flock(lock.get(), LOCK_EX | LOCK_NB) != 0) return std::nullopt;
      if (!isStillAt(address.lockPath, lock.get())) continue;
    }
    return SingleInstance(address, std::move(lock), listenAt(address.socketPath));
  }
}

SingleInstance::SingleInstance(InstanceAddress address, FileDescriptor lock, FileDescriptor socket)
    : address_(std::move(address)), lock_(std::move(lock)), socket_(std::move(socket)) {}

SingleInstance::~SingleInstance() {
  if (lock_) unlink(address_.socketPath.c_str());
}

}  // namespace horalo
