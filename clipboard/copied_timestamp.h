#pragma once

#include <optional>
#include <string_view>

#include "engine/timestamp_parser.h"

namespace horalo {

// What a copied text, trimmed, is as a timestamp; nothing where it is none that a person would copy
// as such. Only large plain numbers are: dates and keywords occur in ordinary texts.
//
//   1700000000   1700000000.5   1700000000000   1.7e9
//   not: 99999999   -1700000000   now   2024-01-01T00:00:00Z   anything over 100 characters
std::optional<ParseResult> copiedTimestamp(std::string_view trimmed, const TimestampParser& parser);

}  // namespace horalo
