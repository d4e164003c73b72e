#include "platform/choose_backends.h"

#include <cstdlib>
#include <string>
#include <string_view>

#include "platform/desktop_tray_backend.h"
#include "platform/none/none_hotkey_backend.h"
#include "platform/none/none_pasteboard.h"
#include "platform/qt/qt_window_backend.h"
#include "platform/x11/x11_hotkey_backend.h"
#include "platform/x11/x11_pasteboard.h"
#include "platform/x11/x11_window_backend.h"

namespace horalo {
namespace {

// A rung that was forced, else the one that suits the session.
std::string rung(const char* variable, std::string_view suitable) {
  const char* forced = std::getenv(variable);
  return forced == nullptr || *forced == '\0' ? std::string(suitable) : forced;
}

std::unique_ptr<HotKeyBackend> chooseHotKeys(const Session& session) {
  const bool isX11 = session.kind == SessionKind::x11;
  if (rung("HORALO_HOTKEY_BACKEND", isX11 ? "x11" : "none") == "x11") {
    return std::make_unique<X11HotKeyBackend>();
  }
  return std::make_unique<NoneHotKeyBackend>(
      "this desktop gives programs no shortcuts; bind a key to \"horalo toggle\" in its settings");
}

std::unique_ptr<Pasteboard> choosePasteboard(bool hasXServer) {
  if (rung("HORALO_CLIPBOARD_BACKEND", hasXServer ? "x11" : "none") == "x11") {
    return std::make_unique<X11Pasteboard>();
  }
  return std::make_unique<NonePasteboard>("this desktop shows its clipboard to no program");
}

std::unique_ptr<WindowBackend> chooseWindows(SelectionWatch* selections) {
  if (selections != nullptr && rung("HORALO_WINDOW_BACKEND", "x11") == "x11") {
    return std::make_unique<X11WindowBackend>(*selections);
  }
  return std::make_unique<QtWindowBackend>();
}

}  // namespace

Backends chooseBackends(const Session& session, SessionBus& bus) {
  const bool hasXServer = session.kind == SessionKind::x11 || session.kind == SessionKind::xwayland;
  Backends backends;
  if (hasXServer) backends.selections = std::make_unique<SelectionWatch>();
  backends.hotKeys = chooseHotKeys(session);
  backends.pasteboard = choosePasteboard(hasXServer);
  backends.windows = chooseWindows(backends.selections.get());
  backends.tray = std::make_unique<DesktopTrayBackend>(bus, backends.selections.get());
  return backends;
}

}  // namespace horalo
