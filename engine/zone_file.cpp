#include "engine/zone_file.h"

#include <sys/stat.h>

#include <cstdlib>
#include <functional>
#include <map>

namespace horalo {
namespace {

struct KnownFile {
  FileVersion version;
  std::string name;
};

// Another name of the same file: "Europe/Paris", "./Europe/Paris", "././Europe/Paris".
std::string nextName(std::string name) {
  return name.insert(name.starts_with('/') ? 1 : 0, "./");
}

}  // namespace

std::string zoneFilePath(std::string_view identifierOrPath) {
  if (identifierOrPath.starts_with('/')) return std::string(identifierOrPath);
  const char* folder = std::getenv("TZDIR");
  if (folder == nullptr || *folder == '\0') folder = "/usr/share/zoneinfo";
  return std::string(folder).append("/").append(identifierOrPath);
}

FileVersion FileVersion::of(const std::string& path) {
  struct stat found {};
  if (stat(path.c_str(), &found) != 0) return {};
  return {found.st_dev, found.st_ino, found.st_size, found.st_mtim.tv_sec, found.st_mtim.tv_nsec};
}

std::optional<std::string> freshZoneName(std::string_view identifierOrPath) {
  thread_local std::map<std::string, KnownFile, std::less<>> known;
  const FileVersion version = FileVersion::of(zoneFilePath(identifierOrPath));
  if (!version.exists()) return std::nullopt;
  const auto found = known.find(identifierOrPath);
  if (found == known.end()) {
    const std::string name(identifierOrPath);
    return known.emplace(name, KnownFile{version, name}).first->second.name;
  }
  KnownFile& file = found->second;
  if (file.version != version) file = {version, nextName(file.name)};
  return file.name;
}

}  // namespace horalo
