#pragma once

#include <optional>
#include <string>

#include "app/update/feed.h"
#include "base/instant.h"

namespace horalo {

// What this copy of the program is and has seen.
struct UpdateSituation {
  std::string installedVersion;
  std::string highestVersion;  // that a feed ever offered; empty: none yet
  std::string skippedVersion;  // not to be offered by an automatic check; empty: none
  std::string systemVersion;   // of the C library, which minimumSystemVersion is about
  int rolloutGroup = 0;        // 0 to 6
  Instant now;
  bool askedByUser = false;  // the user gets what was skipped or is not yet due, too
};

struct UpdateChoice {
  enum class Outcome {
    upToDate,
    available,
    outdatedFeed,  // it offers less than what was offered before: someone replays an old one
  };
  Outcome outcome = Outcome::upToDate;
  std::optional<FeedItem> item;  // where available; `informational` and `critical` as they apply
  std::string highestVersion;    // the highest version ever offered, this feed included
};

// The highest version in the feed that this copy can be updated to, wherever it stands there.
UpdateChoice chooseUpdate(const Feed& feed, const UpdateSituation& situation);

}  // namespace horalo
