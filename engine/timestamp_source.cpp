#include "engine/timestamp_source.h"

namespace horalo {
namespace {

template <typename... Cases>
struct Match : Cases... {
  using Cases::operator()...;
};
template <typename... Cases>
Match(Cases...) -> Match<Cases...>;

}  // namespace

std::string description(const TimestampSource& source) {
  return std::visit(
      Match{[](const source::HumanDate& date) { return "Date (" + std::string(date.format) + ")"; },
            [](const source::DateMath&) { return std::string("Date math"); },
            [](source::UnixSeconds) { return std::string("Unix (seconds)"); },
            [](source::UnixMilliseconds) { return std::string("Unix (milliseconds)"); },
            [](source::Iso8601) { return std::string("ISO 8601"); },
            [](source::Now) { return std::string("Now"); }},
      source);
}

std::string_view kindName(const TimestampSource& source) {
  return std::visit(
      Match{[](const source::HumanDate&) { return "humanDate"; },
            [](const source::DateMath&) { return "dateMath"; },
            [](source::UnixSeconds) { return "unixSeconds"; },
            [](source::UnixMilliseconds) { return "unixMilliseconds"; },
            [](source::Iso8601) { return "iso8601"; }, [](source::Now) { return "now"; }},
      source);
}

}  // namespace horalo
