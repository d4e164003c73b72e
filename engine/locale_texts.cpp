#include "engine/locale_texts.h"

#include <unicode/reldatefmt.h>
#include <unicode/simpletz.h>
#include <unicode/smpdtfmt.h>
#include <unicode/timezone.h>
#include <unicode/unistr.h>
#include <unicode/ures.h>

#include <optional>
#include <utility>

#include "engine/user_locale.h"

namespace horalo {
namespace {

constexpr char16_t kNarrowNoBreakSpace = 0x202F;

// US English where `name` is no language of the library's: what the user's environment holds may be
// anything, and the library itself would go by the variables for other things than dates.
icu::Locale localeNamed(const std::string& name) {
  if (name.size() >= ULOC_FULLNAME_CAPACITY) return icu::Locale::getUS();
  const icu::Locale locale(name.c_str());
  if (*locale.getLanguage() == '\0') return icu::Locale::getUS();
  UErrorCode status = U_ZERO_ERROR;
  const icu::LocalUResourceBundlePointer texts(ures_open(nullptr, locale.getName(), &status));
  return U_FAILURE(status) || status == U_USING_DEFAULT_WARNING ? icu::Locale::getUS() : locale;
}

icu::UnicodeString patternOf(icu::DateFormat::EStyle date, icu::DateFormat::EStyle time,
                             const icu::Locale& locale) {
  const std::unique_ptr<icu::DateFormat> format(
      icu::DateFormat::createDateTimeInstance(date, time, locale));
  icu::UnicodeString pattern;
  if (const auto* simple = dynamic_cast<const icu::SimpleDateFormat*>(format.get())) {
    simple->toPattern(pattern);
  }
  return pattern;
}

// The locale's medium date and time in the place of the long date and the time, as that locale
// writes those: "MMMM d, y 'at' h:mm:ss a" tells where "MMM d, y" goes.
icu::UnicodeString joinedPattern(const icu::Locale& locale) {
  using Format = icu::DateFormat;
  const icu::UnicodeString date = patternOf(Format::kMedium, Format::kNone, locale);
  const icu::UnicodeString time = patternOf(Format::kNone, Format::kMedium, locale);
  const icu::UnicodeString longDate = patternOf(Format::kLong, Format::kNone, locale);
  icu::UnicodeString joined = patternOf(Format::kLong, Format::kMedium, locale);
  const int32_t place = joined.indexOf(longDate);
  if (place < 0 || date.isEmpty() || time.isEmpty()) return joined;
  joined.replace(place, longDate.length(), date);
  return joined;
}

std::unique_ptr<icu::SimpleDateFormat> makeDateTimeFormat(const icu::Locale& locale) {
  // Else the library looks for the computer's zone, through the whole zone database in the worst
  // case, only to have it replaced by the offset of each text.
  icu::TimeZone::adoptDefault(icu::TimeZone::getGMT()->clone());
  UErrorCode error = U_ZERO_ERROR;
  auto format = std::make_unique<icu::SimpleDateFormat>(joinedPattern(locale), locale, error);
  if (U_FAILURE(error)) return nullptr;
  return format;
}

std::unique_ptr<icu::RelativeDateTimeFormatter> makeRelativeFormat(const icu::Locale& locale) {
  UErrorCode error = U_ZERO_ERROR;
  auto format = std::make_unique<icu::RelativeDateTimeFormatter>(locale, error);
  if (U_FAILURE(error)) return nullptr;
  return format;
}

constexpr URelativeDateTimeUnit relativeUnit(CalendarUnit unit) {
  switch (unit) {
    case CalendarUnit::year:
      return UDAT_REL_UNIT_YEAR;
    case CalendarUnit::month:
      return UDAT_REL_UNIT_MONTH;
    case CalendarUnit::week:
      return UDAT_REL_UNIT_WEEK;
    case CalendarUnit::day:
      return UDAT_REL_UNIT_DAY;
    case CalendarUnit::hour:
      return UDAT_REL_UNIT_HOUR;
    case CalendarUnit::minute:
      return UDAT_REL_UNIT_MINUTE;
    case CalendarUnit::second:
      break;
  }
  return UDAT_REL_UNIT_SECOND;
}

std::string utf8(const icu::UnicodeString& text) {
  std::string result;
  text.toUTF8String(result);
  return result;
}

}  // namespace

// Made at the first use: they take longer to make than everything else a conversion does.
struct LocaleTexts::Formatters {
  std::unique_ptr<icu::SimpleDateFormat> dateTime;
  std::unique_ptr<icu::RelativeDateTimeFormatter> relative;

  std::int32_t lastOffset = 0;

  // The phrase changes far less often than it is shown.
  std::int64_t lastCount = 0;
  std::optional<CalendarUnit> lastUnit;
  std::string lastPhrase;
};

LocaleTexts::LocaleTexts(std::string locale)
    : locale_(std::move(locale)), formatters_(std::make_unique<Formatters>()) {}

LocaleTexts::~LocaleTexts() = default;

const LocaleTexts& LocaleTexts::shared() {
  static const LocaleTexts texts(userLocale());
  return texts;
}

std::string LocaleTexts::mediumDateTime(Instant instant, std::int32_t offset) const {
  Formatters& formatters = *formatters_;
  if (!formatters.dateTime) {
    formatters.dateTime = makeDateTimeFormat(localeNamed(locale_));
    if (!formatters.dateTime) return {};
  }
  if (formatters.lastOffset != offset) {
    formatters.dateTime->adoptTimeZone(new icu::SimpleTimeZone(offset * 1'000, u""));
    formatters.lastOffset = offset;
  }
  icu::UnicodeString text;
  // The middle of the second: millions of years away a floating-point number of milliseconds is off
  // by up to sixteen.
  const auto milliseconds = static_cast<double>(instant.seconds * 1'000 + 500);
  formatters.dateTime->format(milliseconds, text);
  // It is text to paste: other programs take U+202F for a strange letter.
  for (int32_t i = text.indexOf(kNarrowNoBreakSpace); i >= 0;
       i = text.indexOf(kNarrowNoBreakSpace, i)) {
    text.setCharAt(i, u' ');
  }
  return utf8(text);
}

std::string LocaleTexts::relative(std::int64_t count, CalendarUnit unit) const {
  Formatters& formatters = *formatters_;
  if (formatters.lastUnit == unit && formatters.lastCount == count) return formatters.lastPhrase;
  if (!formatters.relative) {
    formatters.relative = makeRelativeFormat(localeNamed(locale_));
    if (!formatters.relative) return {};
  }
  UErrorCode error = U_ZERO_ERROR;
  icu::UnicodeString text;
  formatters.relative->formatNumeric(static_cast<double>(count), relativeUnit(unit), text, error);
  if (U_FAILURE(error)) return {};
  formatters.lastCount = count;
  formatters.lastUnit = unit;
  formatters.lastPhrase = utf8(text);
  return formatters.lastPhrase;
}

}  // namespace horalo
