#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "base/instant.h"
#include "engine/calendar_unit.h"

namespace horalo {

// Texts in a person's own language. The locale library supplies words and patterns only: which
// offset holds where and when is told to it.
class LocaleTexts {
 public:
  // `locale` is a locale identifier such as "de_DE" or "sr_Latn_RS"; an unknown one gives
  // texts in US English. Costs nothing until a text is asked for.
  explicit LocaleTexts(std::string locale);
  ~LocaleTexts();

  // The texts of the user's locale (see userLocale()).
  static const LocaleTexts& shared();

  const std::string& locale() const { return locale_; }

  // The locale's medium date and medium time, joined the way the locale joins a long date and a
  // time: "Jan 1, 2024 at 12:00:00 AM", "1 janv. 2024 à 00:00:00". `offset` is in seconds east of
  // UTC. Calendar and digits are the locale's own.
  std::string mediumDateTime(Instant instant, std::int32_t offset) const;

  // A phrase for `count` units from now, always with its number: "in 3 days"; negative counts lie
  // in the past: "1 day ago". Zero reads "in 0 seconds".
  std::string relative(std::int64_t count, CalendarUnit unit) const;

 private:
  struct Formatters;

  std::string locale_;
  std::unique_ptr<Formatters> formatters_;
};

}  // namespace horalo
