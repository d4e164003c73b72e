#include <unistd.h>

#include <QApplication>
#include <QNetworkProxyFactory>
#include <cstdio>
#include <string_view>

#include "app/update/bundle_path.h"
#include "app/update/staging.h"
#include "app/update/updater_program.h"
#include "platform/dbus/desktop_settings.h"
#include "platform/dbus/session_bus.h"
#include "platform/qt/qt_timers.h"
#include "ui/appearance.h"

namespace {

using namespace horalo;

int check(bool askedByUser) {
  // The name under which windows and accessibility tools know the program.
  int count = 1;
  char name[] = "horalo";
  char* words[] = {name, nullptr};
  QApplication application(count, words);
  QApplication::setApplicationName(QStringLiteral("horalo"));
  QApplication::setDesktopFileName(QStringLiteral("org.horalo.Horalo"));
  QApplication::setQuitOnLastWindowClosed(false);
  QNetworkProxyFactory::setUseSystemConfiguration(true);

  QtTimers timers;
  const SystemClock clock;
  SessionBus bus;
  bus.open();
  const DesktopSettings settings(bus, [](const DesktopAppearance& appearance) {
    Appearance::shared().setDesktop(appearance);
  });
  UpdaterProgram program(STDIN_FILENO, timers, clock);
  return program.check(askedByUser) ? QApplication::exec() : 1;
}

}  // namespace

// horalo-updater check [--quietly] | sweep      started by Horalo itself, from its bundle
int main(int argc, char** argv) {
  const std::string_view command = argc > 1 ? argv[1] : "";
  if (command == "sweep") {
    const auto bundle = bundleOf(runningExecutable());
    if (!bundle.empty()) sweepLeftovers(bundle);
    return 0;
  }
  if (command != "check") {
    std::fputs("horalo-updater is started by Horalo itself\n", stderr);
    return 2;
  }
  const bool quietly = argc > 2 && std::string_view(argv[2]) == "--quietly";
  return check(!quietly);
}
