#include "fuzz/plain_matchers.h"

#include <cmath>
#include <cstdlib>
#include <optional>
#include <regex>

#include "engine/date_expressions.h"
#include "engine/number_text.h"
#include "fuzz/require.h"

namespace horalo {
namespace {

std::optional<std::smatch> match(const std::string& text, const std::regex& expression) {
  std::smatch found;
  if (!std::regex_match(text, found, expression)) return std::nullopt;
  return found;
}

std::regex expression(const char* text) {
  return std::regex(text, std::regex::ECMAScript | std::regex::icase | std::regex::optimize);
}

}  // namespace

void compareWithRegularExpressions(const std::string& text) {
  static const std::regex ago =
      expression(R"(([0-9]+)\s+(second|minute|hour|day|week|month|year)s?\s+ago)");
  static const std::regex weekday =
      expression(R"((next|last)\s+(monday|tuesday|wednesday|thursday|friday|saturday|sunday))");
  // The dot of the regular expression stops at line ends.
  static const std::regex offset =
      expression(R"(([^\n\v\f\r]+?)\s*([+-])\s*([0-9]+)\s*)"
                 R"((s|sec|second|seconds|m|min|minute|minutes|h|hr|hour|hours|d|day|days|)"
                 R"(w|wk|week|weeks|mo|month|months|y|yr|year|years))");

  const auto plainAgo = match(text, ago);
  const auto fastAgo = matchAgo(text);
  require(plainAgo.has_value() == fastAgo.has_value(), "matchAgo finds what its expression finds");
  require(
      !fastAgo || (fastAgo->count == (*plainAgo)[1].str() && fastAgo->unit == (*plainAgo)[2].str()),
      "matchAgo captures what its expression captures");

  const auto plainWeekday = match(text, weekday);
  const auto fastWeekday = matchWeekday(text);
  require(plainWeekday.has_value() == fastWeekday.has_value(),
          "matchWeekday finds what its expression finds");

  const auto plainOffset = match(text, offset);
  const auto fastOffset = matchOffset(text);
  require(plainOffset.has_value() == fastOffset.has_value(),
          "matchOffset finds what its expression finds");
  require(!fastOffset || (fastOffset->base == (*plainOffset)[1].str() &&
                          fastOffset->sign == *(*plainOffset)[2].first &&
                          fastOffset->count == (*plainOffset)[3].str() &&
                          fastOffset->unit == (*plainOffset)[4].str()),
          "matchOffset captures what its expression captures");
}

void compareWithStrtod(const std::string& text) {
  const bool startsBlank = !text.empty() && std::isspace(static_cast<unsigned char>(text[0])) != 0;
  char* end = nullptr;
  const double plain = std::strtod(text.c_str(), &end);
  const bool isNumber = !text.empty() && !startsBlank && end == text.c_str() + text.size();

  const std::optional<NumberText> fast = NumberText::parse(text);
  require(fast.has_value() == isNumber, "NumberText reads what strtod reads");
  require(!fast || fast->value() == plain || (std::isnan(fast->value()) && std::isnan(plain)),
          "NumberText has strtod's value");
}

}  // namespace horalo
