#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "base/instant.h"

namespace horalo {

// Reads a date with time and zone, or a date alone, which is midnight in UTC (ISO 8601 in the
// profile of RFC 3339, but stricter):
//
//   2024-01-01T00:00:00Z    2024-01-01T02:00:00.123+02:00    2024-01-01
//
// The year has four digits, 0000 too; the fraction any number of them, rounded to the nearest
// nanosecond; offsets reach from -23:59 to +23:59. Nothing for anything else: lower-case "t" or
// "z", hour 24, second 60, a missing zone.
std::optional<Instant> parseISO8601(std::string_view text);

// Appends `instant`, to the second below it, at `offset` seconds east of UTC:
// "2024-01-01T09:00:00+09:00", and "Z" for a zero offset. Offsets with seconds, as local mean times
// have them, end in ":ss"; years before 0 have a sign and years past 9999 as many digits as they
// need.
void appendISO8601(std::string& text, Instant instant, std::int32_t offset);

}  // namespace horalo
