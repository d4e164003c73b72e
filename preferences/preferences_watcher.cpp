#include "preferences/preferences_watcher.h"

#include <QString>
#include <utility>

namespace horalo {
namespace {

// Long enough for an editor that empties the file and then fills it.
constexpr double kSettlingSeconds = 0.05;

QString qtPath(const std::filesystem::path& path) {
  return QString::fromStdString(path.string());
}

}  // namespace

PreferencesWatcher::PreferencesWatcher(const PreferencesStore& store, Timers& timers,
                                       std::function<void()> changed)
    : store_(store), changed_(std::move(changed)), settling_(timers.make()) {
  store_.file().makeFolder();
  const auto somethingHappened = [this] {
    if (!settling_->isActive()) settling_->startOnce(kSettlingSeconds, [this] { compare(); });
  };
  QObject::connect(&watcher_, &QFileSystemWatcher::directoryChanged, &watcher_, somethingHappened);
  QObject::connect(&watcher_, &QFileSystemWatcher::fileChanged, &watcher_, somethingHappened);
  watch();
  lastSeen_ = store_.values();
}

// The folder tells of files that come, go and are replaced, the file itself of what is written into
// it. A file that was replaced is another file, so it is looked for anew each time.
void PreferencesWatcher::watch() {
  if (const auto watched = watcher_.files() + watcher_.directories(); !watched.isEmpty()) {
    watcher_.removePaths(watched);
  }
  const auto path = store_.file().path();
  const auto target = store_.file().target();
  for (const auto& each : {path.parent_path(), target.parent_path(), target}) {
    if (std::error_code error; exists(each, error)) watcher_.addPath(qtPath(each));
  }
}

void PreferencesWatcher::compare() {
  watch();
  auto values = store_.values();
  if (values == lastSeen_) return;
  lastSeen_ = std::move(values);
  const auto changed = changed_;
  changed();  // may end this object
}

}  // namespace horalo
