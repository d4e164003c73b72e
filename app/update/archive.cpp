#include "app/update/archive.h"

#include <archive.h>
#include <archive_entry.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <memory>
#include <optional>
#include <vector>

#include "app/update/bundle_path.h"
#include "app/update/folder_writer.h"
#include "app/update/tar_bytes.h"
#include "preferences/property_list.h"

namespace horalo {
namespace {

using Failure = std::optional<UnpackFailure>;
constexpr std::size_t kBlock = 128 * 1024;
// Zeros behind the end of a tar archive, which fill its last record up; records are 10 kB by
// custom.
constexpr std::size_t kLongestFill = 1 << 20;

Failure damaged() {
  return UnpackFailure{false, "the archive is damaged"};
}

Failure refused(std::optional<std::string> reason) {
  if (!reason) return std::nullopt;
  return UnpackFailure{false, *std::move(reason)};
}

Failure systemFailure() {
  const int error = errno;
  return UnpackFailure{error == ENOSPC || error == EDQUOT, std::strerror(error)};
}

ArchiveEntry describe(archive_entry* entry) {
  ArchiveEntry described;
  // Absent where the name cannot be written in this locale, which no plain name is.
  if (const char* const path = archive_entry_pathname(entry)) described.path = path;
  if (archive_entry_filetype(entry) == AE_IFREG) described.kind = ArchiveEntry::Kind::file;
  if (archive_entry_filetype(entry) == AE_IFDIR) described.kind = ArchiveEntry::Kind::folder;
  described.isLink = archive_entry_hardlink(entry) != nullptr ||
                     archive_entry_hardlink_w(entry) != nullptr ||
                     archive_entry_symlink(entry) != nullptr;
  described.mode = archive_entry_perm(entry);
  described.size = archive_entry_size(entry);
  return described;
}

// Gives the reader of the tar archive its bytes.
la_ssize_t readTar(archive*, void* bytes, const void** block) {
  const auto next = static_cast<TarBytes*>(bytes)->next();
  if (!next) return -1;
  *block = next->data();
  return static_cast<la_ssize_t>(next->size());
}

bool areZeros(std::span<const char> bytes) {
  return std::all_of(bytes.begin(), bytes.end(), [](char c) { return c == 0; });
}

class Unpacking {
 public:
  Unpacking(QByteArrayView bytes, int folder, ArchiveLimits limits)
      : tar_(bytes),
        reader_(archive_read_new(), archive_read_free),
        policy_(limits),
        writer_(folder) {}

  Failure run() {
    archive* const reader = reader_.get();
    const bool ready = reader != nullptr && archive_read_support_format_tar(reader) == ARCHIVE_OK &&
                       archive_read_open(reader, &tar_, nullptr, readTar, nullptr) == ARCHIVE_OK;
    if (!ready) return damaged();
    for (bool isEmpty = true;; isEmpty = false) {
      archive_entry* entry = nullptr;
      const int status = archive_read_next_header(reader, &entry);
      if (status == ARCHIVE_EOF && !isEmpty) break;
      if (status != ARCHIVE_OK) return damaged();
      if (Failure failure = unpack(describe(entry))) return failure;
    }
    return checkEnd();
  }

  UnpackedBundle bundle;

 private:
  Failure unpack(const ArchiveEntry& entry) {
    if (Failure failure = refused(policy_.refuse(entry))) return failure;
    const std::string_view path = ArchivePolicy::inside(entry.path);
    if (entry.kind == ArchiveEntry::Kind::folder)
      return writer_.makeFolder(path) ? std::nullopt : systemFailure();

    const bool executable = (entry.mode & 0100) != 0;
    const FileDescriptor file = writer_.makeFile(path, executable);
    if (!file) return systemFailure();
    if (path == kBundleProgram) bundle.hasProgram = executable && entry.size > 0;
    return copy(file.get(), path == kBundleInfo);
  }

  Failure copy(int file, bool isInfo) {
    while (true) {
      const la_ssize_t count = archive_read_data(reader_.get(), block_.data(), block_.size());
      if (count == 0) return std::nullopt;
      if (count < 0) return damaged();
      if (Failure failure = refused(policy_.refuseBytes(count))) return failure;
      if (!writeAll(file, {block_.data(), static_cast<std::size_t>(count)})) return systemFailure();
      if (isInfo && bundle.info.size() <= plist::kLongestDocument)
        bundle.info.append(block_.data(), count);
    }
  }

  // Nothing follows the tar archive but what fills its last record up.
  Failure checkEnd() {
    const Failure more = UnpackFailure{false, "something follows the archive"};
    auto fill = tar_.unread(archive_filter_bytes(reader_.get(), -1));
    std::size_t length = 0;
    do {
      if (!fill) return damaged();
      length += fill->size();
      if (!areZeros(*fill) || length > kLongestFill) return more;
      fill = tar_.next();
    } while (!fill || !fill->empty());
    return tar_.hasMore() ? more : std::nullopt;
  }

  TarBytes tar_;
  std::unique_ptr<archive, int (*)(archive*)> reader_;
  ArchivePolicy policy_;
  FolderWriter writer_;
  std::vector<char> block_ = std::vector<char>(kBlock);
};

}  // namespace

std::variant<UnpackedBundle, UnpackFailure> unpackArchive(QByteArrayView archive, int folder,
                                                          ArchiveLimits limits) {
  Unpacking unpacking(archive, folder, limits);
  if (Failure failure = unpacking.run()) return *std::move(failure);
  return std::move(unpacking.bundle);
}

}  // namespace horalo
