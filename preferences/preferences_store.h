#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <string_view>

#include "base/timers.h"
#include "preferences/preferences_file.h"
#include "preferences/property_list.h"

namespace horalo {

// The values that outlive a launch, in an XML property list that its user may edit at any time.
//
// Every read reads the file. A missing, unreadable or broken one is an empty one. A write holds the
// file's lock while it reads the values anew, changes those that were set and replaces the file, so
// that two programs that write lose nothing of each other's. Nothing of this ever fails aloud: what
// cannot be written, because the disk is full or the folder read-only, counts for as long as this
// object lives, and is tried again with the next write and at the end. A broken file is renamed
// (PreferencesFile::setAside) before a new one takes its place.
class PreferencesStore {
 public:
  // $XDG_CONFIG_HOME/horalo/org.horalo.Horalo.plist; empty where the user has no home.
  static std::filesystem::path defaultPath();

  // Touches nothing yet. With an empty path, values live as long as this object.
  PreferencesStore(std::filesystem::path path, Timers& timers);
  // Writes what is not yet written, as flush().
  ~PreferencesStore();

  plist::Dictionary values() const;
  // Nothing where the key is absent.
  std::optional<plist::Value> value(std::string_view key) const;

  // The new values count at once. They are written at once too, unless another process holds the
  // lock: then from the event loop as soon as the lock is free, and without it after a second in
  // which nobody wrote.
  void set(const plist::Dictionary& changes);

  // For the end of the program: writes what is still pending, and waits for a lock that somebody
  // holds at most a third of a second.
  void flush();

  const PreferencesFile& file() const { return file_; }

 private:
  void save();
  bool isWorthWaiting();
  void write(bool locked);
  std::filesystem::path lockPath() const;

  PreferencesFile file_;
  Timers& timers_;
  std::unique_ptr<Timer> lockTimer_;  // made when a lock must be waited for
  int attempts_ = 0;                  // to lock, since somebody wrote
  std::filesystem::file_time_type lastWritten_;
  plist::Dictionary pending_;  // set, and not yet in the file
};

}  // namespace horalo
