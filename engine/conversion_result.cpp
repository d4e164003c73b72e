#include "engine/conversion_result.h"

#include <charconv>

#include "engine/date_math.h"
#include "engine/iso8601.h"

namespace horalo {
namespace {

constexpr std::array<std::string_view, kRowCount> kLabels{"Unix (s)", "Unix (ms)", "ISO 8601",
                                                          "Formatted", "Relative"};

void appendNumber(std::string& text, std::int64_t number) {
  std::array<char, 24> digits{};
  const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
  text.append(digits.data(), end);
}

void appendRelative(std::string& text, Instant date, const RowContext& context) {
  const CalendarDifference difference =
      calendarDifference(context.clock.now(), date, context.zones.current());
  text += context.texts.relative(difference.count, difference.unit);
}

}  // namespace

const RowContext& RowContext::shared() {
  static const SystemClock clock;
  static const SystemZone zone;
  static const RowContext context{clock, zone, LocaleTexts::shared()};
  return context;
}

std::string_view rowLabel(RowKind kind) {
  return kLabels[static_cast<std::size_t>(kind)];
}

void appendRowValue(std::string& text, RowKind kind, const ConversionResult& result,
                    const RowContext& context) {
  switch (kind) {
    case RowKind::unixSeconds:
      appendNumber(text, unixSeconds(result.date));
      break;
    case RowKind::unixMilliseconds:
      appendNumber(text, unixMilliseconds(result.date));
      break;
    case RowKind::iso8601:
      appendISO8601(text, result.date, result.timezone.offsetAt(result.date));
      break;
    case RowKind::formatted:
      text += context.texts.mediumDateTime(result.date, result.timezone.offsetAt(result.date));
      break;
    case RowKind::relative:
      appendRelative(text, result.date, context);
      break;
  }
}

std::array<ResultRow, kRowCount> rows(const ConversionResult& result, const RowContext& context) {
  std::array<ResultRow, kRowCount> made;
  for (std::size_t i = 0; i < kRowCount; ++i) {
    const auto kind = static_cast<RowKind>(i);
    made[i].label = kLabels[i];
    appendRowValue(made[i].value, kind, result, context);
    made[i].isSecondary = kind == RowKind::relative;
  }
  return made;
}

}  // namespace horalo
