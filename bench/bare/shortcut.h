#pragma once

#include <xcb/xcb.h>

#include <QSocketNotifier>
#include <functional>
#include <memory>

namespace bare {

// Shift+Super+E anywhere on an X11 desktop, over a connection of its own.
class Shortcut {
 public:
  explicit Shortcut(std::function<void()> pressed);

 private:
  struct Disconnect {
    void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
  };

  void grab();
  void readEvents();

  std::function<void()> pressed_;
  std::unique_ptr<xcb_connection_t, Disconnect> connection_;
  QSocketNotifier notifier_;
};

}  // namespace bare
