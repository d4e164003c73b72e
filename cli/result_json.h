#pragma once

#include <string>
#include <string_view>

#include "engine/conversion_result.h"

namespace horalo {

// Appends what `text` was converted to, as one JSON object on one line:
//
//   {"input":"now","source":{"kind":"now"},"detected":"Now","zone":"UTC","rows":[...]}
void appendJson(std::string& json, std::string_view text, const ConversionResult& result,
                const RowContext& context);

// The same for a text that could not be converted: {"input":"...","error":"..."}.
void appendJsonError(std::string& json, std::string_view text, std::string_view error);

}  // namespace horalo
