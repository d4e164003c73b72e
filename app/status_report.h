#pragma once

#include <string>

#include "app/tray_status.h"
#include "clipboard/pasteboard.h"
#include "hotkey/hotkey_backend.h"

namespace horalo {

// What works in this session and what does not. A reason is empty where a thing works or is merely
// switched off.
struct StatusReport {
  struct Updates {
    bool enabled = false;
    std::string reason;
  };

  std::string version;
  std::string session;  // "x11", "wayland", "xwayland" or "none"
  HotKeyBackendStatus hotkey;
  std::string shortcut;  // as menus show it: "⇧⌘E"
  TrayStatus tray;
  PasteboardStatus clipboard;
  bool isWatching = false;  // the clipboard
  bool panelIsVisible = false;
  Updates updates;
  std::string zone;    // the user's own, as an identifier
  std::string tzdata;  // the release of the system's time-zone files, "2024a"; empty: not told
};

// One object on one line, without the line's end.
std::string asJson(const StatusReport& report);

// The same for people, a line for each thing.
std::string asText(const StatusReport& report);

// What the system's time-zone files call themselves.
std::string timeZoneDataRelease();

}  // namespace horalo
