#pragma once

#include <QByteArray>
#include <variant>

#include "app/update/archive_policy.h"

namespace horalo {

struct UnpackedBundle {
  QByteArray info;          // Contents/Info.plist, as it was in the archive
  bool hasProgram = false;  // an executable file where the program belongs
};

struct UnpackFailure {
  bool noSpace = false;
  std::string reason;  // for a message
};

// Unpacks a tar archive, compressed by gzip, xz or zstd, into an open and empty folder: what is
// inside of the archive's one folder comes directly there. Stops at the first thing that the policy
// refuses, and leaves behind what was written so far. Reads nothing but `archive`, and writes
// nowhere else.
std::variant<UnpackedBundle, UnpackFailure> unpackArchive(QByteArrayView archive, int folder,
                                                          ArchiveLimits limits = {});

}  // namespace horalo
