#pragma once

#include <cstdint>
#include <optional>

namespace horalo {

// How the user set up the looks of the desktop, as far as the desktop tells.
struct DesktopAppearance {
  std::optional<bool> dark;             // nothing: go by the palette
  std::optional<std::uint32_t> accent;  // 0xRRGGBB; nothing: go by the palette
  double textScale = 1;                 // factor on the size of every text
  bool reducedMotion = false;           // changes come at once instead of fading or sliding
  friend bool operator==(const DesktopAppearance&, const DesktopAppearance&) = default;
};

}  // namespace horalo
