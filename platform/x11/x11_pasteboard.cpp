#include "platform/x11/x11_pasteboard.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "platform/x11/copy_notices.h"
#include "platform/x11/selection_atoms.h"
#include "platform/x11/selection_offer.h"
#include "platform/x11/selection_read.h"
#include "platform/x11/x_connection.h"

namespace horalo {
namespace {

template <typename Event>
const Event& as(const xcb_generic_event_t& event) {
  return reinterpret_cast<const Event&>(event);
}

}  // namespace

// The connection and what is told over it: who takes the clipboard, answers to our reads, requests
// for our own copy.
class X11Pasteboard::Server {
 public:
  explicit Server(const char* display)
      : connection_(display),
        atoms_(connection_),
        notices_(connection_, atoms_),
        offer_(connection_, atoms_) {
    connection_.setEventHandler([this](const xcb_generic_event_t& event) { handle(event); });
  }

  bool isAlive() const { return connection_.isAlive(); }
  bool canWatch() const { return isAlive() && notices_.canWatch(); }
  std::int64_t changeCount() const { return changeCount_; }
  void onChange(std::function<void()> changed) { changed_ = std::move(changed); }

  std::unique_ptr<Read> read(const ReadLimits& limits, Answer answer) {
    auto read = std::make_unique<SelectionRead>(
        connection_, atoms_, limits, std::move(answer),
        [this](SelectionRead& ended) { std::erase(reads_, &ended); });
    reads_.push_back(read.get());
    return read;
  }

  void write(const std::string& text) { offer_.take(text); }

  void handOver(double seconds) {
    if (!offer_.isOurs() || notices_.clipboardManager() == XCB_WINDOW_NONE) return;
    isHandedOver_ = false;
    offer_.announce(atoms_.data);
    xcb_convert_selection(connection_.get(), offer_.window(), atoms_.clipboardManager,
                          atoms_.saveTargets, atoms_.data, XCB_CURRENT_TIME);
    connection_.serveUntil([this] { return isHandedOver_ && !offer_.isSending(); }, seconds);
  }

 private:
  void handle(const xcb_generic_event_t& event);
  void selectionOwnerChanged(const xcb_xfixes_selection_notify_event_t& event);
  void selectionNotify(const xcb_selection_notify_event_t& event);
  void propertyNotify(const xcb_property_notify_event_t& event);
  SelectionRead* readOf(xcb_window_t window) const;

  XConnection connection_;
  SelectionAtoms atoms_;
  CopyNotices notices_;
  SelectionOffer offer_;
  std::vector<SelectionRead*> reads_;
  std::int64_t changeCount_ = 0;
  std::function<void()> changed_;
  bool isHandedOver_ = false;
};

void X11Pasteboard::Server::handle(const xcb_generic_event_t& event) {
  if (const auto* const notice = notices_.noticeIn(event)) return selectionOwnerChanged(*notice);
  switch (event.response_type & 0x7F) {
    case XCB_SELECTION_NOTIFY:
      return selectionNotify(as<xcb_selection_notify_event_t>(event));
    case XCB_PROPERTY_NOTIFY:
      return propertyNotify(as<xcb_property_notify_event_t>(event));
    case XCB_SELECTION_REQUEST:
      return offer_.serve(as<xcb_selection_request_event_t>(event));
    case XCB_DESTROY_NOTIFY:
      return offer_.windowDestroyed(as<xcb_destroy_notify_event_t>(event).window);
    default:
      return;
  }
}

void X11Pasteboard::Server::selectionOwnerChanged(
    const xcb_xfixes_selection_notify_event_t& event) {
  const bool isCopy = notices_.isCopy(event, offer_.window());
  if (event.selection != atoms_.clipboard) return;
  offer_.ownerChanged(event.owner, event.selection_timestamp);
  if (event.owner == XCB_WINDOW_NONE) return;  // its owner has ended, or emptied it
  for (SelectionRead* read : reads_) read->ownerChanged();
  if (!isCopy) return;
  ++changeCount_;
  if (changed_) changed_();
}

void X11Pasteboard::Server::selectionNotify(const xcb_selection_notify_event_t& event) {
  if (event.selection == atoms_.clipboardManager) {
    isHandedOver_ = true;
  } else if (SelectionRead* const read = readOf(event.requestor)) {
    read->selectionNotify(event);
  }
}

void X11Pasteboard::Server::propertyNotify(const xcb_property_notify_event_t& event) {
  offer_.propertyNotify(event);
  if (SelectionRead* const read = readOf(event.window)) read->propertyNotify(event);
}

SelectionRead* X11Pasteboard::Server::readOf(xcb_window_t window) const {
  const auto read = std::find_if(reads_.begin(), reads_.end(), [&](const SelectionRead* candidate) {
    return candidate->window() == window;
  });
  return read == reads_.end() ? nullptr : *read;
}

X11Pasteboard::X11Pasteboard(std::string display) : display_(std::move(display)) {}
X11Pasteboard::~X11Pasteboard() = default;

X11Pasteboard::Server& X11Pasteboard::server() const {
  if (!server_) server_ = std::make_unique<Server>(display_.empty() ? nullptr : display_.c_str());
  return *server_;
}

std::int64_t X11Pasteboard::changeCount() const {
  return server().changeCount();
}

void X11Pasteboard::onChange(std::function<void()> changed) {
  server().onChange(std::move(changed));
}

std::unique_ptr<Pasteboard::Read> X11Pasteboard::read(const ReadLimits& limits, Answer answer) {
  return server().read(limits, std::move(answer));
}

bool X11Pasteboard::write(const std::string& text) {
  if (!server().isAlive()) return false;
  server().write(text);
  return true;
}

void X11Pasteboard::handOver(double seconds) {
  if (server_) server_->handOver(seconds);
}

PasteboardStatus X11Pasteboard::status() const {
  if (!server().isAlive()) return {"x11", "there is no connection to the X server"};
  if (!server().canWatch()) return {"x11", "the X server has no XFixes extension"};
  return {"x11", ""};
}

}  // namespace horalo
