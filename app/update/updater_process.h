#pragma once

#include <filesystem>
#include <optional>

#include "app/update/relaunch.h"

namespace horalo {

// Starts the updater program with one end of a socket as its standard input, in a process group of
// its own, so that Ctrl+C on a terminal does not stop it in the middle of an installation.
// `arguments` ends with a null pointer. Nothing where it cannot be started.
std::optional<UpdaterLink> startUpdaterProcess(const std::filesystem::path& program,
                                               const char* const* arguments);

}  // namespace horalo
