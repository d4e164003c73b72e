#include "app/update/bundle_path.h"

#include <string>
#include <system_error>

namespace horalo {

std::filesystem::path bundleOf(const std::filesystem::path& file) {
  for (auto folder = file.parent_path(); folder.has_filename(); folder = folder.parent_path()) {
    const std::string name = folder.filename().string();
    if (name.ends_with(".app") && name != ".app") return folder;
  }
  return {};
}

std::filesystem::path runningExecutable() {
  std::error_code failed;
  const auto path = std::filesystem::read_symlink("/proc/self/exe", failed);
  return failed ? std::filesystem::path() : path;
}

}  // namespace horalo
