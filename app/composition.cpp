#include "app/composition.h"

#include <unistd.h>

#include <QCoreApplication>
#include <QGuiApplication>
#include <QWindow>
#include <cstdio>
#include <filesystem>
#include <optional>
#include <utility>

#include "app/views/settings_view.h"
#include "engine/conversion_result.h"
#include "platform/dbus/desktop_notice.h"
#include "platform/key_codes.h"
#include "preferences/preferences_watcher.h"
#include "ui/appearance.h"

namespace horalo {
namespace {

constexpr double kHandOverPatience = 1.0;  // seconds

// The command that people type: beside this program, or in the folder for such commands where this
// one lies in the folder for programs that nobody types.
std::filesystem::path commandProgram() {
  const std::filesystem::path folder = QCoreApplication::applicationDirPath().toStdString();
  std::error_code ignored;
  const auto beside = folder / "horalo";
  if (std::filesystem::exists(beside, ignored)) return beside;
  return folder.parent_path().parent_path() / "bin" / "horalo";
}

// X servers and Wayland compositors number keys alike.
std::optional<std::uint32_t> keyCodeOf(std::uint32_t scanCode) {
  if (scanCode < kXKeyCodeOffset) return std::nullopt;
  return virtualKeyCode(scanCode - kXKeyCodeOffset);
}

void say(const std::string& line) {
  std::fprintf(stderr, "%s\n", line.c_str());
}

}  // namespace

Composition::Composition(const Session& session, const SingleInstance& instance, Relaunch& relaunch)
    : relaunch_(relaunch),
      store_(PreferencesStore::defaultPath(), timers_),
      preferences_(store_),
      loginItem_(LoginItem::defaultPath(), commandProgram()),
      backends_(chooseBackends(session, bus_)),
      delegate_(delegateEnvironment(session)),
      commands_(delegate_, timers_),
      commandServer_(instance.socket(),
                     [this](const std::string& command, const CommandServer::Answer& answer) {
                       return commands_.run(command, answer);
                     }),
      dbusService_({.run =
                        [this](const std::string& command) {
                          return commands_.run(command, [](const std::string&) {});
                        },
                    .statusJson = [this] { return asJson(delegate_.status()); }}) {}

Composition::~Composition() = default;

AppDelegate::Environment Composition::delegateEnvironment(const Session& session) {
  return {
      .parser = TimestampParser::shared(),
      .rows = RowContext::shared(),
      .timers = timers_,
      .preferences = preferences_,
      .notifications = notifications_,
      .hotKeys = *backends_.hotKeys,
      .pasteboard = *backends_.pasteboard,
      .windows = *backends_.windows,
      .tray = *backends_.tray,
      .keyCodeOf = keyCodeOf,
      .session = std::string(nameOf(session.kind)),
      .makeUpdater = [this](UpdateAlert& alert) { return makeUpdater(alert); },
      .makeSettingsView = [this] { return makeSettingsView(); },
      .isTerminal = isatty(STDERR_FILENO) != 0,
      .say = say,
      .notify = [this](
                    const std::string& title,
                    const std::string& text) { showDesktopNotice(bus_.connection(), title, text); },
  };
}

// The shortcut works first; then the desktop is told, by the name on the bus, that all is ready.
void Composition::start() {
  delegate_.applicationDidFinishLaunching();
  bus_.open();
  bus_.onConnected([this](const QDBusConnection& bus) { dbusService_.serveOn(bus); });
  desktopSettings_ = std::make_unique<DesktopSettings>(
      bus_,
      [](const DesktopAppearance& appearance) { Appearance::shared().setDesktop(appearance); });
  QObject::connect(qGuiApp, &QGuiApplication::focusWindowChanged, &focusWatch_,
                   [this] { backends_.hotKeys->releaseTyping(); });
  timers_.after(0, [this] {
    delegate_.prepare();
    loginItem_.repair();
  });
}

void Composition::finish() {
  backends_.pasteboard->handOver(kHandOverPatience);
}

std::unique_ptr<Updater> Composition::makeUpdater(UpdateAlert& alert) {
  return startUpdater({.timers = timers_,
                       .clock = RowContext::shared().clock,
                       .relaunch = relaunch_,
                       .quit = [] { QCoreApplication::exit(); },
                       .alert = [&alert](const QString& message,
                                         const QString& advice) { alert.show(message, advice); }});
}

std::unique_ptr<QWidget> Composition::makeSettingsView() {
  return std::make_unique<SettingsView>(
      SettingsEnvironment{
          .preferences = preferences_,
          .notifications = notifications_,
          .loginItem = loginItem_,
          .onRecordingChange =
              [this](bool isRecording) { backends_.hotKeys->setMuted(isRecording); },
          .keyCodeOf = keyCodeOf,
          .watch =
              [this](std::function<void()> changed) {
                return std::make_shared<PreferencesWatcher>(store_, timers_, std::move(changed));
              }},
      QCoreApplication::applicationVersion());
}

}  // namespace horalo
