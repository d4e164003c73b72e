#include "preferences/preferences_store.h"

#include <chrono>
#include <thread>
#include <utility>

#include "base/user_folders.h"
#include "preferences/file_lock.h"

namespace horalo {
namespace {

// A lock is held for a few milliseconds. Where nothing is written for a second, whoever holds it is
// stopped or stuck.
constexpr std::chrono::milliseconds kLockRetry{10};
constexpr int kAttempts = 100;
constexpr int kAttemptsAtTheEnd = 32;

void overlay(const plist::Dictionary& changes, plist::Dictionary& values) {
  for (const auto& [key, value] : changes) values.insert_or_assign(key, value);
}

}  // namespace

std::filesystem::path PreferencesStore::defaultPath() {
  const auto folder = userConfigFolder();
  return folder.empty() ? folder : folder / "horalo" / "org.horalo.Horalo.plist";
}

PreferencesStore::PreferencesStore(std::filesystem::path path, Timers& timers)
    : file_(std::move(path)), timers_(timers) {}

PreferencesStore::~PreferencesStore() {
  flush();
}

plist::Dictionary PreferencesStore::values() const {
  plist::Dictionary values = file_.read().values;
  overlay(pending_, values);
  return values;
}

std::optional<plist::Value> PreferencesStore::value(std::string_view key) const {
  if (const auto set = pending_.find(key); set != pending_.end()) return set->second;
  const auto stored = file_.read().values;
  if (const auto found = stored.find(key); found != stored.end()) return found->second;
  return std::nullopt;
}

void PreferencesStore::set(const plist::Dictionary& changes) {
  overlay(changes, pending_);
  const bool waiting = lockTimer_ && lockTimer_->isActive();
  if (!waiting) save();
}

void PreferencesStore::flush() {
  if (file_.path().empty()) return;
  if (lockTimer_) lockTimer_->stop();
  for (int attempts = kAttemptsAtTheEnd; !pending_.empty(); --attempts) {
    const FileLock lock(lockPath());
    if (lock.state() != FileLock::State::taken || attempts == 0) {
      write(lock.state() == FileLock::State::ours);
      return;
    }
    std::this_thread::sleep_for(kLockRetry);
  }
}

void PreferencesStore::save() {
  if (file_.path().empty()) return;
  file_.makeFolder();
  const FileLock lock(lockPath());
  if (lock.state() == FileLock::State::taken && isWorthWaiting()) {
    if (!lockTimer_) lockTimer_ = timers_.make();
    lockTimer_->startOnce(std::chrono::duration<double>(kLockRetry).count(), [this] { save(); });
    return;
  }
  attempts_ = 0;
  write(lock.state() == FileLock::State::ours);
}

// While others write, the lock is passed on and will come to us too.
bool PreferencesStore::isWorthWaiting() {
  std::error_code error;
  const auto written = std::filesystem::last_write_time(file_.path(), error);
  if (written != lastWritten_) attempts_ = 0;
  lastWritten_ = written;
  return ++attempts_ <= kAttempts;
}

void PreferencesStore::write(bool locked) {
  using State = PreferencesFile::State;
  const auto [state, stored] = file_.read();
  if (state == State::inaccessible) return;
  if (state == State::broken && !file_.setAside()) return;
  if (locked) file_.sweep();

  plist::Dictionary values = stored;
  overlay(pending_, values);
  const bool nothingChanges = state == State::readable && values == stored;
  if (nothingChanges || file_.replace(values)) pending_.clear();
}

std::filesystem::path PreferencesStore::lockPath() const {
  return file_.path().string() + ".lock";
}

}  // namespace horalo
