#include "app/update/updater_program.h"

#include <fcntl.h>
#include <sys/file.h>

#include <QCoreApplication>
#include <string>

#include "app/update/bundle_path.h"

namespace horalo {
namespace {

// The lock keeps the folder from being swept away after the exchange, while it may still be needed.
FileDescriptor hold(const std::filesystem::path& bundle) {
  if (bundle.empty()) return {};
  FileDescriptor folder(open(bundle.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (folder) flock(folder.get(), LOCK_SH | LOCK_NB);
  return folder;
}

QString shown(const std::filesystem::path& path) {
  return QString::fromStdString(path.string());
}

}  // namespace

UpdaterProgram::UpdaterProgram(int socket, Timers& timers, const Clock& clock)
    : agent_(socket),
      bundle_(bundleOf(runningExecutable())),
      held_(hold(bundle_)),
      info_(readBundleInfo(bundle_)),
      state_(UpdateState::defaultPath(), timers),
      flow_({bundle_, held_.get(), info_}, state_, clock, network_) {
  connect(&flow_, &UpdateFlow::screenChanged, this,
          [this] { window_.render(flow_.screen(), inFront_); });
  connect(&flow_, &UpdateFlow::ended, this, [this] {
    ended_ = true;
    QMetaObject::invokeMethod(qApp, &QCoreApplication::quit, Qt::QueuedConnection);
  });
  connect(&flow_, &UpdateFlow::installed, this, &UpdaterProgram::changeOver);
  connect(&window_, &UpdateWindow::installClicked, &flow_, &UpdateFlow::install);
  connect(&window_, &UpdateWindow::skipClicked, &flow_, &UpdateFlow::skip);
  connect(&window_, &UpdateWindow::closeClicked, &flow_, &UpdateFlow::close);
  connect(&agent_, &AgentLink::show, this, &UpdaterProgram::showInFront);
  connect(&agent_, &AgentLink::lost, this, &UpdaterProgram::agentLost);
}

UpdaterProgram::~UpdaterProgram() = default;

bool UpdaterProgram::check(bool askedByUser) {
  if (!agent_.isValid()) return false;
  inFront_ = askedByUser;
  if (held_) {
    flow_.check(askedByUser);
  } else if (askedByUser) {
    flow_.show();
    flow_.fail(problem::alreadyReplaced());
  } else {
    return false;
  }
  return true;
}

void UpdaterProgram::showInFront() {
  if (ended_) return;  // the program starts another one then
  agent_.say("shown\n");
  inFront_ = true;
  flow_.show();
  window_.bringToFront();
}

// The user has quit Horalo; what is being exchanged this moment comes to its end all the same.
void UpdaterProgram::agentLost() {
  agentIsThere_ = false;
  if (!changeover_) flow_.close();
}

void UpdaterProgram::changeOver() {
  if (!agentIsThere_) {
    QCoreApplication::quit();
    return;
  }
  changeover_.emplace(agent_, *flow_.staging(), bundle_);
  connect(&*changeover_, &Changeover::succeeded, qApp, &QCoreApplication::quit);
  connect(&*changeover_, &Changeover::rolledBack, this, &UpdaterProgram::rolledBack);
  connect(&*changeover_, &Changeover::stuck, this, [this] {
    flow_.fail(problem::couldNotReturn(shown(bundle_), shown(flow_.staging()->path())));
  });
  changeover_->begin();
}

void UpdaterProgram::rolledBack() {
  state_.setSkippedVersion(flow_.newVersionNumber());
  flow_.fail(problem::didNotStart(flow_.newVersion(), QString::fromStdString(info_.shownVersion)));
}

}  // namespace horalo
