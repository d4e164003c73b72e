#pragma once

#include <functional>
#include <string>

#include "base/timers.h"

namespace horalo {

class AppDelegate;

// Carries out what `horalo toggle` and its like ask of the running program, however the command
// came here.
class Commands {
 public:
  using Done = std::function<void(const std::string& text)>;

  // Both must outlive this object.
  Commands(AppDelegate& delegate, Timers& timers) : delegate_(delegate), timers_(timers) {}

  // `done` is called once, with what the command prints: for `show` when the panel is on the
  // screen, else at once. False for what is no command.
  bool run(const std::string& command, const Done& done);

 private:
  void show(const Done& done);

  AppDelegate& delegate_;
  Timers& timers_;
};

}  // namespace horalo
