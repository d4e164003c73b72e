#pragma once

#include <string>
#include <string_view>
#include <variant>

namespace horalo {

// How a text was understood.
namespace source {
struct HumanDate {
  std::string_view format;  // the layout that matched; lives as long as the program
  friend bool operator==(const HumanDate&, const HumanDate&) = default;
};
struct DateMath {
  std::string expression;  // a day keyword in lower case, or the expression as typed, trimmed
  friend bool operator==(const DateMath&, const DateMath&) = default;
};
struct UnixSeconds {
  friend bool operator==(UnixSeconds, UnixSeconds) = default;
};
struct UnixMilliseconds {
  friend bool operator==(UnixMilliseconds, UnixMilliseconds) = default;
};
struct Iso8601 {
  friend bool operator==(Iso8601, Iso8601) = default;
};
struct Now {
  friend bool operator==(Now, Now) = default;
};
}  // namespace source

using TimestampSource = std::variant<source::HumanDate, source::DateMath, source::UnixSeconds,
                                     source::UnixMilliseconds, source::Iso8601, source::Now>;

// What the footer says after "Detected: ", on one line: "Unix (seconds)", "Date (yyyy/MM/dd)".
std::string description(const TimestampSource& source);

// The name of the case, as scripts know it: "unixSeconds", "humanDate".
std::string_view kindName(const TimestampSource& source);

}  // namespace horalo
