#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/geometry.h"

namespace horalo {

class PreferencesStore;

// The twelve preferences, read from the store at each call, never cached. Every reader applies its
// own default where a key is absent or of another type; a boolean is no number, a number no
// boolean.
class Preferences {
 public:
  // `store` must outlive this object.
  explicit Preferences(PreferencesStore& store) : store_(store) {}

  bool launchAtLogin() const;               // default false
  bool showMenuBarIcon() const;             // default true
  bool closeWindowAfterCopy() const;        // default true
  bool autoPasteFromClipboard() const;      // default false
  bool clipboardMonitorEnabled() const;     // default false
  std::string toastPosition() const;        // default "bottomCenter"; any stored text as it stands
  double autoClearDelay() const;            // seconds, default 60; zero, less or NaN: never
  double updateCheckInterval() const;       // seconds, default 0: off
  double shownUpdateCheckInterval() const;  // the settings window's own default: 86400
  bool isUTC() const;                       // default false
  std::optional<Point> panelPosition() const;  // only where both are numbers and finite
  // The stored bytes of the shortcut; nothing where there are none.
  std::optional<std::string> hotkeyConfiguration() const;

  void setLaunchAtLogin(bool value);
  void setShowMenuBarIcon(bool value);
  void setCloseWindowAfterCopy(bool value);
  void setAutoPasteFromClipboard(bool value);
  void setClipboardMonitorEnabled(bool value);
  void setToastPosition(std::string_view value);
  void setAutoClearDelay(double seconds);
  void setUpdateCheckInterval(double seconds);
  void setIsUTC(bool value);
  void setPanelPosition(Point origin);
  void setHotkeyConfiguration(std::string_view bytes);

 private:
  PreferencesStore& store_;
};

}  // namespace horalo
