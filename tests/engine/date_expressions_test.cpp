#include "engine/date_expressions.h"

#include <gtest/gtest.h>
#include <unicode/locid.h>
#include <unicode/regex.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>

#include <algorithm>
#include <memory>
#include <random>
#include <string>
#include <vector>

namespace horalo {
namespace {

// What a regular expression captures; empty where it does not match.
using Captures = std::vector<std::string>;

std::string utf8(const icu::UnicodeString& text) {
  std::string result;
  text.toUTF8String(result);
  return result;
}

// A regular expression as the matchers' comments have it, without regard to case.
class Expression {
 public:
  explicit Expression(const char* pattern) {
    UErrorCode error = U_ZERO_ERROR;
    matcher_ = std::make_unique<icu::RegexMatcher>(icu::UnicodeString(pattern),
                                                   UREGEX_CASE_INSENSITIVE, error);
    if (U_FAILURE(error)) throw std::runtime_error(u_errorName(error));
  }

  Captures capturesOf(const icu::UnicodeString& text) {
    UErrorCode error = U_ZERO_ERROR;
    matcher_->reset(text);
    Captures captures;
    if (!matcher_->find(0, error)) return captures;
    for (int32_t i = 1; i <= matcher_->groupCount(); ++i) {
      captures.push_back(utf8(matcher_->group(i, error)));
    }
    if (U_FAILURE(error)) throw std::runtime_error(u_errorName(error));
    return captures;
  }

 private:
  std::unique_ptr<icu::RegexMatcher> matcher_;
};

// Texts that are made like expressions, and broken in all sorts of places.
class Texts {
 public:
  icu::UnicodeString next() {
    std::string text;
    switch (below(4)) {
      case 0:
        text = number() + gap() + agoUnit() + oneOf({"", "s", "s", "ſ", "S", "ss"}) + gap() +
               oneOf({"ago", "ago", "AGO", "Ago", "agos", "ag", "", "@go", "ago ago"});
        break;
      case 1:
        text = direction() + gap() + weekday();
        break;
      default:
        text = base() + optionalGap() + sign() + optionalGap() + number() + optionalGap() + unit();
    }
    const std::size_t breaks = below(3) == 0 ? 1 + below(3) : 0;
    icu::UnicodeString result = icu::UnicodeString::fromUTF8(withOddCapitals(text));
    for (std::size_t i = 0; i < breaks; ++i) breakSomewhere(result);
    return trimmedByProperty(result);
  }

 private:
  std::size_t below(std::size_t limit) { return random_() % limit; }

  template <std::size_t N>
  std::string oneOf(const char* const (&choices)[N]) {
    return choices[below(N)];
  }

  std::string gap() {
    std::string text;
    for (std::size_t i = 1 + below(8) / 6; i > 0; --i) {
      text += oneOf({" ",      " ",      " ",      " ",      " ",      " ",      "\t",
                     "\n",     "\r\n",   "\v",     "\f",     "\u0085", "\u00A0", "\u1680",
                     "\u2003", "\u2009", "\u2028", "\u2029", "\u202F", "\u3000", "\u200B"});
    }
    return text;
  }

  std::string optionalGap() { return below(2) == 0 ? "" : gap(); }

  std::string number() {
    if (below(3) != 0) return std::to_string(below(10'000));
    return oneOf({"1", "007", "99999999999999999999", "0", "", "٣", "１２", "2٣", "३", "1.5", "-2",
                  "+2", "1e3", "𝟘", "²"});
  }

  std::string sign() {
    return oneOf({"+", "+", "+", "-", "-", "-", "", "+-", "--", "−", "＋", "+ -"});
  }

  std::string agoUnit() {
    return oneOf({"second", "minute", "hour", "day", "week", "month", "year", "ſecond", "weeK",
                  "mo", "sec", "decade", "wee", "yearn", "dāy"});
  }

  std::string unit() {
    return oneOf({"s",    "sec",       "second", "seconds", "m",     "min",    "minute", "minutes",
                  "h",    "hr",        "hour",   "hours",   "d",     "day",    "days",   "w",
                  "wk",   "week",      "weeks",  "mo",      "month", "months", "y",      "yr",
                  "year", "years",     "ſ",      "ſec",     "hourſ", "wK",     "weeK",   "mos",
                  "secs", "fortnight", "",       "dd",      "ms",    "monthſ", "ｓ",     "yrs"});
  }

  std::string direction() {
    return oneOf({"next", "next", "last", "last", "laſt", "laﬆ", "laﬅ", "neﬀ", "this", "nextlast",
                  "l", "", "ne xt"});
  }

  std::string weekday() {
    return oneOf({"monday", "tuesday", "wednesday", "thursday", "friday", "saturday", "sunday",
                  "ſunday", "wedneſday", "tueſday", "thurſday", "mon", "day", "frıday", "frİday",
                  "ﬁday", "sundays", ""});
  }

  std::string base() {
    return oneOf({"now",      "NOW",  "1704067200", "2024-01-01",  "2024-01-01 10:00:00",
                  "-1.5",     "x",    "1e+3",       "a\nb",        "a\u2028b",
                  "a\u0085b", "\v",   "a - b",      "next friday", "ſ",
                  "",         "-",    "+",          " ",           "2024-01-01T00:00:00+05:30",
                  "日本",     "a  b", "\u200B",     "é\rè"});
  }

  // Now and then a letter in capitals, or one that only case folding makes the same.
  std::string withOddCapitals(const std::string& text) {
    if (below(4) != 0) return text;
    std::string result;
    for (const char c : text) {
      const bool change = below(3) == 0;
      if (change && c >= 'a' && c <= 'z') {
        result += c == 'k' && below(2) == 0   ? "\u212A"
                  : c == 's' && below(2) == 0 ? "\u017F"
                                              : std::string(1, static_cast<char>(c - 'a' + 'A'));
      } else {
        result += c;
      }
    }
    return result;
  }

  void breakSomewhere(icu::UnicodeString& text) {
    static constexpr char16_t kPieces[] = {
        u' ',    u'\t',   u'\n',   u'\r',  u'\0',  u'+',   u'-',   u's',   u'1',
        u'\x85', u'\xA0', u'\xB2', 0x0130, 0x0131, 0x017F, 0x0307, 0x0660, 0x1680,
        0x180E,  0x200B,  0x200D,  0x2028, 0x2029, 0x202F, 0x2126, 0x212A, 0x212B,
        0x3000,  0xFB00,  0xFB01,  0xFB05, 0xFB06, 0xFEFF, 0xFF10, 0xFF4B, 0xFFFD};
    const auto place = static_cast<int32_t>(below(static_cast<std::size_t>(text.length()) + 1));
    const char16_t piece = kPieces[below(std::size(kPieces))];
    if (below(3) == 0 && place < text.length()) {
      text.setCharAt(place, piece);
    } else if (below(3) == 0 && place < text.length()) {
      text.remove(place, 1);
    } else {
      text.insert(place, piece);
    }
  }

  static icu::UnicodeString trimmedByProperty(const icu::UnicodeString& text) {
    int32_t start = 0, end = text.length();
    while (start < end && u_isUWhiteSpace(text.char32At(start)) != 0) ++start;
    while (end > start && u_isUWhiteSpace(text.char32At(end - 1)) != 0) --end;
    // A half of a code point is no text that can arrive in UTF-8.
    icu::UnicodeString trimmed = text.tempSubStringBetween(start, end);
    return icu::UnicodeString::fromUTF8(utf8(trimmed));
  }

  std::mt19937 random_{20240229};
};

bool isAsciiDigits(const std::string& text) {
  return std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

// `\d` takes the digits of every script; a count is of ASCII digits.
Captures withAsciiCount(Captures captures, std::size_t count) {
  if (!captures.empty() && !isAsciiDigits(captures[count])) captures.clear();
  return captures;
}

Captures capturesOf(const std::optional<AgoExpression>& match) {
  if (!match) return {};
  return {std::string(match->count), std::string(match->unit)};
}

Captures capturesOf(const std::optional<WeekdayExpression>& match) {
  if (!match) return {};
  return {std::string(match->direction), std::string(match->weekday)};
}

Captures capturesOf(const std::optional<OffsetExpression>& match) {
  if (!match) return {};
  return {std::string(match->base), std::string(1, match->sign), std::string(match->count),
          std::string(match->unit)};
}

std::string lowered(const std::string& text) {
  return utf8(icu::UnicodeString::fromUTF8(text).toLower(icu::Locale::getRoot()));
}

Captures lowered(Captures captures) {
  for (std::string& capture : captures) capture = lowered(capture);
  return captures;
}

TEST(DateExpressions, MatchWhatTheirRegularExpressionsMatch) {
  constexpr int kTexts = 1'200'000;
  Expression ago(R"(^(\d+)\s+(second|minute|hour|day|week|month|year)s?\s+ago$)");
  Expression weekday(
      R"(^(next|last)\s+(monday|tuesday|wednesday|thursday|friday|saturday|sunday)$)");
  Expression offset(
      R"(^(.+?)\s*([+-])\s*(\d+)\s*(s|sec|second|seconds|m|min|minute|minutes|h|hr|hour|hours|d|day|days|w|wk|week|weeks|mo|month|months|y|yr|year|years)$)");
  Texts texts;
  int agoMatches = 0, weekdayMatches = 0, offsetMatches = 0, misses = 0, differences = 0;
  for (int i = 0; i < kTexts && differences < 10; ++i) {
    const icu::UnicodeString wide = texts.next();
    const std::string text = utf8(wide);
    // Ago and weekday expressions are defined on the text in lower case, which the matchers are
    // spared: what they capture is the same but for capitals.
    icu::UnicodeString lower = wide;
    lower.toLower(icu::Locale::getRoot());
    const Captures expectedAgo = withAsciiCount(ago.capturesOf(lower), 0);
    const Captures expectedWeekday = weekday.capturesOf(lower);
    const Captures expectedOffset = withAsciiCount(offset.capturesOf(wide), 2);
    const Captures gotAgo = lowered(capturesOf(matchAgo(text)));
    const Captures gotWeekday = lowered(capturesOf(matchWeekday(text)));
    const Captures gotOffset = capturesOf(matchOffset(text));
    if (gotAgo != expectedAgo || gotWeekday != expectedWeekday || gotOffset != expectedOffset) {
      ++differences;
      ADD_FAILURE() << testing::PrintToString(text) << "\n  ago: expected "
                    << testing::PrintToString(expectedAgo) << ", got "
                    << testing::PrintToString(gotAgo) << "\n  weekday: expected "
                    << testing::PrintToString(expectedWeekday) << ", got "
                    << testing::PrintToString(gotWeekday) << "\n  offset: expected "
                    << testing::PrintToString(expectedOffset) << ", got "
                    << testing::PrintToString(gotOffset);
    }
    if (!expectedAgo.empty()) ++agoMatches;
    if (!expectedWeekday.empty()) ++weekdayMatches;
    if (!expectedOffset.empty()) ++offsetMatches;
    if (expectedAgo.empty() && expectedWeekday.empty() && expectedOffset.empty()) ++misses;
  }
  EXPECT_GT(agoMatches, kTexts / 50);
  EXPECT_GT(weekdayMatches, kTexts / 50);
  EXPECT_GT(offsetMatches, kTexts / 20);
  EXPECT_GT(misses, kTexts / 2);
}

// Twenty thousand blanks cost seconds as a regular expression.
TEST(DateExpressions, LookAtLongTextsOnce) {
  const std::string blanks(2'000'000, ' ');
  for (const char* signs : {"", "+", "1+", "+1", "now +", "now + 1"}) {
    EXPECT_EQ(matchOffset("x" + blanks + signs + blanks + "x"), std::nullopt);
    EXPECT_EQ(matchAgo("3" + blanks + signs + blanks + "x"), std::nullopt);
    EXPECT_EQ(matchWeekday("next" + blanks + signs + blanks + "x"), std::nullopt);
  }
  EXPECT_EQ(capturesOf(matchOffset("now" + blanks + "+" + blanks + "1" + blanks + "d")),
            (Captures{"now", "+", "1", "d"}));
  const std::string signs(2'000'000, '+');
  EXPECT_EQ(matchOffset(signs), std::nullopt);
  EXPECT_EQ(capturesOf(matchOffset(signs + "1d"))[3], "d");
}

}  // namespace
}  // namespace horalo
