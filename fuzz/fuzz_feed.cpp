#include <cstddef>
#include <cstdint>

#include "app/update/allowed_url.h"
#include "app/update/choose_update.h"
#include "app/update/feed.h"
#include "app/update/version_order.h"
#include "fuzz/require.h"

// Any bytes as a feed: refused, or read without following anything, and never trusted unsigned.

namespace horalo {
namespace {

const UpdateKeys& keys() {
  static const std::string_view text = "11qYAYKxCrfVS/7TyWQHOg7hcvPapiMlrwIaaPcHURo=";
  static const auto parsed = UpdateKeys::parse({&text, 1});
  require(parsed.has_value(), "the key is one");
  return *parsed;
}

void checkItem(const FeedItem& item) {
  require(item.archive.isEmpty() || isAllowedUrl(item.archive), "archives come over https");
  require(item.link.isEmpty() || item.link.scheme() == QLatin1String("https"), "links are https");
  require(item.archiveLength >= 0, "a length is no debt");
}

void checkOrder(const std::string& a, const std::string& b) {
  require(compareVersions(a, a) == 0, "a version is as old as itself");
  require((compareVersions(a, b) < 0) == (compareVersions(b, a) > 0), "older one way, newer back");
}

void check(const QByteArray& document) {
  require(checkFeedSignature(document, keys()).trust != FeedTrust::trusted, "nobody signed this");
  const auto feed = parseFeed(document);
  if (!feed) return;
  const std::string* previous = nullptr;
  for (const FeedItem& item : feed->items) {
    checkItem(item);
    if (previous != nullptr) checkOrder(*previous, item.version);
    previous = &item.version;
  }

  UpdateSituation situation;
  situation.installedVersion = "1.3.0";
  situation.systemVersion = "2.36";
  for (const bool asked : {false, true}) {
    situation.askedByUser = asked;
    const UpdateChoice choice = chooseUpdate(*feed, situation);
    if (!choice.item) continue;
    require(isVersion(choice.item->version), "only versions are offered");
    require(compareVersions(choice.item->version, "1.3.0") > 0, "only newer ones are offered");
    situation.highestVersion = choice.highestVersion;
    require(chooseUpdate(*feed, situation).outcome != UpdateChoice::Outcome::outdatedFeed,
            "a feed is not older than itself");
  }
}

}  // namespace
}  // namespace horalo

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  horalo::check(QByteArray(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)));
  return 0;
}
