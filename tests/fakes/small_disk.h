#pragma once

#include <fcntl.h>
#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

#include <filesystem>
#include <string>

#include "base/file_descriptor.h"

namespace horalo {

// What a process ends with that may not mount anything.
inline constexpr int kNoNamespaces = 77;

// Mounts a file system in memory over `folder`, `size` bytes big ("256k"), for this process alone:
// in a user namespace of its own. False where the system lets nobody do that.
inline bool mountSmallDisk(const std::filesystem::path& folder, const std::string& size) {
  const auto writeLine = [](const char* path, const std::string& line) {
    const FileDescriptor file(open(path, O_WRONLY | O_CLOEXEC));
    return file && write(file.get(), line.data(), line.size()) == static_cast<ssize_t>(line.size());
  };
  const auto user = geteuid();
  const auto group = getegid();
  return unshare(CLONE_NEWUSER | CLONE_NEWNS) == 0 && writeLine("/proc/self/setgroups", "deny") &&
         writeLine("/proc/self/uid_map", "0 " + std::to_string(user) + " 1") &&
         writeLine("/proc/self/gid_map", "0 " + std::to_string(group) + " 1") &&
         mount("tmpfs", folder.c_str(), "tmpfs", 0, ("size=" + size).c_str()) == 0;
}

}  // namespace horalo
