// A desktop's clipboard manager, as small as it can be: keeps what other programs copied when they
// end. Or a window manager, as far as it does the same.
//
//   saves       takes over when a program asks it to
//   grabs       takes over each copy at once
//   silent      owns the manager's selection and never answers
//   wm-adopts   is the window manager instead, and takes over when the owner has ended
//   wm-copies   is the window manager, and copies something by itself
//
// Says "ready" once it is the manager, and "has TEXT" each time that it has taken something over.
#include <xcb/xfixes.h>

#include <string>

#include "tests/x11/plain_x_client.h"

namespace {

using horalo::PlainXClient;

class ClipboardManager {
 public:
  explicit ClipboardManager(std::string mode) : mode_(std::move(mode)) {}

  int run() {
    const bool isWindowManager = mode_.starts_with("wm-");
    if (mode_ == "grabs" || mode_ == "wm-adopts") watch();
    x_.take(x_.makeWindow(), x_.atom(isWindowManager ? "WM_S0" : "CLIPBOARD_MANAGER"));
    if (mode_ == "wm-copies") x_.take(window_, clipboard_);
    x_.sync();
    std::puts("ready");
    while (const auto event = x_.wait()) {
      const int type = PlainXClient::typeOf(event);
      if (type == XCB_SELECTION_REQUEST) {
        requested(PlainXClient::as<xcb_selection_request_event_t>(event));
      } else if (type == XCB_SELECTION_NOTIFY) {
        const auto& notify = PlainXClient::as<xcb_selection_notify_event_t>(event);
        if (notify.property != XCB_ATOM_NONE) takeOver();
      } else if (fixesEvent_ != 0 && type == fixesEvent_) {
        const auto& change = PlainXClient::as<xcb_xfixes_selection_notify_event_t>(event);
        changed(change);
      }
    }
    return 0;
  }

 private:
  void watch() {
    std::free(xcb_xfixes_query_version_reply(x_.xcb(), xcb_xfixes_query_version(x_.xcb(), 1, 0),
                                             nullptr));
    fixesEvent_ = xcb_get_extension_data(x_.xcb(), &xcb_xfixes_id)->first_event;
    xcb_xfixes_select_selection_input(x_.xcb(), window_, clipboard_,
                                      XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
  }

  void changed(const xcb_xfixes_selection_notify_event_t& change) {
    if (change.owner != XCB_WINDOW_NONE && change.owner != window_) {
      fetch();
    } else if (change.owner == XCB_WINDOW_NONE && mode_ == "wm-adopts") {
      x_.take(window_, clipboard_);
      x_.sync();
      std::printf("has %s\n", text_.c_str());
    }
  }

  void requested(const xcb_selection_request_event_t& request) {
    if (request.selection == clipboard_) {
      const bool isText = request.target == utf8_;
      if (isText) x_.putBytes(request.requestor, request.property, utf8_, text_);
      x_.answer(request, isText ? request.property : xcb_atom_t{XCB_ATOM_NONE});
    } else if (mode_ == "saves" && request.target == x_.atom("SAVE_TARGETS")) {
      asked_ = request;
      fetch();
    }
  }

  void fetch() {
    xcb_convert_selection(x_.xcb(), window_, clipboard_, utf8_, data_, XCB_CURRENT_TIME);
    xcb_flush(x_.xcb());
  }

  void takeOver() {
    text_ = x_.takeProperty(window_, data_);
    if (mode_ == "wm-adopts") {
      std::printf("knows %s\n", text_.c_str());
      return;
    }
    x_.take(window_, clipboard_);
    if (asked_.requestor != XCB_NONE) x_.answer(asked_, asked_.property);
    asked_ = {};
    x_.sync();
    std::printf("has %s\n", text_.c_str());
  }

  PlainXClient x_;
  std::string mode_;
  const xcb_atom_t clipboard_ = x_.atom("CLIPBOARD");
  const xcb_atom_t utf8_ = x_.atom("UTF8_STRING");
  const xcb_atom_t data_ = x_.atom("MANAGED");
  const xcb_window_t window_ = x_.makeWindow();
  int fixesEvent_ = 0;
  std::string text_;
  xcb_selection_request_event_t asked_{};  // the request under way
};

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2) return 2;
  return ClipboardManager(argv[1]).run();
}
