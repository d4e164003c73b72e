#pragma once

#include <optional>
#include <string_view>

namespace horalo {

// The value of what stands behind "0x" in a number as strtod reads it, without a sign: "1.8p3" is
// 12. Infinite where it is too large for a floating-point number, 0 where it is too small; nothing
// where it is no number.
std::optional<double> parseHexadecimal(std::string_view text);

}  // namespace horalo
