#include "engine/date_expressions.h"

#include <algorithm>
#include <array>

#include "base/ascii.h"
#include "base/utf8.h"
#include "engine/digits.h"
#include "engine/text_matching.h"

namespace horalo {
namespace {

bool isSign(char c) {
  return c == '+' || c == '-';
}

// Whether `text` may end in one of `letters`, in any capitals. Every expression ends in a word;
// numbers and most dates, which are converted far more often, are told apart by it at once.
bool mayEndIn(std::string_view text, std::string_view letters) {
  if (text.empty()) return false;
  const char last = text.back();
  if (!isAscii(last)) return true;
  return letters.find(lowered(last)) != letters.npos;
}

// What `.` does not match.
bool isLineTerminator(char32_t c) {
  return (c >= 0x0A && c <= 0x0D) || c == 0x85 || c == 0x2028 || c == 0x2029;
}

bool holdsLineTerminator(std::string_view text) {
  while (!text.empty()) {
    const CodePoint c = decodeUtf8(text);
    if (isLineTerminator(c.value)) return true;
    text.remove_prefix(c.length);
  }
  return false;
}

// Takes `\s+` off the front; false where there is none.
bool takeWhiteSpace(std::string_view& text) {
  const std::string_view rest = trimmedLeft(text);
  const bool taken = rest.size() < text.size();
  text = rest;
  return taken;
}

// Takes one of `words` off the front; empty where it starts with none of them.
template <std::size_t N>
std::string_view takeOneOf(std::string_view& text, const std::array<std::string_view, N>& words) {
  for (const std::string_view word : words) {
    if (const auto length = foldedPrefix(text, word)) {
      const std::string_view taken = text.substr(0, *length);
      text.remove_prefix(*length);
      return taken;
    }
  }
  return {};
}

bool isAllOf(std::string_view text, std::string_view word) {
  return foldedPrefix(text, word) == text.size();
}

}  // namespace

std::optional<AgoExpression> matchAgo(std::string_view text) {
  if (!mayEndIn(text, "o")) return std::nullopt;
  static constexpr std::array<std::string_view, 7> kUnits{"second", "minute", "hour", "day",
                                                          "week",   "month",  "year"};
  AgoExpression match;
  match.count = takeDigits(text);
  if (match.count.empty() || !takeWhiteSpace(text)) return std::nullopt;
  match.unit = takeOneOf(text, kUnits);
  if (match.unit.empty()) return std::nullopt;
  if (const auto plural = foldedPrefix(text, "s")) text.remove_prefix(*plural);
  if (!takeWhiteSpace(text) || !isAllOf(text, "ago")) return std::nullopt;
  return match;
}

std::optional<WeekdayExpression> matchWeekday(std::string_view text) {
  if (!mayEndIn(text, "y")) return std::nullopt;
  static constexpr std::array<std::string_view, 2> kDirections{"next", "last"};
  static constexpr std::array<std::string_view, 7> kWeekdays{
      "monday", "tuesday", "wednesday", "thursday", "friday", "saturday", "sunday"};
  WeekdayExpression match;
  match.direction = takeOneOf(text, kDirections);
  if (match.direction.empty() || !takeWhiteSpace(text)) return std::nullopt;
  match.weekday = takeOneOf(text, kWeekdays);
  if (match.weekday.empty() || !text.empty()) return std::nullopt;
  return match;
}

std::optional<OffsetExpression> matchOffset(std::string_view text) {
  static constexpr std::array<std::string_view, 26> kUnits{
      "s",     "sec",  "second", "seconds", "m",   "min",  "minute", "minutes", "h",
      "hr",    "hour", "hours",  "d",       "day", "days", "w",      "wk",      "week",
      "weeks", "mo",   "month",  "months",  "y",   "yr",   "year",   "years"};
  if (!mayEndIn(text, "cdehkmnorswy")) return std::nullopt;
  // No sign can stand after the one that counts, so it is the last.
  std::size_t sign = text.size() - 1;
  while (sign > 0 && !isSign(text[sign])) --sign;
  if (sign == 0) return std::nullopt;
  OffsetExpression match;
  match.sign = text[sign];

  std::string_view rest = trimmedLeft(text.substr(sign + 1));
  match.count = takeDigits(rest);
  if (match.count.empty()) return std::nullopt;
  match.unit = trimmedLeft(rest);
  // Rules out the time of day behind the date of an ISO 8601 text.
  if (std::any_of(match.unit.begin(), match.unit.end(), isDigit)) return std::nullopt;
  const auto isUnit = [&match](std::string_view word) { return isAllOf(match.unit, word); };
  if (std::none_of(kUnits.begin(), kUnits.end(), isUnit)) return std::nullopt;

  match.base = trimmedRight(text.substr(0, sign));
  if (match.base.empty() || holdsLineTerminator(match.base)) return std::nullopt;
  return match;
}

}  // namespace horalo
