#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace horalo {

// What kind of desktop this process runs on, and how its windows reach the screen.
enum class SessionKind {
  x11,       // an X server is the desktop
  wayland,   // a Wayland compositor, with windows of its own protocol
  xwayland,  // a Wayland compositor, with windows by way of its X server
  none       // no desktop
};

// "x11", "wayland", "xwayland" or "none".
std::string_view nameOf(SessionKind kind);

struct Session {
  SessionKind kind = SessionKind::none;

  // The display in the names of files: "0" for DISPLAY=:0.1, "host:10" for host:10.0, "wayland-0"
  // under Wayland; never holds a slash. Empty where there is no desktop.
  std::string display;
};

// An environment variable's value; empty where it is not set.
using EnvironmentReader = std::function<std::string(const char* name)>;

// Reads DISPLAY, WAYLAND_DISPLAY and an explicit QT_QPA_PLATFORM. A Wayland session counts as one
// even where windows go through its X server: there, grabbing a key succeeds and never fires.
Session sessionFrom(const EnvironmentReader& environment);

// The session of this process's own environment.
Session currentSession();

}  // namespace horalo
