#pragma once

#include <QByteArray>
#include <filesystem>

#include "preferences/property_list.h"

namespace horalo {

// The file in which preferences are kept: read whole and replaced whole, so that whoever reads it
// sees either the old or the new values. A link is followed, and stays one.
class PreferencesFile {
 public:
  enum class State {
    absent,
    readable,
    broken,       // no property list, too long, or no file at all but something else of its name
    inaccessible  // may not be read
  };

  struct Contents {
    State state = State::absent;
    plist::Dictionary values;  // empty unless readable
  };

  // An empty path is never there and cannot be written.
  explicit PreferencesFile(std::filesystem::path path) : path_(std::move(path)) {}

  const std::filesystem::path& path() const { return path_; }
  // Where a link leads, in the end; the path itself where it is none.
  std::filesystem::path target() const;

  // Never blocks on what is no file.
  Contents read() const;

  // False where the values could not be brought to the disk safely; then the old file is as it was.
  // Makes the folders that are missing.
  bool replace(const plist::Dictionary& values) const;

  // Renames a broken file: NAME.corrupt, or the first of NAME.corrupt.1, NAME.corrupt.2, ... that
  // is free.
  bool setAside() const;

  // Removes what replace() left behind where its process was killed. To be called while nobody
  // else replaces the file.
  void sweep() const;

  // Makes the folder of the file where it is missing, for the user alone.
  bool makeFolder() const;

 private:
  std::filesystem::path path_;
  // What was read last, so that the same bytes need not be understood again.
  mutable QByteArray lastDocument_;
  mutable plist::Dictionary lastValues_;
};

}  // namespace horalo
