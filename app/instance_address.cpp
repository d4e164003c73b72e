#include "app/instance_address.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>

namespace horalo {
namespace {

// A folder of ours that others cannot enter. A link is none: somebody else may have put it there.
bool isPrivateFolder(const std::string& path) {
  struct stat status {};
  return lstat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode) &&
         status.st_uid == geteuid() && (status.st_mode & 077) == 0;
}

std::string runtimeFolder() {
  const char* folder = std::getenv("XDG_RUNTIME_DIR");
  if (folder == nullptr || folder[0] != '/') return {};
  return access(folder, W_OK | X_OK) == 0 ? folder : std::string();
}

}  // namespace

InstanceAddress instanceAddressIn(const std::string& folder, const std::string& display) {
  const std::string base = folder + "/horalo-" + display;
  return {base + ".lock", base + ".socket"};
}

std::optional<InstanceAddress> instanceAddress(const std::string& display) {
  if (const std::string folder = runtimeFolder(); !folder.empty()) {
    return instanceAddressIn(folder, display);
  }
  const std::string fallback = "/tmp/horalo-" + std::to_string(geteuid());
  mkdir(fallback.c_str(), 0700);
  if (!isPrivateFolder(fallback)) return std::nullopt;
  return instanceAddressIn(fallback, display);
}

}  // namespace horalo
