#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace horalo {

// The least that a test program needs to deal in selections. It waits for the server as long as it
// takes: it is the other side, and may.
class PlainXClient {
 public:
  PlainXClient() : xcb_(xcb_connect(nullptr, nullptr)) {
    if (xcb_connection_has_error(xcb_) != 0) {
      std::fputs("there is no X server\n", stderr);
      std::exit(2);
    }
    std::setvbuf(stdout, nullptr, _IOLBF, 0);
  }
  ~PlainXClient() { xcb_disconnect(xcb_); }
  PlainXClient(const PlainXClient&) = delete;
  PlainXClient& operator=(const PlainXClient&) = delete;

  xcb_connection_t* xcb() const { return xcb_; }

  xcb_atom_t atom(std::string_view name) const {
    const auto cookie =
        xcb_intern_atom(xcb_, 0, static_cast<std::uint16_t>(name.size()), name.data());
    const std::unique_ptr<xcb_intern_atom_reply_t, decltype(&std::free)> reply(
        xcb_intern_atom_reply(xcb_, cookie, nullptr), &std::free);
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
  }

  // After this the server has done what it was asked for.
  void sync() const { atom("CLIPBOARD"); }

  // An invisible window that hears of changes of its properties.
  xcb_window_t makeWindow() const {
    const xcb_window_t window = xcb_generate_id(xcb_);
    const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_create_window(xcb_, 0, window, xcb_setup_roots_iterator(xcb_get_setup(xcb_)).data->root, 0,
                      0, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT,
                      XCB_CW_EVENT_MASK, &events);
    return window;
  }

  void take(xcb_window_t window, xcb_atom_t selection) const {
    xcb_set_selection_owner(xcb_, window, selection, XCB_CURRENT_TIME);
    xcb_flush(xcb_);
  }

  void putBytes(xcb_window_t window, xcb_atom_t property, xcb_atom_t type, std::string_view bytes,
                std::uint8_t mode = XCB_PROP_MODE_REPLACE) const {
    xcb_change_property(xcb_, mode, window, property, type, 8,
                        static_cast<std::uint32_t>(bytes.size()), bytes.data());
  }

  void putWords(xcb_window_t window, xcb_atom_t property, xcb_atom_t type,
                const std::vector<std::uint32_t>& words) const {
    xcb_change_property(xcb_, XCB_PROP_MODE_REPLACE, window, property, type, 32,
                        static_cast<std::uint32_t>(words.size()), words.data());
  }

  // Tells who asked that `property` holds the answer; XCB_ATOM_NONE: there is none.
  void answer(const xcb_selection_request_event_t& request, xcb_atom_t property) const {
    union {
      xcb_selection_notify_event_t notify;
      char bytes[32];
    } event{};
    event.notify.response_type = XCB_SELECTION_NOTIFY;
    event.notify.time = request.time;
    event.notify.requestor = request.requestor;
    event.notify.selection = request.selection;
    event.notify.target = request.target;
    event.notify.property = property;
    xcb_send_event(xcb_, 0, request.requestor, XCB_EVENT_MASK_NO_EVENT, event.bytes);
    xcb_flush(xcb_);
  }

  // A property's value, at most `words` of four bytes, and the property is gone.
  std::string takeProperty(xcb_window_t window, xcb_atom_t property, xcb_atom_t* type = nullptr,
                           std::uint32_t words = 1U << 22U) const {
    const auto cookie = xcb_get_property(xcb_, 1, window, property, XCB_ATOM_ANY, 0, words);
    const std::unique_ptr<xcb_get_property_reply_t, decltype(&std::free)> reply(
        xcb_get_property_reply(xcb_, cookie, nullptr), &std::free);
    if (!reply) return {};
    if (type != nullptr) *type = reply->type;
    return {static_cast<const char*>(xcb_get_property_value(reply.get())),
            static_cast<std::size_t>(xcb_get_property_value_length(reply.get()))};
  }

  using Event = std::unique_ptr<xcb_generic_event_t, decltype(&std::free)>;
  // Null once the server is gone.
  Event wait() const { return Event(xcb_wait_for_event(xcb_), &std::free); }

  template <typename T>
  static const T& as(const Event& event) {
    return reinterpret_cast<const T&>(*event);
  }
  static int typeOf(const Event& event) { return event->response_type & 0x7F; }

 private:
  xcb_connection_t* xcb_;
};

}  // namespace horalo
