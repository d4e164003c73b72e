#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "base/instant.h"
#include "engine/conversion_result.h"
#include "engine/time_zone.h"

namespace horalo {

// What `horalo convert` was asked to do.
struct ConvertOptions {
  std::optional<TimeZone> zone;  // none: the user's own
  std::optional<Instant> now;    // none: the clock's
  std::optional<RowKind> only;   // none: all rows
  bool json = false;
  bool help = false;
  std::optional<std::string> text;  // none: the lines of standard input
};

// What is wrong with a command line, in one line for a person.
struct UsageError {
  std::string message;
};

// Reads the words behind `convert`. `--` ends the options, and a word of "-" and digits is a text.
std::variant<ConvertOptions, UsageError> parseConvertOptions(
    const std::vector<std::string_view>& words);

}  // namespace horalo
