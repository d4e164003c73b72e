#pragma once

#include <string>
#include <string_view>

namespace horalo {

// What `horalo --help` and `horalo convert --help` print.
std::string_view generalHelp();
std::string_view convertHelp();

// The same for a command to the running program, such as "toggle".
std::string agentCommandHelp(std::string_view command);

}  // namespace horalo
