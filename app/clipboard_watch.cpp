#include "app/clipboard_watch.h"

#include <utility>

namespace horalo {

ClipboardWatch::ClipboardWatch(const ClipboardMonitor::Environment& environment,
                               ClipboardMonitor::TimestampDetected detected)
    : environment_(environment), detected_(std::move(detected)) {}

ClipboardWatch::~ClipboardWatch() = default;

void ClipboardWatch::updateClipboardMonitor() {
  if (!environment_.preferences.clipboardMonitorEnabled()) {
    monitor_.reset();
    return;
  }
  if (!monitor_) {
    monitor_ = std::make_unique<ClipboardMonitor>(environment_);
    monitor_->onTimestampDetected(detected_);
  }
  monitor_->start();
}

void ClipboardWatch::suppressNextChange() {
  if (monitor_) monitor_->suppressNextChange();
}

}  // namespace horalo
