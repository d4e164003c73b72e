#include "app/update/folder_writer.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <memory>
#include <utility>
#include <vector>

namespace horalo {
namespace {

constexpr int kFolder = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;
// Deeper than any folder of ours; a loop of mounts must not exhaust the stack.
constexpr int kDeepest = 64;

bool removeTree(int parent, const std::string& name, int depth);

// The names in an open folder, read before anything is deleted.
std::vector<std::string> namesIn(int folder) {
  std::vector<std::string> names;
  const int copy = openat(folder, ".", kFolder);
  if (copy < 0) return names;
  const std::unique_ptr<DIR, int (*)(DIR*)> stream(fdopendir(copy), closedir);
  if (!stream) {
    close(copy);
    return names;
  }
  while (const dirent* entry = readdir(stream.get())) {
    if (std::strcmp(entry->d_name, ".") != 0 && std::strcmp(entry->d_name, "..") != 0)
      names.emplace_back(entry->d_name);
  }
  return names;
}

bool removeAny(int parent, const std::string& name, int depth) {
  if (unlinkat(parent, name.c_str(), 0) == 0) return true;
  return errno == EISDIR && removeTree(parent, name, depth);
}

bool removeTree(int parent, const std::string& name, int depth) {
  if (depth > kDeepest) return false;
  const FileDescriptor folder(openat(parent, name.c_str(), kFolder));
  if (!folder) return false;
  fchmod(folder.get(), S_IRWXU);  // where it fails, so will what follows
  bool removed = true;
  for (const std::string& inner : namesIn(folder.get()))
    removed = removeAny(folder.get(), inner, depth + 1) && removed;
  return removed && unlinkat(parent, name.c_str(), AT_REMOVEDIR) == 0;
}

}  // namespace

bool FolderWriter::makeFolder(std::string_view path) {
  return static_cast<bool>(openFolder(path));
}

FileDescriptor FolderWriter::makeFile(std::string_view path, bool executable) {
  const auto slash = path.rfind('/');
  const bool deep = slash != std::string_view::npos;
  const FileDescriptor folder = openFolder(deep ? path.substr(0, slash) : std::string_view());
  if (!folder) return {};
  const std::string name(deep ? path.substr(slash + 1) : path);
  FileDescriptor file(openat(folder.get(), name.c_str(),
                             O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC,
                             S_IRUSR | S_IWUSR));
  if (!file) return {};
  if (fchmod(file.get(), executable ? 0755 : 0644) != 0) return {};  // whatever the umask says
  return file;
}

FileDescriptor FolderWriter::openFolder(std::string_view path) {
  FileDescriptor folder(openat(folder_, ".", kFolder));
  while (folder && !path.empty()) {
    const auto slash = path.find('/');
    const std::string name(path.substr(0, slash));
    path = slash == std::string_view::npos ? std::string_view() : path.substr(slash + 1);
    const bool isNew = mkdirat(folder.get(), name.c_str(), 0755) == 0;
    if (!isNew && errno != EEXIST) return {};
    folder = FileDescriptor(openat(folder.get(), name.c_str(), kFolder));
    if (isNew && folder && fchmod(folder.get(), 0755) != 0) return {};  // whatever the umask says
  }
  return folder;
}

bool writeAll(int file, std::span<const char> bytes) {
  while (!bytes.empty()) {
    const auto count = write(file, bytes.data(), bytes.size());
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return false;
    bytes = bytes.subspan(static_cast<std::size_t>(count));
  }
  return true;
}

bool removeTree(int parent, const std::string& name) {
  return removeTree(parent, name, 0);
}

}  // namespace horalo
