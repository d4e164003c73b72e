#include "app/update/bundle_updater.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/socket.h>
#include <sys/wait.h>

#include <cerrno>
#include <cstring>
#include <utility>

#include "app/update/bundle_info.h"
#include "app/update/bundle_path.h"
#include "app/update/leftovers.h"
#include "app/update/updater_process.h"

namespace horalo {
namespace {

constexpr const char* kCheck[] = {"horalo-updater", "check", nullptr};
constexpr const char* kCheckQuietly[] = {"horalo-updater", "check", "--quietly", nullptr};
constexpr const char* kSweep[] = {"horalo-updater", "sweep", nullptr};

// The updater says single words; more than this is not from it.
constexpr qsizetype kLongestLine = 100;

FileDescriptor hold(const std::filesystem::path& bundle) {
  FileDescriptor folder(open(bundle.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (folder) flock(folder.get(), LOCK_SH | LOCK_NB);
  return folder;
}

}  // namespace

BundleUpdater::BundleUpdater(const std::filesystem::path& bundle,
                             const UpdaterSurroundings& surroundings)
    : bundle_(bundle),
      surroundings_(surroundings),
      hold_(hold(bundle)),
      obstacle_(obstacleToUpdates(readBundleInfo(bundle))),
      state_(UpdateState::defaultPath(), surroundings.timers),
      schedule_(surroundings.timers, surroundings.clock, state_, [this] { checkQuietly(); }),
      trial_(surroundings.timers.make()) {
  if (auto link = Relaunch::inherited()) listen(Job::trial, *std::move(link));
  trial_->startOnce(kTrialPeriod, [this] { trialPassed(); });
}

BundleUpdater::~BundleUpdater() {
  // Whoever quits a new version right away does not want the old one back.
  if (link_ && job_ == Job::trial) say("started\n");
}

void BundleUpdater::setAutomaticallyChecksForUpdates(bool automatically) {
  schedule_.setAutomatic(automatically && obstacle_.empty());
}

void BundleUpdater::setUpdateCheckInterval(double seconds) {
  schedule_.setInterval(seconds);
}

void BundleUpdater::checkForUpdates() {
  if (!link_) {
    if (start(Job::check, kCheck)) return;
    surroundings_.alert(QStringLiteral("Updates do not work in this copy of Horalo"),
                        QStringLiteral("A part of %1 is missing or damaged. Download Horalo again "
                                       "and put it in the place of this copy.")
                            .arg(QString::fromStdString(bundle_.string())));
  } else {
    checkWaits_ = true;
    if (job_ == Job::check) say("show\n");
  }
}

void BundleUpdater::checkQuietly() {
  // The schedule goes on by itself where the updater does not start.
  if (link_ || !start(Job::check, kCheckQuietly)) {
    schedule_.checkBegins();
    schedule_.checkEnded();
  }
}

bool BundleUpdater::start(Job job, const char* const* arguments) {
  auto link = startUpdaterProcess(ownFolder() / kBundleUpdater, arguments);
  if (!link) return false;
  if (job == Job::check) schedule_.checkBegins();
  listen(job, *std::move(link));
  return true;
}

std::filesystem::path BundleUpdater::ownFolder() const {
  std::error_code failed;
  const auto link = "/proc/self/fd/" + std::to_string(hold_.get());
  const auto folder = std::filesystem::read_symlink(link, failed);
  return failed ? bundle_ : folder;
}

void BundleUpdater::listen(Job job, UpdaterLink link) {
  job_ = job;
  link_ = std::move(link);
  received_.clear();
  messages_ = std::make_unique<QSocketNotifier>(link_->socket.get(), QSocketNotifier::Read);
  QObject::connect(messages_.get(), &QSocketNotifier::activated, messages_.get(),
                   [this] { receive(); });
}

void BundleUpdater::stopListening() {
  messages_->setEnabled(false);
  messages_.release()->deleteLater();  // this runs inside its signal
}

void BundleUpdater::receive() {
  char bytes[kLongestLine];
  const auto count = recv(link_->socket.get(), bytes, sizeof bytes, MSG_DONTWAIT);
  if (count < 0 && (errno == EAGAIN || errno == EINTR)) return;
  if (count <= 0) {
    updaterEnded();
    return;
  }
  received_.append(bytes, count);
  if (received_.size() > kLongestLine) received_.clear();
  qsizetype end = 0;
  while (link_ && (end = received_.indexOf('\n')) >= 0) {
    const QByteArray line = received_.first(end);
    received_.remove(0, end + 1);
    obey(line);
  }
}

void BundleUpdater::obey(const QByteArray& line) {
  if (line == "shown") checkWaits_ = false;
  if (line != "relaunch" || job_ != Job::check) return;
  stopListening();
  surroundings_.relaunch.request(bundle_ / kBundleProgram, *std::exchange(link_, std::nullopt));
  surroundings_.quit();
}

void BundleUpdater::updaterEnded() {
  stopListening();
  const UpdaterLink link = *std::exchange(link_, std::nullopt);
  while (waitpid(link.process, nullptr, 0) < 0 && errno == EINTR) {
  }
  if (job_ == Job::check) schedule_.checkEnded();
  if (std::exchange(checkWaits_, false)) {
    checkForUpdates();
  } else if (job_ == Job::trial && !trial_->isActive()) {
    trialPassed();
  }
}

void BundleUpdater::say(const char* line) {
  send(link_->socket.get(), line, std::strlen(line), MSG_NOSIGNAL | MSG_DONTWAIT);
}

void BundleUpdater::trialPassed() {
  if (link_ && job_ == Job::trial) {
    say("started\n");  // the updater ends then
  } else if (!link_ && hasLeftovers(bundle_)) {
    start(Job::sweep, kSweep);
  }
}

std::unique_ptr<Updater> startUpdater(const UpdaterSurroundings& surroundings) {
  const auto bundle = bundleOf(runningExecutable());
  if (bundle.empty()) return nullptr;
  return std::make_unique<BundleUpdater>(bundle, surroundings);
}

}  // namespace horalo
