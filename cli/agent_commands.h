#pragma once

#include <string_view>
#include <vector>

namespace horalo {

// The commands that speak to the session's running program. They load no GUI library, so that a
// window manager's key binding to `horalo toggle` feels like the shortcut itself.

// Carries out toggle, show, hide, settings, check-updates, quit or status and gives the exit
// status: 0; 1 where the program did not answer; 2 for wrong usage; 3, with one line on standard
// error, where none runs. `show` comes back when the panel is mapped, `quit` when the process has
// ended (after 3 s at most), the others at once. `status` prints what works here, with `--json` as
// one object.
int runAgentCommand(std::string_view command, const std::vector<std::string_view>& words);

// Starts the program in place of this process. Where one runs already it is asked to show its
// panel, unless `background`, and the status is 0.
int startAgent(bool background);

}  // namespace horalo
