#include "base/user_folders.h"

#include <pwd.h>
#include <unistd.h>

#include <cstdlib>

namespace horalo {
namespace {

std::filesystem::path absolutePathIn(const char* variable) {
  const char* const value = std::getenv(variable);
  if (value == nullptr || value[0] != '/') return {};
  return value;
}

std::filesystem::path home() {
  if (auto path = absolutePathIn("HOME"); !path.empty()) return path;
  const passwd* const user = getpwuid(getuid());
  if (user == nullptr || user->pw_dir == nullptr || user->pw_dir[0] != '/') return {};
  return user->pw_dir;
}

std::filesystem::path folder(const char* variable, const char* belowHome) {
  if (auto path = absolutePathIn(variable); !path.empty()) return path;
  auto path = home();
  return path.empty() ? path : path / belowHome;
}

}  // namespace

std::filesystem::path userConfigFolder() {
  return folder("XDG_CONFIG_HOME", ".config");
}
std::filesystem::path userStateFolder() {
  return folder("XDG_STATE_HOME", ".local/state");
}

}  // namespace horalo
