#include "app/update/archive_policy.h"

#include <algorithm>

namespace horalo {
namespace {

constexpr std::size_t kLongestName = 200;
constexpr std::string_view kBundle = ".app";
constexpr unsigned kPermissions = 0777;

// Printable ASCII, without what shells and file managers have a meaning for.
bool isPlain(char c) {
  return c > ' ' && c <= '~' && c != '\\' && c != ':' && c != '*' && c != '?' && c != '"' &&
         c != '<' && c != '>' && c != '|' && c != '\'' && c != '`' && c != '$';
}

bool isName(std::string_view name) {
  if (name.empty() || name.size() > kLongestName || name == "." || name == "..") return false;
  return std::all_of(name.begin(), name.end(), isPlain);
}

// A folder's path may end with a slash.
std::string_view withoutSlash(std::string_view path) {
  if (path.ends_with('/')) path.remove_suffix(1);
  return path;
}

// Names that differ in capitals only are one name on some disks.
std::string inOneCase(std::string_view path) {
  std::string lower(path);
  for (char& c : lower) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return lower;
}

bool isPath(std::string_view path, int deepest) {
  for (int depth = 1; depth <= deepest; ++depth) {
    const auto slash = path.find('/');
    if (!isName(path.substr(0, slash))) return false;
    if (slash == std::string_view::npos) return true;
    path.remove_prefix(slash + 1);
  }
  return false;
}

}  // namespace

std::optional<std::string> ArchivePolicy::refuse(const ArchiveEntry& entry) {
  if (++entries_ > limits_.entries) return "too many files";
  if (entry.kind == ArchiveEntry::Kind::other || entry.isLink)
    return "something else than a file or a folder";
  if ((entry.mode & ~kPermissions) != 0) return "a file with special rights";

  const bool isFolder = entry.kind == ArchiveEntry::Kind::folder;
  const std::string_view path = isFolder ? withoutSlash(entry.path) : std::string_view(entry.path);
  if (!isPath(path, limits_.depth)) return "an unusual file name";
  const std::string_view top = path.substr(0, path.find('/'));
  if (top_.empty()) top_ = top;
  if (top != top_ || !top.ends_with(kBundle) || top.size() == kBundle.size())
    return "a file outside of the program's folder";
  if (!isFolder && top == path) return "a file in place of the program's folder";
  if (!seen_.insert(inOneCase(path)).second) return "the same file twice";
  if (entry.size < 0 || entry.size > limits_.bytes - bytes_) return "too many bytes";
  return std::nullopt;
}

std::optional<std::string> ArchivePolicy::refuseBytes(std::int64_t count) {
  bytes_ += count;
  if (bytes_ > limits_.bytes) return "too many bytes";
  return std::nullopt;
}

std::string_view ArchivePolicy::inside(std::string_view path) {
  path = withoutSlash(path);
  const auto slash = path.find('/');
  return slash == std::string_view::npos ? std::string_view() : path.substr(slash + 1);
}

}  // namespace horalo
