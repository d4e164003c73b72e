#pragma once

#include <cstdint>
#include <optional>
#include <vector>

namespace horalo {

// A key's position has two numbers: the virtual key code, which the program stores and shows, and
// the kernel's evdev code, which the desktop tells. Neither depends on the layout.

// X servers and Wayland compositors count evdev codes from here: position E is 18 + 8 = 26.
inline constexpr std::uint32_t kXKeyCodeOffset = 8;

// The evdev codes of a virtual key code, the usual one first. A few have two, for keyboards of two
// traditions: 114 is both Help and Insert, 105 both F13 and Print Screen. Empty where the desktop
// never tells of such a key (63, the function key) or where there is none.
std::vector<std::uint32_t> evdevCodes(std::uint32_t virtualKeyCode);

// Nothing for a key that has no virtual key code which a shortcut could use, the Menu key for
// example.
std::optional<std::uint32_t> virtualKeyCode(std::uint32_t evdevCode);

}  // namespace horalo
