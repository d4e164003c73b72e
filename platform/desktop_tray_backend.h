#pragma once

#include <memory>

#include "app/tray_backend.h"
#include "platform/dbus/status_notifier_watch.h"
#include "platform/x11/selection_watch.h"

namespace horalo {

// The tray hosts of a Linux desktop: StatusNotifier on the session bus and, on X11, embedded
// windows. The first is preferred, and waited for until it is known whether there is one.
class DesktopTrayBackend final : public TrayBackend {
 public:
  // Both must outlive this object; without `selections` there are no embedded icons.
  DesktopTrayBackend(SessionBus& bus, SelectionWatch* selections);

  Kind kind() const override;
  void onChange(std::function<void()> changed) override { changed_ = std::move(changed); }

 private:
  SelectionWatch* selections_;
  std::function<void()> changed_ = [] {};
  StatusNotifierWatch statusNotifier_;
};

}  // namespace horalo
