#pragma once

#include <string>

#include "base/file_descriptor.h"

namespace horalo {

// The command socket's two ends. Paths may be longer than the 107 bytes that a socket's address
// holds.

// Listens at `path`, mode 0600, replacing a file that a killed program left; nothing open where
// that fails.
FileDescriptor listenAt(const std::string& path);

// Connects; nothing open where nobody listens.
FileDescriptor connectTo(const std::string& path);

}  // namespace horalo
