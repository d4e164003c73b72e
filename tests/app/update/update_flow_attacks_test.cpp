// A hostile server, and a bundle that must stay as it was.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/app/update/update_flow_fixture.h"

namespace horalo {
namespace {

class UpdateFlowAttacksTest : public UpdateFlowTest {};

TEST_F(UpdateFlowAttacksTest, refusesAnArchiveWithOneBitFlipped) {
  const QByteArray archive = makeTar(newer_.entries());
  int cases = 0;
  for (const qsizetype at : {qsizetype{0}, archive.size() / 2, archive.size() - 1}) {
    release(archive);
    QByteArray flipped = archive;
    flipped[at] = static_cast<char>(flipped[at] ^ 1);
    server_.serve(kArchive, flipped);
    EXPECT_EQ(update(), text(problem::forgedArchive()));
    expectUntouched();
    ++cases;
  }
  EXPECT_EQ(cases, 3);
}

TEST_F(UpdateFlowAttacksTest, refusesAnArchiveSignedBySomebodyElse) {
  const QByteArray archive = makeTar(newer_.entries());
  TestItem item = release(archive);
  item.signature = TestKey().sign(archive);
  serveFeed(makeFeed({item}));
  EXPECT_EQ(update(), text(problem::forgedArchive()));
  item.signature = "AAAA";
  serveFeed(makeFeed({item}));
  EXPECT_EQ(update(), text(problem::forgedArchive()));
  expectUntouched();
}

TEST_F(UpdateFlowAttacksTest, refusesAFeedThatWasChangedOrSwapped) {
  const TestItem item = release(newer_);
  const QByteArray feed = makeFeed({item});
  server_.serve(kFeed, signedFeed(feed, key_).replace("2.0", "9.9"));
  EXPECT_EQ(check(), text(problem::forgedFeed()));
  server_.serve(kFeed, signedFeed(feed, TestKey()));
  EXPECT_EQ(check(), text(problem::forgedFeed()));
  server_.serve(kFeed, feed);
  EXPECT_EQ(check(), text(problem::notAFeed()));
  server_.serve(kFeed, "<html>Please sign in</html>");
  EXPECT_EQ(check(), text(problem::notAFeed()));
  server_.serve(kFeed, signedFeed("<rss>", key_));
  EXPECT_EQ(check(), text(problem::brokenFeed()));
  server_.serve(kFeed, signedFeed("<!DOCTYPE rss>" + feed.mid(feed.indexOf("<rss")), key_));
  EXPECT_EQ(check(), text(problem::brokenFeed()));
  EXPECT_EQ(server_.requests(kArchive), 0);
  expectUntouched();
}

TEST_F(UpdateFlowAttacksTest, refusesAnOldVersionUnderANewNumber) {
  TestBundle old = newer_;
  old.version = "1.0";
  release(old, "9.9");
  EXPECT_EQ(update(), text(problem::wrongBundle({})));
  expectUntouched();
}

TEST_F(UpdateFlowAttacksTest, refusesToGoBackBehindWhatItHasSeen) {
  release(newer_);
  EXPECT_EQ(check(), "Horalo 2.0 is available");
  flow_->close();
  TestBundle between = newer_;
  between.version = "1.9";
  release(between, "1.9");
  EXPECT_EQ(check(), text(problem::outdatedFeed()));
  EXPECT_EQ(state_.highestVersion(), "2.0");
  expectUntouched();
}

TEST_F(UpdateFlowAttacksTest, refusesAnotherProgram) {
  TestBundle other = newer_;
  other.identifier = "org.example.Other";
  release(other);
  EXPECT_EQ(update(), text(problem::wrongBundle({})));
  expectUntouched();
}

TEST_F(UpdateFlowAttacksTest, refusesAVersionAfterWhichNothingCouldBeUpdated) {
  TestBundle dead = newer_;
  for (const auto& keys : {std::vector<std::string>(), std::vector<std::string>{"placeholder"},
                           std::vector<std::string>{std::string(43, 'A') + "="}}) {
    dead.keys = keys;
    release(dead);
    EXPECT_EQ(update(), text(problem::wrongBundle({})));
  }
  dead = newer_;
  dead.feedUrl = "ftp://example.org/";
  release(dead);
  EXPECT_EQ(update(), text(problem::wrongBundle({})));
  auto entries = newer_.entries();
  entries[2].permissions = 0644;
  release(makeTar(entries));
  EXPECT_EQ(update(), text(problem::wrongBundle({})));
  expectUntouched();
}

TEST_F(UpdateFlowAttacksTest, refusesArchivesThatReachOut) {
  auto entries = newer_.entries();
  entries.push_back({"Horalo.app/../evil", 0100000, 0644, "x", "", false});
  release(makeTar(entries));
  EXPECT_EQ(update(), text(problem::badArchive({})));
  entries.back() = {"Horalo.app/l", 0120000, 0777, "", "/etc/passwd", false};
  release(makeTar(entries));
  EXPECT_EQ(update(), text(problem::badArchive({})));
  release("<html>no archive</html>");
  EXPECT_EQ(update(), text(problem::badArchive({})));
  expectUntouched();
}

TEST_F(UpdateFlowAttacksTest, doesNotAskAServerWithoutAGoodKey) {
  release(newer_);
  for (const auto& keys :
       {std::vector<std::string>(), std::vector<std::string>{std::string(43, 'A') + "="},
        std::vector<std::string>{key_.publicText(), "x"}}) {
    installed_.keys = keys;
    install(installed_);
    EXPECT_EQ(check(), text(problem::badBundle({})));
    begin(false);
    wait();
    EXPECT_TRUE(ended_);
  }
  EXPECT_EQ(server_.requests(kFeed), 0);
  expectUntouched();
}

TEST_F(UpdateFlowAttacksTest, doesNotAskAServerInTheOpen) {
  for (const char* url : {"http://example.org/feed", "file:///etc/passwd", "", "nonsense"}) {
    installed_.feedUrl = url;
    install(installed_);
    EXPECT_EQ(check(), text(problem::badBundle({}))) << url;
  }
}

TEST_F(UpdateFlowAttacksTest, endsInAWindowWhateverTheServerDoes) {
  server_.serve(kFeed, "", 404);
  EXPECT_EQ(check(), text(problem::refusedByServer(404)));
  EXPECT_GT(flow_->screen().text.size(), 5);
  server_.serve(kFeed, QByteArray((1 << 20) + 1, ' '));
  EXPECT_EQ(check(), text(problem::tooLong()));
  server_.serveRaw(kFeed, "");
  EXPECT_EQ(check(), text(problem::unreachable({})));
  server_.serveRaw(kFeed,
                   "HTTP/1.1 302 x\r\nLocation: file:///etc/passwd\r\nConnection: close\r\n\r\n");
  EXPECT_EQ(check(), text(problem::badRedirect()));
}

TEST_F(UpdateFlowAttacksTest, takesNoPartOfADownload) {
  const QByteArray archive = makeTar(newer_.entries());
  release(archive);
  server_.serve(kArchive, archive.chopped(1));
  EXPECT_EQ(update(), text(problem::wrongLength()));
  server_.serve(kArchive, archive + "x");
  EXPECT_EQ(update(), text(problem::tooLong()));
  server_.serveRaw(kArchive, "HTTP/1.1 200 OK\r\nConnection: close\r\n\r\n" + archive.chopped(9));
  EXPECT_EQ(update(), text(problem::wrongLength()));
  expectUntouched();
}

TEST_F(UpdateFlowAttacksTest, refusesAnAbsurdLengthBeforeItAsks) {
  TestItem item = release(newer_);
  item.length = "99999999999";
  serveFeed(makeFeed({item}));
  EXPECT_EQ(update(), text(problem::tooLong()));
  item.length = std::to_string(200 << 20);  // five times that is what must be free
  serveFeed(makeFeed({item}));
  check();
  EXPECT_EQ(server_.requests(kArchive), 0);
  expectUntouched();
}

TEST_F(UpdateFlowAttacksTest, standsOddVersions) {
  const TestItem item = release(newer_);
  std::vector<TestItem> items(6, item);
  items[0].version = std::string(10'000, '9');
  items[1].version = "-1";
  items[2].version = "&#x202e;2";
  items[3].version = "../../2";
  items[4].version = "";
  serveFeed(makeFeed(items));
  check();
  EXPECT_NE(page(), Page::none);
  items[1].version = "9223372036854775808";
  serveFeed(makeFeed(items));
  EXPECT_EQ(update(), text(problem::wrongBundle({})));
  expectUntouched();
}

}  // namespace
}  // namespace horalo
