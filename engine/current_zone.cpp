#include "engine/current_zone.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

#include "engine/zone_file.h"

namespace horalo {
namespace {

constexpr const char* kLocalTimeFile = "/etc/localtime";
// Where the system keeps only a copy of the zone's file, this may name the zone.
constexpr const char* kZoneNameFile = "/etc/timezone";

// The identifier in the path of a zone's file: "/usr/share/zoneinfo/Europe/Paris" is
// "Europe/Paris". Empty where the path is not inside a zone database.
std::string_view identifierInPath(std::string_view path) {
  constexpr std::string_view kDatabase = "/zoneinfo/";
  const std::size_t found = path.rfind(kDatabase);
  if (found == std::string_view::npos) return {};
  std::string_view identifier = path.substr(found + kDatabase.size());
  if (identifier.starts_with("posix/")) identifier.remove_prefix(6);
  return identifier;
}

TimeZone zoneOfVariable(std::string_view value) {
  if (value.starts_with(':')) value.remove_prefix(1);
  if (value.empty()) return TimeZone::find("Etc/UTC").value_or(TimeZone::utc());
  const std::string_view identifier = value.starts_with('/') ? identifierInPath(value) : value;
  if (std::optional<TimeZone> zone = TimeZone::find(identifier)) return *std::move(zone);
  const std::optional<TimeZone> zone =
      value.starts_with('/') ? TimeZone::ofFile(value) : TimeZone::fromPosixRule(value);
  return zone.value_or(TimeZone::utc());
}

// False where one of them is no file.
bool haveSameBytes(const std::filesystem::path& path, const std::filesystem::path& other) {
  using Bytes = std::istreambuf_iterator<char>;
  std::error_code ignored;
  if (!is_regular_file(path, ignored) || !is_regular_file(other, ignored)) return false;
  std::ifstream file(path, std::ios::binary), otherFile(other, std::ios::binary);
  return file && otherFile && std::equal(Bytes(file), Bytes(), Bytes(otherFile), Bytes());
}

// Where the local time is a file of its own. Its name may be wrong or missing, its bytes are not.
TimeZone zoneOfCopy() {
  std::string name;
  std::ifstream(kZoneNameFile) >> name;
  if (haveSameBytes(kLocalTimeFile, zoneFilePath(name))) {
    if (const std::optional<TimeZone> zone = TimeZone::find(name)) return *zone;
  }
  return TimeZone::ofFile(kLocalTimeFile).value_or(TimeZone::utc());
}

TimeZone zoneOfLink(std::string_view target) {
  if (const std::optional<TimeZone> zone = TimeZone::find(identifierInPath(target))) return *zone;
  // A link to a link, as some systems have it.
  char* resolved = ::realpath(kLocalTimeFile, nullptr);
  if (resolved != nullptr) {
    const std::string path = resolved;
    std::free(resolved);  // NOLINT(cppcoreguidelines-no-malloc): realpath's own contract
    if (const std::optional<TimeZone> zone = TimeZone::find(identifierInPath(path))) return *zone;
  }
  return zoneOfCopy();
}

}  // namespace

TimeZone SystemZone::current() const {
  if (const char* variable = std::getenv("TZ"); variable != nullptr) {
    const std::string_view value = variable;
    if (value != ":/etc/localtime" && value != kLocalTimeFile) return zoneOfVariable(value);
  }
  std::array<char, 512> target{};
  const ssize_t length = ::readlink(kLocalTimeFile, target.data(), target.size());
  return zoneOfLink({target.data(), length > 0 ? static_cast<std::size_t>(length) : 0});
}

TimeZone ZoneReadOnce::current() const {
  if (!zone_) zone_ = source_.current();
  return *zone_;
}

}  // namespace horalo
