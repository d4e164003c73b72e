#pragma once

#include <string>

namespace horalo {

struct TrayStatus {
  std::string backend = "none";  // "statusnotifier", "xembed" or "none"
  bool visible = false;
  std::string reason;  // why there is no icon; empty where there is one, or none is wanted
};

}  // namespace horalo
