#pragma once

#include <array>
#include <string_view>

#include "base/geometry.h"

namespace horalo {

// Where on the screen the conversion toast appears.
enum class ToastPosition { topLeft, topCenter, topRight, bottomLeft, bottomCenter, bottomRight };

// In the order in which the settings offer them.
inline constexpr std::array kToastPositions{
    ToastPosition::topLeft,    ToastPosition::topCenter,    ToastPosition::topRight,
    ToastPosition::bottomLeft, ToastPosition::bottomCenter, ToastPosition::bottomRight};

// As preferences store it: "topLeft".
std::string_view rawValue(ToastPosition position);
// `bottomCenter` for every text that is none of these.
ToastPosition toastPosition(std::string_view rawValue);

// As the settings call it: "Top Left".
std::string_view displayName(ToastPosition position);

// The lower left corner of a toast in `visibleFrame`: 12 from the sides and the top, 40 from the
// bottom.
Point origin(ToastPosition position, Size toast, const Rect& visibleFrame);

}  // namespace horalo
