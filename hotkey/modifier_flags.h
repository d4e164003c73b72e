#pragma once

#include <cstdint>
#include <string>

namespace horalo {

// The modifiers of a shortcut as the program and its preferences know them: bits, of which four
// mean something and any others (Caps Lock, the function key, the keypad) are carried along.
struct ModifierFlags {
  std::uint32_t rawValue = 0;

  static const ModifierFlags capsLock;
  static const ModifierFlags shift;
  static const ModifierFlags control;
  static const ModifierFlags option;
  static const ModifierFlags command;
  static const ModifierFlags shortcut;  // the four that a shortcut can have

  // The same in Carbon's bits, which the shortcut services speak. Only the four pass, either way.
  static ModifierFlags fromCarbonFlags(std::uint32_t carbonFlags);
  std::uint32_t carbonFlags() const;

  // The glyphs of those present (UTF-8), always in the order ⌃⌥⇧⌘, nothing between them.
  std::string description() const;

  constexpr bool contains(ModifierFlags flags) const {
    return (rawValue & flags.rawValue) == flags.rawValue;
  }
  constexpr bool containsAny(ModifierFlags flags) const { return (rawValue & flags.rawValue) != 0; }
  friend constexpr ModifierFlags operator|(ModifierFlags left, ModifierFlags right) {
    return {left.rawValue | right.rawValue};
  }
  friend constexpr ModifierFlags operator&(ModifierFlags left, ModifierFlags right) {
    return {left.rawValue & right.rawValue};
  }
  friend constexpr bool operator==(ModifierFlags, ModifierFlags) = default;
};

inline constexpr ModifierFlags ModifierFlags::capsLock{0x10000};
inline constexpr ModifierFlags ModifierFlags::shift{0x20000};
inline constexpr ModifierFlags ModifierFlags::control{0x40000};
inline constexpr ModifierFlags ModifierFlags::option{0x80000};
inline constexpr ModifierFlags ModifierFlags::command{0x100000};
inline constexpr ModifierFlags ModifierFlags::shortcut = shift | control | option | command;

}  // namespace horalo
