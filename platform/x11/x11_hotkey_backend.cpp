#include "platform/x11/x11_hotkey_backend.h"

#include <algorithm>
#include <chrono>
#include <span>
#include <utility>

#include "platform/key_codes.h"

namespace horalo {
namespace {

// A change of layout comes as several events.
constexpr auto kMapSettles = std::chrono::milliseconds(50);

int milliseconds(double seconds) {
  return static_cast<int>(seconds * 1000);
}

std::vector<xcb_keycode_t> xKeyCodes(std::uint32_t carbonKeyCode) {
  std::vector<xcb_keycode_t> codes;
  for (const std::uint32_t evdevCode : evdevCodes(carbonKeyCode)) {
    const std::uint32_t code = evdevCode + kXKeyCodeOffset;
    if (code <= 0xFF) codes.push_back(static_cast<xcb_keycode_t>(code));
  }
  return codes;
}

bool isDown(const xcb_query_keymap_reply_t& keys, xcb_keycode_t code) {
  const unsigned eightKeys = keys.keys[code / 8];
  return (eightKeys >> (code % 8U) & 1U) != 0;
}

}  // namespace

bool X11HotKeyBackend::Registration::owns(xcb_keycode_t code) const {
  return std::find(codes.begin(), codes.end(), code) != codes.end();
}

bool X11HotKeyBackend::Registration::sharesKeysWith(const Registration& other) const {
  return carbonModifiers == other.carbonModifiers && codes == other.codes;
}

X11HotKeyBackend::X11HotKeyBackend(const X11HotKeyWaits& waits) : keyboard_(connection_) {
  if (isConnected()) modifiers_ = XModifiers::read(connection_);
  connection_.setEventHandler([this](const xcb_generic_event_t& event) { handleEvent(event); });
  thaw_.setSingleShot(true);
  thaw_.setInterval(milliseconds(waits.typing));
  thaw_.callOnTimeout([this] { releaseTyping(); });
  mapHasSettled_.setSingleShot(true);
  mapHasSettled_.setInterval(kMapSettles);
  mapHasSettled_.callOnTimeout([this] { keyboardMapChanged(); });
  retry_.setSingleShot(true);
  retry_.setTimerType(Qt::VeryCoarseTimer);
  retry_.setInterval(milliseconds(waits.retry));
  retry_.callOnTimeout([this] { tryAgain(); });
}

X11HotKeyBackend::~X11HotKeyBackend() = default;  // with the connection go its grabs

bool X11HotKeyBackend::registerHotKey(std::uint32_t number, std::uint32_t carbonKeyCode,
                                      std::uint32_t carbonModifiers) {
  registrations_.push_back({number, carbonModifiers, xKeyCodes(carbonKeyCode)});
  Registration& registration = registrations_.back();
  grab(registration);
  const bool isHad = registration.isGrabbed;
  if (isMuted_) ungrab(registration);
  return isHad;
}

void X11HotKeyBackend::unregisterHotKey(std::uint32_t number) {
  const auto found = std::find_if(registrations_.begin(), registrations_.end(),
                                  [&](const auto& entry) { return entry.number == number; });
  if (found == registrations_.end()) return;
  const Registration gone = *found;
  ungrab(*found);
  registrations_.erase(found);
  for (Registration& entry : registrations_) {
    if (entry.isGrabbed && entry.sharesKeysWith(gone)) grab(entry);
  }
  const auto isTaken = [](const auto& entry) { return entry.isTaken; };
  if (std::none_of(registrations_.begin(), registrations_.end(), isTaken)) retry_.stop();
}

void X11HotKeyBackend::setMuted(bool muted) {
  if (muted == isMuted_) return;
  isMuted_ = muted;
  if (muted) {
    ungrabAll();
  } else {
    grabAll();
  }
}

HotKeyBackendStatus X11HotKeyBackend::status() const {
  HotKeyBackendStatus status{"x11", false, ""};
  if (!connection_.isAlive()) {
    status.reason = "there is no connection to an X server";
  } else if (!keyboard_.isUsable()) {
    status.reason = "the X server lacks the extensions XKEYBOARD and XInputExtension 2.1";
  } else if (registrations_.empty()) {
    status.reason = "";
  } else if (registrations_.back().codes.empty()) {
    status.reason = "no key of a keyboard here has this position";
  } else if (isMuted_) {
    status.reason = "a new shortcut is being recorded";
  } else if (registrations_.back().isTaken) {
    status.reason = "another program has this shortcut";
  } else {
    status.active = registrations_.back().isGrabbed;
  }
  return status;
}

bool X11HotKeyBackend::tryGrabKeys(const Registration& registration) {
  const std::uint16_t wanted = modifiers_.fromCarbon(registration.carbonModifiers);
  std::vector<xcb_void_cookie_t> requests;
  for (const xcb_keycode_t code : registration.codes) {
    for (const std::uint16_t modifiers : modifiers_.withEveryLock(wanted)) {
      for (const xcb_window_t root : connection_.roots()) {
        requests.push_back(xcb_grab_key_checked(connection_.get(), 0, root, modifiers, code,
                                                XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_SYNC));
      }
    }
  }
  int failures = 0;
  for (const xcb_void_cookie_t request : requests) failures += connection_.check(request) ? 1 : 0;
  return !requests.empty() && failures == 0;
}

void X11HotKeyBackend::ungrabKeys(const Registration& registration) {
  const std::uint16_t wanted = modifiers_.fromCarbon(registration.carbonModifiers);
  for (const xcb_keycode_t code : registration.codes) {
    for (const std::uint16_t modifiers : modifiers_.withEveryLock(wanted)) {
      for (const xcb_window_t root : connection_.roots()) {
        xcb_ungrab_key(connection_.get(), code, root, modifiers);
      }
    }
  }
}

// All of its keys with all locks, or none: half a shortcut would be none with Num Lock on.
void X11HotKeyBackend::grab(Registration& registration) {
  if (!isConnected() || registration.codes.empty()) return;
  registration.isGrabbed = tryGrabKeys(registration);
  registration.isTaken = !registration.isGrabbed;
  if (registration.isTaken) {
    ungrabKeys(registration);
    connection_.flush();
    retry_.start();
    return;
  }
  noteKeysThatAreDown(registration);
}

void X11HotKeyBackend::ungrab(Registration& registration) {
  releaseTyping();
  if (registration.isGrabbed) ungrabKeys(registration);
  registration.isGrabbed = false;
  registration.heldKey = 0;
  watchReleases();
  connection_.flush();
}

void X11HotKeyBackend::grabAll() {
  for (Registration& registration : registrations_) grab(registration);
}

void X11HotKeyBackend::ungrabAll() {
  for (Registration& registration : registrations_) ungrab(registration);
}

// The key may be down when the grab begins, as after recording it: its repeats are no press.
void X11HotKeyBackend::noteKeysThatAreDown(Registration& registration) {
  keyboard_.watchReleases(true);  // before the question, so that no release falls between
  const auto keys = connection_.reply(xcb_query_keymap_reply, xcb_query_keymap(connection_.get()));
  for (const xcb_keycode_t code : registration.codes) {
    if (keys && isDown(*keys, code)) registration.heldKey = code;
  }
  watchReleases();
  connection_.flush();
}

void X11HotKeyBackend::watchReleases() {
  keyboard_.watchReleases(std::any_of(registrations_.begin(), registrations_.end(),
                                      [](const auto& entry) { return entry.heldKey != 0; }));
}

void X11HotKeyBackend::handleEvent(const xcb_generic_event_t& event) {
  if (keyboard_.isMapChange(event)) {
    mapHasSettled_.start();
  } else if (const auto release = keyboard_.releaseIn(event)) {
    keyWentUp(*release);
  } else if ((event.response_type & 0x7F) == XCB_KEY_PRESS) {
    keyWentDown(reinterpret_cast<const xcb_key_press_event_t&>(event));
  }
}

void X11HotKeyBackend::keyWentDown(const xcb_key_press_event_t& press) {
  const std::uint16_t state = modifiers_.withoutLocks(press.state);
  const auto found =
      std::find_if(registrations_.begin(), registrations_.end(), [&](const auto& entry) {
        return entry.isGrabbed && entry.owns(press.detail) &&
               modifiers_.fromCarbon(entry.carbonModifiers) == state;
      });
  if (found == registrations_.end() || found->heldKey == press.detail) {  // no press, or a repeat
    xcb_ungrab_keyboard(connection_.get(), press.time);
    return;
  }
  found->heldKey = press.detail;
  keyboard_.watchReleases(true);  // before the grab ends: its release is told one way or the other
  frozenBy_ = press.detail;
  thaw_.start();
  tell(found->number, HotKeyEventKind::pressed, press.time);
}

void X11HotKeyBackend::releaseTyping() {
  if (frozenBy_ == 0) return;
  thaw_.stop();
  xcb_ungrab_keyboard(connection_.get(), XCB_CURRENT_TIME);
  askWhetherItIsUp({std::exchange(frozenBy_, xcb_keycode_t{0}), eventTime_});
  connection_.flush();
}

// A release that nobody told us of would make the next press look like a repeat.
void X11HotKeyBackend::askWhetherItIsUp(const XKeyboard::Release& release) {
  const auto request = xcb_query_keymap(connection_.get());
  connection_.whenAnswered<xcb_query_keymap_reply_t>(
      request, [this, release, press = ++presses_](const xcb_query_keymap_reply_t* keys) {
        const bool isUp = keys != nullptr && !isDown(*keys, release.code);
        if (isUp && press == presses_) keyWentUp(release);
      });
}

void X11HotKeyBackend::keyWentUp(const XKeyboard::Release& release) {
  std::vector<std::uint32_t> released;
  for (Registration& registration : registrations_) {
    if (registration.heldKey != release.code) continue;
    registration.heldKey = 0;
    released.push_back(registration.number);
  }
  if (released.empty()) return;
  watchReleases();
  for (const std::uint32_t number : released) tell(number, HotKeyEventKind::released, release.time);
}

void X11HotKeyBackend::keyboardMapChanged() {
  const XModifiers now = XModifiers::read(connection_);
  if (now == modifiers_) {
    tryAgain();
    return;
  }
  ungrabAll();
  modifiers_ = now;
  if (!isMuted_) grabAll();
}

void X11HotKeyBackend::tryAgain() {
  if (isMuted_) return;
  for (Registration& registration : registrations_) {
    if (registration.isTaken) grab(registration);
  }
}

void X11HotKeyBackend::tell(std::uint32_t number, HotKeyEventKind kind, xcb_timestamp_t time) {
  eventTime_ = time;
  if (handler_) handler_(number, kind);
}

}  // namespace horalo
