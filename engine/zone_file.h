#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace horalo {

// Where the system keeps the file of a zone: an absolute path as it stands, an identifier such as
// "Europe/Paris" in the folder of the zone database.
std::string zoneFilePath(std::string_view identifierOrPath);

// What tells one state of a file from another: it differs once the file was replaced or written to.
struct FileVersion {
  std::uint64_t device = 0;
  std::uint64_t number = 0;
  std::int64_t size = -1;  // no file
  std::int64_t writtenSeconds = 0;
  std::int64_t writtenNanoseconds = 0;

  static FileVersion of(const std::string& path);
  bool exists() const { return size >= 0; }
  friend bool operator==(const FileVersion&, const FileVersion&) = default;
};

// A name for a zone's file under which the time-zone library reads what is there now; nothing where
// there is no file. The library keeps whatever it has read under a name, also that it found none,
// for as long as the program runs, and time-zone files are updated while it does.
std::optional<std::string> freshZoneName(std::string_view identifierOrPath);

}  // namespace horalo
