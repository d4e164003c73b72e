#include "engine/locale_texts.h"

#include <gtest/gtest.h>
#include <unicode/datefmt.h>
#include <unicode/dtptngen.h>
#include <unicode/locid.h>
#include <unicode/timezone.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>

#include <algorithm>
#include <array>
#include <memory>
#include <string>

#include "base/utf8.h"
#include "tests/tables/case_table.h"
#include "tests/tables/expected_instant.h"
#include "tests/tables/scoped_variable.h"

namespace horalo {
namespace {

constexpr Instant kNewYear{1'704'067'200, 0};  // 2024-01-01T00:00:00Z
constexpr std::array kUnits{CalendarUnit::year,  CalendarUnit::month, CalendarUnit::week,
                            CalendarUnit::day,   CalendarUnit::hour,  CalendarUnit::minute,
                            CalendarUnit::second};

std::string utf8(const icu::UnicodeString& text) {
  std::string result;
  text.toUTF8String(result);
  return result;
}

TEST(LocaleTexts, WriteDatesAsTheirReadersDo) {
  const std::vector<CaseRow> rows = readCaseTable("formatted.tsv");
  for (const CaseRow& row : rows) {
    SCOPED_TRACE(row.place);
    const LocaleTexts texts(row.cell(0));
    EXPECT_EQ(texts.mediumDateTime(expectedInstant(row.cell(1)), std::stoi(row.cell(2))),
              row.cell(3));
  }
  EXPECT_EQ(rows.size(), 37U);
}

CalendarUnit unitOf(const std::string& name) {
  constexpr std::array<std::string_view, 7> kNames{"year", "month",  "week",  "day",
                                                   "hour", "minute", "second"};
  const auto found = std::find(kNames.begin(), kNames.end(), name);
  if (found == kNames.end()) throw std::runtime_error("no unit " + name);
  return kUnits[static_cast<std::size_t>(found - kNames.begin())];
}

TEST(LocaleTexts, CountInWordsOfTheirReaders) {
  const std::vector<CaseRow> rows = readCaseTable("relative_phrases.tsv");
  for (const CaseRow& row : rows) {
    SCOPED_TRACE(row.place);
    const LocaleTexts texts(row.cell(0));
    EXPECT_EQ(texts.relative(std::stoll(row.cell(1)), unitOf(row.cell(2))), row.cell(3));
  }
  EXPECT_EQ(rows.size(), 66U);
}

// A locale's medium date and medium time, each made alone.
icu::UnicodeString textOf(const icu::DateFormat* made, UDate date) {
  const std::unique_ptr<icu::DateFormat> format(made->clone());
  format->setTimeZone(*icu::TimeZone::getGMT());
  icu::UnicodeString text;
  return format->format(date, text);
}

// The pattern {1} 'at' {0} with a date for {1} and a time for {0}.
icu::UnicodeString joinedBy(const icu::UnicodeString& glue, const icu::UnicodeString& date,
                            const icu::UnicodeString& time) {
  icu::UnicodeString joined;
  for (int32_t i = 0; i < glue.length(); ++i) {
    if (glue.charAt(i) == u'\'') continue;
    if (glue.charAt(i) != u'{') {
      joined += glue.charAt(i);
      continue;
    }
    joined += glue.charAt(i + 1) == u'1' ? date : time;
    i += 2;
  }
  return joined;
}

TEST(LocaleTexts, JoinDateAndTimeInEveryLocaleTheWayALongDateIsJoined) {
  int32_t count = 0;
  const icu::Locale* const locales = icu::Locale::getAvailableLocales(count);
  ASSERT_GT(count, 700);
  for (int32_t i = 0; i < count; ++i) {
    const icu::Locale& locale = locales[i];
    SCOPED_TRACE(locale.getName());
    UErrorCode error = U_ZERO_ERROR;
    const std::unique_ptr<icu::DateTimePatternGenerator> patterns(
        icu::DateTimePatternGenerator::createInstance(locale, error));
    const icu::UnicodeString glue = patterns->getDateTimeFormat(UDAT_LONG, error);
    ASSERT_TRUE(U_SUCCESS(error)) << u_errorName(error);
    const std::unique_ptr<icu::DateFormat> date(
        icu::DateFormat::createDateInstance(icu::DateFormat::kMedium, locale));
    const std::unique_ptr<icu::DateFormat> time(
        icu::DateFormat::createTimeInstance(icu::DateFormat::kMedium, locale));

    const LocaleTexts texts(locale.getName());
    for (const std::int64_t seconds : {1'704'067'200, 1'720'708'496, -14'182'940}) {
      const auto moment = static_cast<UDate>(seconds * 1'000);
      icu::UnicodeString expected =
          joinedBy(glue, textOf(date.get(), moment), textOf(time.get(), moment));
      expected.findAndReplace(icu::UnicodeString(char16_t{0x202F}), icu::UnicodeString(u' '));
      const std::string text = texts.mediumDateTime({seconds, 0}, 0);
      EXPECT_EQ(text, utf8(expected));
      EXPECT_EQ(text.find("\u202F"), std::string::npos);
    }
  }
}

bool isDigit(char32_t c) {
  return u_charType(static_cast<UChar32>(c)) == U_DECIMAL_DIGIT_NUMBER;
}

bool hasDigit(std::string_view text) {
  while (!text.empty()) {
    const CodePoint c = decodeUtf8(text);
    if (isDigit(c.value)) return true;
    text.remove_prefix(c.length);
  }
  return false;
}

// "yesterday" and its like in other languages are no counts. (Some languages have a form of their
// own for one or two.)
TEST(LocaleTexts, AlwaysCountInNumbers) {
  int32_t count = 0;
  const icu::Locale* const locales = icu::Locale::getAvailableLocales(count);
  int phrases = 0, withoutDigits = 0;
  std::string examples;
  for (int32_t i = 0; i < count; ++i) {
    const LocaleTexts texts(locales[i].getName());
    for (const CalendarUnit unit : kUnits) {
      for (const std::int64_t number : {-21, -5, 5, 21}) {
        const std::string phrase = texts.relative(number, unit);
        EXPECT_TRUE(isValidUtf8(phrase));
        EXPECT_EQ(phrase.find("\u202F"), std::string::npos) << phrase;
        ++phrases;
        if (hasDigit(phrase)) continue;
        ++withoutDigits;
        if (examples.size() < 2000)
          examples += std::string(locales[i].getName()) + ": " + phrase + "\n";
      }
    }
  }
  EXPECT_GT(phrases, 20'000);
  EXPECT_EQ(withoutDigits, 0) << examples;
}

// The year is 5.8 million; every calendar must survive that, and the last second stay exact.
TEST(LocaleTexts, ReachAsFarAsInstantsDo) {
  int32_t count = 0;
  const icu::Locale* const locales = icu::Locale::getAvailableLocales(count);
  for (int32_t i = 0; i < count; ++i) {
    const LocaleTexts texts(locales[i].getName());
    for (const std::int64_t seconds : {kFarthestSecond, -kFarthestSecond}) {
      EXPECT_FALSE(texts.mediumDateTime({seconds, 0}, 0).empty()) << locales[i].getName();
    }
  }
  const LocaleTexts german("de_DE");
  int compared = 0;
  for (std::int64_t back = 0; back < 5'000; ++back) {
    const std::int64_t second = 86'399 - back;
    std::array<char, 16> expected{};
    std::snprintf(expected.data(), expected.size(), "%02d:%02d:%02d",
                  static_cast<int>(second / 3'600), static_cast<int>(second / 60 % 60),
                  static_cast<int>(second % 60));
    const std::string text = german.mediumDateTime({kFarthestSecond - 1 - back, 0}, 0);
    ASSERT_TRUE(text.ends_with(expected.data())) << text << " and not " << expected.data();
    const std::string past = german.mediumDateTime({-kFarthestSecond + second, 0}, 0);
    ASSERT_TRUE(past.ends_with(expected.data())) << past << " and not " << expected.data();
    ++compared;
  }
  EXPECT_EQ(compared, 5'000);
  // The local time may lie beyond the last instant.
  EXPECT_EQ(german.mediumDateTime({kFarthestSecond - 1, 0}, 7'200), "20.12.5828963 um 01:59:59");
  EXPECT_EQ(german.mediumDateTime({-kFarthestSecond, 0}, -561), "25.08.5824906 um 23:50:39");
}

TEST(LocaleTexts, OfAnUnknownLocaleAreEnglish) {
  for (const std::string& locale :
       {std::string("xx_YY"), std::string("zz"), std::string(), std::string("/usr/lib/locale/x"),
        std::string("~~3b7h1;3ej=e0"), std::string("\xFF"), std::string("__"),
        std::string(100'000, 'a'), "de_DE_" + std::string(200, 'X')}) {
    // Whatever language the messages of programs are in.
    const ScopedVariable all("LC_ALL", "de_DE.UTF-8");
    const LocaleTexts texts(locale);
    EXPECT_EQ(texts.mediumDateTime(kNewYear, 0), "Jan 1, 2024 at 12:00:00 AM")
        << locale.substr(0, 50);
    EXPECT_EQ(texts.relative(3, CalendarUnit::day), "in 3 days") << locale.substr(0, 50);
  }
}

TEST(LocaleTexts, AnswerAnewWhenTheQuestionChanges) {
  const LocaleTexts texts("en_US");
  EXPECT_EQ(texts.relative(1, CalendarUnit::day), "in 1 day");
  EXPECT_EQ(texts.relative(1, CalendarUnit::day), "in 1 day");
  EXPECT_EQ(texts.relative(1, CalendarUnit::week), "in 1 week");
  EXPECT_EQ(texts.relative(2, CalendarUnit::week), "in 2 weeks");
  EXPECT_EQ(texts.relative(-2, CalendarUnit::week), "2 weeks ago");
  EXPECT_EQ(texts.relative(1, CalendarUnit::day), "in 1 day");
}

}  // namespace
}  // namespace horalo
