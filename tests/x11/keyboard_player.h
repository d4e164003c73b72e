#pragma once

#include <xcb/xcb.h>

#include <QString>
#include <cstdint>
#include <vector>

namespace horalo {

// X key codes of some keys by their position on a PC keyboard.
namespace x_key {
inline constexpr xcb_keycode_t control = 37;
inline constexpr xcb_keycode_t shift = 50;
inline constexpr xcb_keycode_t alt = 64;
inline constexpr xcb_keycode_t capsLock = 66;
inline constexpr xcb_keycode_t numLock = 77;
inline constexpr xcb_keycode_t scrollLock = 78;
inline constexpr xcb_keycode_t super = 133;
inline constexpr xcb_keycode_t a = 38;
inline constexpr xcb_keycode_t b = 56;
inline constexpr xcb_keycode_t d = 40;
inline constexpr xcb_keycode_t e = 26;
inline constexpr xcb_keycode_t k = 45;
}  // namespace x_key

// A person at the keyboard, and a program in front of them: presses keys on a display, and has a
// window that has the focus and writes down what reaches it.
class KeyboardPlayer {
 public:
  explicit KeyboardPlayer(const QString& display);
  ~KeyboardPlayer();
  KeyboardPlayer(const KeyboardPlayer&) = delete;
  KeyboardPlayer& operator=(const KeyboardPlayer&) = delete;

  // Each returns when the server has done it.
  void down(const std::vector<xcb_keycode_t>& keys);
  void up(const std::vector<xcb_keycode_t>& keys);
  // Down in this order, up the other way round.
  void chord(const std::vector<xcb_keycode_t>& keys);

  // What reached the window since last asked: the keys that went down there, and how often another
  // program took the keyboard away for a grab and gave it back.
  struct Seen {
    std::vector<xcb_keycode_t> keys;
    int grabs = 0;
    int ungrabs = 0;
  };
  Seen takeSeen();

  // Grabs for itself, as another program would: false where somebody else has it.
  bool grabKey(xcb_keycode_t key, std::uint16_t modifiers);
  void ungrabKey(xcb_keycode_t key, std::uint16_t modifiers);
  void grabKeyboard();
  void ungrabKeyboard();

  // Which locks are on, as modifier bits.
  std::uint16_t modifiers();

 private:
  void play(std::uint8_t type, xcb_keycode_t key);
  void sync();

  xcb_connection_t* xcb_;
  xcb_window_t root_ = XCB_NONE;
  xcb_window_t window_ = XCB_NONE;
};

}  // namespace horalo
