#include "clipboard/copied_timestamp.h"

#include <variant>

#include "engine/number_text.h"

namespace horalo {
namespace {

// Counted in bytes: a text with other characters than ASCII is no number, however long.
constexpr std::size_t kLongest = 100;

constexpr double kSmallest = 1e8;

}  // namespace

std::optional<ParseResult> copiedTimestamp(std::string_view trimmed,
                                           const TimestampParser& parser) {
  if (trimmed.empty() || trimmed.size() > kLongest) return std::nullopt;
  const auto number = NumberText::parse(trimmed);
  if (!number || !(number->value() >= kSmallest)) return std::nullopt;
  auto parsed = parser.parse(trimmed);
  if (!parsed) return std::nullopt;
  const bool isPlain = std::holds_alternative<source::UnixSeconds>(parsed->source) ||
                       std::holds_alternative<source::UnixMilliseconds>(parsed->source);
  if (!isPlain) return std::nullopt;
  return parsed;
}

}  // namespace horalo
