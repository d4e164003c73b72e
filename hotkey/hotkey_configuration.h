#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "hotkey/modifier_flags.h"

namespace horalo {

class Preferences;

// The one global shortcut that opens the converter, as it is stored and shown: ⇧⌘E until the user
// records another.
struct HotkeyConfiguration {
  std::uint32_t keyCode = 14;  // a virtual key code: the E key's position
  std::uint32_t modifiers = (ModifierFlags::shift | ModifierFlags::command).rawValue;

  // The stored shortcut; the default where none is stored or what is stored cannot be read.
  static HotkeyConfiguration load(const Preferences& preferences);
  void save(Preferences& preferences) const;

  // An object of two unsigned 32-bit numbers: {"keyCode":14,"modifiers":1179648}. Further members
  // do not matter; anything else gives nothing.
  static std::optional<HotkeyConfiguration> fromJson(std::string_view json);
  std::string toJson() const;

  // The modifiers' glyphs in the order ⌃⌥⇧⌘, then the key's name (UTF-8), ⌃⌥⇧⌘Space for example.
  // A key without a name here (F13, the keypad) leaves the glyphs alone, maybe nothing at all.
  std::string displayString() const;

  friend bool operator==(const HotkeyConfiguration&, const HotkeyConfiguration&) = default;
};

// The name that displayString() gives a key (UTF-8); nothing for most codes. These names differ on
// purpose from Key's display texts: an apostrophe for the quote key, "Space", "↵", plain "F1".
std::optional<std::string_view> keyCodeToString(std::uint32_t keyCode);

}  // namespace horalo
