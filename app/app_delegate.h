#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "app/clipboard_watch.h"
#include "app/first_contact.h"
#include "app/hotkey_wiring.h"
#include "app/panel_controller.h"
#include "app/settings_window.h"
#include "app/status_item.h"
#include "app/status_report.h"
#include "app/tray_backend.h"
#include "app/update_alert.h"
#include "app/updater.h"
#include "app/window_backend.h"
#include "clipboard/conversion_toast_controller.h"
#include "clipboard/copied_toast_controller.h"
#include "clipboard/pasteboard.h"
#include "engine/conversion_result.h"
#include "engine/timestamp_parser.h"
#include "hotkey/hotkeys_controller.h"
#include "hotkey/views/command_key.h"
#include "preferences/notification_center.h"
#include "preferences/preferences.h"

namespace horalo {

// Owns every object that lives as long as the program, and ties them together.
class AppDelegate {
 public:
  // What the program stands on. Everything referred to must outlive the delegate.
  struct Environment {
    const TimestampParser& parser;
    const RowContext& rows;
    Timers& timers;
    Preferences& preferences;
    NotificationCenter& notifications;
    HotKeyBackend& hotKeys;
    Pasteboard& pasteboard;
    WindowBackend& windows;
    TrayBackend& tray;
    KeyCodeOf keyCodeOf;
    std::string session;  // as `horalo status` names it

    // Nothing outside an application bundle. What goes wrong is told by the alert.
    std::function<std::unique_ptr<Updater>(UpdateAlert&)> makeUpdater;
    SettingsWindow::MakeView makeSettingsView;
    bool isTerminal = false;  // whether a person reads what is said
    std::function<void(const std::string& line)> say;
    std::function<void(const std::string& title, const std::string& text)> notify;
  };

  explicit AppDelegate(Environment environment);
  ~AppDelegate();

  void applicationDidFinishLaunching();
  // Makes what the first show of the panel and of a toast needs, while nobody waits for it.
  void prepare();

  void togglePanel(std::uint32_t eventTime = 0);
  void showPanel(std::uint32_t eventTime = 0);
  void closePanel();
  // Calls `shown` when the panel, which was shown, can be seen.
  void whenPanelIsOnScreen(std::function<void()> shown);
  void openSettings();
  void checkForUpdates();
  void quit();

  StatusReport status() const;

 private:
  std::unique_ptr<ConverterViewModel> makeViewModel();
  std::unique_ptr<PanelWindow> makePanel(ConverterViewModel& viewModel);
  std::optional<Rect> visibleFrame() const;
  void observeNotifications();
  void configureUpdater();
  void shortcutPressed();
  void updateMenuBarIconVisibility();

  Environment environment_;
  std::unique_ptr<Updater> updater_;  // only inside a bundle
  UpdateAlert updateAlert_;
  StatusItem statusItem_;
  HotKeysController hotKeys_;
  HotkeyWiring hotkey_;
  std::unique_ptr<Timer> keyboardMovesOn_;
  ClipboardWatch clipboard_;
  PanelController panel_;
  SettingsWindow settings_;
  CopiedToastController copiedToast_;
  ConversionToastController conversionToast_;
  FirstContact firstContact_;
};

}  // namespace horalo
