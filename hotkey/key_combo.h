#pragma once

#include <QVariantMap>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "hotkey/key.h"
#include "hotkey/modifier_flags.h"

namespace horalo {

// A key with modifiers, in the codes that a shortcut service takes. Any pair of numbers is one,
// also with a code that no key has.
struct KeyCombo {
  std::uint32_t carbonKeyCode = 0;
  std::uint32_t carbonModifiers = 0;

  KeyCombo() = default;
  explicit KeyCombo(std::uint32_t keyCode, std::uint32_t modifiers = 0)
      : carbonKeyCode(keyCode), carbonModifiers(modifiers) {}
  KeyCombo(Key key, ModifierFlags modifiers)
      : carbonKeyCode(key.carbonKeyCode()), carbonModifiers(modifiers.carbonFlags()) {}

  // Reads dictionary()'s form: both entries there, each an integer that fits 32 bits unsigned;
  // else nothing. A boolean is no integer, and neither is a text of digits.
  static std::optional<KeyCombo> fromDictionary(const QVariantMap& dictionary);
  // "keyCode" and "modifiers" (Carbon's bits), both qint64.
  QVariantMap dictionary() const;

  // The desktop's own shortcuts that are switched on; empty where it does not tell them.
  static std::vector<KeyCombo> systemKeyCombos();
  // The 46 shortcuts that applications commonly have.
  static std::vector<KeyCombo> standardKeyCombos();

  std::optional<Key> key() const { return Key::fromCarbonKeyCode(carbonKeyCode); }
  // Nothing stores the code 0.
  void setKey(std::optional<Key> key) { carbonKeyCode = key ? key->carbonKeyCode() : 0; }

  ModifierFlags modifiers() const { return ModifierFlags::fromCarbonFlags(carbonModifiers); }
  void setModifiers(ModifierFlags flags) { carbonModifiers = flags.carbonFlags(); }

  bool isValid() const { return true; }

  // The modifiers' glyphs, then the key's text (UTF-8); the glyphs alone where no key has the code.
  std::string description() const;

  friend bool operator==(const KeyCombo&, const KeyCombo&) = default;
};

}  // namespace horalo
