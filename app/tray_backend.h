#pragma once

#include <functional>

namespace horalo {

// Whether something on this desktop shows tray icons. It may come late, go, and come back.
class TrayBackend {
 public:
  enum class Kind {
    none,
    xembed,         // icons are windows, embedded over X11
    statusNotifier  // icons are objects on the session bus
  };

  virtual ~TrayBackend() = default;

  // Who shows icons now; `none` also while nobody has answered yet.
  virtual Kind kind() const = 0;
  // Called after kind() changed; one observer.
  virtual void onChange(std::function<void()> changed) = 0;
};

}  // namespace horalo
