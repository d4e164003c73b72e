#pragma once

#include <cstdint>

namespace horalo {

// What became of an event: 0 or an error. The numbers are Carbon's, whose vocabulary the registry
// speaks.
using OSStatus = std::int32_t;
inline constexpr OSStatus noErr = 0;
inline constexpr OSStatus eventNotHandledErr = -9874;

// Four characters in one number, the first in the high byte.
constexpr std::uint32_t fourCharacterCode(const char (&text)[5]) {
  std::uint32_t code = 0;
  for (int index = 0; index < 4; ++index) {
    code = code << 8 | static_cast<std::uint8_t>(text[index]);
  }
  return code;
}

// Marks the registrations that are ours.
inline constexpr std::uint32_t eventHotKeySignature = fourCharacterCode("QvHk");

inline constexpr std::uint32_t kEventHotKeyPressed = 5;
inline constexpr std::uint32_t kEventHotKeyReleased = 6;

// A shortcut service tells that a registered shortcut was pressed or released.
struct HotKeyEvent {
  OSStatus readStatus = noErr;  // whether signature and number could be read from it
  std::uint32_t signature = eventHotKeySignature;
  std::uint32_t number = 0;  // the registration's
  std::uint32_t kind = kEventHotKeyPressed;
};

}  // namespace horalo
