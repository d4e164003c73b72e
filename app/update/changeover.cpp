#include "app/update/changeover.h"

#include <fcntl.h>
#include <spawn.h>
#include <unistd.h>

#include <utility>

#include "app/update/bundle_path.h"

namespace horalo {

Changeover::Changeover(AgentLink& agent, Staging& staging, std::filesystem::path bundle,
                       std::chrono::milliseconds patience)
    : agent_(agent), staging_(staging), bundle_(std::move(bundle)) {
  patience_.setSingleShot(true);
  patience_.setInterval(patience);
  connect(&patience_, &QTimer::timeout, this, [this] {
    agent_.killAgent();  // which is told as lost
  });
  connect(&agent_, &AgentLink::becoming, this, [this] { becoming_ = true; });
  connect(&agent_, &AgentLink::started, this, [this] {
    if (!begun_) return;
    patience_.stop();
    Q_EMIT succeeded();
  });
  connect(&agent_, &AgentLink::lost, this, &Changeover::agentLost);
}

void Changeover::begin() {
  begun_ = true;
  patience_.start();
  agent_.say("relaunch\n");
}

void Changeover::agentLost() {
  if (!begun_) return;
  patience_.stop();
  agent_.waitForEnd();
  if (!becoming_) {
    // It was the old version that ended badly. The new one is still to be tried.
    startProgram();
    Q_EMIT succeeded();
  } else if (staging_.isInUse()) {
    Q_EMIT succeeded();  // another copy of the new version runs, and this one left it the field
  } else {
    rollBack();
  }
}

void Changeover::rollBack() {
  if (!staging_.exchangeBack()) {
    Q_EMIT stuck();
    return;
  }
  startProgram();
  Q_EMIT rolledBack();
}

void Changeover::startProgram() {
  const std::string program = (bundle_ / kBundleProgram).string();
  const char* const arguments[] = {"horalo", "--background", nullptr};
  posix_spawn_file_actions_t files;
  posix_spawn_file_actions_init(&files);
  posix_spawn_file_actions_addopen(&files, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
  posix_spawnattr_t attributes;
  posix_spawnattr_init(&attributes);
  posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSID);
  int process = 0;
  posix_spawn(&process, program.c_str(), &files, &attributes, const_cast<char* const*>(arguments),
              environ);
  posix_spawnattr_destroy(&attributes);
  posix_spawn_file_actions_destroy(&files);
}

}  // namespace horalo
