#pragma once

#include <array>
#include <optional>
#include <string_view>

#include "engine/civil_time.h"

namespace horalo {

// The layouts of human dates in Unicode's date-pattern letters, in the order in which they are
// tried. Not every family of dates has a form with hours and minutes alone.
inline constexpr std::array<std::string_view, 17> kHumanDateFormats{
    "yyyy-MM-dd HH:mm:ss",
    "yyyy-MM-dd HH:mm",
    "yyyy-MM-dd",
    "yyyy/MM/dd HH:mm:ss",
    "yyyy/MM/dd",
    "MM/dd/yyyy HH:mm:ss",
    "MM/dd/yyyy HH:mm",
    "MM/dd/yyyy",
    "dd/MM/yyyy HH:mm:ss",
    "dd/MM/yyyy",
    "MMM dd, yyyy HH:mm:ss",
    "MMM dd, yyyy HH:mm",
    "MMM dd, yyyy",
    "MMMM dd, yyyy HH:mm:ss",
    "MMMM dd, yyyy",
    "dd MMM yyyy HH:mm:ss",
    "dd MMM yyyy",
};

struct HumanDate {
  CivilTime time;
  std::string_view format;  // one of kHumanDateFormats
};

// What `text` says in the first layout that fits it wholly: every field with its exact width in
// ASCII digits, English month names in any capitals, a real date of the years 1 to 9999.
std::optional<HumanDate> matchHumanDate(std::string_view text);

}  // namespace horalo
