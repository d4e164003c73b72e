#pragma once

#include <filesystem>

namespace horalo {

// Where the user's programs keep settings and state (XDG base directories): $XDG_CONFIG_HOME, else
// ~/.config; $XDG_STATE_HOME, else ~/.local/state. A relative path in the environment does not
// count. Without HOME the home is that of the user database. Empty where nothing names a home; the
// folders need not exist.
std::filesystem::path userConfigFolder();
std::filesystem::path userStateFolder();

}  // namespace horalo
