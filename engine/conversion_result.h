#pragma once

#include <array>
#include <string>
#include <string_view>

#include "base/clock.h"
#include "base/instant.h"
#include "engine/current_zone.h"
#include "engine/locale_texts.h"
#include "engine/time_zone.h"
#include "engine/timestamp_source.h"

namespace horalo {

// An instant that was understood, and the zone in which it is shown.
struct ConversionResult {
  Instant date;
  TimestampSource source;
  TimeZone timezone;
};

// One line of what the converter shows.
struct ResultRow {
  std::string_view label;  // lives as long as the program
  std::string value;
  bool isSecondary = false;  // drawn with less weight
};

inline constexpr std::size_t kRowCount = 5;

enum class RowKind { unixSeconds, unixMilliseconds, iso8601, formatted, relative };

// What the rows need besides the result itself. All must outlive their user.
struct RowContext {
  const Clock& clock;       // "now" of the relative row
  const ZoneSource& zones;  // calendar differences are taken in the user's own zone
  const LocaleTexts& texts;

  // The system's clock and zone, and the user's locale.
  static const RowContext& shared();
};

// The five rows, in the order of RowKind; the relative one as seen at the moment of the call.
// `result.date` is in range (see isInRange).
std::array<ResultRow, kRowCount> rows(const ConversionResult& result,
                                      const RowContext& context = RowContext::shared());

// The value of one of them alone, at the end of `text` and at the cost of that one alone.
void appendRowValue(std::string& text, RowKind kind, const ConversionResult& result,
                    const RowContext& context = RowContext::shared());
std::string_view rowLabel(RowKind kind);

}  // namespace horalo
