#include "platform/x11/selection_read.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <string_view>
#include <utility>

namespace horalo {
namespace {

using Property = xcb_get_property_reply_t;

// More than any program offers; a longer list is cut.
constexpr std::size_t kMostTargets = 1024;

// How often a read starts again because the clipboard changed hands meanwhile.
constexpr int kMostRestarts = 4;

std::string_view bytesOf(const Property& property) {
  if (property.format != 8) return {};
  return {static_cast<const char*>(xcb_get_property_value(&property)),
          static_cast<std::size_t>(xcb_get_property_value_length(&property))};
}

std::vector<std::uint32_t> wordsOf(const Property& property) {
  if (property.format != 32) return {};
  std::vector<std::uint32_t> words(
      static_cast<std::size_t>(xcb_get_property_value_length(&property)) / 4);
  if (words.empty()) return words;
  std::memcpy(words.data(), xcb_get_property_value(&property), words.size() * 4);
  return words;
}

}  // namespace

// A read may be destroyed by the answer that its own timer causes.
void SelectionRead::DeleteLater::operator()(QTimer* timer) const {
  timer->stop();
  timer->deleteLater();
}

SelectionRead::SelectionRead(XConnection& connection, const SelectionAtoms& atoms,
                             const Pasteboard::ReadLimits& limits, Pasteboard::Answer answer,
                             std::function<void(SelectionRead&)> ended)
    : connection_(connection),
      atoms_(atoms),
      limits_(limits),
      answer_(std::move(answer)),
      ended_(std::move(ended)),
      text_(limits),
      deadline_(new QTimer) {
  const bool possible = connection_.isAlive();
  deadline_->setSingleShot(true);
  deadline_->setTimerType(Qt::PreciseTimer);
  deadline_->callOnTimeout([this] { finish(std::nullopt); });
  deadline_->start(possible ? static_cast<int>(std::lround(limits.seconds * 1000)) : 0);
  if (!possible) return;

  window_ = xcb_generate_id(connection_.get());
  const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
  xcb_create_window(connection_.get(), 0, window_, connection_.root(), -1, -1, 1, 1, 0,
                    XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &events);
  start();
}

SelectionRead::~SelectionRead() {
  if (window_ != XCB_NONE) {
    xcb_destroy_window(connection_.get(), window_);
    connection_.flush();
  }
  ended_(*this);
}

void SelectionRead::start() {
  text_ = SelectionText(limits_);
  request(Step::targets, atoms_.targets);
}

void SelectionRead::request(Step step, xcb_atom_t target) {
  step_ = step;
  target_ = target;
  const xcb_atom_t mouse = XCB_ATOM_PRIMARY;
  const xcb_atom_t selection = limits_.mouseSelection ? mouse : atoms_.clipboard;
  xcb_convert_selection(connection_.get(), window_, selection, target, atoms_.data,
                        XCB_CURRENT_TIME);
  connection_.flush();
}

void SelectionRead::ownerChanged() {
  // A clipboard manager takes over what a program that ends has copied, and with it our question.
  if (limits_.mouseSelection || ++restarts_ > kMostRestarts) return;
  xcb_delete_property(connection_.get(), window_, atoms_.data);
  start();
}

void SelectionRead::selectionNotify(const xcb_selection_notify_event_t& event) {
  if (target_ == XCB_ATOM_NONE || event.target != target_) return;
  target_ = XCB_ATOM_NONE;
  if (event.property != atoms_.data) return refused();
  switch (step_) {
    case Step::targets:
      return fetch(kMostTargets * 4, true, &SelectionRead::targetsCame);
    case Step::secretHint:
      return fetch(64, true, &SelectionRead::secretHintCame);
    case Step::text:
      return fetch(limits_.bytes, false, &SelectionRead::textCame);
    case Step::pieces:
      return;
  }
}

void SelectionRead::propertyNotify(const xcb_property_notify_event_t& event) {
  if (step_ != Step::pieces || event.atom != atoms_.data) return;
  if (event.state != XCB_PROPERTY_NEW_VALUE) return;
  fetch(limits_.bytes, true, &SelectionRead::pieceCame);
}

// Never asks for more than `bytes` (and a few, to see that there is more), whatever is stored.
void SelectionRead::fetch(std::size_t bytes, bool remove,
                          void (SelectionRead::*then)(const Property*)) {
  const auto words = static_cast<std::uint32_t>(bytes / 4 + 1);
  const auto cookie = xcb_get_property(connection_.get(), remove, window_, atoms_.data,
                                       XCB_GET_PROPERTY_TYPE_ANY, 0, words);
  connection_.whenAnswered<Property>(cookie, [this, then, alive = std::weak_ptr(alive_),
                                              asked = restarts_](const Property* answer) {
    if (!alive.expired() && asked == restarts_) (this->*then)(answer);
  });
}

void SelectionRead::refused() {
  switch (step_) {
    case Step::targets:  // some old programs do not say what they have
      textTargets_ = {atoms_.string, atoms_.utf8String};
      return requestNextText();
    case Step::secretHint:  // whoever offers the hint at all means it
      return finish(std::nullopt);
    case Step::text:
      return requestNextText();
    case Step::pieces:
      return;
  }
}

void SelectionRead::targetsCame(const Property* property) {
  if (property == nullptr) return finish(std::nullopt);
  const auto offered = wordsOf(*property);
  const auto offers = [&](xcb_atom_t target) {
    return std::find(offered.begin(), offered.end(), target) != offered.end();
  };
  textTargets_.clear();
  for (const xcb_atom_t target :
       {atoms_.plainText, atoms_.string, atoms_.plainTextUtf8, atoms_.utf8String}) {
    if (offers(target)) textTargets_.push_back(target);
  }
  if (!limits_.secretsAreText && offers(atoms_.secretHint)) {
    return request(Step::secretHint, atoms_.secretHint);
  }
  requestNextText();
}

void SelectionRead::secretHintCame(const Property* property) {
  if (property == nullptr || bytesOf(*property).starts_with("secret")) return finish(std::nullopt);
  requestNextText();
}

void SelectionRead::requestNextText() {
  if (textTargets_.empty()) return finish(std::nullopt);
  const xcb_atom_t target = textTargets_.back();
  textTargets_.pop_back();
  request(Step::text, target);
}

void SelectionRead::textCame(const Property* property) {
  if (property == nullptr) return finish(std::nullopt);
  if (property->type == atoms_.incr) {
    const auto announced = wordsOf(*property);
    if (!announced.empty() && text_.isTooLong(announced.front())) return finish(std::nullopt);
    step_ = Step::pieces;
    xcb_delete_property(connection_.get(), window_, atoms_.data);  // asks for the first piece
    connection_.flush();
    return;
  }
  if (property->format != 8) return finish(std::nullopt);
  append(*property);
}

void SelectionRead::pieceCame(const Property* property) {
  if (property == nullptr) return finish(std::nullopt);
  if (property->type == XCB_ATOM_NONE) return;  // taken already
  append(*property);
}

void SelectionRead::append(const Property& property) {
  const auto bytes = bytesOf(property);
  if (!bytes.empty()) encoding_ = encodingOf(property);
  switch (text_.append(bytes)) {
    case SelectionText::State::tooLong:
      return finish(std::nullopt);
    case SelectionText::State::complete:
      return finish(text_.text(encoding_));
    case SelectionText::State::wantsMore:
      break;
  }
  // A text in one go is all there; one in pieces ends with an empty piece.
  const bool isLast = step_ == Step::text || bytes.empty();
  if (isLast) finish(text_.text(encoding_));
}

TextEncoding SelectionRead::encodingOf(const Property& property) const {
  if (property.type == atoms_.string) return TextEncoding::latin1;
  if (property.type == atoms_.plainText) return TextEncoding::unknown;
  return TextEncoding::utf8;
}

void SelectionRead::finish(std::optional<std::string> text) {
  deadline_->stop();
  target_ = XCB_ATOM_NONE;
  step_ = Step::text;
  alive_.reset();
  if (window_ != XCB_NONE) {
    xcb_destroy_window(connection_.get(), std::exchange(window_, XCB_NONE));
    connection_.flush();
  }
  // The answer may destroy this object.
  if (const auto answer = std::exchange(answer_, nullptr)) answer(std::move(text));
}

}  // namespace horalo
