// From the check to the exchange, with a server that means well.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include "tests/app/update/update_flow_fixture.h"

namespace horalo {
namespace {

namespace fs = std::filesystem;
TEST_F(UpdateFlowTest, updates) {
  release(newer_);
  EXPECT_EQ(check(), "Horalo 2.0 is available");
  EXPECT_TRUE(flow_->screen().canInstall);
  flow_->install();
  EXPECT_EQ(page(), Page::downloading);
  wait();
  EXPECT_TRUE(done_);
  EXPECT_EQ(textOf(bundlePath() / "Contents/Linux/horalo"), "new");
  EXPECT_EQ(fs::status(bundlePath()).permissions(), fs::perms(0755));
  // The old version stands beside it, whole, to go back to.
  EXPECT_EQ(textOf(flow_->staging()->path() / "Contents/Linux/horalo"), installed_.program);
  EXPECT_TRUE(flow_->staging()->exchangeBack());
  expectUntouched();
}

TEST_F(UpdateFlowTest, saysThatThereIsNothingNew) {
  release(installed_, "1.3.0");
  EXPECT_EQ(check(), "Horalo is up to date");
  EXPECT_THAT(flow_->screen().text.toStdString(), testing::HasSubstr("5 January 2024"));
  EXPECT_EQ(state_.failures(), 0);
  flow_->close();
  EXPECT_TRUE(ended_);
  expectUntouched();
}

TEST_F(UpdateFlowTest, saysHowOldAFrozenFeedIs) {
  release(installed_, "1.3.0");
  clock_.advance(std::chrono::hours(24 * 400));
  EXPECT_EQ(check(), "Horalo is up to date");
  EXPECT_THAT(flow_->screen().text.toStdString(), testing::HasSubstr("400 days ago"));
}

TEST_F(UpdateFlowTest, isSilentWhereNobodyAskedAndNothingIsNew) {
  release(installed_, "1.3.0");
  begin(false);
  wait();
  EXPECT_TRUE(ended_);
  EXPECT_EQ(page(), Page::none);
  server_.serve(kFeed, "", 404);
  begin(false);
  wait();
  EXPECT_TRUE(ended_);
  EXPECT_EQ(page(), Page::none);
}

TEST_F(UpdateFlowTest, speaksUpWhereNobodyAskedAndSomethingIsNew) {
  release(newer_);
  begin(false);
  wait();
  EXPECT_EQ(page(), Page::offer);
  flow_->skip();
  EXPECT_TRUE(ended_);
  begin(false);
  wait();
  EXPECT_TRUE(ended_) << "what was skipped is not offered again";
  EXPECT_EQ(check(), "Horalo 2.0 is available") << "but to whom asks";
}

TEST_F(UpdateFlowTest, answersTheUserWhoAsksDuringASilentCheck) {
  release(installed_, "1.3.0");
  begin(false);
  flow_->show();
  EXPECT_EQ(page(), Page::checking);
  wait();
  EXPECT_EQ(headline(), "Horalo is up to date");
}

TEST_F(UpdateFlowTest, canBeCancelledWhileItDownloads) {
  release(newer_);
  server_.on(kArchive, [](QTcpSocket& socket) {
    socket.write("HTTP/1.1 200 OK\r\nConnection: close\r\n\r\nx");
  });
  check();
  flow_->install();
  EXPECT_EQ(namesIn(home_ / "").size(), 2U);
  flow_->close();
  EXPECT_TRUE(ended_);
  expectUntouched();
}

TEST_F(UpdateFlowTest, leavesACopyAloneThatAnotherHasUpdatedMeanwhile) {
  release(newer_);
  check();
  fs::rename(bundlePath(), home_ / "moved");
  const FileDescriptor running = std::move(held_);
  install(newer_);
  held_ = FileDescriptor(dup(running.get()));
  flow_->install();
  wait();
  EXPECT_EQ(headline(), text(problem::alreadyReplaced()));
  EXPECT_EQ(textOf(bundlePath() / "Contents/Linux/horalo"), "new");
}

TEST_F(UpdateFlowTest, installsOnlyWhatWasOffered) {
  TestItem item = release(newer_);
  item.more = "<sparkle:informationalUpdate/><link>https://example.org/</link>";
  serveFeed(makeFeed({item}));
  check();
  EXPECT_EQ(page(), Page::offer);
  EXPECT_FALSE(flow_->screen().canInstall);
  EXPECT_EQ(flow_->screen().link, QUrl(QStringLiteral("https://example.org/")));
  flow_->install();
  EXPECT_EQ(page(), Page::offer);
  EXPECT_EQ(server_.requests(kArchive), 0);
}

TEST_F(UpdateFlowTest, seesBeforeTheDownloadThatItMayNotWrite) {
  if (geteuid() == 0) {
    // The administrator may write everywhere but where nothing may be written at all.
    const auto staging = Staging::make("/proc/self/Horalo.app", 1);
    EXPECT_EQ(text(std::get<Problem>(staging)), text(problem::notWritable({})));
    return;
  }
  release(newer_);
  fs::permissions(home_ / "", fs::perms(0555));
  EXPECT_EQ(update(), text(problem::notWritable({})));
  EXPECT_EQ(server_.requests(kArchive), 0);
  fs::permissions(home_ / "", fs::perms(0755));
  expectUntouched();
}

}  // namespace
}  // namespace horalo
