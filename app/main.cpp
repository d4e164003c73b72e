#include <QApplication>
#include <QSessionManager>
#include <cstdio>
#include <optional>
#include <string_view>

#include "app/composition.h"
#include "app/instance_client.h"
#include "app/single_instance.h"
#include "app/update/bundle_info.h"
#include "app/update/relaunch.h"
#include "platform/display.h"
#include "platform/termination_signals.h"

namespace {

using namespace horalo;
using namespace std::chrono_literals;

constexpr std::chrono::milliseconds kStartPatience = 900ms;

int complain(const std::string& text) {
  std::fprintf(stderr, "horalo: %s\n", text.c_str());
  return 1;
}

// Becomes the one program of the session; or, where there is one already, has that show its panel
// and leaves the exit status in `status`.
std::optional<SingleInstance> becomeTheOne(const InstanceAddress& address, bool background,
                                           int& status) {
  while (true) {
    if (auto instance = SingleInstance::acquire(address)) return instance;
    // Somebody who only looks whether there is one holds the lock for a moment as well.
    if (!isRunning(address)) continue;
    if (background) return std::nullopt;
    const auto outcome = ask(address, "show", kStartPatience).outcome;
    if (outcome == InstanceReply::Outcome::notRunning) continue;
    if (outcome == InstanceReply::Outcome::noAnswer) {
      status = complain("the running program does not answer");
    }
    return std::nullopt;
  }
}

int run(bool background, Relaunch& relaunch) {
  const Session session = currentSession();
  std::optional<DisplayProbe> display(std::in_place, session);
  if (!display->failure().empty()) return complain(display->failure());
  const auto address = instanceAddress(session.display);
  if (!address) return complain("/tmp/horalo-<uid> belongs to somebody else");
  int status = 0;
  const auto instance = becomeTheOne(*address, background, status);
  if (!instance) return status;

  TerminationSignals signals;
  selectWindowSystem(session);
  // The name under which windows and accessibility tools know the program, wherever it lies.
  int count = 1;
  char name[] = "horalo";
  char* words[] = {name, nullptr};
  QApplication application(count, words);
  display.reset();
  QApplication::setApplicationName(QStringLiteral("horalo"));
  QApplication::setApplicationVersion(QString::fromStdString(runningVersion()));
  QApplication::setDesktopFileName(QStringLiteral("org.horalo.Horalo"));
  QApplication::setQuitOnLastWindowClosed(false);
  // Not quit(), which a window may refuse when it is asked to close.
  signals.onTermination([] { QApplication::exit(); });
  // A session manager that starts again what was running would start a second one.
  const auto startAtLoginAlone = [](QSessionManager& manager) {
    manager.setRestartHint(QSessionManager::RestartNever);
  };
  QObject::connect(&application, &QGuiApplication::commitDataRequest, &application,
                   startAtLoginAlone, Qt::DirectConnection);
  QObject::connect(&application, &QGuiApplication::saveStateRequest, &application,
                   startAtLoginAlone, Qt::DirectConnection);

  Composition composition(session, *instance, relaunch);
  composition.start();
  status = QApplication::exec();
  composition.finish();
  return status;
}

}  // namespace

int main(int argc, char** argv) {
  const bool background = argc > 1 && std::string_view(argv[1]) == "--background";
  Relaunch relaunch;
  const int status = run(background, relaunch);
  return relaunch.finish(status);
}
