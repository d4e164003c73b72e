#include "app/update/choose_update.h"

#include <gtest/gtest.h>

namespace horalo {
namespace {

using Outcome = UpdateChoice::Outcome;

FeedItem item(const std::string& version) {
  FeedItem item;
  item.version = version;
  item.archive = QUrl(QStringLiteral("https://example.org/a"));
  item.archiveLength = 1;
  item.archiveSignature = "s";
  return item;
}

UpdateSituation installed(const std::string& version) {
  UpdateSituation situation;
  situation.installedVersion = version;
  situation.systemVersion = "2.36";
  return situation;
}

// The version that is offered; empty where none is.
std::string offered(const std::vector<FeedItem>& items, const UpdateSituation& situation) {
  const auto choice = chooseUpdate({{}, items}, situation);
  EXPECT_EQ(choice.item.has_value(), choice.outcome == Outcome::available);
  return choice.item ? choice.item->version : "";
}

TEST(ChooseUpdate, takesTheHighestVersionWhereverItStands) {
  const auto situation = installed("1.3.0");
  EXPECT_EQ(offered({item("1.9"), item("1.10"), item("1.4")}, situation), "1.10");
  EXPECT_EQ(offered({item("1.3.0"), item("1.2")}, situation), "");
  EXPECT_EQ(offered({}, situation), "");
  EXPECT_EQ(offered({item("2.0b1")}, installed("2.0")), "");
}

TEST(ChooseUpdate, leavesOutWhatIsForOthers) {
  const auto situation = installed("1.3.0");
  FeedItem other = item("3");
  other.system = "windows";
  EXPECT_EQ(offered({other, item("2")}, situation), "2");
  other.system = "linux";
  EXPECT_EQ(offered({other, item("2")}, situation), "3");
  other.channel = "beta";
  EXPECT_EQ(offered({other, item("2")}, situation), "2");
  other = item("3");
  other.minimumSystemVersion = "2.37";
  EXPECT_EQ(offered({other, item("2")}, situation), "2");
  other.minimumSystemVersion = "2.36";
  EXPECT_EQ(offered({other, item("2")}, situation), "3");
  other.minimumUpdateVersion = "1.4";
  EXPECT_EQ(offered({other, item("2")}, situation), "2");
}

TEST(ChooseUpdate, leavesOutWhatCannotBeInstalled) {
  const auto situation = installed("1.3.0");
  FeedItem broken = item("3");
  broken.archive = QUrl();
  EXPECT_EQ(offered({broken, item("2")}, situation), "2");
  broken = item("3");
  broken.archiveLength = 0;
  EXPECT_EQ(offered({broken, item("2")}, situation), "2");
  broken = item("3");
  broken.archiveSignature = "";
  EXPECT_EQ(offered({broken, item("2")}, situation), "2");
  EXPECT_EQ(offered({item(std::string(10'000, '9')), item(""), item("2")}, situation), "2");
}

TEST(ChooseUpdate, refusesAFeedThatOffersLessThanBefore) {
  auto situation = installed("1.3.0");
  EXPECT_EQ(chooseUpdate({{}, {item("2.0")}}, situation).highestVersion, "2.0");
  situation.highestVersion = "2.0";
  EXPECT_EQ(chooseUpdate({{}, {item("1.9")}}, situation).outcome, Outcome::outdatedFeed);
  EXPECT_EQ(chooseUpdate({{}, {item("1.0")}}, situation).outcome, Outcome::outdatedFeed);
  EXPECT_EQ(chooseUpdate({{}, {}}, situation).outcome, Outcome::outdatedFeed);
  EXPECT_EQ(chooseUpdate({{}, {item("1.9")}}, situation).highestVersion, "2.0");
  EXPECT_EQ(offered({item("2.0")}, situation), "2.0");
  EXPECT_EQ(offered({item("2.1")}, situation), "2.1");
}

TEST(ChooseUpdate, offersASkippedVersionOnlyToWhomAsks) {
  auto situation = installed("1.3.0");
  situation.skippedVersion = "2.0";
  EXPECT_EQ(offered({item("2.0")}, situation), "");
  EXPECT_EQ(offered({item("2.1")}, situation), "2.1");
  FeedItem critical = item("2.0");
  critical.critical = true;
  EXPECT_EQ(offered({critical}, situation), "2.0");
  critical.criticalBelow = "1.3.0";
  EXPECT_EQ(offered({critical}, situation), "");
  situation.askedByUser = true;
  EXPECT_EQ(offered({item("2.0")}, situation), "2.0");
}

TEST(ChooseUpdate, rollsOutInSevenGroups) {
  FeedItem phased = item("2.0");
  phased.published = QDateTime::fromSecsSinceEpoch(1'000'000, Qt::UTC);
  phased.rolloutInterval = 1000;
  auto situation = installed("1.3.0");
  for (int group = 0; group <= 6; ++group) {
    situation.rolloutGroup = group;
    situation.now = {1'000'000 + group * 1000 - 1, 0};
    EXPECT_EQ(offered({phased}, situation), "") << group;
    situation.now = {1'000'000 + group * 1000, 0};
    EXPECT_EQ(offered({phased}, situation), "2.0") << group;
  }
  situation.now = {};
  situation.askedByUser = true;
  EXPECT_EQ(offered({phased}, situation), "2.0");
  situation.askedByUser = false;
  phased.critical = true;
  EXPECT_EQ(offered({phased}, situation), "2.0");
}

TEST(ChooseUpdate, tellsInstallationsFromInformation) {
  FeedItem news = item("2.0");
  news.archive = QUrl();
  news.informational = true;
  EXPECT_EQ(offered({news}, installed("1.3.0")), "2.0");
  news = item("2.0");
  news.informational = true;
  news.informationalFor = {"1.2"};
  const auto informational = [&](const std::string& version) {
    return chooseUpdate({{}, {news}}, installed(version)).item.value().informational;
  };
  EXPECT_FALSE(informational("1.3.0"));
  EXPECT_TRUE(informational("1.2"));
  news.informationalBelow = "1.1";
  EXPECT_TRUE(informational("1.0"));
  EXPECT_FALSE(informational("1.1"));
}

}  // namespace
}  // namespace horalo
