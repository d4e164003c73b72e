#include "app/app_delegate.h"

#include <QCoreApplication>
#include <utility>

#include "app/converter_panel.h"
#include "app/toast_windows.h"
#include "base/user_folders.h"

namespace horalo {
namespace {

constexpr double kKeyboardMovesOn = 0.02;  // seconds

}  // namespace

AppDelegate::AppDelegate(Environment environment)
    : environment_(std::move(environment)),
      updateAlert_(environment_.windows),
      statusItem_(environment_.tray, {.togglePanel = [this] { togglePanel(); },
                                      .openSettings = [this] { openSettings(); },
                                      .checkForUpdates = [this] { checkForUpdates(); },
                                      .quit = [this] { quit(); }}),
      hotKeys_(environment_.hotKeys),
      hotkey_(hotKeys_, HotkeyConfiguration::load(environment_.preferences),
              [this] { shortcutPressed(); }),
      keyboardMovesOn_(environment_.timers.make()),
      clipboard_({.pasteboard = environment_.pasteboard,
                  .timers = environment_.timers,
                  .parser = environment_.parser,
                  .zones = environment_.rows.zones,
                  .preferences = environment_.preferences},
                 [this](const std::string& input, const ConversionResult& result) {
                   conversionToast_.showConversionToast(input, result);
                 }),
      panel_({.parser = environment_.parser,
              .preferences = environment_.preferences,
              .pasteboard = environment_.pasteboard,
              .timers = environment_.timers,
              .makeViewModel = [this] { return makeViewModel(); },
              .makePanel = [this](ConverterViewModel& viewModel) { return makePanel(viewModel); }}),
      settings_(environment_.windows, environment_.makeSettingsView),
      copiedToast_({.timers = environment_.timers,
                    .visibleFrame = [this] { return visibleFrame(); },
                    .makeWindow = [this] { return makeCopiedToastWindow(environment_.windows); }}),
      conversionToast_(
          {.timers = environment_.timers,
           .pasteboard = environment_.pasteboard,
           .notifications = environment_.notifications,
           .preferences = environment_.preferences,
           .rows = environment_.rows,
           .isConverterVisible = [this] { return panel_.isVisible(); },
           .visibleFrame = [this] { return visibleFrame(); },
           .makeWindow = [this] { return makeConversionToastWindow(environment_.windows); }}),
      firstContact_(
          {.timers = environment_.timers,
           .waysIn =
               [this] {
                 return WaysIn{environment_.hotKeys.status().active, statusItem_.isVisible()};
               },
           .shortcut = [this] { return hotkey_.configuration(); },
           .isTerminal = environment_.isTerminal,
           .say = environment_.say,
           .notify = environment_.notify,
           .marker = userStateFolder() / "horalo" / "started"}) {}

AppDelegate::~AppDelegate() = default;

void AppDelegate::applicationDidFinishLaunching() {
  updater_ = environment_.makeUpdater(updateAlert_);
  configureUpdater();
  updateMenuBarIconVisibility();
  hotkey_.setupHotKey();
  observeNotifications();
  clipboard_.updateClipboardMonitor();
  firstContact_.begin();
}

void AppDelegate::prepare() {
  panel_.prepare();
  if (clipboard_.isWatching()) conversionToast_.prepare();
}

std::unique_ptr<ConverterViewModel> AppDelegate::makeViewModel() {
  return std::make_unique<ConverterViewModel>(
      ConverterViewModel::Environment{.parser = environment_.parser,
                                      .clock = environment_.rows.clock,
                                      .zones = environment_.rows.zones,
                                      .timers = environment_.timers,
                                      .preferences = environment_.preferences});
}

std::unique_ptr<PanelWindow> AppDelegate::makePanel(ConverterViewModel& viewModel) {
  const ConverterView::Environment environment{.viewModel = viewModel,
                                               .preferences = environment_.preferences,
                                               .notifications = environment_.notifications,
                                               .pasteboard = environment_.pasteboard,
                                               .timers = environment_.timers,
                                               .rowContext = environment_.rows,
                                               .keyCodeOf = environment_.keyCodeOf};
  return std::make_unique<ConverterPanel>(
      environment, environment_.windows,
      ConverterView::Callbacks{.onDismiss = {},
                               .onOpenSettings = [this] { openSettings(); },
                               .onShowCopiedToast = [this] { copiedToast_.showCopiedToast(); }});
}

std::optional<Rect> AppDelegate::visibleFrame() const {
  const auto screen = environment_.windows.mainScreen();
  if (!screen) return std::nullopt;
  return screen->visibleFrame;
}

void AppDelegate::observeNotifications() {
  NotificationCenter& center = environment_.notifications;
  center.observe(notification::hotkeyConfigurationDidChange, [this](const std::any& object) {
    const auto* configuration = std::any_cast<HotkeyConfiguration>(&object);
    if (configuration == nullptr) return;
    hotkey_.setConfiguration(*configuration);
    hotkey_.setupHotKey();
    statusItem_.setShortcut(configuration->displayString());
  });
  center.observe(notification::menuBarIconVisibilityDidChange,
                 [this](const std::any&) { updateMenuBarIconVisibility(); });
  center.observe(notification::updateCheckIntervalDidChange,
                 [this](const std::any&) { configureUpdater(); });
  center.observe(notification::clipboardMonitorSettingDidChange, [this](const std::any&) {
    clipboard_.updateClipboardMonitor();
    if (clipboard_.isWatching()) conversionToast_.prepareSoon();
  });
  center.observe(notification::appDidCopyToClipboard,
                 [this](const std::any&) { clipboard_.suppressNextChange(); });
}

void AppDelegate::configureUpdater() {
  if (!updater_) return;
  const double interval = environment_.preferences.updateCheckInterval();
  const bool isAutomatic = interval != 0;
  updater_->setAutomaticallyChecksForUpdates(isAutomatic);
  if (isAutomatic) updater_->setUpdateCheckInterval(interval);
}

void AppDelegate::updateMenuBarIconVisibility() {
  if (environment_.preferences.showMenuBarIcon()) {
    statusItem_.setUp(hotkey_.configuration().displayString());
  } else {
    statusItem_.remove();
  }
}

// A press that opens the panel holds back what is typed until the panel has the keyboard. One that
// closes it does so until the desktop has given the keyboard to another window, of which it tells
// nobody.
void AppDelegate::shortcutPressed() {
  togglePanel(environment_.hotKeys.eventTime());
  if (panel_.isVisible()) {
    keyboardMovesOn_->stop();
  } else {
    keyboardMovesOn_->startOnce(kKeyboardMovesOn, [this] { environment_.hotKeys.releaseTyping(); });
  }
}

void AppDelegate::togglePanel(std::uint32_t eventTime) {
  panel_.togglePanel(eventTime);
}

void AppDelegate::showPanel(std::uint32_t eventTime) {
  panel_.showPanel(eventTime);
}

void AppDelegate::closePanel() {
  panel_.closePanel();
}

void AppDelegate::whenPanelIsOnScreen(std::function<void()> shown) {
  panel_.whenOnScreen(std::move(shown));
}

void AppDelegate::openSettings() {
  settings_.open();
}

void AppDelegate::checkForUpdates() {
  if (updater_) {
    updater_->checkForUpdates();
  } else {
    updateAlert_.show(
        QStringLiteral("Updates Not Available"),
        QStringLiteral(
            "Auto-updates only work when running the app bundle, not during development."));
  }
}

void AppDelegate::quit() {
  QCoreApplication::exit();  // which no window can refuse
}

StatusReport AppDelegate::status() const {
  StatusReport report;
  report.version = QCoreApplication::applicationVersion().toStdString();
  report.session = environment_.session;
  report.hotkey = environment_.hotKeys.status();
  report.shortcut = hotkey_.configuration().displayString();
  report.tray = statusItem_.status();
  report.clipboard = environment_.pasteboard.status();
  report.isWatching = clipboard_.isWatching();
  report.panelIsVisible = panel_.isVisible();
  report.updates.reason =
      updater_ ? updater_->obstacle() : "Horalo does not run from an application bundle";
  report.updates.enabled =
      report.updates.reason.empty() && environment_.preferences.updateCheckInterval() != 0;
  report.zone = environment_.rows.zones.current().identifier();
  report.tzdata = timeZoneDataRelease();
  return report;
}

}  // namespace horalo
