#include "engine/hexadecimal.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <limits>
#include <system_error>

#include "base/ascii.h"

namespace horalo {
namespace {

// Whether hexadecimal digits with a power of two, which do not fit a floating-point number, are too
// small for it and not too large: the place of the first digit that counts decides.
bool isTinyHexadecimal(std::string_view text) {
  const std::size_t size = std::min(text.find_first_of("pP"), text.size());
  const std::string_view digits = text.substr(0, size);
  std::int64_t power = 0;
  if (size < text.size()) {
    std::string_view written = text.substr(size + 1);
    if (written.starts_with('+')) written.remove_prefix(1);
    const auto [stop, error] =
        std::from_chars(written.data(), written.data() + written.size(), power);
    if (error == std::errc::result_out_of_range) return written.starts_with('-');
  }
  const auto point = static_cast<std::int64_t>(std::min(digits.find('.'), size));
  const auto first = static_cast<std::int64_t>(digits.find_first_not_of("0."));
  return power < 4 * (first - point);
}

}  // namespace

std::optional<double> parseHexadecimal(std::string_view text) {
  if (text.empty()) return std::nullopt;
  // The conversion takes signs and words of its own, which do not belong here.
  const char first = lowered(text.front());
  const bool startsWell = isDigit(first) || first == '.' || (first >= 'a' && first <= 'f');
  // It also takes "p+-1".
  const bool hasTwoSigns = text.find("+-") != std::string_view::npos;
  if (!startsWell || hasTwoSigns) return std::nullopt;
  double value = 0;
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, value, std::chars_format::hex);
  if (stop != end || error == std::errc::invalid_argument) return std::nullopt;
  if (error == std::errc::result_out_of_range) {
    return isTinyHexadecimal(text) ? 0.0 : std::numeric_limits<double>::infinity();
  }
  return value;
}

}  // namespace horalo
