#pragma once

#include "app/app_delegate.h"
#include "app/command_server.h"
#include "app/commands.h"
#include "app/dbus_service.h"
#include "app/login_item.h"
#include "app/single_instance.h"
#include "app/update/bundle_updater.h"
#include "app/update/relaunch.h"
#include "platform/choose_backends.h"
#include "platform/dbus/desktop_settings.h"
#include "platform/dbus/session_bus.h"
#include "platform/qt/qt_timers.h"
#include "platform/session.h"
#include "preferences/preferences_store.h"

namespace horalo {

// The whole program, in the order in which it is built. Needs a QApplication.
class Composition {
 public:
  // Both references must outlive the composition.
  Composition(const Session& session, const SingleInstance& instance, Relaunch& relaunch);
  ~Composition();

  // Starts everything; the event loop is entered next.
  void start();

  // What is left to do when the event loop has ended.
  void finish();

 private:
  AppDelegate::Environment delegateEnvironment(const Session& session);
  std::unique_ptr<Updater> makeUpdater(UpdateAlert& alert);
  std::unique_ptr<QWidget> makeSettingsView();

  Relaunch& relaunch_;
  QtTimers timers_;
  PreferencesStore store_;
  Preferences preferences_;
  NotificationCenter notifications_;
  LoginItem loginItem_;
  SessionBus bus_;
  Backends backends_;
  AppDelegate delegate_;
  Commands commands_;
  CommandServer commandServer_;
  DBusService dbusService_;
  std::unique_ptr<DesktopSettings> desktopSettings_;
  QObject focusWatch_;  // ends the watch on the keyboard's way between windows
};

}  // namespace horalo
