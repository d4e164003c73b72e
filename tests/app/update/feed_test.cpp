#include "app/update/feed.h"

#include <gtest/gtest.h>

#include "tests/app/update/test_release.h"

namespace horalo {
namespace {

const TestItem kItem{"2.0", "https://example.org/2.0.tar.xz", "1234", "c2ln", "", ""};

TEST(FeedSignature, coversExactlyTheLeadingBytes) {
  const TestKey key;
  const QByteArray feed = makeFeed({kItem});
  const SignedFeed checked = checkFeedSignature(signedFeed(feed, key), key.keys());
  EXPECT_EQ(checked.trust, FeedTrust::trusted);
  EXPECT_EQ(checked.content, feed);
  EXPECT_EQ(checkFeedSignature(signedFeed(feed, TestKey()), key.keys()).trust, FeedTrust::forged);
}

TEST(FeedSignature, isLostWithAnyChange) {
  const TestKey key;
  const QByteArray feed = signedFeed(makeFeed({kItem}), key);
  const QByteArray changed = QByteArray(feed).replace("2.0.tar", "1.0.tar");
  EXPECT_EQ(checkFeedSignature(changed, key.keys()).trust, FeedTrust::forged);
  // Whatever stands between the signed bytes and the comment is never seen.
  const QByteArray added = QByteArray(feed).replace("<!--", "<item/><!--");
  EXPECT_EQ(checkFeedSignature(added, key.keys()).content, makeFeed({kItem}));
}

TEST(FeedSignature, isTheLastCommentOrNone) {
  const TestKey key;
  const UpdateKeys keys = key.keys();
  const QByteArray feed = makeFeed({kItem});
  const QByteArray good = signedFeed(feed, key);
  const auto trust = [&](const QByteArray& document) {
    return checkFeedSignature(document, keys).trust;
  };
  EXPECT_EQ(trust(""), FeedTrust::unsignedFeed);
  EXPECT_EQ(trust(feed), FeedTrust::unsignedFeed);
  EXPECT_EQ(trust("<html><body>Sign in</body></html>"), FeedTrust::unsignedFeed);
  EXPECT_EQ(trust(feed + "<!-- hello -->"), FeedTrust::unsignedFeed);
  EXPECT_EQ(trust(good + "<!-- hello -->"), FeedTrust::unsignedFeed);
  EXPECT_EQ(trust(good + "x"), FeedTrust::unsignedFeed);
  EXPECT_EQ(trust(good.chopped(2)), FeedTrust::unsignedFeed);
  EXPECT_EQ(trust(signedFeed(good, key)), FeedTrust::trusted);
  for (const char* length : {"0", "-1", "999999999", "99999999999999999999", "12x", "", " "}) {
    const QByteArray odd = feed + "<!-- sparkle-signatures:\nedSignature: " +
                           QByteArray::fromStdString(key.sign(feed)) + "\nlength: " + length +
                           "\n-->";
    EXPECT_NE(trust(odd), FeedTrust::trusted) << length;
  }
  EXPECT_EQ(trust("<!-- sparkle-signatures:\nlength: 3\n-->"), FeedTrust::unsignedFeed);
}

TEST(Feed, readsAnItem) {
  TestItem item = kItem;
  item.more =
      "<title>t</title><sparkle:shortVersionString>2.0 \"Noon\"</sparkle:shortVersionString>"
      "<pubDate>Sat, 06 Jan 2024 00:00:00 +0100</pubDate><link>https://example.org/new</link>"
      "<description><![CDATA[<b>New</b> things]]></description>"
      "<sparkle:minimumSystemVersion>2.36</sparkle:minimumSystemVersion>"
      "<sparkle:minimumUpdateVersion>1.1</sparkle:minimumUpdateVersion>"
      "<sparkle:channel>beta</sparkle:channel>"
      "<sparkle:phasedRolloutInterval>86400</sparkle:phasedRolloutInterval>"
      "<sparkle:criticalUpdate sparkle:version=\"1.5\"/>"
      "<sparkle:informationalUpdate><sparkle:version>1.1</sparkle:version>"
      "<sparkle:belowVersion>1.0</sparkle:belowVersion></sparkle:informationalUpdate>"
      "<sparkle:deltas><enclosure url=\"https://example.org/delta\" "
      "length=\"1\"/></sparkle:deltas>";
  item.enclosure = "sparkle:os=\"linux\"";
  const auto feed = parseFeed(makeFeed({item}));
  ASSERT_TRUE(feed);
  EXPECT_EQ(feed->published.toSecsSinceEpoch(), 1704448800);
  ASSERT_EQ(feed->items.size(), 1U);
  const FeedItem& read = feed->items[0];
  EXPECT_EQ(read.version, "2.0");
  EXPECT_EQ(read.shownVersion, QStringLiteral("2.0 \"Noon\""));
  EXPECT_EQ(read.published.toSecsSinceEpoch(), 1704495600);
  EXPECT_EQ(read.link, QUrl(QStringLiteral("https://example.org/new")));
  EXPECT_EQ(read.notes, QStringLiteral("<b>New</b> things"));
  EXPECT_EQ(read.system, "linux");
  EXPECT_EQ(read.channel, "beta");
  EXPECT_EQ(read.minimumSystemVersion, "2.36");
  EXPECT_EQ(read.minimumUpdateVersion, "1.1");
  EXPECT_EQ(read.rolloutInterval, 86400);
  EXPECT_TRUE(read.critical);
  EXPECT_EQ(read.criticalBelow, "1.5");
  EXPECT_TRUE(read.informational);
  EXPECT_EQ(read.informationalFor, (std::vector<std::string>{"1.1"}));
  EXPECT_EQ(read.informationalBelow, "1.0");
  EXPECT_EQ(read.archive, QUrl(QStringLiteral("https://example.org/2.0.tar.xz")));
  EXPECT_EQ(read.archiveLength, 1234);
  EXPECT_EQ(read.archiveSignature, "c2ln");
}

TEST(Feed, takesTheVersionFromTheEnclosureWhereItStandsThere) {
  TestItem item = kItem;
  item.version = "";
  item.enclosure = "sparkle:version=\"2.1\" sparkle:shortVersionString=\"2.1 beta\"";
  const auto feed = parseFeed(makeFeed({item}));
  ASSERT_TRUE(feed && feed->items.size() == 1);
  EXPECT_EQ(feed->items[0].version, "2.1");
  EXPECT_EQ(feed->items[0].shownVersion, QStringLiteral("2.1 beta"));
}

TEST(Feed, followsNoLinkButHttps) {
  for (const char* link : {"file:///etc/passwd", "javascript:alert(1)", "http://example.org/",
                           "ftp://example.org/", "https:", "//example.org", ""}) {
    TestItem item = kItem;
    item.more = std::string("<link>") + link + "</link>";
    item.url = link;
    const auto feed = parseFeed(makeFeed({item}));
    ASSERT_TRUE(feed && feed->items.size() == 1) << link;
    EXPECT_TRUE(feed->items[0].link.isEmpty() || feed->items[0].link.host().isEmpty()) << link;
    EXPECT_TRUE(feed->items[0].archive.isEmpty()) << link;
  }
}

TEST(Feed, takesNoOddLength) {
  for (const char* length : {"", "0", "-5", "12.5", "1e9", "x", "99999999999999999999"}) {
    TestItem item = kItem;
    item.length = length;
    const auto feed = parseFeed(makeFeed({item}));
    ASSERT_TRUE(feed && feed->items.size() == 1) << length;
    EXPECT_EQ(feed->items[0].archiveLength, 0) << length;
  }
}

TEST(Feed, refusesWhatIsNone) {
  const QByteArray good = makeFeed({kItem});
  ASSERT_TRUE(parseFeed(good));
  const auto with = [&](const char* declaration) {
    return QByteArray(good).replace("<rss", QByteArray(declaration) + "<rss");
  };
  const std::vector<QByteArray> documents = {
      "",
      "hello",
      "<html><body>Sign in</body></html>",
      "{\"json\": true}",
      good.chopped(8),
      good + "<more/>",
      with("<!DOCTYPE rss>"),
      with("<!DOCTYPE rss [<!ENTITY a \"aaaa\">]>"),
      with("<!DOCTYPE rss SYSTEM \"file:///etc/passwd\">"),
      QByteArray(good).replace("<item>", "<item>&undefined;"),
      QByteArray(good).replace("<item>", "<item>\xff\xfe"),
      QByteArray(good).replace("<item>", QByteArray("<item>\0", 7)),
      good + QByteArray(1 << 20, ' ')};
  for (const QByteArray& document : documents) {
    EXPECT_FALSE(parseFeed(document)) << document.left(60).toStdString();
  }
}

TEST(Feed, standsThousandsOfLevelsAndItems) {
  QByteArray deep;
  for (int i = 0; i < 20'000; ++i) deep += "<a>";
  for (int i = 0; i < 20'000; ++i) deep += "</a>";
  const QByteArray good = makeFeed({kItem});
  const auto feed = parseFeed(QByteArray(good).replace("<channel>", "<channel>" + deep));
  ASSERT_TRUE(feed);
  EXPECT_EQ(feed->items.size(), 1U);

  QByteArray many;
  for (int i = 0; i < 30'000; ++i) many += "<item/>";
  const auto crowd = parseFeed(QByteArray(good).replace("<channel>", "<channel>" + many));
  ASSERT_TRUE(crowd);
  EXPECT_EQ(crowd->items.size(), 1000U);
}

}  // namespace
}  // namespace horalo
