#pragma once

#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <string_view>

namespace horalo {

// What an archive says about one of its entries.
struct ArchiveEntry {
  enum class Kind { file, folder, other };
  std::string path;
  Kind kind = Kind::other;
  bool isLink = false;    // a hard link, which has a kind as well
  unsigned mode = 0;      // permissions, with the set-id and sticky bits
  std::int64_t size = 0;  // bytes, as announced
};

struct ArchiveLimits {
  int entries = 10'000;
  int depth = 16;  // names in a path
  std::int64_t bytes = std::int64_t{1} << 30;
};

// Which archives are unpacked at all: one folder whose name ends in ".app", and in it only folders
// and ordinary files with plain names. What is refused here could not do harm by the way in which
// archives are unpacked; but there is no reason for it to be in one of ours either.
class ArchivePolicy {
 public:
  explicit ArchivePolicy(ArchiveLimits limits = {}) : limits_(limits) {}

  // To be asked about each entry in turn. Why the archive is not unpacked any further; nothing
  // where the entry is fine.
  std::optional<std::string> refuse(const ArchiveEntry& entry);

  // The same for the bytes that an entry really has.
  std::optional<std::string> refuseBytes(std::int64_t count);

  // Where an allowed path leads below the folder that everything is in; empty for that folder
  // itself.
  static std::string_view inside(std::string_view path);

 private:
  ArchiveLimits limits_;
  int entries_ = 0;
  std::int64_t bytes_ = 0;
  std::string top_;
  std::set<std::string> seen_;  // paths, in lower case
};

}  // namespace horalo
