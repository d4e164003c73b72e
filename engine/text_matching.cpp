#include "engine/text_matching.h"

#include <unicode/uchar.h>

#include <array>
#include <charconv>
#include <utility>

#include "base/ascii.h"
#include "base/utf8.h"

namespace horalo {
namespace {

constexpr char32_t kKelvinSign = 0x212A;
constexpr char32_t kLongS = 0x17F;
constexpr char32_t kLigatureLongST = 0xFB05;
constexpr char32_t kLigatureST = 0xFB06;

// Skipped at once, because the longest runs of white space are of blanks.
constexpr std::string_view kEightBlanks = "        ";

constexpr bool isAsciiWhiteSpace(char c) {
  return c == ' ' || (c >= '\t' && c <= '\r');
}

}  // namespace

bool isWhiteSpace(char32_t c) {
  if (c < 0x80) return isAsciiWhiteSpace(static_cast<char>(c));
  return u_isUWhiteSpace(static_cast<UChar32>(c)) != 0;
}

std::string_view trimmedLeft(std::string_view text) {
  while (text.starts_with(kEightBlanks)) text.remove_prefix(kEightBlanks.size());
  while (!text.empty()) {
    if (isAsciiWhiteSpace(text.front())) {
      text.remove_prefix(1);
      continue;
    }
    if (isAscii(text.front())) break;
    const CodePoint c = decodeUtf8(text);
    if (!c.valid || !isWhiteSpace(c.value)) break;
    text.remove_prefix(c.length);
  }
  return text;
}

std::string_view trimmedRight(std::string_view text) {
  while (text.ends_with(kEightBlanks)) text.remove_suffix(kEightBlanks.size());
  while (!text.empty()) {
    if (isAsciiWhiteSpace(text.back())) {
      text.remove_suffix(1);
      continue;
    }
    if (isAscii(text.back())) break;
    const CodePoint c = decodeLastUtf8(text);
    if (!c.valid || !isWhiteSpace(c.value)) break;
    text.remove_suffix(c.length);
  }
  return text;
}

std::string_view trimmed(std::string_view text) {
  return trimmedRight(trimmedLeft(text));
}

std::optional<std::size_t> foldedPrefix(std::string_view text, std::string_view word) {
  const std::size_t size = text.size();
  while (!word.empty()) {
    if (text.empty()) return std::nullopt;
    if (isAscii(text.front())) {
      if (lowered(text.front()) != word.front()) return std::nullopt;
      text.remove_prefix(1);
      word.remove_prefix(1);
      continue;
    }
    const CodePoint c = decodeUtf8(text);
    const bool isLigature = c.value == kLigatureST || c.value == kLigatureLongST;
    const std::string_view folded = c.value == kKelvinSign ? "k"
                                    : c.value == kLongS    ? "s"
                                    : isLigature           ? "st"
                                                           : "";
    if (folded.empty() || !word.starts_with(folded)) return std::nullopt;
    text.remove_prefix(c.length);
    word.remove_prefix(folded.size());
  }
  return size - text.size();
}

bool isLowered(std::string_view text, std::string_view word) {
  constexpr std::string_view kKelvinSignUtf8 = "\u212A";
  for (const char letter : word) {
    if (letter == 'k' && text.starts_with(kKelvinSignUtf8)) {
      text.remove_prefix(kKelvinSignUtf8.size());
    } else if (!text.empty() && lowered(text.front()) == letter) {
      text.remove_prefix(1);
    } else {
      return false;
    }
  }
  return text.empty();
}

std::optional<std::int64_t> wholeNumber(std::string_view text) {
  std::int64_t number = 0;
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, number);
  if (error != std::errc{} || stop != end || text.front() == '-') return std::nullopt;
  return number;
}

CalendarUnit calendarComponent(std::string_view word) {
  static constexpr std::array<std::pair<std::string_view, CalendarUnit>, 7> kUnits{
      {{"second", CalendarUnit::second},
       {"minute", CalendarUnit::minute},
       {"hour", CalendarUnit::hour},
       {"day", CalendarUnit::day},
       {"week", CalendarUnit::week},
       {"month", CalendarUnit::month},
       {"year", CalendarUnit::year}}};
  std::string_view singular = word;
  if (word.ends_with('s') || word.ends_with('S')) singular.remove_suffix(1);
  for (const auto& [name, unit] : kUnits) {
    if (isLowered(singular, name)) return unit;
  }
  return CalendarUnit::day;
}

std::string_view normalizeUnit(std::string_view word) {
  static constexpr std::array<std::pair<std::string_view, std::string_view>, 12> kShortForms{
      {{"s", "second"},
       {"sec", "second"},
       {"m", "minute"},
       {"min", "minute"},
       {"h", "hour"},
       {"hr", "hour"},
       {"d", "day"},
       {"w", "week"},
       {"wk", "week"},
       {"mo", "month"},
       {"y", "year"},
       {"yr", "year"}}};
  for (const auto& [form, full] : kShortForms) {
    if (isLowered(word, form)) return full;
  }
  return word;
}

std::optional<int> weekdayNumber(std::string_view word) {
  static constexpr std::array<std::string_view, 7> kDays{
      "sunday", "monday", "tuesday", "wednesday", "thursday", "friday", "saturday"};
  for (std::size_t i = 0; i < kDays.size(); ++i) {
    if (isLowered(word, kDays[i])) return static_cast<int>(i) + 1;
  }
  return std::nullopt;
}

}  // namespace horalo
