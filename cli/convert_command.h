#pragma once

#include <string_view>
#include <vector>

namespace horalo {

// Runs `horalo convert` with the words behind it and gives the exit status: 0, 1 when any text
// could not be parsed, 2 for wrong usage.
int runConvert(const std::vector<std::string_view>& words);

}  // namespace horalo
