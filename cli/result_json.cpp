#include "cli/result_json.h"

#include <variant>

#include "base/json_text.h"

namespace horalo {
namespace {

void appendMember(std::string& json, std::string_view name, std::string_view value) {
  json += R"(,")";
  json += name;
  json += R"(":)";
  appendJsonString(json, value);
}

void appendInput(std::string& json, std::string_view text) {
  json += R"({"input":)";
  appendJsonString(json, text);
}

void appendSource(std::string& json, const TimestampSource& source) {
  json += R"(,"source":{"kind":)";
  appendJsonString(json, kindName(source));
  if (const auto* date = std::get_if<source::HumanDate>(&source)) {
    appendMember(json, "format", date->format);
  } else if (const auto* math = std::get_if<source::DateMath>(&source)) {
    appendMember(json, "expression", math->expression);
  }
  json += '}';
}

}  // namespace

void appendJson(std::string& json, std::string_view text, const ConversionResult& result,
                const RowContext& context) {
  appendInput(json, text);
  appendSource(json, result.source);
  appendMember(json, "detected", description(result.source));
  appendMember(json, "zone", result.timezone.identifier());
  std::string_view before = R"(,"rows":[{"label":)";
  for (const ResultRow& row : rows(result, context)) {
    json += before;
    appendJsonString(json, row.label);
    appendMember(json, "value", row.value);
    before = R"(},{"label":)";
  }
  json += "}]}";
}

void appendJsonError(std::string& json, std::string_view text, std::string_view error) {
  appendInput(json, text);
  appendMember(json, "error", error);
  json += '}';
}

}  // namespace horalo
