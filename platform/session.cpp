#include "platform/session.h"

#include <algorithm>
#include <cstdlib>

namespace horalo {
namespace {

// ":0.1" -> "0", "host:10.0" -> "host:10"
std::string nameOfXDisplay(const std::string& display) {
  const auto colon = display.rfind(':');
  if (colon == std::string::npos) return display;
  const auto number = display.substr(colon + 1, display.find('.', colon) - colon - 1);
  return colon == 0 ? number : display.substr(0, colon) + ':' + number;
}

std::string withoutSlashes(std::string name) {
  std::replace(name.begin(), name.end(), '/', '_');
  return name;
}

}  // namespace

std::string_view nameOf(SessionKind kind) {
  switch (kind) {
    case SessionKind::x11:
      return "x11";
    case SessionKind::wayland:
      return "wayland";
    case SessionKind::xwayland:
      return "xwayland";
    case SessionKind::none:
      break;
  }
  return "none";
}

Session sessionFrom(const EnvironmentReader& environment) {
  const std::string x = environment("DISPLAY");
  const std::string wayland = environment("WAYLAND_DISPLAY");
  const std::string platform = environment("QT_QPA_PLATFORM");
  if (!wayland.empty()) {
    const bool native = x.empty() || platform.starts_with("wayland");
    return {native ? SessionKind::wayland : SessionKind::xwayland, withoutSlashes(wayland)};
  }
  if (!x.empty()) return {SessionKind::x11, withoutSlashes(nameOfXDisplay(x))};
  return {};
}

Session currentSession() {
  return sessionFrom([](const char* name) -> std::string {
    const char* value = std::getenv(name);
    return value == nullptr ? "" : value;
  });
}

}  // namespace horalo
