#include "tests/x11/keyboard_player.h"

#include <xcb/xtest.h>

#include <algorithm>
#include <cstdlib>
#include <memory>

namespace horalo {
namespace {

template <typename T>
using Owned = std::unique_ptr<T, decltype(&std::free)>;

template <typename T>
Owned<T> owned(T* memory) {
  return Owned<T>(memory, &std::free);
}

}  // namespace

KeyboardPlayer::KeyboardPlayer(const QString& display)
    : xcb_(xcb_connect(display.toUtf8().constData(), nullptr)) {
  if (xcb_connection_has_error(xcb_) != 0) return;
  const xcb_screen_t* const screen = xcb_setup_roots_iterator(xcb_get_setup(xcb_)).data;
  root_ = screen->root;
  window_ = xcb_generate_id(xcb_);
  const std::uint32_t values[] = {1, XCB_EVENT_MASK_KEY_PRESS | XCB_EVENT_MASK_FOCUS_CHANGE};
  xcb_create_window(xcb_, XCB_COPY_FROM_PARENT, window_, root_, 0, 0, 10, 10, 0,
                    XCB_WINDOW_CLASS_INPUT_OUTPUT, screen->root_visual,
                    XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK, values);
  xcb_map_window(xcb_, window_);
  xcb_set_input_focus(xcb_, XCB_INPUT_FOCUS_PARENT, window_, XCB_CURRENT_TIME);
  sync();
}

KeyboardPlayer::~KeyboardPlayer() {
  xcb_disconnect(xcb_);
}

void KeyboardPlayer::play(std::uint8_t type, xcb_keycode_t key) {
  xcb_test_fake_input(xcb_, type, key, XCB_CURRENT_TIME, XCB_NONE, 0, 0, 0);
}

void KeyboardPlayer::sync() {
  owned(xcb_get_input_focus_reply(xcb_, xcb_get_input_focus(xcb_), nullptr));
}

void KeyboardPlayer::down(const std::vector<xcb_keycode_t>& keys) {
  for (const xcb_keycode_t key : keys) play(XCB_KEY_PRESS, key);
  sync();
}

void KeyboardPlayer::up(const std::vector<xcb_keycode_t>& keys) {
  for (const xcb_keycode_t key : keys) play(XCB_KEY_RELEASE, key);
  sync();
}

void KeyboardPlayer::chord(const std::vector<xcb_keycode_t>& keys) {
  down(keys);
  up({keys.rbegin(), keys.rend()});
}

KeyboardPlayer::Seen KeyboardPlayer::takeSeen() {
  sync();
  Seen seen;
  while (const auto event = owned(xcb_poll_for_event(xcb_))) {
    const int type = event->response_type & 0x7F;
    if (type == XCB_KEY_PRESS) {
      seen.keys.push_back(reinterpret_cast<const xcb_key_press_event_t&>(*event).detail);
    } else if (type == XCB_FOCUS_OUT) {
      const auto& out = reinterpret_cast<const xcb_focus_out_event_t&>(*event);
      seen.grabs += out.mode == XCB_NOTIFY_MODE_GRAB ? 1 : 0;
    } else if (type == XCB_FOCUS_IN) {
      const auto& in = reinterpret_cast<const xcb_focus_in_event_t&>(*event);
      seen.ungrabs += in.mode == XCB_NOTIFY_MODE_UNGRAB ? 1 : 0;
    }
  }
  return seen;
}

bool KeyboardPlayer::grabKey(xcb_keycode_t key, std::uint16_t modifiers) {
  const auto request = xcb_grab_key_checked(xcb_, 0, root_, modifiers, key, XCB_GRAB_MODE_ASYNC,
                                            XCB_GRAB_MODE_ASYNC);
  return !owned(xcb_request_check(xcb_, request));
}

void KeyboardPlayer::ungrabKey(xcb_keycode_t key, std::uint16_t modifiers) {
  xcb_ungrab_key(xcb_, key, root_, modifiers);
  sync();
}

void KeyboardPlayer::grabKeyboard() {
  owned(xcb_grab_keyboard_reply(xcb_,
                                xcb_grab_keyboard(xcb_, 0, window_, XCB_CURRENT_TIME,
                                                  XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC),
                                nullptr));
}

void KeyboardPlayer::ungrabKeyboard() {
  xcb_ungrab_keyboard(xcb_, XCB_CURRENT_TIME);
  sync();
}

std::uint16_t KeyboardPlayer::modifiers() {
  const auto pointer =
      owned(xcb_query_pointer_reply(xcb_, xcb_query_pointer(xcb_, root_), nullptr));
  return pointer ? static_cast<std::uint16_t>(pointer->mask & 0xFFU) : std::uint16_t{0};
}

}  // namespace horalo
