#pragma once

#include <QElapsedTimer>
#include <QTimer>
#include <algorithm>
#include <atomic>
#include <chrono>
#include <thread>

namespace horalo {

// How long the event loop did not come round, at worst, since this object was made. A thread that
// only sleeps does the same beside it: what it is late by is the machine's doing, not ours.
class EventLoopGap {
 public:
  EventLoopGap() {
    last_.start();
    timer_.setTimerType(Qt::PreciseTimer);
    timer_.callOnTimeout([this] { longest_ = std::max(longest_, last_.restart()); });
    timer_.start(2);
    thread_ = std::thread([this] {
      QElapsedTimer last;
      last.start();
      while (!ended_) {
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
        machines_ = std::max<qint64>(machines_, last.restart());
      }
    });
  }

  ~EventLoopGap() { end(); }

  // The longest gap in milliseconds, less what the machine took. Ends the measurement.
  qint64 milliseconds() {
    end();
    return std::max(longest_, last_.elapsed()) - machines_;
  }

 private:
  void end() {
    ended_ = true;
    if (thread_.joinable()) thread_.join();
    timer_.stop();
  }

  QElapsedTimer last_;
  qint64 longest_ = 0;
  QTimer timer_;
  std::atomic<bool> ended_ = false;
  std::atomic<qint64> machines_ = 0;
  std::thread thread_;
};

}  // namespace horalo
