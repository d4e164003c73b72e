#include "app/update/staging.h"

#include <fcntl.h>
#include <stdio.h>
#include <stdlib.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

#include "app/update/folder_writer.h"
#include "app/update/leftovers.h"

namespace horalo {
namespace {

// Files and folders of a new version, by a wide margin.
constexpr fsfilcnt_t kFiles = 1000;

FileDescriptor openFolder(const std::filesystem::path& path) {
  return FileDescriptor(open(path.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
}

QString shown(const std::filesystem::path& path) {
  return QString::fromStdString(path.string());
}

// In a folder such as /tmp only its owner may rename a folder.
bool mayRename(int parent, const std::filesystem::path& bundle) {
  struct stat parentIs {};
  struct stat bundleIs {};
  if (fstat(parent, &parentIs) != 0 || lstat(bundle.c_str(), &bundleIs) != 0) return false;
  const uid_t user = geteuid();
  return (parentIs.st_mode & S_ISVTX) == 0 || user == 0 || user == parentIs.st_uid ||
         user == bundleIs.st_uid;
}

bool hasSpace(int folder, std::int64_t bytes) {
  struct statvfs space {};
  if (fstatvfs(folder, &space) != 0) return true;  // writing will tell
  const auto free =
      static_cast<std::int64_t>(space.f_bavail) * static_cast<std::int64_t>(space.f_frsize);
  const bool countsFiles = space.f_files > 0;
  return free >= bytes && (!countsFiles || space.f_favail >= kFiles);
}

bool exchangeNames(int parent, const std::string& a, const std::string& b) {
  return renameat2(parent, a.c_str(), parent, b.c_str(), RENAME_EXCHANGE) == 0;
}

}  // namespace

Staging::Staging(std::filesystem::path bundle, FileDescriptor parent, std::string name,
                 FileDescriptor folder)
    : bundle_(std::move(bundle)),
      parent_(std::move(parent)),
      name_(std::move(name)),
      folder_(std::move(folder)) {}

Outcome<Staging> Staging::make(const std::filesystem::path& bundle, std::int64_t bytes) {
  const auto parentPath = bundle.parent_path();
  FileDescriptor parent = openFolder(parentPath);
  if (!parent || !mayRename(parent.get(), bundle)) return problem::notWritable(shown(parentPath));

  std::string path = (parentPath / leftoverPattern(bundle)).string();
  if (mkdtemp(path.data()) == nullptr) {
    if (errno == ENOSPC || errno == EDQUOT) return problem::noSpace(shown(parentPath));
    return problem::notWritable(shown(parentPath));
  }
  // From here on the folder is deleted again when something fails.
  Staging staging(bundle, std::move(parent), std::filesystem::path(path).filename().string(),
                  openFolder(path));
  // The lock tells a sweep that this is no leftover yet.
  if (!staging.folder_ || flock(staging.folder(), LOCK_SH | LOCK_NB) != 0)
    return problem::notWritable(shown(parentPath));
  if (!hasSpace(staging.folder(), bytes)) return problem::noSpace(shown(parentPath));
  return staging;
}

Staging::~Staging() {
  if (folder_ && !exchanged_) removeTree(parent_.get(), name_);
}

std::optional<Problem> Staging::exchange(int held) {
  const QString parentShown = shown(parentPath());
  if (fchmod(folder(), 0755) != 0 || syncfs(folder()) != 0) return problem::noSpace(parentShown);
  if (!isAt(held, bundleName())) return problem::alreadyReplaced();
  if (!isAt(folder(), name_)) return problem::badArchive(QStringLiteral("its folder was moved"));
  if (!exchangeNames(parent_.get(), name_, bundleName())) {
    if (errno == EINVAL || errno == ENOSYS || errno == EXDEV)
      return problem::cannotExchange(parentShown);
    return problem::notWritable(parentShown);
  }
  exchanged_ = true;
  if (!isAt(folder(), bundleName())) {  // somebody else's folder came in between
    exchangeBack();
    return problem::badArchive(QStringLiteral("its folder was moved"));
  }
  fsync(parent_.get());
  return std::nullopt;
}

bool Staging::exchangeBack() {
  if (!exchanged_ || !exchangeNames(parent_.get(), name_, bundleName())) return false;
  exchanged_ = false;
  fsync(parent_.get());
  return true;
}

bool Staging::isInUse() {
  flock(folder(), LOCK_UN);
  const FileDescriptor again(openat(folder(), ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  return again && flock(again.get(), LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK;
}

bool Staging::isAt(int folder, const std::string& name) const {
  struct stat wanted {};
  struct stat found {};
  return fstat(folder, &wanted) == 0 &&
         fstatat(parent_.get(), name.c_str(), &found, AT_SYMLINK_NOFOLLOW) == 0 &&
         wanted.st_dev == found.st_dev && wanted.st_ino == found.st_ino;
}

void sweepLeftovers(const std::filesystem::path& bundle) {
  const FileDescriptor parent = openFolder(bundle.parent_path());
  if (!parent) return;
  std::error_code failed;
  std::filesystem::directory_iterator entry(bundle.parent_path(), failed);
  for (; !failed && entry != std::filesystem::directory_iterator(); entry.increment(failed)) {
    const std::string name = entry->path().filename().string();
    if (!isLeftover(name, bundle)) continue;
    const FileDescriptor folder(
        openat(parent.get(), name.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    struct stat is {};
    const bool ours = folder && fstat(folder.get(), &is) == 0 && is.st_uid == geteuid();
    if (ours && flock(folder.get(), LOCK_EX | LOCK_NB) == 0) removeTree(parent.get(), name);
  }
}

}  // namespace horalo
