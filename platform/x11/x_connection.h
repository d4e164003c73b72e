#pragma once

#include <xcb/xcb.h>

#include <QSocketNotifier>
#include <cstdint>
#include <cstdlib>
#include <deque>
#include <functional>
#include <memory>
#include <vector>

namespace horalo {

struct XcbFree {
  void operator()(void* memory) const { std::free(memory); }
};
// What xcb hands out: replies, events and errors.
template <typename T>
using XcbOwned = std::unique_ptr<T, XcbFree>;

// A connection to the X server beside Qt's, served by the event loop of the thread that opened it.
// It sleeps while nothing happens. When the server goes it falls silent: requests are then ignored,
// replies are empty, and no event comes any more.
//
// Every wait for an answer goes through reply() or check(), and every flush through flush(): xcb
// reads events off the socket while it waits or writes, and the event loop would never hear of
// those.
class XConnection {
 public:
  using EventHandler = std::function<void(const xcb_generic_event_t& event)>;

  // `display` as in DISPLAY; null takes that variable. See isAlive() for failure.
  explicit XConnection(const char* display = nullptr);
  ~XConnection();
  XConnection(const XConnection&) = delete;
  XConnection& operator=(const XConnection&) = delete;

  // Where events go, one at a time, always from the event loop (or from serveUntil). The handler
  // may send requests and wait for replies, but must not destroy this object.
  void setEventHandler(EventHandler handler) { handler_ = std::move(handler); }
  // Called once, from the event loop, when the server is gone.
  void setClosedHandler(std::function<void()> handler) { closed_ = std::move(handler); }

  bool isAlive() const { return xcb_connection_has_error(xcb_) == 0; }
  xcb_connection_t* get() const { return xcb_; }
  // Sends what was asked for. Requests of an event handler need no flush.
  void flush();

  // The root window of each screen; empty where there is no server.
  const std::vector<xcb_window_t>& roots() const { return roots_; }
  // The root window of the screen that the display's name chose; XCB_NONE where there is no server.
  xcb_window_t root() const { return root_; }

  // Waits for an answer of the server (never of another program); null where the request failed.
  //   auto keys = connection.reply(xcb_query_keymap_reply, xcb_query_keymap(connection.get()));
  template <typename Reply, typename Cookie>
  XcbOwned<Reply> reply(Reply* (*wait)(xcb_connection_t*, Cookie, xcb_generic_error_t**),
                        Cookie cookie) {
    XcbOwned<Reply> answer(wait(xcb_, cookie, nullptr));
    drainSoon();
    return answer;
  }

  // Hands the answer to a request to `handler` when it comes, from the event loop, and waits for
  // nothing; null where the request failed or the server is gone.
  template <typename Reply, typename Cookie>
  void whenAnswered(Cookie cookie, std::function<void(const Reply*)> handler) {
    expected_.push_back({cookie.sequence, [handler = std::move(handler)](const void* answer) {
                           handler(static_cast<const Reply*>(answer));
                         }});
    flush();
  }

  // Serves events outside the event loop until `done` says so, at most `seconds`: for a program
  // that is about to end.
  void serveUntil(const std::function<bool()>& done, double seconds);

  // Waits until a `..._checked` request was carried out: the X error code, 0 where it worked.
  std::uint8_t check(xcb_void_cookie_t cookie);

  // The atom of a name, made if need be; XCB_ATOM_NONE where there is no server.
  xcb_atom_t atom(const char* name);

 private:
  // An answer that somebody waits for; answers come in the order of their requests.
  struct Expected {
    unsigned sequence;
    std::function<void(const void* answer)> handler;
  };

  void drain();
  void drainSoon();
  bool serveOne();
  bool serveEvent(xcb_generic_event_t* (*poll)(xcb_connection_t*));
  bool answerOne();

  xcb_connection_t* xcb_;  // never null, even where connecting failed
  std::vector<xcb_window_t> roots_;
  xcb_window_t root_ = XCB_NONE;
  EventHandler handler_;
  std::function<void()> closed_;
  std::deque<Expected> expected_;
  std::unique_ptr<QSocketNotifier> notifier_;  // none without a server, off once it is gone
  bool drainIsDue_ = false;
};

}  // namespace horalo
