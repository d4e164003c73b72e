#pragma once

#include <QFileSystemWatcher>
#include <functional>
#include <memory>

#include "base/timers.h"
#include "preferences/preferences_store.h"

namespace horalo {

// Tells, for as long as it lives, when stored values have changed, whoever changed them. Nothing is
// watched without one.
class PreferencesWatcher {
 public:
  // Makes the folder of the file where it is missing. Changes in quick succession are told once.
  // `store` and `timers` must outlive this object.
  PreferencesWatcher(const PreferencesStore& store, Timers& timers, std::function<void()> changed);

 private:
  void watch();
  void compare();

  const PreferencesStore& store_;
  std::function<void()> changed_;
  plist::Dictionary lastSeen_;
  std::unique_ptr<Timer> settling_;
  QFileSystemWatcher watcher_;
};

}  // namespace horalo
