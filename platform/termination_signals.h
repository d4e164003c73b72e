#pragma once

#include <QSocketNotifier>
#include <functional>
#include <memory>

namespace horalo {

// SIGTERM, SIGINT and SIGHUP as an event of the event loop. From the moment this is made they end
// nobody any more; those that came before terminate() was set are not lost. One that was ignored at
// the start, as nohup does with SIGHUP, stays ignored.
class TerminationSignals {
 public:
  TerminationSignals();
  ~TerminationSignals();

  // Runs `terminate` when a signal has come; needs an application object.
  void onTermination(std::function<void()> terminate);

 private:
  std::unique_ptr<QSocketNotifier> notifier_;
};

}  // namespace horalo
