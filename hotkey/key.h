#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

namespace horalo {

// A key of the keyboard: a position, whatever the layout writes on it. The position has a virtual
// key code (Carbon's kVK_ numbering), and the key a text that shows it to the user.
class Key {
 public:
  // clang-format off
  enum Case : std::uint8_t {
    a, b, c, d, e, f, g, h, i, j, k, l, m, n, o, p, q, r, s, t, u, v, w, x, y, z,
    zero, one, two, three, four, five, six, seven, eight, nine,
    period, quote, rightBracket, semicolon, slash, backslash, comma, equal, grave, leftBracket,
    minus, section, space, tab, return_,
    command, rightCommand, option, rightOption, control, rightControl, shift, rightShift,
    function, capsLock,
    pageUp, pageDown, home, end, upArrow, rightArrow, downArrow, leftArrow,
    f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17, f18, f19, f20,
    keypad0, keypad1, keypad2, keypad3, keypad4, keypad5, keypad6, keypad7, keypad8, keypad9,
    keypadClear, keypadDecimal, keypadDivide, keypadEnter, keypadEquals, keypadMinus,
    keypadMultiply, keypadPlus,
    escape, delete_, forwardDelete, help, volumeUp, volumeDown, mute,
  };
  // clang-format on

  constexpr Key(Case which) : which_(which) {}  // NOLINT: a case is a key

  // Nothing for a code that no key has, 52 for example.
  static std::optional<Key> fromCarbonKeyCode(std::uint32_t code);

  // Reads a key's name or glyph (UTF-8), in any capitals: "a", "Tab", "⇥", "keypad1". Some
  // spellings that one might expect give nothing, because the text is lower-cased before it is
  // compared: "rightBracket" and "leftBracket" (only "]" and "[" name those keys) and the display
  // texts of the function keys ("F1" names the key, U+F860 and "F1" does not).
  static std::optional<Key> fromString(std::string_view text);

  // All 114, in the order of declaration.
  static std::span<const Key> all();

  std::uint32_t carbonKeyCode() const;
  // What shows the key to the user (UTF-8). Left and right modifiers share a glyph, and so do the
  // keypad's digits and the main keyboard's.
  std::string_view description() const;

  // Whether it is one of the eight that make a combination with another key: Command, Shift, Option
  // or Control, left or right.
  bool isModifier() const;

  constexpr Case which() const { return which_; }
  friend constexpr bool operator==(Key, Key) = default;

 private:
  Case which_;
};

}  // namespace horalo
