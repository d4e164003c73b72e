#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "engine/calendar_unit.h"

namespace horalo {

// Whether `c` is white space or a line break (the Unicode property White_Space). U+200B and U+FEFF
// are not.
bool isWhiteSpace(char32_t c);

// `text` without white space and line breaks at both ends.
std::string_view trimmed(std::string_view text);
std::string_view trimmedLeft(std::string_view text);
std::string_view trimmedRight(std::string_view text);

// The length in bytes of `word` at the start of `text`, whatever its capitals; nothing where `text`
// starts differently. `word` is of lower-case ASCII letters. Letters are the same where Unicode's
// case folding makes them so, which reaches beyond ASCII: the Kelvin sign is a "k", the long s is
// an "s", and the ligatures of s and t are "st".
std::optional<std::size_t> foldedPrefix(std::string_view text, std::string_view word);

// Whether `text` in lower case is `word`, which is of lower-case ASCII letters. The Kelvin sign's
// lower case is "k"; the long s is a lower-case letter of its own, and no "s".
bool isLowered(std::string_view text, std::string_view word);

// A count of ASCII digits; nothing where `text` holds anything else or does not fit.
std::optional<std::int64_t> wholeNumber(std::string_view text);

// The unit of a full word, singular or plural, in any capitals; days for every other word.
CalendarUnit calendarComponent(std::string_view word);

// The full word for a short form ("hr" is "hour"); any other word as it is.
std::string_view normalizeUnit(std::string_view word);

// 1 for "sunday" to 7 for "saturday", in any capitals; nothing for any other word.
std::optional<int> weekdayNumber(std::string_view word);

}  // namespace horalo
