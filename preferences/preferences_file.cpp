#include "preferences/preferences_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <string>

#include "base/file_descriptor.h"

namespace horalo {
namespace {

namespace fs = std::filesystem;

constexpr int kMostLinks = 40;  // as many as the kernel follows
constexpr int kMostSetAside = 10'000;

// New versions are written beside the file, hidden, under names that nobody else uses.
constexpr std::string_view kNewVersionMark = ".new-";
constexpr std::string_view kUniquePart = "XXXXXX";

std::string newVersionPrefix(const fs::path& file) {
  return std::string(".").append(file.filename().string()).append(kNewVersionMark);
}

bool makeFolders(const fs::path& folder) {
  if (mkdir(folder.c_str(), 0700) == 0) return true;
  if (errno == ENOENT && folder.has_parent_path() && makeFolders(folder.parent_path())) {
    return mkdir(folder.c_str(), 0700) == 0 || errno == EEXIST;
  }
  std::error_code error;
  return fs::is_directory(folder, error);
}

bool writeAll(const FileDescriptor& file, const QByteArray& document) {
  qsizetype done = 0;
  while (done < document.size()) {
    const auto count = ::write(file.get(), document.constData() + done,
                               static_cast<std::size_t>(document.size() - done));
    if (count < 0 && errno != EINTR) return false;
    if (count > 0) done += count;
  }
  return true;
}

// Some file systems have nothing to wait for and say so.
bool sync(const FileDescriptor& file) {
  return fsync(file.get()) == 0 || errno == EINVAL || errno == ENOSYS;
}

// Never replaces what has the new name.
bool renameExclusively(const fs::path& from, const fs::path& to) {
  if (renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) return true;
  if (errno != EINVAL && errno != ENOSYS) return false;
  std::error_code error;
  if (fs::symlink_status(to, error).type() != fs::file_type::not_found) {
    errno = EEXIST;
    return false;
  }
  return rename(from.c_str(), to.c_str()) == 0;
}

// At most one byte more than a property list may have; nothing where reading fails.
std::optional<QByteArray> readAll(const FileDescriptor& file, std::size_t expected) {
  constexpr auto kMost = static_cast<std::size_t>(plist::kLongestDocument) + 1;
  QByteArray document;
  while (static_cast<std::size_t>(document.size()) < kMost) {
    const auto done = document.size();
    const std::size_t room =
        std::min(kMost - static_cast<std::size_t>(done), std::max<std::size_t>(expected, 1));
    document.resize(done + static_cast<qsizetype>(room));
    const auto count = ::read(file.get(), document.data() + done, room);
    document.resize(done + std::max<qsizetype>(count, 0));
    if (count == 0) break;
    if (count < 0 && errno != EINTR) return std::nullopt;
    expected = 4096;
  }
  return document;
}

}  // namespace

fs::path PreferencesFile::target() const {
  fs::path path = path_;
  std::error_code error;
  for (int links = 0; links < kMostLinks; ++links) {
    const fs::path next = fs::read_symlink(path, error);
    if (error) return path;
    path = path.parent_path() / next;
  }
  return path_;
}

PreferencesFile::Contents PreferencesFile::read() const {
  if (path_.empty()) return {};
  const FileDescriptor file(open(path_.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
  if (!file) {
    if (errno == ENOENT || errno == ENOTDIR) return {};
    const bool noFile = errno == ENXIO || errno == ELOOP;  // a socket, a link to itself
    return {noFile ? State::broken : State::inaccessible, {}};
  }
  struct stat status {};
  if (fstat(file.get(), &status) != 0) return {State::inaccessible, {}};
  if (!S_ISREG(status.st_mode) || status.st_size > plist::kLongestDocument) {
    return {State::broken, {}};
  }
  const auto document = readAll(file, static_cast<std::size_t>(status.st_size) + 1);
  if (!document) return {State::inaccessible, {}};
  if (lastDocument_.isEmpty() || *document != lastDocument_) {
    auto values = plist::read(*document);
    if (!values) return {State::broken, {}};
    lastDocument_ = *document;
    lastValues_ = std::move(*values);
  }
  return {State::readable, lastValues_};
}

bool PreferencesFile::replace(const plist::Dictionary& values) const {
  if (path_.empty()) return false;
  const QByteArray document = plist::write(values);
  if (document.size() > plist::kLongestDocument) return false;
  const fs::path file = target();
  // A file that its user has made read-only is not to be replaced either.
  if (access(file.c_str(), W_OK) != 0 && errno != ENOENT) return false;
  if (!makeFolders(file.parent_path())) return false;

  std::string newVersion = file.parent_path() / (newVersionPrefix(file) + std::string(kUniquePart));
  const FileDescriptor output(mkostemp(newVersion.data(), O_CLOEXEC));  // mode 0600
  if (!output) return false;
  // The new content reaches the disk before the name leads to it. The name may follow seconds
  // later: waiting for that too would cost a frame, and losing power meanwhile brings back the old
  // file.
  if (writeAll(output, document) && sync(output) && rename(newVersion.c_str(), file.c_str()) == 0) {
    return true;
  }
  unlink(newVersion.c_str());
  return false;
}

bool PreferencesFile::setAside() const {
  // What a link leads to is renamed only where it is a file: a link to somebody's folder says
  // nothing about that folder.
  const fs::path file = target();
  std::error_code error;
  const fs::path& broken = fs::is_regular_file(file, error) ? file : path_;
  const std::string name = broken.string() + ".corrupt";
  if (renameExclusively(broken, name)) return true;
  for (int number = 1; errno == EEXIST && number <= kMostSetAside; ++number) {
    if (renameExclusively(broken, name + "." + std::to_string(number))) return true;
  }
  return false;
}

void PreferencesFile::sweep() const {
  const fs::path file = target();
  const std::string prefix = newVersionPrefix(file);
  std::error_code error;
  for (const auto& entry : fs::directory_iterator(file.parent_path(), error)) {
    const std::string name = entry.path().filename().string();
    if (name.size() == prefix.size() + kUniquePart.size() && name.starts_with(prefix)) {
      unlink(entry.path().c_str());
    }
  }
}

bool PreferencesFile::makeFolder() const {
  return !path_.empty() && makeFolders(path_.parent_path());
}

}  // namespace horalo
