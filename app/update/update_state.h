#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "preferences/preferences_store.h"

namespace horalo {

// What the updater remembers between runs, beside the preferences. Read from the file at each call;
// what is missing or makes no sense counts as never written.
class UpdateState {
 public:
  // $XDG_STATE_HOME/horalo/updates.plist; empty where the user has no home.
  static std::filesystem::path defaultPath();

  // With an empty path, what is set lives as long as this object.
  UpdateState(const std::filesystem::path& path, Timers& timers) : store_(path, timers) {}

  // Seconds since the epoch at which the last check began; finite.
  std::optional<double> lastCheck() const;
  // How many checks have failed in a row.
  int failures() const;
  void setLastCheck(double secondsSinceEpoch, int failures);
  void setFailures(int failures);

  // The highest version that a signed feed ever offered; empty before the first.
  std::string highestVersion() const;
  void setHighestVersion(const std::string& version);

  // The version that automatic checks do not offer again; empty where there is none.
  std::string skippedVersion() const;
  void setSkippedVersion(const std::string& version);

  // Which of the seven groups of a phased roll-out this copy belongs to, 0 to 6; nothing before it
  // was drawn.
  std::optional<int> rolloutGroup() const;
  void setRolloutGroup(int group);

 private:
  std::string text(std::string_view key) const;
  std::optional<double> number(std::string_view key) const;

  PreferencesStore store_;
};

}  // namespace horalo
