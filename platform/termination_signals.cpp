#include "platform/termination_signals.h"

#include <fcntl.h>
#include <unistd.h>

#include <csignal>
#include <utility>

namespace horalo {
namespace {

constexpr int kSignals[] = {SIGTERM, SIGINT, SIGHUP};

int pipeEnds[2] = {-1, -1};

// Only what is safe in a signal handler: the event loop does the rest.
void noteSignal(int) {
  const char byte = 0;
  (void)!write(pipeEnds[1], &byte, 1);
}

}  // namespace

TerminationSignals::TerminationSignals() {
  if (pipe2(pipeEnds, O_CLOEXEC | O_NONBLOCK) != 0) return;
  struct sigaction action {};
  action.sa_handler = noteSignal;
  action.sa_flags = SA_RESTART;
  for (const int number : kSignals) {
    struct sigaction before {};
    sigaction(number, nullptr, &before);
    if (before.sa_handler != SIG_IGN) sigaction(number, &action, nullptr);
  }
}

TerminationSignals::~TerminationSignals() {
  // What comes while the process ends must not end it with another status, so the handlers stay.
  notifier_.reset();
}

void TerminationSignals::onTermination(std::function<void()> terminate) {
  if (pipeEnds[0] < 0) return;
  notifier_ = std::make_unique<QSocketNotifier>(pipeEnds[0], QSocketNotifier::Read);
  QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(),
                   [terminate = std::move(terminate)] {
                     char bytes[16];
                     while (read(pipeEnds[0], bytes, sizeof(bytes)) > 0) continue;
                     terminate();
                   });
}

}  // namespace horalo
