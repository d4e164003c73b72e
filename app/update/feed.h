#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>
#include <QUrl>
#include <optional>
#include <string>
#include <vector>

#include "app/update/signature.h"

namespace horalo {

// A feed longer than this many bytes is not read.
inline constexpr qint64 kLongestFeed = 1 << 20;

// One version that the feed offers. Texts that are missing are empty, dates invalid.
struct FeedItem {
  std::string version;
  QString shownVersion;  // the version, where the feed shows no other
  QDateTime published;
  QUrl link;  // more about this version; https or nothing
  QString notes;
  std::string system;   // of the archive; empty: any
  std::string channel;  // empty: for everyone
  std::string minimumSystemVersion;
  std::string minimumUpdateVersion;  // the lowest version that can be updated to this one
  double rolloutInterval = 0;        // seconds between the groups of a phased roll-out; 0: at once
  bool critical = false;
  std::string criticalBelow;  // where critical: only for versions below; empty: for all
  bool informational = false;
  std::vector<std::string> informationalFor;  // where informational: only for these versions
  std::string informationalBelow;             // and those below; none at all: for every one
  QUrl archive;
  qint64 archiveLength = 0;  // bytes; 0 where it is missing or no number
  std::string archiveSignature;
};

struct Feed {
  QDateTime published;
  std::vector<FeedItem> items;
};

// The part of a feed that its signature covers. The signature is the feed's last comment:
//
//   <?xml ...?><rss>...</rss>
//   <!-- sparkle-signatures:
//   edSignature: BASE64
//   length: 1234
//   -->
//
// and is over the first `length` bytes; what follows them is not looked at. `unsignedFeed` where
// there is no such comment, `forged` where it is not by one of the keys.
enum class FeedTrust { trusted, unsignedFeed, forged };
struct SignedFeed {
  FeedTrust trust = FeedTrust::unsignedFeed;
  QByteArray content;  // where trusted
};
SignedFeed checkFeedSignature(const QByteArray& document, const UpdateKeys& keys);

// Reads an RSS feed with the elements of the appcast format. Nothing where it is not well-formed,
// declares a document type, or is too long.
std::optional<Feed> parseFeed(const QByteArray& content);

}  // namespace horalo
