#include "bench/icu_peer.h"

#include <unicode/parsepos.h>
#include <unicode/timezone.h>

#include <cstdlib>

#include "engine/human_date.h"

namespace horalo {
namespace {

std::unique_ptr<icu::SimpleDateFormat> makeFormat(std::string_view pattern, const char* locale) {
  UErrorCode error = U_ZERO_ERROR;
  auto format = std::make_unique<icu::SimpleDateFormat>(
      icu::UnicodeString::fromUTF8({pattern.data(), static_cast<int32_t>(pattern.size())}),
      icu::Locale(locale), error);
  if (U_FAILURE(error)) std::abort();
  format->adoptTimeZone(icu::TimeZone::getGMT()->clone());
  return format;
}

}  // namespace

IcuLayouts::IcuLayouts() {
  for (const std::string_view layout : kHumanDateFormats) {
    formats_.push_back(makeFormat(layout, "en_US_POSIX"));
    formats_.back()->setLenient(false);
  }
}

double IcuLayouts::parse(const icu::UnicodeString& text) const {
  for (const auto& format : formats_) {
    icu::ParsePosition position(0);
    const UDate date = format->parse(text, position);
    if (position.getIndex() == text.length()) return date;
  }
  return -1;
}

IcuPhrases::IcuPhrases(const std::string& locale)
    : dateTime_(makeFormat("MMM d, y 'at' h:mm:ss a", locale.c_str())) {
  UErrorCode error = U_ZERO_ERROR;
  relative_ = std::make_unique<icu::RelativeDateTimeFormatter>(icu::Locale(locale.c_str()), error);
  if (U_FAILURE(error)) std::abort();
}

int IcuPhrases::dateAndPhrase(double milliseconds, double days) const {
  UErrorCode error = U_ZERO_ERROR;
  icu::UnicodeString date;
  icu::UnicodeString phrase;
  dateTime_->format(milliseconds, date);
  relative_->formatNumeric(days, UDAT_REL_UNIT_DAY, phrase, error);
  return date.length() + phrase.length();
}

}  // namespace horalo
