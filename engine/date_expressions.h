#pragma once

#include <optional>
#include <string_view>

namespace horalo {

// Matchers of the relative expressions. Each gives what the regular expression in its comment
// would capture, matched against the whole of a trimmed text without regard to case, but takes time
// linear in the text's length: run as a regular expression, the last one takes seconds for 20,000
// blanks. Counts are of ASCII digits. The parts are views of the text.

// ^(\d+)\s+(second|minute|hour|day|week|month|year)s?\s+ago$
struct AgoExpression {
  std::string_view count;
  std::string_view unit;
};
std::optional<AgoExpression> matchAgo(std::string_view text);

// ^(next|last)\s+(monday|tuesday|wednesday|thursday|friday|saturday|sunday)$
struct WeekdayExpression {
  std::string_view direction;
  std::string_view weekday;
};
std::optional<WeekdayExpression> matchWeekday(std::string_view text);

// ^(.+?)\s*([+-])\s*(\d+)\s*(UNIT)$ where UNIT is one of
// s|sec|second|seconds|m|min|minute|minutes|h|hr|hour|hours|d|day|days|w|wk|week|weeks|
// mo|month|months|y|yr|year|years
struct OffsetExpression {
  std::string_view base;
  char sign = '+';
  std::string_view count;
  std::string_view unit;
};
std::optional<OffsetExpression> matchOffset(std::string_view text);

}  // namespace horalo
