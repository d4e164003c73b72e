#include "platform/x11/selection_offer.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstring>

#include "platform/selection_text.h"

namespace horalo {
namespace {

// Longer texts are sent in pieces of this size.
constexpr std::size_t kPiece = 64 * 1024;
// Programs that fetch a long text at the same time; the eldest gives way to one more.
constexpr std::size_t kMostTransfers = 32;
// Pairs of one request for several forms at once; nobody asks for more.
constexpr std::size_t kMostPairs = 64;

constexpr std::chrono::seconds kStaleAfter{5};

}  // namespace

SelectionOffer::SelectionOffer(XConnection& connection, const SelectionAtoms& atoms)
    : connection_(connection), atoms_(atoms), window_(xcb_generate_id(connection.get())) {
  const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
  xcb_create_window(connection_.get(), 0, window_, connection_.root(), -1, -1, 1, 1, 0,
                    XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &events);
  staleTimer_.setInterval(kStaleAfter);
  staleTimer_.callOnTimeout([this] { dropStaleTransfers(); });
}

SelectionOffer::~SelectionOffer() = default;

void SelectionOffer::take(const std::string& text) {
  text_ = std::make_shared<const std::string>(text);
  ++takesUnderWay_;
  xcb_set_selection_owner(connection_.get(), window_, atoms_.clipboard, XCB_CURRENT_TIME);
  connection_.flush();
}

void SelectionOffer::ownerChanged(xcb_window_t owner, xcb_timestamp_t time) {
  if (owner == window_) {
    acquired_ = time;
    if (takesUnderWay_ > 0) --takesUnderWay_;
  } else if (takesUnderWay_ == 0) {  // else that was before our last copy
    text_.reset();
  }
}

void SelectionOffer::announce(xcb_atom_t property) {
  const std::array targets{atoms_.utf8String, atoms_.plainTextUtf8, atoms_.plainText, atoms_.string,
                           atoms_.text};
  xcb_change_property(connection_.get(), XCB_PROP_MODE_REPLACE, window_, property, XCB_ATOM_ATOM,
                      32, targets.size(), targets.data());
}

void SelectionOffer::serve(const xcb_selection_request_event_t& request) {
  if (request.selection != atoms_.clipboard || !isOurs()) return answer(request, XCB_ATOM_NONE);
  if (request.target == atoms_.multiple) return serveMultiple(request);
  // Very old programs name no property and mean the target's name.
  const xcb_atom_t property = request.property != XCB_ATOM_NONE ? request.property : request.target;
  const bool given = put(request.requestor, property, request.target);
  answer(request, given ? property : xcb_atom_t{XCB_ATOM_NONE});
}

void SelectionOffer::answer(const xcb_selection_request_event_t& request, xcb_atom_t property) {
  xcb_selection_notify_event_t notify{};
  notify.response_type = XCB_SELECTION_NOTIFY;
  notify.time = request.time;
  notify.requestor = request.requestor;
  notify.selection = request.selection;
  notify.target = request.target;
  notify.property = property;
  std::array<char, 32> event{};
  static_assert(sizeof notify <= event.size());
  std::memcpy(event.data(), &notify, sizeof notify);
  xcb_send_event(connection_.get(), 0, request.requestor, XCB_EVENT_MASK_NO_EVENT, event.data());
  connection_.flush();
}

// The request's property lists pairs of a form and the property to put it on; a form that cannot
// be had is struck from the list.
void SelectionOffer::serveMultiple(const xcb_selection_request_event_t& request) {
  if (request.property == XCB_ATOM_NONE) return answer(request, XCB_ATOM_NONE);
  const auto cookie = xcb_get_property(connection_.get(), 0, request.requestor, request.property,
                                       XCB_ATOM_ANY, 0, kMostPairs * 2);
  connection_.whenAnswered<xcb_get_property_reply_t>(
      cookie,
      [this, request, alive = std::weak_ptr(alive_)](const xcb_get_property_reply_t* pairs) {
        if (alive.expired()) return;
        if (pairs == nullptr || pairs->format != 32 || !isOurs()) {
          return answer(request, XCB_ATOM_NONE);
        }
        std::vector<xcb_atom_t> atoms(
            static_cast<std::size_t>(xcb_get_property_value_length(pairs)) / 4);
        if (!atoms.empty()) {
          std::memcpy(atoms.data(), xcb_get_property_value(pairs), atoms.size() * 4);
        }
        for (std::size_t i = 0; i + 1 < atoms.size(); i += 2) {
          if (!put(request.requestor, atoms[i + 1], atoms[i])) atoms[i + 1] = XCB_ATOM_NONE;
        }
        xcb_change_property(connection_.get(), XCB_PROP_MODE_REPLACE, request.requestor,
                            request.property, atoms_.atomPair, 32,
                            static_cast<std::uint32_t>(atoms.size()), atoms.data());
        answer(request, request.property);
      });
}

// False where the copy cannot be had in that form.
bool SelectionOffer::put(xcb_window_t window, xcb_atom_t property, xcb_atom_t target) {
  const auto putWords = [&](xcb_atom_t type, const auto& words) {
    xcb_change_property(connection_.get(), XCB_PROP_MODE_REPLACE, window, property, type, 32,
                        static_cast<std::uint32_t>(std::size(words)), std::data(words));
    return true;
  };
  if (property == XCB_ATOM_NONE) return false;
  if (target == atoms_.targets) {
    return putWords(XCB_ATOM_ATOM,
                    std::array{atoms_.targets, atoms_.multiple, atoms_.timestamp,
                               atoms_.saveTargets, atoms_.utf8String, atoms_.plainTextUtf8,
                               atoms_.plainText, atoms_.string, atoms_.text});
  }
  if (target == atoms_.timestamp) return putWords(XCB_ATOM_INTEGER, std::array{acquired_});
  if (target == atoms_.saveTargets) return putWords(atoms_.null, std::array<xcb_atom_t, 0>{});
  const auto content = encode(target);
  if (content) putText(window, property, *content);
  return content.has_value();
}

std::optional<SelectionOffer::Encoded> SelectionOffer::encode(xcb_atom_t target) const {
  const bool isUtf8 =
      target == atoms_.utf8String || target == atoms_.plainTextUtf8 || target == atoms_.plainText;
  if (isUtf8) return Encoded{target, text_};
  if (target == atoms_.text && !fitsLatin1(*text_)) return Encoded{atoms_.utf8String, text_};
  if (target == atoms_.string || target == atoms_.text) {
    return Encoded{atoms_.string, std::make_shared<const std::string>(utf8ToLatin1(*text_))};
  }
  return std::nullopt;
}

void SelectionOffer::putText(xcb_window_t window, xcb_atom_t property, const Encoded& content) {
  const auto size = static_cast<std::uint32_t>(content.bytes->size());
  if (size <= kPiece) {
    xcb_change_property(connection_.get(), XCB_PROP_MODE_REPLACE, window, property, content.type, 8,
                        size, content.bytes->data());
    return;
  }
  if (transfers_.size() == kMostTransfers) transfers_.erase(transfers_.begin());
  const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY;
  xcb_change_window_attributes(connection_.get(), window, XCB_CW_EVENT_MASK, &events);
  xcb_change_property(connection_.get(), XCB_PROP_MODE_REPLACE, window, property, atoms_.incr, 32,
                      1, &size);
  transfers_.push_back({window, property, content});
  staleTimer_.start();
}

void SelectionOffer::propertyNotify(const xcb_property_notify_event_t& event) {
  if (event.state != XCB_PROPERTY_DELETE) return;
  const auto transfer = std::find_if(transfers_.begin(), transfers_.end(), [&](const Transfer& t) {
    return t.window == event.window && t.property == event.atom;
  });
  if (transfer == transfers_.end()) return;
  const bool isLast = transfer->sent == transfer->content.bytes->size();
  sendNextPiece(*transfer);
  if (!isLast) return;
  transfers_.erase(transfer);
  if (transfers_.empty()) staleTimer_.stop();
}

// The piece after the last is empty, which says that this was all.
void SelectionOffer::sendNextPiece(Transfer& transfer) {
  const std::string& bytes = *transfer.content.bytes;
  const std::size_t size = std::min(kPiece, bytes.size() - transfer.sent);
  xcb_change_property(connection_.get(), XCB_PROP_MODE_REPLACE, transfer.window, transfer.property,
                      transfer.content.type, 8, static_cast<std::uint32_t>(size),
                      bytes.data() + transfer.sent);
  connection_.flush();
  transfer.sent += size;
  transfer.isStale = false;
}

void SelectionOffer::windowDestroyed(xcb_window_t window) {
  std::erase_if(transfers_, [&](const Transfer& t) { return t.window == window; });
  if (transfers_.empty()) staleTimer_.stop();
}

void SelectionOffer::dropStaleTransfers() {
  std::erase_if(transfers_, [](const Transfer& t) { return t.isStale; });
  for (Transfer& transfer : transfers_) transfer.isStale = true;
  if (transfers_.empty()) staleTimer_.stop();
}

}  // namespace horalo
