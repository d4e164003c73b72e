#include "app/update/choose_update.h"

#include <algorithm>

#include "app/update/version_order.h"

namespace horalo {
namespace {

bool isBelow(std::string_view version, std::string_view limit) {
  return compareVersions(version, limit) < 0;
}

bool isInformational(const FeedItem& item, std::string_view installed) {
  if (!item.informational) return false;
  if (item.informationalFor.empty() && item.informationalBelow.empty()) return true;
  const auto& versions = item.informationalFor;
  return std::any_of(versions.begin(), versions.end(),
                     [&](const std::string& v) { return compareVersions(v, installed) == 0; }) ||
         (!item.informationalBelow.empty() && isBelow(installed, item.informationalBelow));
}

bool isCritical(const FeedItem& item, std::string_view installed) {
  return item.critical && (item.criticalBelow.empty() || isBelow(installed, item.criticalBelow));
}

// Whether the item is for this system and for everyone on it.
bool isForUs(const FeedItem& item, const UpdateSituation& situation) {
  if (!isVersion(item.version) || !item.channel.empty()) return false;
  if (!item.system.empty() && item.system != "linux") return false;
  if (!item.minimumSystemVersion.empty() &&
      isBelow(situation.systemVersion, item.minimumSystemVersion)) {
    return false;
  }
  if (!item.minimumUpdateVersion.empty() &&
      isBelow(situation.installedVersion, item.minimumUpdateVersion)) {
    return false;
  }
  const bool complete =
      !item.archive.isEmpty() && item.archiveLength > 0 && !item.archiveSignature.empty();
  return complete || isInformational(item, situation.installedVersion);
}

// Whether an automatic check may offer the item now.
bool isDue(const FeedItem& item, const UpdateSituation& situation) {
  if (!item.critical && compareVersions(item.version, situation.skippedVersion) == 0) return false;
  if (item.critical || !(item.rolloutInterval > 0) || !item.published.isValid()) return true;
  const double age = static_cast<double>(situation.now.seconds) -
                     static_cast<double>(item.published.toSecsSinceEpoch());
  return age >= item.rolloutInterval * situation.rolloutGroup;
}

}  // namespace

UpdateChoice chooseUpdate(const Feed& feed, const UpdateSituation& situation) {
  using Outcome = UpdateChoice::Outcome;
  const FeedItem* best = nullptr;
  for (const FeedItem& item : feed.items) {
    if (isForUs(item, situation) &&
        (best == nullptr || compareVersions(item.version, best->version) > 0)) {
      best = &item;
    }
  }

  const std::string& seen = situation.highestVersion;
  if (!seen.empty() && (best == nullptr || isBelow(best->version, seen)))
    return {Outcome::outdatedFeed, std::nullopt, seen};
  if (best == nullptr) return {Outcome::upToDate, std::nullopt, seen};
  if (!isBelow(situation.installedVersion, best->version))
    return {Outcome::upToDate, std::nullopt, best->version};

  FeedItem item = *best;
  item.informational = isInformational(item, situation.installedVersion);
  item.critical = isCritical(item, situation.installedVersion);
  if (!situation.askedByUser && !isDue(item, situation))
    return {Outcome::upToDate, std::nullopt, best->version};
  return {Outcome::available, item, best->version};
}

}  // namespace horalo
