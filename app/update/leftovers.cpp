#include "app/update/leftovers.h"

#include <algorithm>
#include <system_error>

namespace horalo {
namespace {

constexpr std::string_view kRandomPart = "XXXXXX";

bool isLetterOrDigit(char c) {
  return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

}  // namespace

std::string leftoverPattern(const std::filesystem::path& bundle) {
  return "." + bundle.filename().string() + "." + std::string(kRandomPart);
}

bool isLeftover(std::string_view name, const std::filesystem::path& bundle) {
  const std::string pattern = leftoverPattern(bundle);
  if (name.size() != pattern.size()) return false;
  const auto fixed = pattern.size() - kRandomPart.size();
  return name.substr(0, fixed) == std::string_view(pattern).substr(0, fixed) &&
         std::all_of(name.begin() + static_cast<std::ptrdiff_t>(fixed), name.end(),
                     isLetterOrDigit);
}

bool hasLeftovers(const std::filesystem::path& bundle) {
  std::error_code failed;
  std::filesystem::directory_iterator entry(bundle.parent_path(), failed);
  for (; !failed && entry != std::filesystem::directory_iterator(); entry.increment(failed)) {
    if (isLeftover(entry->path().filename().string(), bundle)) return true;
  }
  return false;
}

}  // namespace horalo
