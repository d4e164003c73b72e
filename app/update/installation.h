#pragma once

#include <QByteArray>
#include <optional>
#include <string>

#include "app/update/bundle_info.h"
#include "app/update/feed.h"
#include "app/update/problem.h"
#include "app/update/signature.h"
#include "app/update/staging.h"

namespace horalo {

// Everything that says whether a download may take the place of the running version.
struct InstallationOrder {
  QByteArray archive;
  FeedItem item;  // from the signed feed
  BundleInfo installed;
  std::string highestVersion;  // that a feed ever offered
  UpdateKeys keys;
};

// Checks the download, unpacks it from memory and puts it in the place of the bundle; see
// Staging::exchange for `held`. Takes seconds and may run on any thread. Nothing where it worked;
// otherwise the bundle is as it was.
std::optional<Problem> install(const InstallationOrder& order, Staging& staging, int held);

// Why a bundle that calls itself so is not what was ordered; nothing where it is.
std::optional<Problem> checkNewBundle(const BundleInfo& info, const InstallationOrder& order);

}  // namespace horalo
