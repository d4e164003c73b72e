#pragma once

#include <functional>
#include <optional>
#include <string>

namespace horalo {

// Where the one running program of a session is found: two files beside each other in a folder
// that only its user can enter.
//
//   $XDG_RUNTIME_DIR/horalo-0.lock     held locked for as long as the program lives
//   $XDG_RUNTIME_DIR/horalo-0.socket   takes commands
struct InstanceAddress {
  std::string lockPath;
  std::string socketPath;
};

// The address for a session's display ("0", "wayland-0"). Without a usable XDG_RUNTIME_DIR the
// folder is /tmp/horalo-<uid>, made with mode 0700; nothing where that belongs to somebody else
// or others may enter it.
std::optional<InstanceAddress> instanceAddress(const std::string& display);

// The same in a folder of the caller's choice.
InstanceAddress instanceAddressIn(const std::string& folder, const std::string& display);

}  // namespace horalo
