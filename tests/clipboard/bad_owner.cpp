// A program that owns the clipboard and does not behave, or behaves in an unusual way:
//
//   silent                never answers
//   dies                  ends when it is asked for anything
//   dies-midway           ends after the first pieces of a long text
//   late MILLISECONDS     answers each question after that time
//   no-text               has a picture
//   at-once BYTES         puts the whole text, however long, in one place
//   pieces BYTES          sends it in pieces
//   endless               announces ten bytes in pieces and never stops
//   bytes HEX [TARGET]    sends those bytes, as UTF8_STRING or as another target (and type)
//   no-targets TEXT       does not say what it has
//   refuses-utf8 TEXT     offers UTF8_STRING as well, but gives STRING only
//   hint VALUE TEXT       marks the text with a password manager's hint
//   flood COUNT PER_SECOND TEXT   takes the clipboard so many times, TEXT followed by the count
//
// Says "ready" once it owns the clipboard and "done" at the end of a flood.
#include <algorithm>
#include <atomic>
#include <chrono>
#include <string>
#include <thread>

#include "tests/x11/plain_x_client.h"

namespace {

using horalo::PlainXClient;

std::string fromHex(const std::string& hex) {
  std::string bytes;
  for (std::size_t i = 0; i + 1 < hex.size(); i += 2) {
    bytes += static_cast<char>(std::stoi(hex.substr(i, 2), nullptr, 16));
  }
  return bytes;
}

class BadOwner {
 public:
  BadOwner(std::string mode, std::vector<std::string> arguments)
      : mode_(std::move(mode)), arguments_(std::move(arguments)) {
    if (mode_ == "bytes") text_ = fromHex(argument(0));
    if (mode_ == "bytes" && arguments_.size() > 1) textTarget_ = x_.atom(argument(1));
    if (mode_ == "no-targets" || mode_ == "refuses-utf8") text_ = argument(0);
    if (mode_ == "hint") text_ = argument(1);
    if (mode_ == "at-once" || mode_ == "pieces") left_ = std::stoull(argument(0));
  }

  int run() {
    x_.take(window_, clipboard_);
    x_.sync();
    std::puts("ready");
    if (mode_ == "flood") std::thread([this] { flood(); }).detach();
    while (const auto event = x_.wait()) {
      if (PlainXClient::typeOf(event) == XCB_SELECTION_CLEAR) return 0;
      if (PlainXClient::typeOf(event) == XCB_SELECTION_REQUEST) {
        answer(PlainXClient::as<xcb_selection_request_event_t>(event));
      } else if (PlainXClient::typeOf(event) == XCB_PROPERTY_NOTIFY) {
        sendPiece(PlainXClient::as<xcb_property_notify_event_t>(event));
      }
    }
    return 0;
  }

 private:
  const std::string& argument(std::size_t i) const { return arguments_.at(i); }

  void answer(const xcb_selection_request_event_t& request) {
    if (mode_ == "silent") return;
    if (mode_ == "dies") std::_Exit(1);
    if (mode_ == "late") {
      std::this_thread::sleep_for(std::chrono::milliseconds(std::stoi(argument(0))));
    }
    x_.answer(request, put(request) ? request.property : xcb_atom_t{XCB_ATOM_NONE});
  }

  bool put(const xcb_selection_request_event_t& request) {
    const xcb_window_t to = request.requestor;
    if (request.target == targets_) {
      if (mode_ == "no-targets") return false;
      std::vector<xcb_atom_t> offered{targets_};
      offered.push_back(mode_ == "no-text" ? x_.atom("image/png") : textTarget_);
      if (mode_ == "refuses-utf8") offered.push_back(XCB_ATOM_STRING);
      if (mode_ == "hint") offered.push_back(hint_);
      x_.putWords(to, request.property, XCB_ATOM_ATOM, offered);
      return true;
    }
    if (mode_ == "hint" && request.target == hint_) {
      x_.putBytes(to, request.property, hint_, argument(0));
      return true;
    }
    if (mode_ == "refuses-utf8") {
      if (request.target != XCB_ATOM_STRING) return false;
      x_.putBytes(to, request.property, XCB_ATOM_STRING, text_);
      return true;
    }
    if (request.target != textTarget_ || mode_ == "no-text") return false;
    if (mode_ == "at-once") {
      putHuge(to, request.property);
    } else if (mode_ == "pieces" || mode_ == "endless" || mode_ == "dies-midway") {
      receiver_ = to;
      property_ = request.property;
      const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
      xcb_change_window_attributes(x_.xcb(), to, XCB_CW_EVENT_MASK, &events);
      const auto announced = static_cast<std::uint32_t>(mode_ == "pieces" ? left_ : 10);
      x_.putWords(to, property_, incr_, {announced});
    } else {
      x_.putBytes(to, request.property, textTarget_, mode_ == "flood" ? floodText() : text_);
    }
    return true;
  }

  // One property, filled by several requests: a request holds 16 MiB at most.
  void putHuge(xcb_window_t to, xcb_atom_t property) {
    const std::string part(8U << 20U, '7');
    std::size_t left = left_;
    for (auto mode = std::uint8_t{XCB_PROP_MODE_REPLACE}; left > 0; mode = XCB_PROP_MODE_APPEND) {
      const std::size_t size = std::min(left, part.size());
      x_.putBytes(to, property, textTarget_, std::string_view(part).substr(0, size), mode);
      left -= size;
    }
  }

  void sendPiece(const xcb_property_notify_event_t& event) {
    if (event.window != receiver_ || event.atom != property_) return;
    if (event.state != XCB_PROPERTY_DELETE) return;
    const std::string part(mode_ == "pieces" ? 1U << 20U : 1000U, '7');
    const std::size_t size = mode_ == "pieces" ? std::min(part.size(), left_) : part.size();
    if (mode_ == "dies-midway" && ++pieces_ == 3) std::_Exit(1);
    x_.putBytes(receiver_, property_, textTarget_, std::string_view(part).substr(0, size));
    xcb_flush(x_.xcb());
    left_ -= std::min(size, left_);
  }

  void flood() {
    const int count = std::stoi(argument(0));
    const auto pause = std::chrono::microseconds(1'000'000 / std::stoi(argument(1)));
    auto next = std::chrono::steady_clock::now();
    for (int i = 1; i <= count; ++i) {
      flooded_ = i;
      x_.take(window_, clipboard_);
      std::this_thread::sleep_until(next += pause);
    }
    std::puts("done");
  }

  std::string floodText() const { return argument(2) + std::to_string(flooded_); }

  PlainXClient x_;
  std::string mode_;
  std::vector<std::string> arguments_;
  const xcb_atom_t clipboard_ = x_.atom("CLIPBOARD");
  const xcb_atom_t targets_ = x_.atom("TARGETS");
  const xcb_atom_t incr_ = x_.atom("INCR");
  const xcb_atom_t hint_ = x_.atom("x-kde-passwordManagerHint");
  xcb_atom_t textTarget_ = x_.atom("UTF8_STRING");
  const xcb_window_t window_ = x_.makeWindow();
  std::string text_ = "1700000000";
  std::size_t left_ = 0;  // of a text that is sent in parts
  int pieces_ = 0;
  std::atomic<int> flooded_ = 0;
  xcb_window_t receiver_ = XCB_NONE;
  xcb_atom_t property_ = XCB_ATOM_NONE;
};

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2) return 2;
  return BadOwner(argv[1], std::vector<std::string>(argv + 2, argv + argc)).run();
}
