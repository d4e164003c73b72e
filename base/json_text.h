#pragma once

#include <string>
#include <string_view>

namespace horalo {

// Appends `text` (UTF-8) to `json` as a JSON string (RFC 8259) with its quotes. Control characters,
// those beyond ASCII too, are escaped so that a terminal shows them safely.
void appendJsonString(std::string& json, std::string_view text);

}  // namespace horalo
