#include "platform/x11/x_connection.h"

#include <poll.h>
#include <xcb/xcbext.h>

#include <QDeadlineTimer>
#include <QMetaObject>
#include <QObject>
#include <chrono>
#include <cstring>
#include <utility>

namespace horalo {

XConnection::XConnection(const char* display) : xcb_(nullptr) {
  int screen = 0;
  xcb_ = xcb_connect(display, &screen);
  if (!isAlive()) return;
  for (auto it = xcb_setup_roots_iterator(xcb_get_setup(xcb_)); it.rem > 0; xcb_screen_next(&it)) {
    if (screen-- == 0) root_ = it.data->root;
    roots_.push_back(it.data->root);
  }
  notifier_ =
      std::make_unique<QSocketNotifier>(xcb_get_file_descriptor(xcb_), QSocketNotifier::Read);
  QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(),
                   [this] { drain(); });
}

XConnection::~XConnection() {
  notifier_.reset();
  xcb_disconnect(xcb_);
}

std::uint8_t XConnection::check(xcb_void_cookie_t cookie) {
  const XcbOwned<xcb_generic_error_t> error(xcb_request_check(xcb_, cookie));
  drainSoon();
  return error ? error->error_code : std::uint8_t{0};
}

xcb_atom_t XConnection::atom(const char* name) {
  const auto length = static_cast<std::uint16_t>(std::strlen(name));
  const auto answer = reply(xcb_intern_atom_reply, xcb_intern_atom(xcb_, 0, length, name));
  return answer ? answer->atom : xcb_atom_t{XCB_ATOM_NONE};
}

void XConnection::flush() {
  xcb_flush(xcb_);
  drainSoon();
}

void XConnection::drainSoon() {
  if (drainIsDue_ || !notifier_ || !notifier_->isEnabled()) return;
  drainIsDue_ = true;
  QMetaObject::invokeMethod(
      notifier_.get(), [this] { drain(); }, Qt::QueuedConnection);
}

bool XConnection::answerOne() {
  if (expected_.empty()) return false;
  void* answer = nullptr;
  xcb_generic_error_t* error = nullptr;
  if (isAlive() && xcb_poll_for_reply(xcb_, expected_.front().sequence, &answer, &error) == 0) {
    return false;
  }
  const XcbOwned<void> ownedAnswer(answer);
  const XcbOwned<xcb_generic_error_t> ownedError(error);
  const Expected expected = std::move(expected_.front());
  expected_.pop_front();
  expected.handler(answer);
  return true;
}

bool XConnection::serveEvent(xcb_generic_event_t* (*poll)(xcb_connection_t*)) {
  const XcbOwned<xcb_generic_event_t> event{poll(xcb_)};
  if (event && handler_) handler_(*event);
  return event != nullptr;
}

// Looking for an event may read an answer off the socket, and the other way round; nobody would
// hear of what was read and left lying, so the last look is at what is there already.
bool XConnection::serveOne() {
  return answerOne() || serveEvent(xcb_poll_for_event) || answerOne() ||
         serveEvent(xcb_poll_for_queued_event);
}

void XConnection::drain() {
  drainIsDue_ = false;
  // A client that floods us with events must not keep the rest of the program from its turn.
  constexpr int kMostInOneTurn = 256;
  bool isDrained = false;
  for (int served = 0; served < kMostInOneTurn && !isDrained; ++served) {
    if (serveOne()) continue;
    xcb_flush(xcb_);  // which reads, too, where it writes
    isDrained = !serveOne();
  }
  if (isAlive()) {
    if (!isDrained) drainSoon();
    return;
  }
  if (!notifier_->isEnabled()) return;
  notifier_->setEnabled(false);  // a dead socket stays readable for ever
  if (const auto closed = std::exchange(closed_, nullptr)) closed();
}

void XConnection::serveUntil(const std::function<bool()>& done, double seconds) {
  const QDeadlineTimer deadline(std::chrono::duration_cast<std::chrono::milliseconds>(
      std::chrono::duration<double>(seconds)));
  while (isAlive()) {
    do {
      xcb_flush(xcb_);
    } while (!done() && !deadline.hasExpired() && serveOne());
    if (done() || deadline.hasExpired()) {
      drainSoon();
      return;
    }
    pollfd socket{xcb_get_file_descriptor(xcb_), POLLIN, 0};
    poll(&socket, 1, static_cast<int>(deadline.remainingTime()));
  }
}

}  // namespace horalo
