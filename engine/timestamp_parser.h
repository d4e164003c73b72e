#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

#include "base/clock.h"
#include "base/instant.h"
#include "engine/calendar_unit.h"
#include "engine/current_zone.h"
#include "engine/timestamp_source.h"

namespace horalo {

// A text that was understood.
struct ParseResult {
  Instant date;
  TimestampSource source;
};

// Turns one line of free text into an instant and a record of how it was understood.
//
//   now    today    3 days ago    next monday    now + 2h    1704067200    2024-01-01T00:00:00Z
//   2024-01-01 10:00:00    Jan 05, 2024    05 Jan 2024
//
// The recognisers are tried in that order and the first that succeeds wins. Local times and
// calendar sums are those of the current zone, which is read only by texts that need it.
class TimestampParser {
 public:
  // The one that uses the system's clock and zone.
  static const TimestampParser& shared();

  // Both must outlive the parser.
  TimestampParser(const Clock& clock, const ZoneSource& zones) : clock_(clock), zones_(zones) {}

  // The layouts of human dates, in the order in which they are tried. Month first comes before day
  // first: 03/04/2024 is March 4.
  static const std::array<std::string_view, 17>& humanDateFormats();

  // What `text` means; nothing where it is not understood. Text that is not UTF-8 is not.
  // Takes time linear in the length of `text`.
  std::optional<ParseResult> parse(std::string_view text) const;

 private:
  std::optional<ParseResult> parseSimpleKeyword(std::string_view text) const;
  std::optional<Instant> parseAgoExpression(std::string_view text) const;
  std::optional<Instant> parseWeekdayExpression(std::string_view text) const;
  std::optional<Instant> parseOffsetExpression(std::string_view text) const;
  std::optional<Instant> parseOffsetBase(std::string_view text) const;
  std::optional<ParseResult> parseHumanDate(std::string_view text) const;
  std::optional<Instant> add(Instant instant, std::int64_t count, CalendarUnit unit) const;

  const Clock& clock_;
  const ZoneSource& zones_;
};

}  // namespace horalo
