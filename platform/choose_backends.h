#pragma once

#include <memory>

#include "app/tray_backend.h"
#include "app/window_backend.h"
#include "clipboard/pasteboard.h"
#include "hotkey/hotkey_backend.h"
#include "platform/dbus/session_bus.h"
#include "platform/session.h"
#include "platform/x11/selection_watch.h"

namespace horalo {

// What the desktop offers, one backend for each concern.
struct Backends {
  std::unique_ptr<SelectionWatch> selections;  // only where there is an X server
  std::unique_ptr<HotKeyBackend> hotKeys;
  std::unique_ptr<Pasteboard> pasteboard;
  std::unique_ptr<WindowBackend> windows;
  std::unique_ptr<TrayBackend> tray;
};

// Chooses the best that works in this session. A test may force a rung with an environment
// variable: HORALO_HOTKEY_BACKEND=x11|none, HORALO_CLIPBOARD_BACKEND=x11|none,
// HORALO_WINDOW_BACKEND=x11|qt. Needs a QApplication; `bus` must outlive the result.
Backends chooseBackends(const Session& session, SessionBus& bus);

}  // namespace horalo
