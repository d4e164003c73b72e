#include "bench/bare/shortcut.h"

#include <xcb/xcb_keysyms.h>

#include <cstdlib>
#include <utility>

namespace bare {
namespace {

constexpr xcb_keysym_t kLetterE = 'e';
// Shift and Super, alone and with Caps Lock, Num Lock or both.
constexpr std::uint16_t kModifiers = XCB_MOD_MASK_SHIFT | XCB_MOD_MASK_4;
constexpr std::uint16_t kLocks[] = {0, XCB_MOD_MASK_LOCK, XCB_MOD_MASK_2,
                                    XCB_MOD_MASK_LOCK | XCB_MOD_MASK_2};

template <typename T>
using Allocated = std::unique_ptr<T, decltype(&std::free)>;

}  // namespace

Shortcut::Shortcut(std::function<void()> pressed)
    : pressed_(std::move(pressed)),
      connection_(xcb_connect(nullptr, nullptr)),
      notifier_(xcb_get_file_descriptor(connection_.get()), QSocketNotifier::Read) {
  QObject::connect(&notifier_, &QSocketNotifier::activated, [this] { readEvents(); });
  grab();
}

void Shortcut::grab() {
  xcb_connection_t* connection = connection_.get();
  const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
  const std::unique_ptr<xcb_key_symbols_t, decltype(&xcb_key_symbols_free)> symbols(
      xcb_key_symbols_alloc(connection), xcb_key_symbols_free);
  const Allocated<xcb_keycode_t> codes(xcb_key_symbols_get_keycode(symbols.get(), kLetterE),
                                       std::free);
  if (!codes) return;
  for (const std::uint16_t locks : kLocks) {
    xcb_grab_key(connection, 0, root, kModifiers | locks, *codes, XCB_GRAB_MODE_ASYNC,
                 XCB_GRAB_MODE_ASYNC);
  }
  xcb_flush(connection);
}

void Shortcut::readEvents() {
  while (const Allocated<xcb_generic_event_t> event{xcb_poll_for_event(connection_.get()),
                                                    std::free}) {
    if ((event->response_type & 0x7f) == XCB_KEY_PRESS) pressed_();
  }
}

}  // namespace bare
