#pragma once

#include <memory>
#include <string>

#include "platform/session.h"

struct xcb_connection_t;

namespace horalo {

// Whether windows can be shown in this session. Asked before the widget library is started, which
// would end the process where they cannot.
class DisplayProbe {
 public:
  explicit DisplayProbe(const Session& session);
  // To be kept until the widget library is connected: an X server without any client may start
  // anew, and refuses connections meanwhile.
  ~DisplayProbe();
  DisplayProbe(const DisplayProbe&) = delete;
  DisplayProbe& operator=(const DisplayProbe&) = delete;

  // Why not, in one sentence; empty where they can.
  const std::string& failure() const { return failure_; }

 private:
  xcb_connection_t* x_ = nullptr;
  std::string failure_;
};

// Has the widget library take the window system that the session was found to have.
void selectWindowSystem(const Session& session);

}  // namespace horalo
