#include "platform/display.h"

#include <sys/socket.h>
#include <sys/un.h>
#include <xcb/xcb.h>

#include <algorithm>
#include <cstdlib>

#include "base/file_descriptor.h"

namespace horalo {
namespace {

std::string variable(const char* name) {
  const char* value = std::getenv(name);
  return value == nullptr ? "" : value;
}

bool reachesCompositor() {
  const std::string name = variable("WAYLAND_DISPLAY");
  const std::string path = name.starts_with('/') ? name : variable("XDG_RUNTIME_DIR") + '/' + name;
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  if (path.size() >= sizeof(address.sun_path)) return false;
  std::copy(path.begin(), path.end(), address.sun_path);
  const FileDescriptor connection(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
  return connect(connection.get(), reinterpret_cast<const sockaddr*>(&address), sizeof(address)) ==
         0;
}

}  // namespace

DisplayProbe::DisplayProbe(const Session& session) {
  switch (session.kind) {
    case SessionKind::x11:
    case SessionKind::xwayland:
      x_ = xcb_connect(nullptr, nullptr);
      if (xcb_connection_has_error(x_) != 0)
        failure_ = "cannot open display " + variable("DISPLAY");
      return;
    case SessionKind::wayland:
      if (!reachesCompositor()) failure_ = "cannot open display " + variable("WAYLAND_DISPLAY");
      return;
    case SessionKind::none:
      // A screen in memory, as tests have it.
      if (variable("QT_QPA_PLATFORM") == "offscreen") return;
      failure_ = "no display: neither DISPLAY nor WAYLAND_DISPLAY is set";
  }
}

DisplayProbe::~DisplayProbe() {
  if (x_ != nullptr) xcb_disconnect(x_);
}

void selectWindowSystem(const Session& session) {
  if (session.kind == SessionKind::none) return;
  setenv("QT_QPA_PLATFORM", session.kind == SessionKind::wayland ? "wayland" : "xcb", 0);
}

}  // namespace horalo
