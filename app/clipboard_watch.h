#pragma once

#include <memory>

#include "clipboard/clipboard_monitor.h"

namespace horalo {

// Has a clipboard monitor while the user wants the clipboard watched, and none otherwise.
class ClipboardWatch {
 public:
  // All that `environment` refers to must outlive this object.
  ClipboardWatch(const ClipboardMonitor::Environment& environment,
                 ClipboardMonitor::TimestampDetected detected);
  ~ClipboardWatch();

  // Does as the preference says now: begins, begins anew or ends.
  void updateClipboardMonitor();

  // The change that follows is the program's own copy.
  void suppressNextChange();

  bool isWatching() const { return monitor_ != nullptr; }

 private:
  ClipboardMonitor::Environment environment_;
  ClipboardMonitor::TimestampDetected detected_;
  std::unique_ptr<ClipboardMonitor> monitor_;
};

}  // namespace horalo
