#pragma once

#include <string>

#include "base/instant.h"

namespace horalo {

// The instant that a table expects, read by means of the standard library's calendar and not of the
// code that is tested:
//
//   2024-01-01T09:00:00.5+09:00   2024-01-01T00:00:00Z   @-62167219200   @183882168921599.999
//
// "@" stands before seconds since the epoch; a fraction counts in the direction of its sign.
// Throws std::runtime_error for anything else.
Instant expectedInstant(const std::string& text);

}  // namespace horalo
