#pragma once

#include <functional>
#include <memory>

namespace horalo {

// A timer that can be running or not. Destroying it stops it; its action never runs afterwards.
class Timer {
 public:
  virtual ~Timer() = default;

  // Runs `action` once, `seconds` from now, replacing whatever this timer was about to do. Any
  // length works, 1e12 s as well; zero, a negative length and a length that is not a number mean
  // the next turn of the event loop.
  virtual void startOnce(double seconds, std::function<void()> action) = 0;

  // Runs `action` every `seconds` (greater than zero) until stopped.
  virtual void startRepeating(double seconds, std::function<void()> action) = 0;

  virtual void stop() = 0;
  virtual bool isActive() const = 0;
};

// Makes timers. State that waits takes a Timers, so that a test can move time by hand.
class Timers {
 public:
  virtual ~Timers() = default;
  virtual std::unique_ptr<Timer> make() = 0;

  // Runs `action` once after `seconds`, with no way to stop it: for effects that are never taken
  // back. `action` must check by itself that what it touches still exists.
  virtual void after(double seconds, std::function<void()> action) = 0;
};

}  // namespace horalo
