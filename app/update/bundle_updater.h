#pragma once

#include <QByteArray>
#include <QSocketNotifier>
#include <QString>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "app/update/relaunch.h"
#include "app/update/update_schedule.h"
#include "app/update/update_state.h"
#include "app/updater.h"

namespace horalo {

// What the updater needs of the program; everything must outlive it.
struct UpdaterSurroundings {
  Timers& timers;
  const Clock& clock;
  Relaunch& relaunch;
  std::function<void()> quit;  // ends the event loop, in order
  // Shows an alert: a message, and what to do about it.
  std::function<void(const QString& message, const QString& advice)> alert;
};

// The updater of a program that runs from a bundle. All the work is done by another program of the
// bundle, horalo-updater, which is started for each check: what it loads and what a server sends it
// never touches this process.
//
// Lines that pass between the two, over the socket that is the updater's standard input:
//   to the updater     show       the user asks for a check: show a window, bring it to the front
//                      becoming   the old version has ended in good order, the new one is next
//                      started    sent by a new version once it has run well for a while
//   from the updater   shown      the answer to show, where it was not too late for that
//                      relaunch   the new version is in place: quit and become it
class BundleUpdater final : public Updater {
 public:
  // How long a new version must run to be kept, in seconds; then what was left of updates is
  // deleted.
  static constexpr double kTrialPeriod = 10;

  BundleUpdater(const std::filesystem::path& bundle, const UpdaterSurroundings& surroundings);
  ~BundleUpdater() override;

  void setAutomaticallyChecksForUpdates(bool automatically) override;
  void setUpdateCheckInterval(double seconds) override;
  void checkForUpdates() override;
  std::string obstacle() const override { return obstacle_; }

 private:
  enum class Job { trial, check, sweep };

  bool start(Job job, const char* const* arguments);
  void checkQuietly();
  // Where the version that runs is now: beside the bundle, after another copy has updated that.
  std::filesystem::path ownFolder() const;
  void listen(Job job, UpdaterLink link);
  void stopListening();
  void receive();
  void obey(const QByteArray& line);
  void updaterEnded();
  void say(const char* line);
  void trialPassed();

  std::filesystem::path bundle_;
  UpdaterSurroundings surroundings_;
  // The bundle as it was at the start, wherever an update moves it. Nobody deletes it while this
  // holds its lock.
  FileDescriptor hold_;
  std::string obstacle_;
  UpdateState state_;
  UpdateSchedule schedule_;
  std::optional<UpdaterLink> link_;  // while an updater runs
  Job job_ = Job::check;
  // The user asked while the updater was busy with something else, or about to end.
  bool checkWaits_ = false;
  std::unique_ptr<QSocketNotifier> messages_;
  QByteArray received_;
  std::unique_ptr<Timer> trial_;
};

// Starts the updater of this process; nothing where it does not run from a bundle.
std::unique_ptr<Updater> startUpdater(const UpdaterSurroundings& surroundings);

}  // namespace horalo
