#pragma once

#include <functional>
#include <map>
#include <string>

#include "platform/x11/x_connection.h"

namespace horalo {

// Desktop services show that they run by owning a selection named for the screen: a compositor
// _NET_WM_CM_S0, a tray _NET_SYSTEM_TRAY_S0. This tells who runs, and when one comes or goes. It
// sleeps in between.
class SelectionWatch {
 public:
  SelectionWatch();

  // Calls `changed`, from the event loop, whenever the selection `service` (without its "_S0") gets
  // or loses its owner; one observer each.
  void observe(const std::string& service, std::function<void()> changed);

  bool hasOwner(const std::string& service);

 private:
  xcb_atom_t selectionOf(const std::string& service);
  void handle(const xcb_generic_event_t& event);

  XConnection connection_;
  std::uint8_t firstEvent_ = 0;  // of the XFixes extension; 0: not there
  std::map<std::string, xcb_atom_t> selections_;
  std::map<xcb_atom_t, std::function<void()>> observers_;
};

}  // namespace horalo
