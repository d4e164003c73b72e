#include <fcntl.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>

#include "app/update/archive.h"
#include "app/update/folder_writer.h"
#include "fuzz/require.h"

// Any bytes as an archive: whatever is unpacked of it are plain files and folders, within the
// limits, in the folder that it was unpacked into.

namespace horalo {
namespace {

namespace fs = std::filesystem;

constexpr ArchiveLimits kLimits{.entries = 50, .depth = 16, .bytes = 1 << 20};

// In memory, where there is such a file system. Gone at the end.
class Place {
 public:
  Place() {
    std::string name = fs::exists("/dev/shm") ? "/dev/shm/horalo-fuzz.XXXXXX"
                                              : (fs::temp_directory_path() / "horalo-fuzz.XXXXXX");
    require(mkdtemp(name.data()) != nullptr, "there is a folder to unpack into");
    path_ = name;
    folder_ = FileDescriptor(open(name.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  }
  ~Place() { fs::remove_all(path_); }

  const fs::path& path() const { return path_; }
  int folder() const { return folder_.get(); }

 private:
  fs::path path_;
  FileDescriptor folder_;
};

void checkUnpacked(const fs::path& folder) {
  int entries = 0;
  std::uintmax_t bytes = 0;
  for (const auto& entry : fs::recursive_directory_iterator(folder)) {
    const auto status = entry.symlink_status();
    require(fs::is_regular_file(status) || fs::is_directory(status), "no links and no devices");
    require((status.permissions() &
             (fs::perms::set_uid | fs::perms::set_gid | fs::perms::sticky_bit)) == fs::perms::none,
            "no special rights");
    if (fs::is_regular_file(status)) bytes += entry.file_size();
    ++entries;
  }
  // Folders that an entry's path names come on top.
  require(entries <= kLimits.entries * kLimits.depth, "not too many files");
  require(bytes <= static_cast<std::uintmax_t>(kLimits.bytes), "not too many bytes");
}

void check(QByteArrayView bytes) {
  static const Place place;
  require(mkdirat(place.folder(), "in", 0700) == 0, "the last input left nothing behind");
  {
    const FileDescriptor in(openat(place.folder(), "in", O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    const auto result = unpackArchive(bytes, in.get(), kLimits);
    const auto* const bundle = std::get_if<UnpackedBundle>(&result);
    const bool hasInfo = fs::exists(place.path() / "in/Contents/Info.plist");
    require(bundle == nullptr || bundle->info.isEmpty() || hasInfo, "what is told is there");
  }
  checkUnpacked(place.path() / "in");
  require(removeTree(place.folder(), "in"), "what was unpacked can be removed");
  require(fs::is_empty(place.path()), "nothing beside the folder");
}

}  // namespace
}  // namespace horalo

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  horalo::check({data, static_cast<qsizetype>(size)});
  return 0;
}
